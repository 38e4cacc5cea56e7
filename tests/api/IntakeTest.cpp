// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Intake.h"

#include "foundation/bll/Odbpp_Flow_ViewBll.h"
#include "foundation/bll/Odbpp_OrigFile_ViewBll.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "services/archive/Unpacker.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/TestMain.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;
using namespace KODMS::DataLib;

class IntakeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_admin = m_home->actAsAdmin();
    }

    void cleanup() { m_home.reset(); }

    void types_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("flag");
        const QByteArray zip = rawZip({{"a", "1"}});
        const QByteArray tar = rawTar({{"a", "1"}});
        const auto row = [](const char *title, const char *file, const QByteArray &content,
                            const char *type, int status = 0, int flag = 0) {
            QTest::newRow(title) << QString::fromUtf8(file) << content << QString::fromLatin1(type)
                                 << status << flag;
        };
        row("zip", "board.zip", zip, "zip");
        row("packed tar", "board.tgz", gzipped(tar), "tgz");
        row("tar", "board.tar", tar, "tar");
        row("7z", "board.7z", sevenZip({{QStringLiteral("a"), "1"}}), "7z");
        row("rar", "board.rar", rawRar5({{"a", "1"}}), "rar");
        row("kos, ready for the robot", "board.kos", zip, "kos", 1, 2);
        row("a wrong suffix", "board.rar", zip, "zip");
        row("a Chinese name", "控制板 A.zip", zip, "zip");
    }

    void types()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(QString, type);
        QFETCH(int, status);
        QFETCH(int, flag);
        const IntakeReceipt receipt = taken(written(file, content), "A1B");
        QVERIFY(receipt.storedName.endsWith(QLatin1Char('.') + type));
        QCOMPARE(stored(receipt), content);
        const Model::Odbpp_Flow_View flow = flowRow();
        QCOMPARE(flow.flowStatus, status);
        QCOMPARE(flow.checkFlag, flag);
        QCOMPARE(QString::fromStdString(flow.orderSuffix), type);
        QCOMPARE(QString::fromStdString(flow.origFileSuffix), type);
        QCOMPARE(QString::fromStdString(flow.uuid), receipt.storedName);
        const Model::Odbpp_OrigFile_View row = origFileRow();
        QCOMPARE(QString::fromStdString(row.origName), QFileInfo(file).completeBaseName());
        QCOMPARE(QString::fromStdString(row.fileType), type);
        QCOMPARE(QString::fromStdString(row.uuid), receipt.storedName);
    }

    void anArchivesNameHasNoSuffix_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("name");
        QTest::newRow("one suffix") << "board.v2.tgz"
                                    << "board.v2";
        QTest::newRow("two suffixes") << "board.v2.TAR.gz"
                                      << "board.v2";
        QTest::newRow("nothing but suffixes") << ".tar.gz"
                                              << ".tar.gz";
    }

    void anArchivesNameHasNoSuffix()
    {
        QFETCH(QString, file);
        taken(written(file, gzipped(rawTar({{"a", "1"}}))), "A1B");
        QTEST(QString::fromStdString(origFileRow().origName), "name");
    }

    void aFolder()
    {
        QVERIFY(writeFile(m_home->path(QStringLiteral("sent/板.v2/matrix/matrix")), "STEP"));
        const IntakeReceipt receipt = taken(m_home->path(QStringLiteral("sent/板.v2")), "A1B");
        QVERIFY(receipt.storedName.endsWith(QStringLiteral(".zip")));
        const QString zip = m_home->path(QStringLiteral("got.zip"));
        QVERIFY(m_home->store().get(receipt.storedName, zip, m_progress));
        QCOMPARE(unpackArchive(zip, m_home->path(QStringLiteral("out")), {}, m_progress).value,
                 qint64{1});
        QCOMPARE(QString::fromStdString(flowRow().origFileSuffix), QString());
        QCOMPARE(QString::fromStdString(origFileRow().origName), QStringLiteral("板.v2"));
        QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
    }

    void jobsAreNumberedPerCustomer()
    {
        const QString file = written(QStringLiteral("a.zip"), rawZip({{"a", "1"}}));
        QCOMPARE(taken(file, "A1B").jobName, QStringLiteral("A1B000001"));
        QCOMPARE(taken(file, "web").jobName, QStringLiteral("web000001"));
        QCOMPARE(taken(file, "a1b").jobName, QStringLiteral("A1B000002"));
        QCOMPARE(taken(file, "WEB").jobName, QStringLiteral("web000002"));
        QCOMPARE(count(QStringLiteral("customers")), 2);
        m_home->database().run(QStringLiteral("UPDATE customers SET last_serial = 23455"));
        QCOMPARE(taken(file, "A1B").jobName, QStringLiteral("A1B023456"));
    }

    void whatWasSaidIsBooked()
    {
        IntakeRequest request;
        request.path = written(QStringLiteral("a.zip"), rawZip({{"a", "1"}}));
        request.customerCode = QStringLiteral("web");
        request.customerName = QStringLiteral("网络客户");
        request.origName = QStringLiteral("主板 '修订'");
        request.description = QStringLiteral("四层板");
        request.tips = QStringLiteral("加急");
        request.paid = true;
        QVERIFY(Intake::take(request));
        const Model::Odbpp_OrigFile_View row = origFileRow();
        QCOMPARE(QString::fromStdString(row.origName), request.origName);
        QCOMPARE(QString::fromStdString(row.koName), request.customerName);
        QCOMPARE(QString::fromStdString(row.koCode), request.customerCode);
        QCOMPARE(QString::fromStdString(row.fileDescription), request.description);
        QCOMPARE(QString::fromStdString(row.fileTips), request.tips);
        QCOMPARE(row.jobSerialNumber, 1);
        QCOMPARE(m_home->value(QStringLiteral("SELECT payment FROM orders")).toInt(), 1);
        QCOMPARE(flowRow().webFlag, 1);
    }

    void anOrderIsUnpaidUntilSomebodySaysSo()
    {
        taken(written(QStringLiteral("a.zip"), rawZip({{"a", "1"}})), "web");
        QCOMPARE(m_home->value(QStringLiteral("SELECT payment FROM orders")).toInt(), 0);
    }

    void itIsAudited()
    {
        const IntakeReceipt receipt =
            taken(written(QStringLiteral("a.zip"), rawZip({{"a", "1"}})), "A1B");
        const QString event = QStringLiteral("SELECT user_id || ' ' || record_kind || ' ' || "
                                             "record_name || ' ' || after_value FROM events "
                                             "WHERE action = 'intake.take' AND refused = 0");
        QCOMPARE(
            m_home->value(event).toString(),
            QStringLiteral("%1 flow %2 %3").arg(m_admin).arg(receipt.jobName, receipt.storedName));
    }

    void theOperatorMayToo()
    {
        SignIn::actAsOperator();
        taken(written(QStringLiteral("a.zip"), rawZip({{"a", "1"}})), "A1B");
        QVERIFY(m_home->value(QStringLiteral("SELECT create_user_id FROM job_flows")).isNull());
    }

    void theDesksAreToldToRefresh()
    {
        QSignalSpy jobs(KODMS::UI::DMS_UICommon::interface(),
                        &KODMS::UI::DMS_UICommon::refreshExportJobTable);
        taken(written(QStringLiteral("a.zip"), rawZip({{"a", "1"}})), "A1B");
        QTRY_COMPARE(jobs.count(), 1);
        QVERIFY(!Intake::take({}));
        QTest::qWait(20);
        QCOMPARE(jobs.count(), 1);
    }

    void theSourceStaysAsItWas()
    {
        const QByteArray content = rawZip({{"a", "1"}});
        const QString file = written(QStringLiteral("a.zip"), content);
        taken(file, "A1B");
        QFile source(file);
        QVERIFY(source.open(QIODevice::ReadOnly));
        QCOMPARE(source.readAll(), content);
    }

