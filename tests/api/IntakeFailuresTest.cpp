// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Intake.h"

#include "services/records/bll/UserRecords.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/InformationShown.h"
#include "tests/support/NoticeLog.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

#include <functional>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

class MeddlingProgress final : public Progress {
public:
    explicit MeddlingProgress(std::function<void()> meddle) : m_meddle(std::move(meddle)) {}

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        if (auto meddle = std::exchange(m_meddle, {}))
            meddle();
    }

    bool isCancelled() const override { return cancelled; }

    bool cancelled = false;

private:
    std::function<void()> m_meddle;
};

void expectWarning()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^intake.take \\[")));
}

} // namespace

/// Whatever is sent or said: a clear text, and everything as it was.
class IntakeFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_home->actAsAdmin();
        m_good = m_home->path(QStringLiteral("sent/good.zip"));
        QVERIFY(writeFile(m_good, rawZip({{"a", "1"}})));
    }

    void cleanup() { m_home.reset(); }

    void inputs_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("warns");
        const auto row = [](const char *title, const char *command, const char *name,
                            const char *text, bool warns = false) {
            QTest::newRow(title) << QString::fromUtf8(command) << QString::fromUtf8(name)
                                 << QString::fromUtf8(text) << warns;
        };
        row("no path", "true", "", "没有指定");
        row("a missing file", "true", "none.zip", "不存在");
        row("an empty file", ": > e.zip", "e.zip", "空");
        row("text", "echo hello > t.zip", "t.zip", "不是可识别的压缩包");
        row("a pipe", "mkfifo p.zip", "p.zip", "不是文件");
        row("a link to a good file", "ln -s good.zip l.zip", "l.zip", "链接");
        row("a link to a folder", "mkdir d; touch d/x; ln -s d l", "l", "链接");
        row("a dangling link", "ln -s none l.zip", "l.zip", "链接");
        row("an empty folder", "mkdir -p d/deeper", "d", "没有文件", true);
        row("a folder with a link", "mkdir d; touch d/x; ln -s /etc/passwd d/leak", "d", "leak",
            true);
        row("a folder with a pipe", "mkdir d; mkfifo d/pipe", "d", "pipe", true);
        row("a cut archive", "head -c 60 good.zip > c.zip", "c.zip", "损坏", true);
        row("a huge sparse tar", "truncate -s 40G h.tar", "h.tar", "超过");
    }

    void inputs()
    {
        QFETCH(QString, command);
        QFETCH(QString, name);
        QFETCH(QString, text);
        QFETCH(bool, warns);
        if (!runInShell(QFileInfo(m_good).path(), command))
            QSKIP("there is no shell here");
        IntakeRequest request = good();
        request.path = name.isEmpty() ? QString() : QFileInfo(m_good).dir().absoluteFilePath(name);
        refused(request, text, warns);
    }

    void archives_data()
    {
        QTest::addColumn<QByteArray>("archive");
        QTest::addColumn<QString>("text");
        QTest::newRow("without files") << rawZip({}) << QStringLiteral("没有文件");
        QTest::newRow("a wrong sum")
            << rawZip({{"bad", "1", false, false, true}}) << QStringLiteral("bad");
        QTest::newRow("encrypted") << rawZip({{"a", "1", false, true}}) << QStringLiteral("加密");
        QTest::newRow("a way out") << rawTar({{"../evil", "1"}}) << QStringLiteral("../evil");
        QTest::newRow("too large when unpacked")
            << gzipped(rawTar({{"zeros", QByteArray(20 << 20, '\0')}})) << QStringLiteral("zeros");
    }

    void archives()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QString, text);
        IntakeRequest request = good();
        request.path = m_home->path(QStringLiteral("sent/bad"));
        QVERIFY(writeFile(request.path, archive));
        refused(request, text, true);
    }

    void words_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        const auto row = [](const char *title, const char *field, const QString &value) {
            QTest::newRow(title) << QString::fromLatin1(field) << value;
        };
        row("no code", "code", QString());
        row("two letters", "code", QStringLiteral("AB"));
        row("four letters", "code", QStringLiteral("ABCD"));
        row("a path in the code", "code", QStringLiteral("../"));
        row("a line break after the code", "code", QStringLiteral("ABC\n"));
        row("Chinese digits in the code", "code", QStringLiteral("A1二"));
        row("wide letters in the code", "code", QStringLiteral("ＡＢＣ"));
        row("an endless name", "origName", QString(1 << 20, QLatin1Char('x')));
        row("a NUL in the name", "origName", QStringLiteral("a") + QChar(0));
        row("an endless customer name", "customerName", QString(501, QLatin1Char('x')));
        row("an endless description", "description", QString(501, QLatin1Char('x')));
        row("a line break in the customer name", "customerName", QStringLiteral("华虹\n电子"));
        row("an escape in the name", "origName", QStringLiteral("\u001b[2Jx"));
        row("a forced direction in the name", "origName", QStringLiteral("a\u202egpj.exe"));
        row("a tab in the description", "description", QStringLiteral("a\tb"));
        row("a separator of lines in the remark", "tips", QStringLiteral("a\u2028b"));
        row("an endless remark", "tips", QString(10001, QLatin1Char('x')));
    }

    void words()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        IntakeRequest request = good();
        const QHash<QString, QString *> fields{
            {QStringLiteral("code"), &request.customerCode},
            {QStringLiteral("origName"), &request.origName},
            {QStringLiteral("customerName"), &request.customerName},
            {QStringLiteral("description"), &request.description},
            {QStringLiteral("tips"), &request.tips}};
        *fields.value(field) = value;
        refused(request, QString(), false);
    }

    void aWordThatIsRefusedIsNamed()
    {
        IntakeRequest request = good();
        request.description = QStringLiteral("a\nb");
        refused(request, QStringLiteral("文件说明：含有换行"), false);
        request = good();
        request.customerName = QStringLiteral("a\nb");
        refused(request, QStringLiteral("客户名称：含有换行"), false);
    }

    void aFileNameCannotForgeALogLine()
    {
        const InformationShown shownToo;
        IntakeRequest request = good();
        request.path = m_home->path(QStringLiteral("sent/none\nkodms.access: verdict.zip"));
        QTest::ignoreMessage(QtInfoMsg, QRegularExpression(QStringLiteral(
                                            "^intake.take \\[.*none\\?kodms.access[^\n]*$")));
        const NoticeLog log;
        refused(request, QStringLiteral("不存在"), false);
        QCOMPARE(log.notices.size(), 1);
        QVERIFY(!log.notices[0].text.contains(QLatin1Char('\n')));
    }

    void rights_data()
    {
        QTest::addColumn<int>("role");
        for (const Role role : allRoles())
            if (role != Role::Admin && role != Role::OrigFileUpdate)
                QTest::newRow(qPrintable(roleName(role))) << static_cast<int>(role);
    }

    void rights()
    {
        QFETCH(int, role);
        m_home->actAs(QStringLiteral("somebody"), {static_cast<Role>(role)});
        refused(good(), QStringLiteral("权限"), false);
        QCOMPARE(refusals(), 1);
    }

    void updateAuthorityIsEnough()
    {
        m_home->actAs(QStringLiteral("somebody"), {Role::OrigFileUpdate});
        QVERIFY(Intake::take(good()));
    }

    void nobodySignedIn()
    {
        m_home->signOut();
        refused(good(), QStringLiteral("权限"), false);
        QCOMPARE(refusals(), 1);
    }

    void anAccountDisabledMeanwhile()
    {
        const int id = m_home->actAs(QStringLiteral("gone"), {Role::Admin});
        UserRecords(m_home->database()).setDisabled(id, true);
        refused(good(), QStringLiteral("停用"), false);
    }

    void aRoleTakenAwayWhileTheFileIsRead()
    {
        const int id = m_home->actAs(QStringLiteral("clerk"), {Role::OrigFileUpdate});
        MeddlingProgress progress(
            [&] { UserRecords(m_home->database()).removeRole(id, Role::OrigFileUpdate); });
        refused(good(), QStringLiteral("权限"), false, &progress);
    }

    void servicesNotRunning()
    {
        m_home->stop();
        QVERIFY(!Intake::take(good()));
    }

    void cancelled()
    {
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        refused(good(), QStringLiteral("取消"), false, &progress);
    }

    void aFileThatVanishes()
    {
#if defined(Q_OS_WIN)
        QSKIP("a file that is being read stays where it is");
#endif
        MeddlingProgress progress([this] { QVERIFY(QFile::remove(m_good)); });
        refused(good(), QStringLiteral("不存在"), true, &progress);
    }

    void aFileReplacedBetweenReadingAndStoring()
    {
#if defined(Q_OS_WIN)
        QSKIP("a file that is being read stays where it is");
#endif
        MeddlingProgress progress([this] {
            QVERIFY(QFile::remove(m_good));
            QVERIFY(writeFile(m_good, rawZip({{"b", "12"}})));
        });
        refused(good(), QStringLiteral("修改"), true, &progress);
    }

    /// The file is stored before the records are written: it must go again.
    void recordsThatCannotBeWritten()
    {
        PlainConnection(m_home->place().settings())
            .refuse(QStringLiteral("INSERT ON orders"), QStringLiteral("no orders today"));
        refused(good(), QString(), true);
    }

    void noNumberLeft()
    {
        QVERIFY(Intake::take(good()));
        m_home->database().run(QStringLiteral("UPDATE customers SET last_serial = 999999"));
        const auto files = m_home->store().list().value.size();
        const auto refusal = Intake::take(good());
        QVERIFY(refusal.text().contains(QStringLiteral("A1B")));
        QCOMPARE(m_home->store().list().value.size(), files);
    }

