// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/FolderBrowser.h"
#include "desks/common/ProgramStart.h"
#include "tests/desks/OperationDesk.h"
#include "tests/desks/PrivateMember.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QUrl>

using namespace KODMS::Tests;
using namespace KODMS::UI;

namespace KODMS::Tests {

template <typename Widget> struct OpenFolder {
    using Type = void (Widget::*)(QString);
};

template struct OpenMember<OpenFolder<DMS_Export_Widget>, &DMS_Export_Widget::OpenFileFolder>;
template struct OpenMember<OpenFolder<DMS_Download_Widget>, &DMS_Download_Widget::OpenFileFolder>;

} // namespace KODMS::Tests

/// Showing a folder: the exact command line, and what happens without an Explorer.
class FolderBrowserTest : public QObject {
    Q_OBJECT

public Q_SLOTS:

    void openUrl(const QUrl &url) { m_urls << url; }

private Q_SLOTS:

    void init();
    void cleanup();

    void theCommandLine_data();
    void theCommandLine();

    void bothDesksShowFolders_data() { addDeskRows(); }

    void bothDesksShowFolders();
    void aStartedExplorerIsEnough();
    void withoutAnExplorerTheSystemShowsTheFolder_data();
    void withoutAnExplorerTheSystemShowsTheFolder();
    void noFolderIsNotTheWorkingFolder();
    void aRealProgramGetsThisLine_data();
    void aRealProgramGetsThisLine();
    void aProgramThatIsNotThereDoesNotStart();

private:
    void startsAre(bool success);

    QVector<CommandLine> m_lines;
    QList<QUrl> m_urls;
};

void FolderBrowserTest::init()
{
    FakeServices::instance().reset();
    m_lines.clear();
    m_urls.clear();
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "openUrl");
    startsAre(true);
}

void FolderBrowserTest::cleanup()
{
    setProgramStarter({});
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void FolderBrowserTest::startsAre(bool success)
{
    setProgramStarter([this, success](const CommandLine &line) {
        m_lines << line;
        return success;
    });
}

void FolderBrowserTest::theCommandLine_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("arguments");
    const auto row = [](const char *name, const QString &folder, const QString &arguments) {
        QTest::newRow(name) << folder << arguments;
    };
    row("slashes become backslashes", QStringLiteral("D:/kodms/jobs/A1B000001"),
        QStringLiteral("/select , \"D:\\kodms\\jobs\\A1B000001\""));
    row("backslashes stay as they are", QStringLiteral("D:\\kodms/job\\"),
        QStringLiteral("/select , \"D:\\kodms\\job\\\""));
    row("blanks stand within the quotes", QStringLiteral("/my jobs/a  b"),
        QStringLiteral("/select , \"\\my jobs\\a  b\""));
    row("Chinese", QStringLiteral("/料号/甲"), QStringLiteral("/select , \"\\料号\\甲\""));
    row("a percent sign is none of ours", QStringLiteral("/%1/%2"),
        QStringLiteral("/select , \"\\%1\\%2\""));
    row("two slashes", QStringLiteral("a//b"), QStringLiteral("/select , \"a\\\\b\""));
    row("nothing", QString(), QStringLiteral("/select , \"\""));
}

void FolderBrowserTest::theCommandLine()
{
    QFETCH(QString, folder);
    QFETCH(QString, arguments);
    showInFileBrowser(folder);
    QCOMPARE(m_lines.size(), 1);
    QCOMPARE(m_lines.first().program, QStringLiteral("explorer.exe"));
    QCOMPARE(m_lines.first().arguments, arguments);
}

void FolderBrowserTest::bothDesksShowFolders()
{
    QFETCH(Desk, desk);
    const OperationDesk window(desk, {});
    if (auto *widget = window.jobFlow())
        (widget->*privateMember<OpenFolder<DMS_Export_Widget>>)(QStringLiteral("a/b"));
    else
        (window.origFile()->*privateMember<OpenFolder<DMS_Download_Widget>>)(QStringLiteral("a/b"));
    QCOMPARE(m_lines.size(), 1);
    QCOMPARE(m_lines.first().arguments, QStringLiteral("/select , \"a\\b\""));
}

void FolderBrowserTest::aStartedExplorerIsEnough()
{
    showInFileBrowser(QDir::tempPath());
    QCOMPARE(m_urls, QList<QUrl>());
}

