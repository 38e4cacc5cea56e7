// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SampleData.h"

#include "services/api/StoreCheck.h"
#include "services/archive/Unpacker.h"
#include "services/session/Runtime.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// Sample data in a whole installation: records and file store belong together.
class SampleDataTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_home->actAsAdmin();
    }

    void cleanup() { m_home.reset(); }

    void everyFileOfASmallSampleIsInTheStore()
    {
        QVERIFY(generate(30, 30).ok);
        const auto checked = StoreCheck::check({});
        QVERIFY(checked);
        QVERIFY(checked.value.isClean());
        QVERIFY(checked.value.files >= 60);
        QCOMPARE(checked.value.files, checked.value.records);
        QCOMPARE(checked.value.sampleRecords, qint64{0});
    }

    void aFolderOfLayersHoldsThem()
    {
        QVERIFY(generate(30, 30).ok);
        const QString name =
            m_home
                ->value(QStringLiteral("SELECT stored_name FROM orig_files WHERE file_type = '' "
                                       "AND base_name LIKE '%\\_gerber' ESCAPE '\\' "
                                       "ORDER BY id LIMIT 1"))
                .toString();
        QVERIFY(!name.isEmpty());
        NoProgress progress;
        const QString zip = m_home->path(QStringLiteral("layers.zip"));
        QVERIFY(m_home->store().get(name, zip, progress));
        const QString folder = m_home->path(QStringLiteral("layers"));
        QVERIFY(unpackArchive(zip, folder, LimitSettings(), progress));
        QStringList layers;
        QDirIterator files(folder, {QStringLiteral("*.gbr")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            layers << QFileInfo(files.next()).fileName();
        layers.sort();
        QCOMPARE(layers, (QStringList{QStringLiteral("bottom.gbr"), QStringLiteral("outline.gbr"),
                                      QStringLiteral("top.gbr")}));
    }

    void aSampleWithoutFilesSaysSoAndIsClean()
    {
        QVERIFY(generate(200, 0).ok);
        const auto checked = StoreCheck::check({});
        QVERIFY(checked);
        QVERIFY(checked.value.isClean());
        QCOMPARE(checked.value.files, qint64{0});
        QVERIFY(checked.value.sampleRecords >= 200);
    }

    void onlyTheNewestFlowsHaveTheirFiles()
    {
        QVERIFY(generate(60, 20).ok);
        const auto flows = [this](const char *condition) {
            return m_home
                ->value(
                    QStringLiteral("SELECT count(*) FROM job_flows f JOIN orig_files o ON o.id "
                                   "IN (f.orig_file_id, f.last_import_file_id, f.result_file_id) "
                                   "WHERE ") +
                    QLatin1String(condition))
                .toInt();
        };
        QVERIFY(flows("f.id > 40 AND o.has_body = 1") >= 20);
        QCOMPARE(flows("f.id > 40 AND o.has_body = 0"), 0);
        QVERIFY(flows("f.id <= 40 AND o.has_body = 0") >= 40);
        QCOMPARE(flows("f.id <= 40 AND o.has_body = 1"), 0);
        const auto checked = StoreCheck::check({});
        QVERIFY(checked);
        QVERIFY(checked.value.isClean());
    }

    void aFailureLeavesTheStoreEmpty()
    {
        PlainConnection(m_home->place().settings())
            .refuse(QStringLiteral("INSERT ON orders"), QStringLiteral("no"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("sample.*no")));
        QVERIFY(!generate(10, 10).ok);
        const auto files = m_home->store().list();
        QVERIFY(files);
        QCOMPARE(files.value.size(), 0);
    }

    void realWorkIsLeftAlone()
    {
        QVERIFY(generate(20, 0).ok);
        QVERIFY(!generate(20, 0).ok); // the installation does not call itself a sample
    }

    void onlyForWhoAdministers()
    {
        m_home->signOut();
        NoticeLog log;
        QVERIFY(!generate(20, 0).ok);
        m_home->actAs(QStringLiteral("tester"), {Role::TestAdmin});
        QVERIFY(!generate(20, 0).ok);
        QCOMPARE(log.notices.size(), 2);
        m_home->actAsAdmin();
        QVERIFY(generate(20, 0).ok);
    }

    void impossibleRequestsAreRefused_data()
    {
        QTest::addColumn<int>("flows");
        QTest::addColumn<int>("withFiles");
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("negative") << -5 << 0;
        QTest::newRow("too many") << SampleData::mostFlows + 1 << 0;
        QTest::newRow("too many with files")
            << SampleData::mostFlowsWithFiles + 1 << SampleData::mostFlowsWithFiles + 1;
    }

    void impossibleRequestsAreRefused()
    {
        QFETCH(int, flows);
        QFETCH(int, withFiles);
        const Outcome outcome = generate(flows, withFiles);
        QVERIFY(!outcome.ok);
        QVERIFY(!outcome.text.isEmpty());
    }

private:
    static Outcome generate(int flows, int withFiles)
    {
        NoProgress progress;
        SampleRequest request;
        request.flows = flows;
        request.withFiles = withFiles;
        return SampleData::generate(request, progress);
    }

    static Database &database() { return Runtime::current()->records().database(); }

    std::unique_ptr<TestInstallation> m_home;
};

KODMS_TEST_MAIN(SampleDataTest, QCoreApplication)
#include "SampleDataTest.moc"
