// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/StoreCheck.h"

#include "services/api/Intake.h"
#include "services/api/SignIn.h"
#include "services/filestore/FolderStore.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/common/support/TestInstallation.h"
#include "tests/support/HasFile.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

class StoreCheckTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_home = std::make_unique<TestInstallation>();
        m_home->actAsAdmin();
        m_source = m_home->path(QStringLiteral("sent/a.zip"));
        QVERIFY(writeFile(m_source, rawZip({{"a", "1"}})));
    }

    void cleanup() { m_home.reset(); }

    void anEmptyInstallationIsClean()
    {
        const CheckReport report = check();
        QVERIFY(report.isClean());
        QCOMPARE(report.findings.size(), 0);
        QCOMPARE(report.records, qint64{0});
    }

    void whatWasTakenInIsClean()
    {
        take();
        take();
        const CheckReport report = check();
        QVERIFY(report.isClean());
        QCOMPARE(kinds(report), QStringList());
        QCOMPARE(report.records, qint64{2});
        QCOMPARE(report.files, qint64{2});
        QCOMPARE(report.filesRead, qint64{2});
        QCOMPARE(report.bytes, 2 * QFileInfo(m_source).size());
    }

    void aMissingFileIsAProblemThatStays()
    {
        const QString name = take();
        QVERIFY(m_home->store().remove(name));
        for (const bool repair : {false, true}) {
            const CheckReport report = check(repair);
            QVERIFY(!report.isClean());
            QCOMPARE(kinds(report), QStringList(QStringLiteral("missing-file ") + name));
            QVERIFY(report.findings.first().text.contains(name));
        }
    }

    void aDamagedFileIsAProblemThatStays()
    {
        const QString name = take();
        damageBody();
        for (const bool repair : {false, true}) {
            const CheckReport report = check(repair);
            QVERIFY(!report.isClean());
            QCOMPARE(kinds(report), QStringList(QStringLiteral("damaged-file ") + name));
        }
        CheckOptions quick;
        quick.readContents = false;
        QVERIFY(StoreCheck::check(quick).value.isClean());
    }

    void aStoredFileWithoutBodyIsMissing()
    {
        take();
        QVERIFY(QFile::remove(bodyPath()));
        QVERIFY(!check().isClean());
    }

    /// What a program leaves that dies between put and record.
    void anUnrecordedFileOfADeadProgramGoesWithARepair()
    {
        putByADeadProgram(QStringLiteral("orphan.zip"));
        QCOMPARE(kinds(check()), QStringList(QStringLiteral("unrecorded-file orphan.zip")));
        QVERIFY(check().isClean());
        const CheckReport repaired = check(true);
        QVERIFY(repaired.findings.first().isRepaired);
        QVERIFY(!hasFile(m_home->store(), QStringLiteral("orphan.zip")));
        QCOMPARE(kinds(check()), QStringList());
        QCOMPARE(m_home
                     ->value(QStringLiteral("SELECT record_name FROM events "
                                            "WHERE action = 'store.repair'"))
                     .toString(),
                 QStringLiteral("orphan.zip"));
    }

    void anUnrecordedFileOfALivingProgramStays()
    {
        QVERIFY(m_home->store().put(m_source, QStringLiteral("coming.zip"), m_progress));
        const CheckReport report = check(true);
        QCOMPARE(kinds(report), QStringList(QStringLiteral("unrecorded-file coming.zip")));
        QVERIFY(report.isClean());
        QVERIFY(hasFile(m_home->store(), QStringLiteral("coming.zip")));
    }

    void marks()
    {
        const QString kept = take();
        putByADeadProgram(QStringLiteral("going.zip"));
        mark(kept, false);
        mark(QStringLiteral("going.zip"), true);
        const CheckReport found = check();
        QVERIFY(found.isClean());
        QCOMPARE(found.findings.size(), 2);
        const CheckReport repaired = check(true);
        QVERIFY(repaired.findings.at(0).isRepaired && repaired.findings.at(1).isRepaired);
        QVERIFY(hasFile(m_home->store(), kept));
        QVERIFY(!hasFile(m_home->store(), QStringLiteral("going.zip")));
        QCOMPARE(kinds(check()), QStringList());
    }

    /// As when the disk with the files is not mounted: nothing can be known of a file then.
    void aMarkOutlivesARepairWithoutTheStore()
    {
        putByADeadProgram(QStringLiteral("going.zip"));
        mark(QStringLiteral("going.zip"), true);
        const QString away = m_home->path(QStringLiteral("away"));
        QVERIFY(QDir().rename(storeFolder(), away));
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("check --repair .going.zip")));
        QVERIFY(!check(true).findings.first().isRepaired);
        QVERIFY(QDir().rename(away, storeFolder()));
        QVERIFY(check(true).findings.first().isRepaired);
        QVERIFY(!hasFile(m_home->store(), QStringLiteral("going.zip")));
        QCOMPARE(kinds(check()), QStringList());
    }

    /// Nor is a file missing for it.
    void aStoreThatIsAwayEndsTheCheck()
    {
        const QString name = take();
        const QString away = m_home->path(QStringLiteral("away"));
        QVERIFY(QDir().rename(storeFolder(), away));
        for (const bool repair : {false, true}) {
            CheckOptions options;
            options.repair = repair;
            const auto checked = StoreCheck::check(options);
            QVERIFY(!checked);
            QVERIFY2(checked.text().contains(name), qPrintable(checked.text()));
        }
        QVERIFY(!QFileInfo::exists(storeFolder()));
        QVERIFY(QDir().rename(away, storeFolder()));
        QCOMPARE(kinds(check()), QStringList());
    }

    /// A body that could not be removed may have been recorded anew before the repair comes.
    void aFileThatIsRecordedAgainOutlivesItsMark()
    {
        const QString name = take();
        mark(name, true);
        const CheckReport repaired = check(true);
        QVERIFY(repaired.isClean());
        QVERIFY(repaired.findings.first().isRepaired);
        QVERIFY(hasFile(m_home->store(), name));
        QCOMPARE(kinds(check()), QStringList());
    }

    void sampleRecordsHaveNoFiles()
    {
        const QString name = take();
        QVERIFY(m_home->store().remove(name));
        m_home->database().run(QStringLiteral("UPDATE orig_files SET has_body = 0"));
        const CheckReport report = check();
        QVERIFY(report.isClean());
        QCOMPARE(report.records, qint64{0});
        QCOMPARE(report.sampleRecords, qint64{1});
    }

    void foreignFilesAreNamedAndLeft()
    {
        take();
        const QString foreign = storeFolder() + QStringLiteral("/readme.txt");
        QVERIFY(writeFile(foreign, "hello"));
        const CheckReport report = check(true);
        QVERIFY(report.isClean());
        QCOMPARE(kinds(report), QStringList(QStringLiteral("leftover readme.txt")));
        QVERIFY(QFile::exists(foreign));
    }

    void remainsAreSwept()
    {
        take();
        const QString remain = storeFolder() + QStringLiteral("/incoming/dead/slot/body");
        QVERIFY(writeFile(remain, "half"));
        QCOMPARE(kinds(check()), QStringList(QStringLiteral("leftover incoming/dead")));
        QVERIFY(check(true).findings.first().isRepaired);
        QVERIFY(!QFile::exists(remain));
    }

    void aBrokenReferenceIsFound()
    {
        take();
        const PlainConnection others(m_home->place().settings());
        others.ignoreReferences();
        others.run(QStringLiteral("DELETE FROM customers"));
        const CheckReport report = check();
        QVERIFY(!report.isClean());
        QVERIFY(report.findings.first().kind == QLatin1String("database"));
    }

    void onlyAdministratorsAndTheOperator()
    {
        for (const Role role : allRoles()) {
            m_home->actAs(roleName(role), {role});
            QCOMPARE(bool(StoreCheck::check({})), role == Role::Admin);
        }
        m_home->signOut();
        QVERIFY(!StoreCheck::check({}));
        SignIn::actAsOperator();
        QVERIFY(StoreCheck::check({}));
        m_home->stop();
        QVERIFY(!StoreCheck::check({}));
    }

