// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ListExport.h"

#include "services/api/SampleData.h"
#include "services/notices/Progress.h"
#include "tests/api/support/ListMaker.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/TestMain.h"
#include "tests/tables/support/SmallFiles.h"
#include "tests/tables/support/TableReaders.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace KODMS::Services;
using namespace KODMS::Tests;

Q_DECLARE_METATYPE(ListExport::Format)

namespace {

class CountingProgress final : public Progress {
public:
    explicit CountingProgress(std::function<void()> step = {}) : m_step(std::move(step)) {}

    void setUnit(Unit unit) override { isRows = unit == Unit::Rows; }

    void setTotal(qint64 rows) override { total = rows; }

    void advance(qint64 rows) override
    {
        done += rows;
        if (m_step)
            m_step();
    }

    bool isCancelled() const override { return cancelAt > 0 && done >= cancelAt; }

    bool isRows = false;
    qint64 total = 0;
    qint64 done = 0;
    qint64 cancelAt = 0;

private:
    std::function<void()> m_step;
};

} // namespace

/// Lists of the real records, as files.
class ListExportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void init() { m_home->actAsAdmin(); }

    void cleanup()
    {
        QFile::remove(path());
        m_home->database().run(QStringLiteral("UPDATE job_flows SET tips = '' WHERE tips <> ''"));
    }

    void everyPageInTheOrderOfTheDesk_data() { formats(); }

    void everyPageInTheOrderOfTheDesk();
    void onlyWhatTheUserMaySee();
    void nobodySignedInSeesNothing();
    void originalFilesToo();

    void anEmptyResultHasItsTitles_data() { formats(); }

    void anEmptyResultHasItsTitles();

    void hostileTextsStayTexts_data() { formats(); }

    void hostileTextsStayTexts();
    void longCellsAreCutAndSaid();
    void oneStateOfTheRecords();

    void cancelledItLeavesNothing_data() { formats(); }

    void cancelledItLeavesNothing();

    void aFullDiskIsSaidAndLeavesNothing_data() { formats(); }

    void aFullDiskIsSaidAndLeavesNothing();
    void aSearchThatIsNotUnderstoodIsRefused();
    void withoutServicesItSaysSo();

private:
    static void formats()
    {
        QTest::addColumn<ListExport::Format>("format");
        QTest::newRow("CSV") << ListExport::Format::Csv;
        QTest::newRow("XLSX") << ListExport::Format::Xlsx;
    }

    QString path() const { return m_home->path(QStringLiteral("list.out")); }

    QStringList lists() const
    {
        return TestInstallation::entries(m_home->path(QString()))
            .filter(QRegularExpression(QStringLiteral("list")));
    }

    Result<ListReceipt> write(const ShownSearch &search, ListExport::Format format,
                              Progress *progress = nullptr) const
    {
        return ListExport::flows(search, flowColumns(), path(), format, progress);
    }

    ReadTable read(ListExport::Format format) const
    {
        return format == ListExport::Format::Csv ? readCsv(path()) : readSheet(path());
    }

    static QStringList firstColumn(const ReadTable &table)
    {
        QStringList cells;
        for (const QStringList &row : table.rows)
            cells << row.value(0);
        return cells.mid(1);
    }

    void setTips(const QString &job, const QString &tips)
    {
        m_home->database()
            .prepare(QStringLiteral("UPDATE job_flows SET tips = ? WHERE job_name = ?"))
            .bind(0, tips)
            .bind(1, job)
            .exec();
    }

    std::unique_ptr<TestInstallation> m_home;
    ShownSearch m_all = flowSearch("KoJobName", "");
};

void ListExportTest::initTestCase()
{
    m_home = std::make_unique<TestInstallation>();
    m_home->actAsAdmin();
    NoProgress progress;
    SampleRequest request;
    request.flows = 2500;
    const Outcome generated = SampleData::generate(request, progress);
    QVERIFY2(generated.ok, qPrintable(generated.text));
}