private:
    QString written(const QString &name, const QByteArray &content)
    {
        const QString path = m_home->path(QStringLiteral("sent/") + name);
        if (!writeFile(path, content))
            qFatal("cannot write");
        return path;
    }

    static IntakeReceipt taken(const QString &path, const char *code)
    {
        IntakeRequest request;
        request.path = path;
        request.customerCode = QString::fromLatin1(code);
        const auto receipt = Intake::take(request);
        if (!receipt)
            qFatal("%s", qPrintable(receipt.text()));
        return receipt.value;
    }

    QByteArray stored(const IntakeReceipt &receipt)
    {
        const QString got = m_home->path(QStringLiteral("got"));
        QFile file(got);
        return m_home->store().get(receipt.storedName, got, m_progress) &&
                       file.open(QIODevice::ReadOnly)
                   ? file.readAll()
                   : QByteArray("not got");
    }

    int count(const QString &table)
    {
        return m_home->value(QStringLiteral("SELECT count(*) FROM ") + table).toInt();
    }

    /// The one row of the desk.
    static Model::Odbpp_Flow_View flowRow()
    {
        std::vector<Model::DB_Search> all;
        std::vector<Model::Odbpp_Flow_View> rows;
        int total = 0;
        BLL::Odbpp_Flow_ViewBll().selectAndCountBySearchModel(all, all, rows, total);
        return rows.size() == 1 ? rows.front() : Model::Odbpp_Flow_View();
    }

    static Model::Odbpp_OrigFile_View origFileRow()
    {
        std::vector<Model::DB_Search> all;
        std::vector<Model::Odbpp_OrigFile_View> rows;
        int total = 0;
        BLL::Odbpp_OrigFile_ViewBll().selectAndCountBySearchModel(all, all, rows, total);
        return rows.size() == 1 ? rows.front() : Model::Odbpp_OrigFile_View();
    }

    std::unique_ptr<TestInstallation> m_home;
    int m_admin = 0;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(IntakeTest, QCoreApplication)
#include "IntakeTest.moc"
