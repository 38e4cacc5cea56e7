// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/WebJob.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::UI;

/// Which jobs came by the web.
class WebJobTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNameTells_data();
    void aNameTells();
};

void WebJobTest::aNameTells_data()
{
    QTest::addColumn<QString>("job");
    QTest::addColumn<QString>("prefix");
    QTest::addColumn<bool>("isWeb");
    const auto row = [](const char *job, const char *prefix, bool isWeb) {
        QTest::newRow(*job ? job : "no name")
            << QString::fromUtf8(job) << QString::fromUtf8(prefix) << isWeb;
    };
    row("web000001", "web", true);
    row("Web123", "Web", true);
    row("WEB_A1", "WEB", true);
    row("web", "web", true);
    row("we", "we", false);
    row("aweb", "awe", false);
    row("A1B000001", "A1B", false);
    row("电路板1", "电路板", false);
    row("", "", false);
}

void WebJobTest::aNameTells()
{
    QFETCH(QString, job);
    QFETCH(QString, prefix);
    QFETCH(bool, isWeb);
    QCOMPARE(jobNamePrefix(job), prefix);
    QCOMPARE(isWebJob(job), isWeb);
}

KODMS_TEST_MAIN(WebJobTest, QCoreApplication)
#include "WebJobTest.moc"