void ListExportTest::everyPageInTheOrderOfTheDesk()
{
    QFETCH(ListExport::Format, format);
    const QStringList jobs = jobsPageByPage(m_all);
    QVERIFY(jobs.size() >= 2500);
    CountingProgress progress;
    const NoticeLog log;
    const auto receipt = write(m_all, format, &progress);
    QVERIFY2(receipt, qPrintable(receipt.outcome.cause));
    QCOMPARE(receipt.value.rows, jobs.size());
    const ReadTable table = read(format);
    QCOMPARE(table.problem, QString());
    QCOMPARE(firstColumn(table), jobs);
    QVERIFY(progress.isRows);
    QCOMPARE(progress.total, qint64{jobs.size()});
    QCOMPARE(progress.done, qint64{jobs.size()});
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices.first().level, 0);
    QVERIFY(log.notices.first().text.contains(QString::number(jobs.size())));
}

void ListExportTest::onlyWhatTheUserMaySee()
{
    const int user = m_home->actAs(QStringLiteral("lone"), {});
    QCOMPARE(write(m_all, ListExport::Format::Csv).value.rows, 0);
    m_home->database()
        .prepare(QStringLiteral("UPDATE job_flows SET create_user_id = ? WHERE id IN "
                                "(SELECT id FROM job_flows ORDER BY id LIMIT 47)"))
        .bind(0, user)
        .exec();
    QCOMPARE(write(m_all, ListExport::Format::Csv).value.rows, 47);
    QCOMPARE(firstColumn(read(ListExport::Format::Csv)), jobsPageByPage(m_all));
}

void ListExportTest::nobodySignedInSeesNothing()
{
    m_home->signOut();
    const auto receipt = write(m_all, ListExport::Format::Csv);
    QVERIFY(receipt);
    QCOMPARE(receipt.value.rows, 0);
}

void ListExportTest::originalFilesToo()
{
    using File = KODMS::DataLib::Model::Odbpp_OrigFile_View;
    ShownSearch search = flowSearch("OrigName", "");
    search.view = ShownSearch::View::OrigFiles;
    search.conditions.back().sortField = "FlowTable_CreateTime";
    const QVector<OrigFileColumn> columns{
        {QStringLiteral("流水号"), 0, false,
         [](const File &file) { return QString::number(file.jobSerialNumber); }}};
    const auto receipt = ListExport::origFiles(search, columns, path(), ListExport::Format::Csv);
    QVERIFY(receipt);
    QCOMPARE(receipt.value.rows,
             m_home->value(QStringLiteral("SELECT count(*) FROM job_compress")).toInt());
    QCOMPARE(firstColumn(read(ListExport::Format::Csv)).size(), receipt.value.rows);
}

void ListExportTest::anEmptyResultHasItsTitles()
{
    QFETCH(ListExport::Format, format);
    const auto receipt = write(flowSearch("KoJobName", "there is no such job"), format);
    QVERIFY(receipt);
    QCOMPARE(receipt.value.rows, 0);
    QCOMPARE(read(format).rows,
             (QVector<QStringList>{
                 {QStringLiteral("料号名称"), QStringLiteral("备注"), QStringLiteral("板层")}}));
}

void ListExportTest::hostileTextsStayTexts()
{
    QFETCH(ListExport::Format, format);
    const QString job = jobsPageByPage(m_all).first();
    const QStringList texts{
        QStringLiteral("=cmd|' /C calc'!A0"), QStringLiteral("@x,\"y\"\nz"),
        QStringLiteral("\x1b]0;x\x07"),       QStringLiteral("</t><v>1</v>"),
        QStringLiteral("'apostrophe"),        QStringLiteral("\u202ebackwards")};
    for (const QString &text : texts) {
        setTips(job, text);
        QVERIFY(write(flowSearch("KoJobName", job.toStdString()), format));
        const ReadTable table = read(format);
        QCOMPARE(table.problem, QString());
        QCOMPARE(table.rows.size(), 2);
        const QString cell = table.rows.at(1).at(1);
        const bool computes = QStringLiteral("=@").contains(text.at(0));
        QString expected = text;
        expected.replace(QChar(0x1b), QChar(QChar::ReplacementCharacter));
        expected.replace(QChar(0x07), QChar(QChar::ReplacementCharacter));
        if (computes && format == ListExport::Format::Csv)
            expected.prepend(QLatin1Char('\''));
        QCOMPARE(cell, expected);
    }
}

