// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/InstallationCopy.h"
#include "services/disk/FsPath.h"
#include "services/filestore/FileStore.h"
#include "services/records/Database.h"
#include "services/records/SchemaMigrator.h"
#include "tests/api/support/CopyHouse.h"
#include "tests/support/TestMain.h"
#include "tests/support/UnixTricks.h"
#include "tests/support/WithoutPrivilege.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

namespace {

/// Does something when so much has been done.
class Watcher final : public Progress {
public:
    void setUnit(Unit unit) override { inRows = unit == Unit::Rows; }

    void setTotal(qint64) override {}

    void advance(qint64) override
    {
        if (inRows == atRows && kills)
            killThisProcess();
        isStopped = isStopped || (inRows == atRows && cancels);
    }

    bool isCancelled() const override { return isStopped; }

    bool atRows = false;
    bool cancels = false;
    bool kills = false;
    bool inRows = false;
    bool isStopped = false;
};

/// In a process of its own, which ends in the middle.
int dieWhileCopying(const QStringList &arguments)
{
    Watcher watcher;
    watcher.kills = true;
    watcher.atRows = arguments[4] == QLatin1String("rows");
    const auto copied = InstallationCopy::copy(arguments[2], arguments[3], watcher);
    return copied ? 0 : 1;
}

} // namespace

/// Copies that do not come to their end, or must not begin.
class InstallationCopyFailuresTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void whatIsNoFreshTargetIsRefused_data();
    void whatIsNoFreshTargetIsRefused();
    void twoNamesOfOneStoreAreRefused_data();
    void twoNamesOfOneStoreAreRefused();
    void twoNamesOfOneDatabaseAreRefused_data();
    void twoNamesOfOneDatabaseAreRefused();
    void aProbeOfAKilledCopyIsClearedAway();
    void anotherSchemaIsRefused_data();
    void anotherSchemaIsRefused();
    void aDamagedFileIsNamed_data();
    void aDamagedFileIsNamed();
    void aMissingFileIsNamed();
    void aTargetThatCannotBeWrittenGetsNoDatabase_data();
    void aTargetThatCannotBeWrittenGetsNoDatabase();
    void aStoreThatIsAwayIsNotTakenForMissingFiles();
    void aCancelledCopyIsRepeated_data();
    void aCancelledCopyIsRepeated();
    void aKilledCopyIsRepeated_data();
    void aKilledCopyIsRepeated();

private:
    void expectUnfinished() const;
    /// Into the target's store.
    void put(const QString &path, const QString &name) const;
    /// An embedded one that was just set up.
    QString emptyInstallation() const;

    CopyHouse m_house;
};

void InstallationCopyFailuresTest::initTestCase()
{
    const QString problem = m_house.make();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void InstallationCopyFailuresTest::init()
{
    m_house.renewTarget();
}

void InstallationCopyFailuresTest::whatIsNoFreshTargetIsRefused_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QString>("says");
    QTest::newRow("the source itself") << "same"
                                       << "同一个";
    QTest::newRow("no configuration") << "none"
                                      << "kodms.ini";
    QTest::newRow("a customer") << "INSERT INTO customers (code, create_time) VALUES ('A1B', '')"
                                << "已有记录";
    QTest::newRow("a second person")
        << "INSERT INTO users (login_name, real_name, create_time) VALUES ('two', 'Two', '')"
        << "已有记录";
    QTest::newRow("a stored file") << "file"
                                   << "不是空的";
    QTest::newRow("a file as the source has it") << "same file"
                                                 << "不是空的";
}

void InstallationCopyFailuresTest::whatIsNoFreshTargetIsRefused()
{
    QFETCH(QString, obstacle);
    QFETCH(QString, says);
    QString to = m_house.target();
    if (obstacle == QLatin1String("same")) {
        to = m_house.source();
    } else if (obstacle == QLatin1String("none")) {
        QVERIFY(QFile::remove(to));
    } else {
        QVERIFY(InstallationSetup::init(to, QStringLiteral("first"), QStringLiteral("别人"),
                                        QStringLiteral("another password")));
        if (obstacle == QLatin1String("file")) {
            put(m_house.source(), QStringLiteral("foreign.txt"));
        } else if (obstacle == QLatin1String("same file")) {
            const QString body = m_house.bodies().first();
            put(body, QFileInfo(QFileInfo(body).path()).fileName());
        } else {
            Database(CopyHouse::databaseOf(to)).run(obstacle);
        }
    }
    const QStringList before = QFile::exists(to) ? CopyHouse::dump(to) : QStringList();
    NoProgress progress;
    const auto copied = InstallationCopy::copy(m_house.source(), to, progress);
    QVERIFY(!copied);
    QVERIFY2(copied.text().contains(says), qPrintable(copied.text()));
    if (!QFile::exists(to))
        return;
    QCOMPARE(CopyHouse::dump(to), before);
    QVERIFY(ServiceRuntime::instance().start(to)); // it goes on as it was
    ServiceRuntime::instance().stop();
}

