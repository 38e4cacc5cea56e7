// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// The flags and the export macros as a compiler sees them that takes the options of Windows' own
/// and compiles for it: clang-cl. Nothing is linked.
class TestWindowsFlags : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void theLibrariesExport();
    void theirUsersImport();
    void objectsAloneDoNeither();
    void warningsAreErrors();

private:
    bool run(const QStringList &arguments);
    bool build(const char *target, QByteArray *object);

    QTemporaryDir m_dir;
    QByteArray m_output;
};

bool TestWindowsFlags::run(const QStringList &arguments)
{
    QProcess cmake;
    cmake.setProcessChannelMode(QProcess::MergedChannels);
    cmake.start(QStringLiteral(KODMS_CMAKE), arguments);
    const bool finished = cmake.waitForFinished(60'000);
    m_output = cmake.readAll();
    return finished && cmake.exitStatus() == QProcess::NormalExit && cmake.exitCode() == 0;
}

/// Builds one of the probes and reads what the compiler wrote.
bool TestWindowsFlags::build(const char *target, QByteArray *object)
{
    const QString name = QString::fromLatin1(target);
    if (!run({QStringLiteral("--build"), m_dir.path(), QStringLiteral("--target"), name}))
        return false;
    QFile file(m_dir.filePath(QStringLiteral("CMakeFiles/%1.dir/Probe.cpp.obj").arg(name)));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    *object = file.readAll();
    return true;
}

void TestWindowsFlags::initTestCase()
{
    const QString compiler = QStandardPaths::findExecutable(QStringLiteral("clang-cl-14"));
    if (compiler.isEmpty())
        QSKIP("clang-cl-14 is not installed (package clang-tools-14)");
    const QString nothing = QStringLiteral("=/bin/false"); // nothing is linked or archived
    QVERIFY2(
        run({QStringLiteral("-S"),
             QStringLiteral(KODMS_SOURCE_DIR "/tests/boundaries/windows_flags"),
             QStringLiteral("-B"), m_dir.path(), QStringLiteral("-G"), QStringLiteral("Ninja"),
             QStringLiteral("-DCMAKE_SYSTEM_NAME=Windows"),
             QStringLiteral("-DCMAKE_CXX_COMPILER=") + compiler,
             QStringLiteral("-DCMAKE_CXX_COMPILER_TARGET=x86_64-pc-windows-msvc"),
             QStringLiteral("-DCMAKE_CXX_COMPILER_FORCED=ON"),
             QStringLiteral("-DCMAKE_AR") + nothing, QStringLiteral("-DCMAKE_LINKER") + nothing,
             QStringLiteral("-DCMAKE_RC_COMPILER") + nothing,
             QStringLiteral("-DCMAKE_MT") + nothing}),
        m_output);
}

void TestWindowsFlags::theLibrariesExport()
{
    QByteArray object;
    QVERIFY2(build("exporting", &object), m_output);
    QVERIFY(object.contains("/EXPORT:\"?rows@Desk@@"));
    QVERIFY(object.contains("/EXPORT:\"?calls@Service@@"));
}

void TestWindowsFlags::theirUsersImport()
{
    QByteArray object;
    QVERIFY2(build("importing", &object), m_output);
    QVERIFY(!object.contains("/EXPORT:"));
    QVERIFY(object.contains("__imp_?rows@Desk@@"));
    QVERIFY(object.contains("__imp_?calls@Service@@"));
}

void TestWindowsFlags::objectsAloneDoNeither()
{
    QByteArray object;
    QVERIFY2(build("alone", &object), m_output);
    QVERIFY(object.contains("?calls@Service@@"));
    QVERIFY(!object.contains("/EXPORT:"));
    QVERIFY(!object.contains("__imp_"));
}

void TestWindowsFlags::warningsAreErrors()
{
    QVERIFY2(!run({QStringLiteral("--build"), m_dir.path(), QStringLiteral("--target"),
                   QStringLiteral("warned")}),
             m_output);
    QVERIFY2(m_output.contains("Warned.cpp") && m_output.contains("-Werror"), m_output);
}

KODMS_TEST_MAIN(TestWindowsFlags, QCoreApplication)
#include "TestWindowsFlags.moc"
