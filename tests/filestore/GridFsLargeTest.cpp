// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/filestore/support/StoreTestMain.h"
#include "tests/tasks/support/PeakMemory.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <memory>
#include <thread>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What is done with a large file.
enum class Work { Put, Get, Verify };

Q_DECLARE_METATYPE(Work)

namespace {

/// Cancelled from another thread, soon after an eighth has been moved.
class CancelledLater final : public Progress {
public:
    explicit CancelledLater(qint64 size) : m_left(size / 8) {}

    ~CancelledLater() override
    {
        if (m_thread.joinable())
            m_thread.join();
    }

    void setTotal(qint64) override {}

    void advance(qint64 step) override
    {
        m_left -= step;
        if (m_left > 0 || m_thread.joinable())
            return;
        m_thread = std::thread([this] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            m_since.start();
            m_isCancelled = true;
        });
    }

    bool isCancelled() const override { return m_isCancelled; }

    /// Of those who have seen it.
    qint64 msSinceCancel() const { return m_since.elapsed(); }

private:
    qint64 m_left;
    std::atomic<bool> m_isCancelled{false};
    QElapsedTimer m_since;
    std::thread m_thread;
};

} // namespace

/// A gibibyte, or as many MiB as KODMS_LARGE_MIB says, to the server and back.
class GridFsLargeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        m_size = qint64{qEnvironmentVariableIsSet("KODMS_LARGE_MIB")
                            ? qEnvironmentVariableIntValue("KODMS_LARGE_MIB")
                            : 1024}
                 << 20;
        QFile file(source());
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(m_size));
        m_place = std::make_unique<StoreUnderTest>();
        // The test server looks through all that it has for many an answer.
        FileStoreSettings settings = m_place->settings();
        settings.uri += QStringLiteral("?socketTimeoutMS=600000");
        auto opened = FileStore::create(settings);
        QVERIFY2(opened, qPrintable(opened.text()));
        m_store = std::move(opened.value);
    }

    void cleanupTestCase()
    {
        m_store.reset();
        m_place.reset();
    }

    void memoryStaysSmall_data() { addWorks(); }

    void memoryStaysSmall()
    {
        QFETCH(Work, work);
        const PeakMemory memory;
        if (!memory.isKnown())
            QSKIP("this system does not tell the peak of memory");
        NoProgress progress;
        QElapsedTimer timer;
        timer.start();
        const Outcome done = perform(work, stored(), progress);
        QVERIFY2(done, qPrintable(done.text + done.cause));
        qInfo("%lld MiB: %lld ms, %lld KiB above idle", static_cast<long long>(m_size >> 20),
              static_cast<long long>(timer.elapsed()),
              static_cast<long long>(memory.aboveStart() >> 10));
        QVERIFY(memory.aboveStart() <= Allowance);
        if (work == Work::Get)
            QCOMPARE(QFileInfo(fetched()).size(), m_size);
    }

    void cancelActsAtOnceAndLeavesNothing_data() { addWorks(); }

    void cancelActsAtOnceAndLeavesNothing()
    {
        QFETCH(Work, work);
        QFile::remove(fetched());
        CancelledLater progress(m_size);
        const QString name = work == Work::Put ? QStringLiteral("cancelled.tgz") : stored();
        const Outcome done = perform(work, name, progress);
        const qint64 waited = progress.msSinceCancel();
        QVERIFY(!done);
        QVERIFY(progress.isCancelled());
        qInfo("cancelled within %lld ms", static_cast<long long>(waited));
        QVERIFY2(waited <= MostCancelMs, qPrintable(QString::number(waited)));
        QVERIFY(!QFile::exists(fetched()));
        // What was sent goes aside.
        QTRY_COMPARE_WITH_TIMEOUT(left(), QStringList(), 1800000);
        QCOMPARE(m_store->list().value.size(), 1);
    }

private:
    static constexpr qint64 Allowance = qint64{64} << 20;
    static constexpr qint64 MostCancelMs = 1000; // of a busy machine

    static void addWorks()
    {
        QTest::addColumn<Work>("work");
        QTest::newRow("put") << Work::Put;
        QTest::newRow("got") << Work::Get;
        QTest::newRow("verified") << Work::Verify;
    }

    Outcome perform(Work work, const QString &name, Progress &progress)
    {
        switch (work) {
        case Work::Put:
            return m_store->put(source(), name, progress);
        case Work::Get:
            return m_store->get(name, fetched(), progress);
        case Work::Verify:
            break;
        }
        return m_store->verify(name, progress);
    }

    QStringList left() const
    {
        const auto found = m_store->leftovers();
        return found ? found.value : QStringList(found.text());
    }

    static QString stored() { return QStringLiteral("large.tgz"); }

    QString source() const { return m_dir.filePath(QStringLiteral("source")); }

    QString fetched() const { return m_dir.filePath(QStringLiteral("fetched")); }

    QTemporaryDir m_dir;
    qint64 m_size = 0;
    std::unique_ptr<StoreUnderTest> m_place;
    std::unique_ptr<FileStore> m_store;
};

KODMS_STORE_TEST_MAIN(GridFsLargeTest)

#include "GridFsLargeTest.moc"
