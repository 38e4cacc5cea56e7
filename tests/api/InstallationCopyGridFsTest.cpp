// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/FileStore.h"
#include "tests/api/support/CopyHouse.h"
#include "tests/api/support/Interlude.h"
#include "tests/filestore/support/RawBucket.h"
#include "tests/filestore/support/StoreTestMain.h"

#include <QTest>

#include <memory>

using namespace KODMS::Services;
using KODMS::Tests::CopyHouse;
using KODMS::Tests::Interlude;
using KODMS::Tests::RawBucket;
using KODMS::Tests::StoreUnderTest;

/// An installation whose files move from a folder to a server, and back.
class InstallationCopyGridFsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void cleanup() { m_store.reset(); }

    void thereAndBackIsTheSame();
    void aCancelledCopyGoesOn();
    void filesOfAnotherClientMoveToo();
    void filesThatAreRemovedMeanwhileArrive();
    void twoAddressesOfOneStoreAreRefused();

private:
    void copyThere();
    void copyBack(Progress &progress);

    CopyHouse m_house;
    QStringList m_files; ///< of the source, with their sums
    std::unique_ptr<StoreUnderTest> m_store;
    QString m_back;
};

void InstallationCopyGridFsTest::initTestCase()
{
    const QString problem = m_house.make();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
    m_files = CopyHouse::filesOf(m_house.source());
    QVERIFY(m_files.size() > 1);
}

void InstallationCopyGridFsTest::init()
{
    m_house.renewTarget();
    m_store = std::make_unique<StoreUnderTest>();
    Configuration target = Configuration::load(m_house.target()).value;
    target.fileStore = m_store->settings();
    QVERIFY(target.save());
    m_back = m_house.place("back");
    QVERIFY(Configuration::defaultsFor(m_back).save());
}

void InstallationCopyGridFsTest::copyThere()
{
    const auto copied = m_house.copy();
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(copied.value.files, qint64(m_files.size()));
    QCOMPARE(CopyHouse::filesOf(m_house.target()), m_files);
}

void InstallationCopyGridFsTest::copyBack(Progress &progress)
{
    const auto copied = InstallationCopy::copy(m_house.target(), m_back, progress);
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(copied.value.files, qint64(m_files.size()));
    QCOMPARE(copied.value.unrecorded, qint64(0));
    QCOMPARE(CopyHouse::dump(m_back), m_house.before());
    QCOMPARE(CopyHouse::filesOf(m_back), m_files);
}

void InstallationCopyGridFsTest::thereAndBackIsTheSame()
{
    copyThere();
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
    NoProgress silent;
    copyBack(silent);
    const auto store = m_store->opened();
    QCOMPARE(store->leftovers().value, QStringList());
    const RawBucket bucket(m_store->settings());
    QCOMPARE(bucket.count(".kodms.live", "{'kind': 'hold'}"), 0);
}

void InstallationCopyGridFsTest::aCancelledCopyGoesOn()
{
    Interlude cancel;
    cancel.cancels = true;
    const auto cancelled = InstallationCopy::copy(m_house.source(), m_house.target(), cancel);
    QVERIFY(!cancelled);
    QCOMPARE(CopyHouse::filesOf(m_house.target()).size(), 1);
    copyThere();
}

/// What it put has no recorded sum; it is read for it.
void InstallationCopyGridFsTest::filesOfAnotherClientMoveToo()
{
    copyThere();
    const RawBucket bucket(m_store->settings());
    QCOMPARE(bucket.update(".files", "{}", "{'$unset': {'metadata': ''}}"), m_files.size());
    NoProgress silent;
    copyBack(silent);
}

void InstallationCopyGridFsTest::filesThatAreRemovedMeanwhileArrive()
{
    copyThere();
    Interlude removal([this] {
        const auto store = m_store->opened();
        const auto all = store->list();
        for (const StoredFileInfo &file : all.value)
            QVERIFY(store->remove(file.name));
        QVERIFY(store->sweep());
    });
    copyBack(removal);
    QCOMPARE(CopyHouse::filesOf(m_house.target()), QStringList());
    const RawBucket bucket(m_store->settings());
    QCOMPARE(bucket.count(".chunks"), 0); // nothing is held any more
}

void InstallationCopyGridFsTest::twoAddressesOfOneStoreAreRefused()
{
    copyThere();
    Configuration back = Configuration::load(m_back).value;
    back.fileStore = m_store->settings();
    back.fileStore.uri += QStringLiteral("?appName=another");
    QVERIFY(back.save());
    NoProgress silent;
    const auto copied = InstallationCopy::copy(m_house.target(), m_back, silent);
    QVERIFY(!copied);
    QVERIFY2(copied.text().contains(QStringLiteral("同一个文件库")), qPrintable(copied.text()));
    QCOMPARE(CopyHouse::filesOf(m_house.target()), m_files);
}

KODMS_STORE_TEST_MAIN(InstallationCopyGridFsTest)
#include "InstallationCopyGridFsTest.moc"
