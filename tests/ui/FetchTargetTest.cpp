// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/FetchTarget.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Services::fetchTarget;

class FetchTargetTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void isJoinedPlainly_data();
    void isJoinedPlainly();
    void hostileNamesAreRefused_data();
    void hostileNamesAreRefused();
    void strangeTypesAreRefused_data();
    void strangeTypesAreRefused();
};

void FetchTargetTest::isJoinedPlainly_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("jobName");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("path");
    QTest::newRow("usual") << "/data/jobs/"
                           << "A1B023456"
                           << "zip"
                           << "/data/jobs/A1B023456.zip";
    QTest::newRow("without a separator at the end of the folder") << "/data/jobs"
                                                                  << "A1B023456"
                                                                  << "file"
                                                                  << "/data/jobsA1B023456.file";
    QTest::newRow("Chinese, blanks, dots inside")
        << "/d/" << QStringLiteral("电源板 V2.1 (终版)") << "tar.gz"
        << QStringLiteral("/d/电源板 V2.1 (终版).tar.gz");
    QTest::newRow("a name that only begins like a device") << "/d/"
                                                           << "CONTROL"
                                                           << "zip"
                                                           << "/d/CONTROL.zip";
}

void FetchTargetTest::isJoinedPlainly()
{
    QFETCH(QString, folder);
    QFETCH(QString, jobName);
    QFETCH(QString, type);
    const auto target = fetchTarget(folder, jobName, type);
    QVERIFY2(target.outcome.ok, qPrintable(target.text()));
    QTEST(target.value, "path");
}

void FetchTargetTest::hostileNamesAreRefused_data()
{
    QTest::addColumn<QString>("jobName");
    const auto row = [](const char *name, const QString &jobName) {
        QTest::newRow(name) << jobName;
    };
    row("empty", QString());
    row("one folder up", QStringLiteral("../evil"));
    row("dots only", QStringLiteral(".."));
    row("hidden", QStringLiteral(".profile"));
    row("absolute", QStringLiteral("/etc/passwd"));
    row("a folder inside", QStringLiteral("a/b"));
    row("the other separator", QStringLiteral("..\\evil"));
    row("a drive", QStringLiteral("C:evil"));
    row("a second stream", QStringLiteral("job:stream"));
    row("a line break", QStringLiteral("a\nb"));
    row("NUL", QString(QLatin1String("a\0b", 3)));
    row("delete character", QStringLiteral("a\x7f"));
    row("a device", QStringLiteral("con"));
    row("a device with a suffix", QStringLiteral("LPT1.tar"));
    row("a device with a blank", QStringLiteral("aux .x"));
    row("wildcards", QStringLiteral("a*"));
    row("broken UTF-8", QString::fromUtf8("a\xff"));
    row("too long", QString(201, QLatin1Char('a')));
}

void FetchTargetTest::hostileNamesAreRefused()
{
    QFETCH(QString, jobName);
    const auto target = fetchTarget(QStringLiteral("/d/"), jobName, QStringLiteral("zip"));
    QVERIFY2(!target.outcome.ok, qPrintable(target.value));
    QVERIFY(!target.text().isEmpty());
}

void FetchTargetTest::strangeTypesAreRefused_data()
{
    QTest::addColumn<QString>("type");
    for (const char *type : {"", ".", "../zip", "zip/x", "zip ", "zip\n", "a b", "-zip", "z\\p"})
        QTest::newRow(type) << QString::fromLatin1(type);
    QTest::newRow("Chinese") << QStringLiteral("压缩");
    QTest::newRow("too long") << QString(33, QLatin1Char('z'));
}

void FetchTargetTest::strangeTypesAreRefused()
{
    QFETCH(QString, type);
    QVERIFY(!fetchTarget(QStringLiteral("/d/"), QStringLiteral("job"), type).outcome.ok);
}

KODMS_TEST_MAIN(FetchTargetTest, QCoreApplication)
#include "FetchTargetTest.moc"