void InstallationCopyFailuresTest::put(const QString &path, const QString &name) const
{
    auto store = FileStore::create(Configuration::load(m_house.target()).value.fileStore);
    NoProgress silent;
    QVERIFY(store.value->put(path, name, silent));
}

QString InstallationCopyFailuresTest::emptyInstallation() const
{
    QString ini = m_house.place("empty");
    const Outcome made = InstallationSetup::init(
        ini, QStringLiteral("first"), QStringLiteral("别人"), QStringLiteral("another password"));
    if (!made)
        qFatal("%s", qPrintable(made.text));
    return ini;
}

void InstallationCopyFailuresTest::twoNamesOfOneStoreAreRefused_data()
{
    QTest::addColumn<bool>("isEmpty");
    QTest::newRow("with files") << false;
    QTest::newRow("before the first file") << true;
}

void InstallationCopyFailuresTest::twoNamesOfOneStoreAreRefused()
{
    QFETCH(bool, isEmpty);
    const QString from = isEmpty ? emptyInstallation() : m_house.source();
    const QStringList files = CopyHouse::filesOf(from);
    QCOMPARE(files.isEmpty(), isEmpty);
    Configuration target = Configuration::load(m_house.target()).value;
    const QString root = Configuration::load(from).value.fileStore.root;
    target.fileStore.root = QFileInfo(m_house.place("other-name")).path();
    QVERIFY(QDir().mkpath(root));
    if (!makeLink(root, target.fileStore.root))
        QSKIP("there are no links here");
    QVERIFY(target.save());
    NoProgress progress;
    const auto copied = InstallationCopy::copy(from, m_house.target(), progress);
    QVERIFY(!copied);
    QVERIFY2(copied.text().contains(QStringLiteral("同一个文件库")), qPrintable(copied.text()));
    QCOMPARE(CopyHouse::filesOf(from), files); // and no probe
}

void InstallationCopyFailuresTest::twoNamesOfOneDatabaseAreRefused_data()
{
    QTest::addColumn<QString>("name");
    if (TestDatabase::isServer()) {
        QTest::newRow("a server by two addresses") << "server";
        return;
    }
    QTest::newRow("a link to the file") << "symbolic link";
    QTest::newRow("a second name of the file") << "hard link";
}

void InstallationCopyFailuresTest::twoNamesOfOneDatabaseAreRefused()
{
    QFETCH(QString, name);
    QString from = emptyInstallation();
    Configuration other = Configuration::load(m_house.target()).value;
    if (name == QLatin1String("server")) {
        from = m_house.target();
        QVERIFY(InstallationSetup::init(from, QStringLiteral("first"), QStringLiteral("别人"),
                                        QStringLiteral("another password")));
        other = Configuration::load(from).value;
        QCOMPARE(other.database.host, QStringLiteral("127.0.0.1"));
        other.database.host = QStringLiteral("127.1");
    } else {
        const auto file = fsPath(Configuration::load(from).value.database.path);
        other.database.path = QFileInfo(m_house.place("other-name")).path();
        const auto second = fsPath(other.database.path);
        if (name == QLatin1String("hard link"))
            std::filesystem::create_hard_link(file, second);
        else if (!makeLink(fromFsPath(file), other.database.path))
            QSKIP("there are no links here");
    }
    other.filePath = m_house.place("same-database");
    other.fileStore.root = QFileInfo(m_house.place("own-files")).path();
    QVERIFY(other.save());
    const QStringList before = CopyHouse::dump(from);
    NoProgress progress;
    const auto copied = InstallationCopy::copy(from, other.filePath, progress);
    QVERIFY(!copied);
    QVERIFY2(copied.text().contains(QStringLiteral("同一个")), qPrintable(copied.text()));
    QCOMPARE(CopyHouse::dump(from), before);
    QVERIFY(ServiceRuntime::instance().start(from)); // it goes on as it was
    ServiceRuntime::instance().stop();
}

