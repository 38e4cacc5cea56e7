// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SampleData.h"

#include "services/api/StoreCheck.h"
#include "services/archive/Unpacker.h"
#include "services/session/Runtime.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
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
        QVERIFY(generate(30, true).ok);
        const auto checked = StoreCheck::check({});
        QVERIFY(checked);
        QVERIFY(checked.value.isClean());
        QVERIFY(checked.value.files >= 60);
        QCOMPARE(checked.value.files, checked.value.records);
        QCOMPARE(checked.value.sampleRecords, qint64{0});
    }

    void aFolderOfLayersHoldsThem()
    {
        QVERIFY(generate(30, true).ok);
        const QString name =
            m_home
                ->value(QStringLiteral("SELECT stored_name FROM orig_files WHERE file_type = '' "
                                       "AND base_name LIKE '%\\_gerber' ESCAPE '\\'"))
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
        QVERIFY(generate(200, false).ok);
        const auto checked = StoreCheck::check({});
        QVERIFY(checked);
        QVERIFY(checked.value.isClean());
        QCOMPARE(checked.value.files, qint64{0});
        QVERIFY(checked.value.sampleRecords >= 200);
    }

    void aFailureLeavesTheStoreEmpty()
    {
        database().run(QStringLiteral("CREATE TRIGGER no_orders BEFORE INSERT ON orders "
                                      "BEGIN SELECT RAISE(ABORT, 'no'); END"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("sample.*no")));
        QVERIFY(!generate(10, true).ok);
        const auto files = m_home->store().list();
        QVERIFY(files);
        QCOMPARE(files.value.size(), 0);
    }

    void realWorkIsLeftAlone()
    {
        QVERIFY(generate(20, false).ok);
        QVERIFY(!generate(20, false).ok); // the installation does not call itself a sample
    }

    void onlyForWhoAdministers()
    {
        m_home->signOut();
        NoticeLog log;
        QVERIFY(!generate(20, false).ok);
        m_home->actAs(QStringLiteral("tester"), {Role::TestAdmin});
        QVERIFY(!generate(20, false).ok);
        QCOMPARE(log.notices.size(), 2);
        m_home->actAsAdmin();
        QVERIFY(generate(20, false).ok);
    }

    void impossibleRequestsAreRefused_data()
    {
        QTest::addColumn<int>("flows");
        QTest::addColumn<bool>("files");
        QTest::newRow("none") << 0 << false;
        QTest::newRow("negative") << -5 << false;
        QTest::newRow("too many") << SampleData::mostFlows + 1 << false;
        QTest::newRow("too many with files") << SampleData::mostFlowsWithFiles + 1 << true;
    }

    void impossibleRequestsAreRefused()
    {
        QFETCH(int, flows);
        QFETCH(bool, files);
        const Outcome outcome = generate(flows, files);
        QVERIFY(!outcome.ok);
        QVERIFY(!outcome.text.isEmpty());
    }

private:
    static Outcome generate(int flows, bool files)
    {
        NoProgress progress;
        SampleRequest request;
        request.flows = flows;
        request.files = files;
        return SampleData::generate(request, progress);
    }

    static Database &database() { return Runtime::current()->records().database(); }

    std::unique_ptr<TestInstallation> m_home;
};

KODMS_TEST_MAIN(SampleDataTest, QCoreApplication)
#include "SampleDataTest.moc"