void FolderBrowserTest::withoutAnExplorerTheSystemShowsTheFolder_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("path");
    const QString path = QDir::rootPath() + QStringLiteral("jobs/a b");
    QTest::newRow("a path") << path << path;
    QTest::newRow("a relative path")
        << QStringLiteral("job") << QDir().absoluteFilePath(QStringLiteral("job"));
    const QString encoded = QDir::rootPath() + QStringLiteral("jobs/a%20b#c");
    QTest::newRow("a path that looks encoded") << encoded << encoded;
}

void FolderBrowserTest::withoutAnExplorerTheSystemShowsTheFolder()
{
    QFETCH(QString, folder);
    QFETCH(QString, path);
    startsAre(false);
    showInFileBrowser(folder);
    QCOMPARE(m_lines.size(), 1);
    QCOMPARE(m_urls, QList<QUrl>({QUrl::fromLocalFile(path)}));
}

void FolderBrowserTest::noFolderIsNotTheWorkingFolder()
{
    startsAre(false);
    showInFileBrowser(QString());
    QCOMPARE(m_lines.size(), 1);
    QCOMPARE(m_urls, QList<QUrl>());
}

#if defined(Q_OS_WIN)

void FolderBrowserTest::aRealProgramGetsThisLine_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("line");
    const auto row = [](const char *title, const char *folder, const char *path) {
        QTest::newRow(title)
            << QString::fromUtf8(folder)
            << QStringLiteral("explorer.exe /select , \"%1\"").arg(QString::fromUtf8(path));
    };
    row("a path", "D:/kodms/jobs/A1B", "D:\\kodms\\jobs\\A1B");
    row("blanks", "D:/my jobs/A  B", "D:\\my jobs\\A  B");
    row("a blank at the end", "D:/jobs/A ", "D:\\jobs\\A ");
    row("Chinese", "D:/料号 库/甲", "D:\\料号 库\\甲");
    row("commas", "D:/a,b/c,", "D:\\a,b\\c,");
    row("a backslash at the end", "D:/jobs/", "D:\\jobs\\");
    row("a network path", "//server/share/A1B", "\\\\server\\share\\A1B");
    row("percent signs and carets", "D:/%TEMP%/^a&b", "D:\\%TEMP%\\^a&b");
    row("nothing", "", "");
}

/// A program of that name in the working folder, which comes before the system's, writes down what
/// it was given.
void FolderBrowserTest::aRealProgramGetsThisLine()
{
    QFETCH(QString, folder);
    QFETCH(QString, line);
    const QDir place = QFileInfo(QStringLiteral(KODMS_TEST_EXPLORER)).dir();
    const QString written = place.filePath(QStringLiteral("commandline"));
    QFile::remove(written);
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(place.path()));
    setProgramStarter({});
    showInFileBrowser(folder);
    QVERIFY(QDir::setCurrent(before));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(written), 30000);
    QFile file(written);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QCOMPARE(QString::fromUtf16(reinterpret_cast<const ushort *>(bytes.constData()),
                                bytes.size() / int(sizeof(ushort))),
             line);
    QCOMPARE(m_urls, QList<QUrl>());
}

#else

void FolderBrowserTest::aRealProgramGetsThisLine_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("last");
    QTest::newRow("a path") << QStringLiteral("/jobs/A1B") << QStringLiteral("\\jobs\\A1B");
    QTest::newRow("blanks") << QStringLiteral("/my jobs/A  B") << QStringLiteral("\\my jobs\\A  B");
    QTest::newRow("Chinese") << QStringLiteral("/料号") << QStringLiteral("\\料号");
}

/// A program of that name in the search path writes down what it was given.
void FolderBrowserTest::aRealProgramGetsThisLine()
{
    QFETCH(QString, folder);
    QFETCH(QString, last);
    const QTemporaryDir place;
    const QString written = place.filePath(QStringLiteral("arguments"));
    QFile program(place.filePath(QStringLiteral("explorer.exe")));
    QVERIFY(program.open(QIODevice::WriteOnly));
    program.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\"\nmv \"$0.part\" '" +
                  written.toUtf8() + "'\n");
    program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    program.close();
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", place.path().toLocal8Bit() + ':' + path);
    setProgramStarter({});
    showInFileBrowser(folder);
    qputenv("PATH", path);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(written), 30000);
    QFile file(written);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(file.readAll()), QStringLiteral("/select\n,\n%1\n").arg(last));
    QCOMPARE(m_urls, QList<QUrl>());
}

#endif

void FolderBrowserTest::aProgramThatIsNotThereDoesNotStart()
{
    setProgramStarter({});
    QVERIFY(!startProgram({QStringLiteral("kodms-no-such-program"), QString()}));
}

KODMS_TEST_MAIN(FolderBrowserTest, QApplication)
#include "FolderBrowserTest.moc"