void InstallationCopyFailuresTest::aProbeOfAKilledCopyIsClearedAway()
{
    put(m_house.source(), QStringLiteral("kodms-copy-probe-of-a-killed-one"));
    const auto copied = m_house.copy();
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::filesOf(m_house.target()), CopyHouse::filesOf(m_house.source()));
}

void InstallationCopyFailuresTest::anotherSchemaIsRefused_data()
{
    QTest::addColumn<bool>("ofSource");
    QTest::addColumn<int>("version");
    QTest::newRow("older source") << true << 2;
    QTest::newRow("newer source") << true << 1000;
    QTest::newRow("older target") << false << 2;
    QTest::newRow("newer target") << false << 1000;
}

void InstallationCopyFailuresTest::anotherSchemaIsRefused()
{
    QFETCH(bool, ofSource);
    QFETCH(int, version);
    const QString other = m_house.place("other");
    QVERIFY(InstallationSetup::init(other, QStringLiteral("first"), QStringLiteral("别人"),
                                    QStringLiteral("another password")));
    {
        Database database(CopyHouse::databaseOf(other));
        database.run(QStringLiteral("DELETE FROM schema_version"));
        database.run(QStringLiteral("INSERT INTO schema_version VALUES (%1, '')").arg(version));
    }
    NoProgress progress;
    const auto copied = InstallationCopy::copy(ofSource ? other : m_house.source(),
                                               ofSource ? m_house.target() : other, progress);
    QVERIFY(!copied);
    QVERIFY2(copied.text().contains(QString::number(version)), qPrintable(copied.text()));
}

/// Nobody takes it for an installation.
void InstallationCopyFailuresTest::expectUnfinished() const
{
    const QString said = m_house.startOfTarget();
    QVERIFY2(said.contains(QStringLiteral("kodms-admin copy")), qPrintable(said));
}

void InstallationCopyFailuresTest::aDamagedFileIsNamed_data()
{
    QTest::addColumn<QString>("side");
    QTest::newRow("on the source") << "来源的文件库";
    QTest::newRow("on the target, where it had arrived") << "目标的文件库";
}

void InstallationCopyFailuresTest::aDamagedFileIsNamed()
{
    QFETCH(QString, side);
    QString path = m_house.bodies().first();
    if (side.startsWith(QStringLiteral("目标"))) {
        Watcher watcher;
        watcher.cancels = true;
        watcher.atRows = true;
        QVERIFY(!InstallationCopy::copy(m_house.source(), m_house.target(), watcher));
        path = CopyHouse::bodies(m_house.target()).first();
    }
    const QString storedName = QFileInfo(QFileInfo(path).path()).fileName();
    QFile file(path);
    const QFile::Permissions usual = file.permissions();
    QVERIFY(file.setPermissions(usual | QFile::WriteOwner));
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QByteArray whole = file.readAll();
    QByteArray damaged = whole;
    damaged[damaged.size() / 2] = static_cast<char>(damaged[damaged.size() / 2] ^ 1);
    const auto write = [&file](const QByteArray &bytes) {
        return file.seek(0) && file.write(bytes) == bytes.size() && file.flush();
    };
    QVERIFY(write(damaged));
    const auto refused = m_house.copy();
    QVERIFY(write(whole));
    QVERIFY(!refused);
    QVERIFY2(refused.text().contains(storedName), qPrintable(refused.text()));
    QVERIFY2(refused.text().contains(side), qPrintable(refused.text()));
    expectUnfinished();
    QVERIFY(m_house.copy());
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
}

void InstallationCopyFailuresTest::aMissingFileIsNamed()
{
    const QString folder = QFileInfo(m_house.bodies().first()).path();
    const QString storedName = QFileInfo(folder).fileName();
    const QString away = QFileInfo(m_house.place("away")).path();
    QVERIFY(QDir().rename(folder, away));
    const auto refused = m_house.copy();
    QVERIFY(QDir().rename(away, folder));
    QVERIFY(!refused);
    QVERIFY2(refused.text().contains(storedName), qPrintable(refused.text()));
    QCOMPARE(CopyHouse::filesOf(m_house.target()).size(), 0);
    expectUnfinished();
}

