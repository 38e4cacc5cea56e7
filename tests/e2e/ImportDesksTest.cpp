// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/ImportUser.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QTableWidget>
#include <QTemporaryDir>

using namespace KODMS::Tests;
using KODMS::Fakes::MessageBoxProbe;

/// ODB++ jobs are imported at both desks, by clicks and drops on the real services.
class ImportDesksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void whoPreparedAJobImportsIt();
    void aRobotResultIsImportedAgainAndFinished();

private:
    QString jobFile(const QString &name) const;
    /// The first row of the table, by its job name, of a flow that meets the condition.
    int rowWhere(const DeskUser &user, const QString &condition) const;
    QString flowText(const QString &job, const QString &what) const;
    void checkStored(const QString &job, int kind) const;

    std::unique_ptr<SampleHouse> m_house;
    QTemporaryDir m_dir;
    int m_user = 0;
};

namespace {

const QByteArray Matrix = "STEP {\n COL=1\n NAME=PCB\n}\n"
                          "LAYER {\n ROW=1\n CONTEXT=BOARD\n TYPE=SIGNAL\n NAME=TOP\n}\n"
                          "LAYER {\n ROW=2\n CONTEXT=BOARD\n TYPE=DRILL\n NAME=D1\n}\n"
                          "LAYER {\n ROW=3\n CONTEXT=BOARD\n TYPE=SIGNAL\n NAME=BOT\n}\n";
const QByteArray Features = "$0 r10\nP 1 1 0 P 0 0\nL 1 1 2 2 0 P 0\n";

} // namespace

void ImportDesksTest::initTestCase()
{
    m_house = std::make_unique<SampleHouse>(1000);
    m_user = m_house->signIn(QStringLiteral("prepare"));
}

void ImportDesksTest::cleanupTestCase()
{
    m_house.reset();
}

QString ImportDesksTest::jobFile(const QString &name) const
{
    const QByteArray root = name.toUtf8() + '/';
    const QString path = m_dir.filePath(name + QStringLiteral(".tgz"));
    writeFile(path, gzipped(rawTar({{root + "matrix/matrix", Matrix},
                                    {root + "steps/pcb/layers/top/features", Features},
                                    {root + "steps/pcb/layers/bot/features", Features}})));
    return path;
}

int ImportDesksTest::rowWhere(const DeskUser &user, const QString &condition) const
{
    const QStringList candidates = m_house->records().flows(condition);
    const QStringList shown = user.column(ExportUser::JobName);
    for (int row = 0; row < shown.size(); ++row)
        if (candidates.contains(shown.at(row)))
            return row;
    return -1;
}

QString ImportDesksTest::flowText(const QString &job, const QString &what) const
{
    return m_house->records().text(QStringLiteral("SELECT %1 FROM job_flows f JOIN jobs j "
                                                  "ON j.name = f.job_name WHERE f.job_name = '%2'")
                                       .arg(what, job));
}

/// The flow's file is the imported one.
void ImportDesksTest::checkStored(const QString &job, int kind) const
{
    const QString statement =
        QStringLiteral("SELECT o.kind || ' ' || o.base_name FROM orig_files o JOIN job_flows f ON "
                       "f.last_import_file_id = o.id WHERE f.job_name = '%1'");
    QCOMPARE(m_house->records().text(statement.arg(job)),
             QStringLiteral("%1 %2").arg(kind).arg(flowText(job, QStringLiteral("orig_job_name"))));
    QCOMPARE(flowText(job, QStringLiteral("last_import_user_id")), QString::number(m_user));
    QCOMPARE(flowText(job, QStringLiteral("j.layer_count || ' ' || j.feature_count")),
             QStringLiteral("2 4"));
}

void ImportDesksTest::whoPreparedAJobImportsIt()
{
    const ExportUser user;
    const int row =
        rowWhere(user, QStringLiteral("f.flow_status = 0 AND f.job_name NOT LIKE 'web%'"));
    QVERIFY(row >= 0);
    const QString job = user.column(ExportUser::JobName).at(row);
    const MessageBoxProbe boxes;
    user.clickCell(row, ExportUser::JobName);
    user.click("m_pImputPB");
    const ImportUser window;
    QVERIFY(window.isThere());
    QVERIFY(window.text("importTarget").contains(job));
    window.drop(jobFile(QStringLiteral("prepared")));
    QCOMPARE(window.text("importJobName"), QStringLiteral("prepared"));
    window.import();
    QCOMPARE(flowText(job, QStringLiteral("flow_status || ',' || f.check_flag || ' ' || "
                                          "orig_job_name")),
             QStringLiteral("1,0 prepared"));
    checkStored(job, 1);
    // The desk reloads by itself.
    QTRY_COMPARE(user.column(ExportUser::Status).value(user.rowOf(ExportUser::JobName, job)),
                 QStringLiteral("前处理待审核"));
    QCOMPARE(user.column(2).value(user.rowOf(ExportUser::JobName, job)),
             QStringLiteral("prepared"));
    QCOMPARE(boxes.texts(), QStringList());
    // Another user takes the window away and leaves the desk able to make another.
    m_house->signIn(QStringLiteral("admin"));
    QTRY_VERIFY(window.isDeleted());
    m_house->signIn(QStringLiteral("prepare"));
    user.clickCell(user.rowOf(ExportUser::JobName, job), ExportUser::JobName);
    user.click("m_pImputPB");
    const ImportUser next;
    QVERIFY(next.isThere());
    m_house->signIn(QStringLiteral("admin"));
    QTRY_VERIFY(next.isDeleted());
}

void ImportDesksTest::aRobotResultIsImportedAgainAndFinished()
{
    m_house->signIn(QStringLiteral("prepare"));
    const DownloadUser user;
    const int row = rowWhere(user, QStringLiteral("f.flow_status = 2 AND f.check_flag = 2"));
    QVERIFY(row >= 0);
    const QString job = user.column(DownloadUser::HistoryJobName).at(row);
    const MessageBoxProbe boxes;
    user.clickCell(row, DownloadUser::HistoryJobName);
    user.click("m_pRobotImport");
    const ImportUser window;
    QVERIFY(window.isThere());
    QVERIFY(window.text("importTarget").contains(job));
    window.drop(jobFile(QStringLiteral("again")));
    QCOMPARE(flowText(job, QStringLiteral("flow_status || ',' || f.check_flag")),
             QStringLiteral("2,2"));
    window.import();
    checkStored(job, 2);
    QCOMPARE(flowText(job, QStringLiteral("flow_status || ',' || f.check_flag || ' ' || "
                                          "orig_job_name")),
             QStringLiteral("3,2 again"));
    QCOMPARE(boxes.texts(), QStringList());
    QTRY_COMPARE(user.column(6).value(user.rowOf(DownloadUser::HistoryJobName, job)),
                 QStringLiteral("流程完成"));
}

KODMS_TEST_MAIN(ImportDesksTest, QApplication)
#include "ImportDesksTest.moc"