void ListExportTest::longCellsAreCutAndSaid()
{
    const QString job = jobsPageByPage(m_all).first();
    const auto search = flowSearch("KoJobName", job.toStdString());
    setTips(job, QString(40000, QLatin1Char('x')));
    const NoticeLog log;
    auto receipt = write(search, ListExport::Format::Xlsx);
    QVERIFY(receipt);
    QCOMPARE(receipt.value.cutCells, 1);
    QCOMPARE(read(ListExport::Format::Xlsx).rows.at(1).at(1).size(), 32767);
    QCOMPARE(log.notices.size(), 2);
    QCOMPARE(log.notices.last().level, 1);
    receipt = write(search, ListExport::Format::Csv);
    QCOMPARE(receipt.value.cutCells, 0);
    QCOMPARE(read(ListExport::Format::Csv).rows.at(1).at(1).size(), 40000);
}

void ListExportTest::oneStateOfTheRecords()
{
    CountingProgress progress([this] {
        m_home->database().run(QStringLiteral("UPDATE job_flows SET tips = 'changed meanwhile'"));
    });
    QVERIFY(write(m_all, ListExport::Format::Csv, &progress));
    const ReadTable table = read(ListExport::Format::Csv);
    for (const QStringList &row : table.rows)
        QVERIFY(row.at(1) != QStringLiteral("changed meanwhile"));
    QCOMPARE(jobsPageByPage(m_all).size(), table.rows.size() - 1);
}

void ListExportTest::cancelledItLeavesNothing()
{
    QFETCH(ListExport::Format, format);
    CountingProgress progress;
    progress.cancelAt = 600;
    const NoticeLog log;
    const auto receipt = write(m_all, format, &progress);
    QVERIFY(!receipt);
    QVERIFY(receipt.outcome.isCancelled);
    QCOMPARE(progress.done, qint64{600});
    QCOMPARE(lists(), QStringList());
    QCOMPARE(log.notices.size(), 0);
}

void ListExportTest::aFullDiskIsSaidAndLeavesNothing()
{
    QFETCH(ListExport::Format, format);
    const NoticeLog log;
    {
        const SmallFiles full(5000);
        if (!full.isInForce())
            QSKIP("files cannot be kept small here");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("list.export")));
        const auto receipt = write(m_all, format);
        QVERIFY(!receipt);
        QVERIFY(!receipt.outcome.isCancelled);
        QVERIFY(!receipt.text().isEmpty());
    }
    QCOMPARE(lists(), QStringList());
    QCOMPARE(log.notices.size(), 1);
    QCOMPARE(log.notices.first().level, 2);
}

void ListExportTest::aSearchThatIsNotUnderstoodIsRefused()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("list.export")));
    const auto receipt = write(flowSearch("NoSuchField", "x"), ListExport::Format::Csv);
    QVERIFY(!receipt);
    QVERIFY(!receipt.text().isEmpty());
    QCOMPARE(lists(), QStringList());
}

void ListExportTest::withoutServicesItSaysSo()
{
    m_home->stop();
    const auto receipt = write(m_all, ListExport::Format::Csv);
    m_home->start();
    QVERIFY(!receipt);
    QVERIFY(!receipt.text().isEmpty());
}

KODMS_TEST_MAIN(ListExportTest, QCoreApplication)
#include "ListExportTest.moc"