void InstallationCopyFailuresTest::aTargetThatCannotBeWrittenGetsNoDatabase_data()
{
    QTest::addColumn<bool>("isEmpty");
    QTest::newRow("from a source with files") << false;
    QTest::newRow("from one without") << true;
}

void InstallationCopyFailuresTest::aTargetThatCannotBeWrittenGetsNoDatabase()
{
    QFETCH(bool, isEmpty);
    const QString from = isEmpty ? emptyInstallation() : m_house.source();
    const Configuration target = Configuration::load(m_house.target()).value;
    QVERIFY(QDir().mkpath(target.fileStore.root));
    QVERIFY(QFile::setPermissions(target.fileStore.root, QFile::ReadOwner | QFile::ExeOwner));
    Result<CopySummary> refused(Outcome::success());
    {
        const WithoutPrivilege ordinary;
        if (!ordinary.isBound())
            QSKIP("this system does not let go of the administrator's power");
        NoProgress progress;
        refused = InstallationCopy::copy(from, m_house.target(), progress);
    }
    QVERIFY(!refused);
    QVERIFY2(refused.text().contains(QStringLiteral("目标的文件库")), qPrintable(refused.text()));
    if (TestDatabase::isServer()) {
        Database records(target.database);
        QCOMPARE(SchemaMigrator(records).installedVersion(), 0);
    } else {
        QVERIFY(!QFileInfo::exists(target.database.path));
    }
}

/// As when the disk with the files is not mounted; and nothing is made in its place.
void InstallationCopyFailuresTest::aStoreThatIsAwayIsNotTakenForMissingFiles()
{
    const QString root = Configuration::load(m_house.source()).value.fileStore.root;
    const QString away = QFileInfo(m_house.place("away")).path();
    QVERIFY(QDir().rename(root, away));
    const auto refused = m_house.copy();
    QVERIFY(!QFileInfo::exists(root));
    QVERIFY(QDir().rename(away, root));
    QVERIFY(!refused);
    QVERIFY2(!refused.text().contains(QStringLiteral("没有记录中的文件")),
             qPrintable(refused.text()));
    QVERIFY(m_house.copy());
}

void InstallationCopyFailuresTest::aCancelledCopyIsRepeated_data()
{
    QTest::addColumn<bool>("inRows");
    QTest::newRow("among the files") << false;
    QTest::newRow("among the rows") << true;
}

void InstallationCopyFailuresTest::aCancelledCopyIsRepeated()
{
    QFETCH(bool, inRows);
    Watcher watcher;
    watcher.cancels = true;
    watcher.atRows = inRows;
    const auto cancelled = InstallationCopy::copy(m_house.source(), m_house.target(), watcher);
    QVERIFY(!cancelled);
    QVERIFY(watcher.isStopped);
    expectUnfinished();
    QCOMPARE(CopyHouse::dump(m_house.source()), m_house.before());
    QVERIFY(m_house.copy());
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
    QCOMPARE(CopyHouse::filesOf(m_house.target()), CopyHouse::filesOf(m_house.source()));
}

void InstallationCopyFailuresTest::aKilledCopyIsRepeated_data()
{
    QTest::addColumn<QString>("where");
    QTest::newRow("among the files") << "files";
    QTest::newRow("among the rows") << "rows";
}

void InstallationCopyFailuresTest::aKilledCopyIsRepeated()
{
    QFETCH(QString, where);
    QProcess killed;
    killed.start(QCoreApplication::applicationFilePath(),
                 {QStringLiteral("--copy"), m_house.source(), m_house.target(), where});
    QVERIFY(killed.waitForFinished(60'000));
    QCOMPARE(killed.exitStatus(), QProcess::CrashExit);
    expectUnfinished();
    QCOMPARE(CopyHouse::dump(m_house.source()), m_house.before());
    QVERIFY(m_house.copy());
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
    QCOMPARE(CopyHouse::filesOf(m_house.target()), CopyHouse::filesOf(m_house.source()));
}

int main(int argc, char **argv)
{
    KODMS::Tests::prepareEnvironment();
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 5 && arguments[1] == QLatin1String("--copy"))
        return dieWhileCopying(arguments);
    InstallationCopyFailuresTest test;
    return KODMS::Tests::runTests(&test, arguments);
}

#include "InstallationCopyFailuresTest.moc"
