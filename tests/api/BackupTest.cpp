// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Backup.h"

#include "services/api/Intake.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"
#include "services/api/StoreCheck.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QProcess>
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

void expectWarning(const char *action)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^%1 \\[").arg(
                                           QString::fromLatin1(action))));
}

} // namespace

class BackupTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_home->actAsAdmin();
        for (int i = 0; i < 3; ++i)
            take(QByteArray::number(i));
        m_backup = m_home->path(QStringLiteral("out/backup.tar"));
        QVERIFY(QDir().mkpath(m_home->path(QStringLiteral("out"))));
        m_newIni = m_home->path(QStringLiteral("new/kodms.ini"));
    }

    void cleanup() { m_home.reset(); }

    void whatIsRestoredIsTheSame()
    {
        const QString before = dump();
        const auto files = m_home->store().list().value;
        const auto summary = Backup::backup(m_backup);
        QVERIFY2(summary, qPrintable(summary.outcome.cause));
        QCOMPARE(summary.value.flows, qint64{3});
        QCOMPARE(summary.value.files, qint64{3});
        m_home->stop();
        const auto restored = Backup::restore(m_newIni, m_backup);
        QVERIFY2(restored, qPrintable(restored.outcome.cause));
        QCOMPARE(restored.value.recordsSha256, summary.value.recordsSha256);
        QVERIFY(ServiceRuntime::instance().start(m_newIni));
        QCOMPARE(dump(), before);
        const auto again = m_home->store().list().value;
        QCOMPARE(again.size(), files.size());
        for (int i = 0; i < files.size(); ++i) {
            QCOMPARE(again.at(i).name, files.at(i).name);
            QCOMPARE(again.at(i).sha256, files.at(i).sha256);
        }
        SignIn::actAsOperator();
        const auto checked = StoreCheck::check({});
        QVERIFY(checked && checked.value.isClean());
        QCOMPARE(checked.value.findings.size(), 0);
    }

    void anyTarCanReadIt()
    {
        QVERIFY(Backup::backup(m_backup));
        QProcess tar;
        tar.start(QStringLiteral("tar"), {QStringLiteral("-tf"), m_backup});
        if (!tar.waitForStarted())
            QSKIP("there is no tar");
        QVERIFY(tar.waitForFinished());
        QCOMPARE(tar.exitCode(), 0);
        const QStringList entries =
            QString::fromUtf8(tar.readAllStandardOutput()).split(QLatin1Char('\n'));
        QCOMPARE(entries.value(0), QStringLiteral("kodms-backup.txt"));
        QCOMPARE(entries.value(1), QStringLiteral("records.db"));
        QCOMPARE(entries.size(), 6);
    }

    void nothingElseIsLeft()
    {
        const QString folder = QFileInfo(m_home->runtime().configuration().database.path).path();
        const QStringList before = TestInstallation::entries(folder);
        QVERIFY(Backup::backup(m_backup));
        QCOMPARE(TestInstallation::entries(folder), before);
        QCOMPARE(TestInstallation::entries(m_home->path(QStringLiteral("out"))),
                 QStringList(QStringLiteral("backup.tar")));
        QCOMPARE(m_home->store().leftovers().value, QStringList());
    }

    void anExistingFileIsNotOverwritten()
    {
        QVERIFY(writeFile(m_backup, "mine"));
        QVERIFY(Backup::backup(m_backup).text().contains(m_backup));
        QCOMPARE(treeOf(m_home->path(QStringLiteral("out"))).value(QStringLiteral("backup.tar")),
                 QByteArray("mine"));
    }

    void aFolderThatIsNotThere()
    {
        expectWarning("backup");
        QVERIFY(!Backup::backup(m_home->path(QStringLiteral("no/backup.tar"))));
    }

    void aStoreWithAMissingFileIsNotBackedUp()
    {
        const QString name = m_home->store().list().value.first().name;
        QVERIFY(m_home->store().remove(name));
        expectWarning("backup");
        const auto summary = Backup::backup(m_backup);
        QVERIFY(summary.text().contains(name));
        QCOMPARE(TestInstallation::entries(m_home->path(QStringLiteral("out"))), QStringList());
    }

    void filesDeletedMeanwhileAreInTheBackup()
    {
        MeddlingProgress progress([this] {
            for (const StoredFileInfo &file : m_home->store().list().value)
                QVERIFY(m_home->store().remove(file.name));
        });
        QVERIFY(Backup::backup(m_backup, &progress));
        QCOMPARE(m_home->store().list().value.size(), 0);
        QCOMPARE(m_home->store().leftovers().value, QStringList());
        QCOMPARE(Backup::verify(m_backup).value.files, qint64{3});
    }

    void cancelledLeavesNothing()
    {
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!Backup::backup(m_backup, &progress));
        QCOMPARE(TestInstallation::entries(m_home->path(QStringLiteral("out"))), QStringList());
    }

    void onlyAdministratorsAndTheOperator()
    {
        for (const Role role : allRoles()) {
            m_home->actAs(roleName(role), {role});
            const QString file = m_home->path(QStringLiteral("out/") + roleName(role));
            QCOMPARE(bool(Backup::backup(file)), role == Role::Admin);
            QCOMPARE(QFile::exists(file), role == Role::Admin);
        }
        m_home->signOut();
        QVERIFY(!Backup::backup(m_backup));
        SignIn::actAsOperator();
        QVERIFY(Backup::backup(m_backup));
    }

    /// Wherever a bit flips, and wherever it is cut, it is noticed; nothing is restored.
    void damage_data()
    {
        QTest::addColumn<double>("place");
        QTest::addColumn<bool>("cut");
        for (int percent = 1; percent < 100; percent += 14) {
            QTest::addRow("a flipped bit at %d %%", percent) << percent / 100.0 << false;
            QTest::addRow("cut at %d %%", percent) << percent / 100.0 << true;
        }
    }

    void damage()
    {
        QFETCH(double, place);
        QFETCH(bool, cut);
        QVERIFY(Backup::backup(m_backup));
        m_home->stop();
        const qint64 at = usedPlace(place);
        QFile file(m_backup);
        QVERIFY(file.open(QIODevice::ReadWrite));
        if (cut) {
            QVERIFY(file.resize(at));
        } else {
            QVERIFY(file.seek(at));
            const char byte = file.peek(1).at(0);
            QVERIFY(file.putChar(static_cast<char>(byte ^ 0x01)));
        }
        file.close();
        expectWarning("verify");
        QVERIFY(!Backup::verify(m_backup));
        refusedAsEmpty();
    }

    void notABackup_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("hello");
        QTest::newRow("some tar") << rawTar({{"a", "1"}});
        QTest::newRow("a zip") << rawZip({{"a", "1"}});
        QTest::newRow("an empty list") << rawTar({{"kodms-backup.txt", ""}});
        QTest::newRow("another version")
            << rawTar({{"kodms-backup.txt", "kodms-backup 2\nsum x\n"}});
    }

    void notABackup()
    {
        QFETCH(QByteArray, content);
        QVERIFY(writeFile(m_backup, content));
        m_home->stop();
        refusedAsEmpty();
    }

    void anInstallationIsNotOverwritten()
    {
        QVERIFY(Backup::backup(m_backup));
        QVERIFY(!Backup::restore(m_home->iniPath(), m_backup));
        const QString before = dump();
        m_home->stop();
        expectWarning("restore");
        const auto restored = Backup::restore(m_home->iniPath(), m_backup);
        QVERIFY(!restored);
        QVERIFY(!restored.text().isEmpty());
        m_home->start();
        QCOMPARE(dump(), before);
        QCOMPARE(m_home->store().list().value.size(), 3);
    }

    void aStoreWithOtherFilesIsNotTouched()
    {
        QVERIFY(Backup::backup(m_backup));
        m_home->stop();
        const auto configuration = Configuration::defaultsFor(m_newIni);
        {
            const auto store = FileStore::create(configuration.fileStore);
            QVERIFY(store.value->put(m_backup, QStringLiteral("other"), m_progress));
        }
        expectWarning("restore");
        QVERIFY(!Backup::restore(m_newIni, m_backup));
        QVERIFY(!QFile::exists(configuration.database.path));
        QCOMPARE(FileStore::create(configuration.fileStore).value->list().value.size(), 1);
    }

    /// What a killed restore leaves does not stand in the way of the next one.
    void anInterruptedRestoreCanBeRepeated()
    {
        QVERIFY(Backup::backup(m_backup));
        const StoredFileInfo first = m_home->store().list().value.first();
        const QString got = m_home->path(QStringLiteral("got"));
        QVERIFY(m_home->store().get(first.name, got, m_progress));
        m_home->stop();
        const auto configuration = Configuration::defaultsFor(m_newIni);
        {
            const auto store = FileStore::create(configuration.fileStore);
            QVERIFY(store.value->put(got, first.name, m_progress));
        }
        QVERIFY(writeFile(configuration.database.path + QStringLiteral(".restoring"), "half"));
        QVERIFY(Backup::restore(m_newIni, m_backup));
        QVERIFY(ServiceRuntime::instance().start(m_newIni));
        SignIn::actAsOperator();
        QVERIFY(StoreCheck::check({}).value.isClean());
    }

    void aRestoreThatIsCancelled()
    {
        QVERIFY(Backup::backup(m_backup));
        m_home->stop();
        MeddlingProgress progress([&progress] { progress.cancelled = true; });
        QVERIFY(!Backup::restore(m_newIni, m_backup, &progress));
        emptyAsBefore();
    }

