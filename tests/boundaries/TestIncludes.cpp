// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// scripts/check_includes on trees in which one include is planted.
class TestIncludes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsWhatCrossesABoundary_data();
    void findsWhatCrossesABoundary();
    void allowsWhatTheLayersAllow_data();
    void allowsWhatTheLayersAllow();
    void namesFileLineAndReason();
    void theRepositoryItselfIsClean();

private:
    static void plant(const QTemporaryDir &tree, const QString &file, const QString &include);
    static int check(const QString &folder, QString *output);
};

void TestIncludes::plant(const QTemporaryDir &tree, const QString &file, const QString &include)
{
    const QString path = tree.filePath(file);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile source(path);
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("#include <QString>\n#include \"" + include.toUtf8() + "\"\n");
}

int TestIncludes::check(const QString &folder, QString *output)
{
    QProcess script;
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral(KODMS_SOURCE_DIR "/scripts/check_includes"), {folder});
    script.waitForFinished();
    *output = QString::fromUtf8(script.readAll());
    return script.exitStatus() == QProcess::NormalExit ? script.exitCode() : -1;
}

void TestIncludes::findsWhatCrossesABoundary_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("include");
    const auto row = [](const char *name, const char *file, const char *include) {
        QTest::newRow(name) << QString::fromLatin1(file) << QString::fromLatin1(include);
    };
    row("a contract knows a desk", "foundation/ui/A.h", "desks/common/StyleSheets.h");
    row("a contract knows a service", "foundation/bll/A.h", "services/notices/Outcome.h");
    row("a desk knows a service", "desks/export/A.cpp", "services/notices/Outcome.h");
    row("a desk knows a public service", "desks/common/A.cpp", "services/api/SignIn.h");
    row("a desk looks into the other", "desks/export/A.cpp", "desks/download/B.h");
    row("the shared part knows a desk", "desks/common/A.cpp", "desks/export/B.h");
    row("a service knows a desk", "services/ui/A.cpp", "desks/common/StyleSheets.h");
    row("a module knows a higher one", "services/records/A.cpp", "services/session/B.h");
    row("a module knows its neighbour", "services/records/A.cpp", "services/filestore/B.h");
    row("a module knows the windows", "services/tasks/A.cpp", "services/ui/B.h");
    row("the lowest module knows another", "services/notices/A.cpp", "services/config/B.h");
    row("a module without a floor", "services/attic/A.cpp", "services/notices/Outcome.h");
    row("a public header opens a private one", "services/api/A.h", "services/records/Database.h");
    row("a public header opens the inside", "services/api/A.h", "services/api/internal/B.h");
    row("an application knows the inside", "apps/admin/A.cpp", "services/api/internal/B.h");
    row("an application knows a private class", "apps/desk/A.cpp", "services/records/Database.h");
    row("an application knows a part of a desk", "apps/desk/A.cpp", "desks/export/JobColumns.h");
    row("an application knows the other", "apps/admin/A.cpp", "apps/desk/B.h");
    row("the console knows an application", "apps/console/A.cpp", "apps/admin/B.h");
    row("an application knows a test", "apps/admin/A.cpp", "tests/support/TestMain.h");
    row("a desk takes a way around", "desks/export/A.cpp", "desks/../services/api/SignIn.h");
    row("a desk knows a test", "desks/export/A.cpp", "tests/fakes/Recorder.h");
    row("a source file is included", "services/config/A.cpp", "services/config/B.cpp");
    row("a path from its own folder", "services/config/A.cpp", "B.h");
    row("a path upwards", "services/config/A.cpp", "../notices/Outcome.h");
}

void TestIncludes::findsWhatCrossesABoundary()
{
    QFETCH(QString, file);
    QFETCH(QString, include);
    QTemporaryDir tree;
    plant(tree, file, include);
    QString output;
    QCOMPARE(check(tree.path(), &output), 1);
    QVERIFY2(output.contains(include), qPrintable(output));
}

void TestIncludes::allowsWhatTheLayersAllow_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("include");
    const auto row = [](const char *name, const char *file, const char *include) {
        QTest::newRow(name) << QString::fromLatin1(file) << QString::fromLatin1(include);
    };
    row("a contract knows a contract", "foundation/bll/A.h", "foundation/model/DB_Search.h");
    row("a desk knows a contract", "desks/export/A.cpp", "foundation/model/DB_Search.h");
    row("a desk knows the shared part", "desks/export/A.cpp", "desks/common/StyleSheets.h");
    row("a desk knows itself", "desks/export/A.cpp", "desks/export/JobColumns.h");
    row("the original files use the replacement", "desks/download/A.cpp", "desks/modifyfile/B.h");
    row("a module knows a lower one", "services/session/A.cpp", "services/records/Database.h");
    row("a module knows the lowest", "services/ui/A.cpp", "services/notices/Outcome.h");
    row("a public class uses everything", "services/api/A.cpp", "services/records/Database.h");
    row("the inside uses everything", "services/api/internal/A.h", "services/records/Database.h");
    row("a public header uses an outcome", "services/api/A.h", "services/notices/Outcome.h");
    row("an application uses a public service", "apps/admin/A.cpp", "services/api/SignIn.h");
    row("an application uses the console", "apps/admin/A.cpp", "apps/console/Terminal.h");
    row("an application uses a desk", "apps/desk/A.cpp", "desks/export/DMS_Export_Widget.h");
    row("a test sees everything", "tests/records/A.cpp", "services/records/Database.h");
    row("what moc wrote", "tests/records/A.cpp", "A.moc");
}

void TestIncludes::allowsWhatTheLayersAllow()
{
    QFETCH(QString, file);
    QFETCH(QString, include);
    QTemporaryDir tree;
    plant(tree, file, include);
    QString output;
    QCOMPARE(check(tree.path(), &output), 0);
    QCOMPARE(output, QString());
}

void TestIncludes::namesFileLineAndReason()
{
    QTemporaryDir tree;
    plant(tree, QStringLiteral("desks/export/A.cpp"), QStringLiteral("services/api/SignIn.h"));
    QString output;
    check(tree.path(), &output);
    QCOMPARE(output, QStringLiteral("desks/export/A.cpp:2: services/api/SignIn.h: "
                                    "a desk knows only contracts and desks\n"));
}

void TestIncludes::theRepositoryItselfIsClean()
{
    QString output;
    const int code = check(QStringLiteral(KODMS_SOURCE_DIR), &output);
    QCOMPARE(output, QString());
    QCOMPARE(code, 0);
}

KODMS_TEST_MAIN(TestIncludes, QCoreApplication)
#include "TestIncludes.moc"