private:
    IntakeRequest good() const
    {
        IntakeRequest request;
        request.path = m_good;
        request.customerCode = QStringLiteral("A1B");
        return request;
    }

    void refused(const IntakeRequest &request, const QString &text, bool warns,
                 Progress *progress = nullptr)
    {
        if (warns)
            expectWarning();
        const auto receipt = Intake::take(request, progress);
        QVERIFY(!receipt);
        QVERIFY2(!receipt.text().isEmpty() && receipt.text().contains(text),
                 qPrintable(receipt.text()));
        for (const char *table : {"customers", "jobs", "job_flows", "orig_files", "job_compress",
                                  "orders", "change_log"}) {
            const QString rows =
                QStringLiteral("SELECT count(*) FROM %1 WHERE %2")
                    .arg(QLatin1String(table), QLatin1String(table) == QLatin1String("change_log")
                                                   ? QStringLiteral("kind IN (1, 2, 3)")
                                                   : QStringLiteral("1 = 1"));
            QVERIFY2(m_home->value(rows).toInt() == 0, table);
        }
        QVERIFY(m_home->store().list().value.isEmpty());
        QCOMPARE(m_home->store().leftovers().value, QStringList());
        QCOMPARE(TestInstallation::entries(m_home->staging()), QStringList());
    }

    int refusals()
    {
        return m_home->value(QStringLiteral("SELECT count(*) FROM events WHERE refused = 1"))
            .toInt();
    }

    std::unique_ptr<TestInstallation> m_home;
    QString m_good;
};

KODMS_TEST_MAIN(IntakeFailuresTest, QCoreApplication)
#include "IntakeFailuresTest.moc"