private:
    void take(const QByteArray &content)
    {
        IntakeRequest request;
        request.path = m_home->path(QStringLiteral("sent/a.zip"));
        QVERIFY(writeFile(request.path, rawZip({{"a", QByteArray(20000, 'x') + content}})));
        request.customerCode = QStringLiteral("A1B");
        QVERIFY(Intake::take(request));
    }

    /// A place in the part of the file that is not padding at its end.
    qint64 usedPlace(double place) const
    {
        return static_cast<qint64>(place * double(QFileInfo(m_backup).size() - 10240));
    }

    void refusedAsEmpty()
    {
        expectWarning("restore");
        const auto restored = Backup::restore(m_newIni, m_backup);
        QVERIFY(!restored);
        QVERIFY(!restored.text().isEmpty());
        emptyAsBefore();
    }

    void emptyAsBefore()
    {
        const auto configuration = Configuration::defaultsFor(m_newIni);
        QVERIFY(!QFile::exists(m_newIni));
        QVERIFY(!QFile::exists(configuration.database.path));
        QVERIFY(!QFile::exists(configuration.database.path + QStringLiteral(".restoring")));
        QCOMPARE(FileStore::create(configuration.fileStore).value->list().value.size(), 0);
        QCOMPARE(TestInstallation::entries(configuration.paths.staging), QStringList());
    }

    /// Every row of every table, as text.
    QString dump()
    {
        QString all;
        for (const char *table : {"customers", "users", "user_roles", "jobs", "job_flows",
                                  "job_compress", "orig_files", "orders", "events", "change_log"}) {
            SqlQuery columns = m_home->database().prepare(
                QStringLiteral("SELECT group_concat('coalesce(' || name || ', ''-'')', "
                               "' || ''|'' || ') AS list FROM pragma_table_info('%1')")
                    .arg(QLatin1String(table)));
            columns.exec().next();
            SqlQuery rows = m_home->database().prepare(
                QStringLiteral("SELECT %1 AS row_text FROM %2 ORDER BY 1")
                    .arg(columns.text("list"), QLatin1String(table)));
            rows.exec();
            while (rows.next())
                all += QLatin1String(table) + QLatin1Char(':') + rows.text("row_text") +
                       QLatin1Char('\n');
        }
        return all;
    }

    std::unique_ptr<TestInstallation> m_home;
    QString m_backup;
    QString m_newIni;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(BackupTest, QCoreApplication)
#include "BackupTest.moc"