private:
    static CheckReport check(bool repair = false)
    {
        CheckOptions options;
        options.repair = repair;
        auto report = StoreCheck::check(options);
        if (!report)
            qFatal("%s", qPrintable(report.text()));
        return report.value;
    }

    static QStringList kinds(const CheckReport &report)
    {
        QStringList found;
        for (const CheckFinding &finding : report.findings)
            found << finding.kind + QLatin1Char(' ') + finding.name;
        return found;
    }

    QString take()
    {
        IntakeRequest request;
        request.path = m_source;
        request.customerCode = QStringLiteral("A1B");
        return Intake::take(request).value.storedName;
    }

    void putByADeadProgram(const QString &name)
    {
        const auto store = FileStore::create(m_home->runtime().configuration().fileStore);
        QVERIFY(store.value->put(m_source, name, m_progress));
    }

    void mark(const QString &name, bool isFinal)
    {
        m_home->database()
            .query(isFinal ? "mark_final_delete" : "mark_delete")
            .bind(":name", name)
            .bind(":user", QVariant(QVariant::Int))
            .bind(":time", QStringLiteral("2026-01-01T00:00:00.000Z"))
            .exec();
    }

    QString storeFolder() const
    {
        const FileStoreSettings settings = m_home->runtime().configuration().fileStore;
        return settings.root + QLatin1Char('/') + settings.database + QLatin1Char('/') +
               settings.bucket;
    }

    QString bodyPath() const
    {
        QDirIterator it(storeFolder() + QStringLiteral("/files"), QDir::Files,
                        QDirIterator::Subdirectories);
        return it.next();
    }

    void damageBody()
    {
        QFile body(bodyPath());
        QVERIFY(body.setPermissions(QFile::ReadOwner | QFile::WriteOwner));
        QVERIFY(body.open(QIODevice::ReadWrite));
        QVERIFY(body.seek(10));
        const char byte = body.peek(1).at(0);
        QVERIFY(body.putChar(static_cast<char>(byte ^ 0x01)));
    }

    std::unique_ptr<TestInstallation> m_home;
    QString m_source;
    NoProgress m_progress;
};

KODMS_TEST_MAIN(StoreCheckTest, QCoreApplication)
#include "StoreCheckTest.moc"
