// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// Compiles a source with the very command line that the desks are compiled with.
class TestDeskBuild : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aContractIsInReach();
    void nothingElseIsInReach_data();
    void nothingElseIsInReach();

private:
    bool compiles(const QByteArray &code, QString *output) const;

    QStringList m_command;
};

/// The command of one desk source, without the source, the output and the compiler cache.
static QStringList bareCommand(const QString &commandLine)
{
    QStringList parts = QProcess::splitCommand(commandLine);
    if (parts.value(0).endsWith(QStringLiteral("ccache")))
        parts.removeFirst();
    const int output = parts.indexOf(QStringLiteral("-o"));
    return output < 0 ? QStringList() : parts.mid(0, output);
}

void TestDeskBuild::initTestCase()
{
    QFile file(QStringLiteral(KODMS_COMPILE_COMMANDS));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonArray entries = QJsonDocument::fromJson(file.readAll()).array();
    for (const auto &entry : entries) {
        const QJsonObject object = entry.toObject();
        if (object[QStringLiteral("command")].toString().contains(
                QStringLiteral("kodms_desk_objects.dir"))) {
            m_command = bareCommand(object[QStringLiteral("command")].toString());
            break;
        }
    }
    QVERIFY2(!m_command.isEmpty(), "no desk source in the compile commands");
}

bool TestDeskBuild::compiles(const QByteArray &code, QString *output) const
{
    QTemporaryDir dir;
    QFile source(dir.filePath(QStringLiteral("planted.cpp")));
    if (!source.open(QIODevice::WriteOnly) || source.write(code) != code.size())
        return false;
    source.close();
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::MergedChannels);
    compiler.start(m_command.first(), m_command.mid(1)
                                          << QStringLiteral("-fsyntax-only") << source.fileName());
    compiler.waitForFinished(60'000);
    *output = QString::fromLocal8Bit(compiler.readAll());
    return compiler.exitStatus() == QProcess::NormalExit && compiler.exitCode() == 0;
}

void TestDeskBuild::aContractIsInReach()
{
    QString output;
    QVERIFY2(compiles("#include \"foundation/model/DB_Search.h\"\n"
                      "#include \"desks/common/StyleSheets.h\"\n",
                      &output),
             qPrintable(output));
}

void TestDeskBuild::nothingElseIsInReach_data()
{
    QTest::addColumn<QString>("header");
    QTest::newRow("a service") << QStringLiteral("services/notices/Outcome.h");
    QTest::newRow("a test's header") << QStringLiteral("tests/support/TestMain.h");
}

void TestDeskBuild::nothingElseIsInReach()
{
    QFETCH(QString, header);
    QString output;
    QVERIFY(!compiles("#include \"" + header.toUtf8() + "\"\n", &output));
    QVERIFY2(output.contains(QStringLiteral("No such file")), qPrintable(output));
}

KODMS_TEST_MAIN(TestDeskBuild, QCoreApplication)
#include "TestDeskBuild.moc"
