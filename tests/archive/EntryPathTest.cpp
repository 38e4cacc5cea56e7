// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/EntryPath.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Services::EntryPath;

class EntryPathTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void paths_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("mapped");
        const auto row = [](const char *title, const QString &name, const QString &path,
                            bool isMapped = false) {
            QTest::newRow(title) << name << path << isMapped;
        };
        row("plain", QStringLiteral("job/layer/top"), QStringLiteral("job/layer/top"));
        row("this folder first", QStringLiteral("./a"), QStringLiteral("a"));
        row("a folder's slash", QStringLiteral("a/"), QStringLiteral("a"));
        row("two slashes", QStringLiteral("a//b"), QStringLiteral("a/b"));
        row("backslashes", QStringLiteral("a\\b"), QStringLiteral("a/b"));
        row("Chinese", QStringLiteral("料号/顶层"), QStringLiteral("料号/顶层"));
        row("two dots in a name", QStringLiteral("a..b"), QStringLiteral("a..b"));
        row("three dots", QStringLiteral("a/..."), QStringLiteral("a/..%2E"), true);
        row("a device of Windows", QStringLiteral("a/con"), QStringLiteral("a/_con"), true);
        row("a device with a suffix", QStringLiteral("AUX.txt"), QStringLiteral("_AUX.txt"), true);
        row("a device's port", QStringLiteral("COM1/a"), QStringLiteral("_COM1/a"), true);
        row("a device with two suffixes", QStringLiteral("nul.tar.gz"),
            QStringLiteral("_nul.tar.gz"), true);
        row("a device and a blank", QStringLiteral("lpt1 .txt"), QStringLiteral("_lpt1 .txt"),
            true);
        row("nearly a device", QStringLiteral("console"), QStringLiteral("console"));
        row("a trailing dot", QStringLiteral("a./b"), QStringLiteral("a%2E/b"), true);
        row("a trailing blank", QStringLiteral("a "), QStringLiteral("a%20"), true);
        row("a stream of Windows", QStringLiteral("a/b:c"), QStringLiteral("a/b%3Ac"), true);
        row("a question mark", QStringLiteral("what?"), QStringLiteral("what%3F"), true);
        row("a line break", QStringLiteral("a\nb"), QStringLiteral("a%0Ab"), true);
        row("only this folder", QStringLiteral("./"), QString());
    }

    void paths()
    {
        QFETCH(QString, name);
        QFETCH(QString, path);
        QFETCH(bool, mapped);
        const auto result = EntryPath::of(name);
        QVERIFY2(result, qPrintable(result.text()));
        QCOMPARE(result.value.path, path);
        QCOMPARE(result.value.isMapped, mapped);
    }

    void refused_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("absolute") << QStringLiteral("/etc/passwd");
        QTest::newRow("a way out") << QStringLiteral("../a");
        QTest::newRow("a way out inside") << QStringLiteral("a/../../b");
        QTest::newRow("a way out and back") << QStringLiteral("a/../b");
        QTest::newRow("a way out with backslashes") << QStringLiteral("..\\evil");
        QTest::newRow("a drive") << QStringLiteral("C:/evil");
        QTest::newRow("a drive's current folder") << QStringLiteral("c:evil");
        QTest::newRow("a network path") << QStringLiteral("\\\\server\\share\\a");
        QTest::newRow("a device path") << QStringLiteral("\\\\?\\C:\\a");
        QTest::newRow("too deep") << QStringLiteral("a/").repeated(400);
        QTest::newRow("a name too long") << QString(256, QLatin1Char('a'));
        QTest::newRow("a name too long in UTF-8") << QString(86, QChar(0x6599));
        QTest::newRow("no name") << QString();
    }

    void refused()
    {
        QFETCH(QString, name);
        const auto result = EntryPath::of(name);
        QVERIFY(!result);
        QVERIFY(result.text().contains(name.left(200)));
    }

    void links_data()
    {
        QTest::addColumn<QString>("link");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("target");
        const auto row = [](const char *title, const char *link, const char *text,
                            const char *target) {
            QTest::newRow(title) << QString::fromLatin1(link) << QString::fromLatin1(text)
                                 << QString::fromLatin1(target);
        };
        row("a neighbour", "a/link", "b", "a/b");
        row("up and down", "a/link", "../c/d", "c/d");
        row("out", "link", "../etc", "");
        row("far out", "a/link", "../../etc", "");
        row("absolute", "link", "/etc", "");
        row("a drive", "link", "C:/x", "");
    }

    /// An empty target stands for a refusal.
    void links()
    {
        QFETCH(QString, link);
        QFETCH(QString, text);
        QFETCH(QString, target);
        const auto result = EntryPath::ofLink(link, text);
        QCOMPARE(bool(result), !target.isEmpty());
        if (result)
            QCOMPARE(result.value.path, target);
        else
            QVERIFY(result.text().contains(link));
    }
};

KODMS_TEST_MAIN(EntryPathTest, QCoreApplication)
#include "EntryPathTest.moc"
