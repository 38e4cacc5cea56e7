// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/StoreCheck.h"
#include "services/filestore/FileStore.h"
#include "services/records/copy/CopiedTable.h"
#include "services/records/copy/RowDigest.h"
#include "services/session/Runtime.h"
#include "tests/api/support/CopyHouse.h"
#include "tests/api/support/Interlude.h"
#include "tests/support/TestMain.h"

#include <QDir>
#include <QRegularExpression>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::CopyHouse;
using KODMS::Tests::Installation;
using KODMS::Tests::Interlude;

/// A whole installation, moved.
class InstallationCopyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void everyTableMoves();
    void theSumKnowsNothingOfTheEngine();
    void aCopyIsTheSame();
    void aTargetThatWasJustSetUpIsFilled();
    void thereAndBackIsTheSame();
    void theCopyGoesOnWhereTheSourceStopped();
    void filesThatAreRemovedMeanwhileArrive();

private:
    QString freshPlace(const char *name) const;

    CopyHouse m_house;
};

void InstallationCopyTest::initTestCase()
{
    const QString problem = m_house.make();
    QVERIFY2(problem.isEmpty(), qPrintable(problem));
}

void InstallationCopyTest::init()
{
    m_house.renewTarget();
}

/// What is not in the list would be lost without a word.
void InstallationCopyTest::everyTableMoves()
{
    Database database(CopyHouse::databaseOf(m_house.source()));
    QStringList tables;
    SqlQuery query = database.prepare(QStringLiteral(
        "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite_%'"));
    query.exec();
    while (query.next())
        tables << query.text("name");
    QStringList moved{QStringLiteral("change_log"), QStringLiteral("schema_version")};
    for (const CopiedTable &table : CopiedTable::all())
        moved << QLatin1String(table.name);
    tables.sort();
    moved.sort();
    QCOMPARE(moved, tables);
}

void InstallationCopyTest::theSumKnowsNothingOfTheEngine()
{
    using Row = QVector<QVariant>;
    QCOMPARE(RowDigest::canonical(
                 {QVariant(7), QVariant(QStringLiteral("七")), QVariant(QVariant::String)}),
             QByteArray("i7;t3:七;-;\n"));
    QCOMPARE(
        RowDigest::canonical({QVariant(qint64(7)), QVariant(QStringLiteral("七")), QVariant()}),
        RowDigest::canonical(
            {QVariant(7), QVariant(QStringLiteral("七")), QVariant(QVariant::Int)}));
    QVERIFY(RowDigest::canonical({QVariant(QStringLiteral("7"))}) !=
            RowDigest::canonical({QVariant(7)}));
    QVERIFY(RowDigest::canonical({QVariant(QStringLiteral(""))}) !=
            RowDigest::canonical({QVariant()}));
    RowDigest forwards(true);
    RowDigest backwards(true);
    RowDigest ordered(false);
    RowDigest otherOrder(false);
    const QVector<Row> rows{{QVariant(1)}, {QVariant(2)}};
    for (int i = 0; i < 2; ++i) {
        forwards.add(rows.at(i));
        backwards.add(rows.at(1 - i));
        ordered.add(rows.at(i));
        otherOrder.add(rows.at(1 - i));
    }
    const QByteArray sum = forwards.sha256();
    QCOMPARE(sum, backwards.sha256());
    QCOMPARE(sum, ordered.sha256());
    QVERIFY(sum != otherOrder.sha256());
}

void InstallationCopyTest::aCopyIsTheSame()
{
    const auto copied = m_house.copy();
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
    QCOMPARE(CopyHouse::dump(m_house.source()), m_house.before());
    QCOMPARE(CopyHouse::filesOf(m_house.target()), CopyHouse::filesOf(m_house.source()));
    QCOMPARE(copied.value.tables.size(), CopiedTable::all().size());
    QCOMPARE(copied.value.files, qint64(CopyHouse::filesOf(m_house.source()).size()));
    QVERIFY(copied.value.files > 0);
    qint64 rows = 0;
    for (const CopiedTableProof &table : copied.value.tables) {
        rows += table.rows;
        QCOMPARE(table.sha256.size(), 64);
    }
    QCOMPARE(
        rows,
        qint64(m_house.before().filter(QRegularExpression(QStringLiteral("^[a-z_]+\\|"))).size()));
    const QString staging = Configuration::load(m_house.target()).value.paths.staging;
    QVERIFY(QDir(staging).isEmpty());
}

void InstallationCopyTest::aTargetThatWasJustSetUpIsFilled()
{
    QVERIFY(InstallationSetup::init(m_house.target(), QStringLiteral("first"),
                                    QStringLiteral("别人"), QStringLiteral("another password")));
    const auto copied = m_house.copy();
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::dump(m_house.target()), m_house.before());
    QVERIFY(ServiceRuntime::instance().start(m_house.target()));
    QVERIFY(!SignIn::signIn(QStringLiteral("first"), QStringLiteral("another password")));
    QVERIFY(SignIn::signIn(Installation::login(), Installation::password()));
    ServiceRuntime::instance().stop();
}

/// Over another engine, when one is in force.
void InstallationCopyTest::thereAndBackIsTheSame()
{
    const QString back = freshPlace("back");
    QVERIFY(m_house.copy());
    NoProgress progress;
    const auto copied = InstallationCopy::copy(m_house.target(), back, progress);
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::dump(back), m_house.before());
    QCOMPARE(CopyHouse::filesOf(back), CopyHouse::filesOf(m_house.source()));
}

/// Checked, signed in to, changed: keys go on, and the log of changes is written again.
void InstallationCopyTest::theCopyGoesOnWhereTheSourceStopped()
{
    QVERIFY(m_house.copy());
    QVERIFY(ServiceRuntime::instance().start(m_house.target()));
    SignIn::actAsOperator();
    const auto check = StoreCheck::check({});
    QVERIFY2(check.outcome.ok, qPrintable(check.text()));
    for (const CheckFinding &finding : check.value.findings)
        QVERIFY2(!finding.isProblem, qPrintable(finding.text));
    QVERIFY(check.value.filesRead > 0);
    Database &database = Runtime::current()->records().database();
    const auto number = [&database](const char *sql) {
        SqlQuery query = database.prepare(QString::fromLatin1(sql));
        query.exec().next();
        return query.number("value");
    };
    QCOMPARE(number("SELECT count(*) AS value FROM change_log WHERE kind <> 0"), 0);
    database.run(QStringLiteral("UPDATE job_flows SET tips = 'new' WHERE id = 3"));
    QCOMPARE(number("SELECT count(*) AS value FROM change_log WHERE kind <> 0"), 1);
    const int last = number("SELECT max(id) AS value FROM customers");
    database.run(QStringLiteral("INSERT INTO customers (code, create_time) VALUES ('ZZZ', '')"));
    QCOMPARE(number("SELECT max(id) AS value FROM customers"), last + 1);
    ServiceRuntime::instance().stop();
}

QString InstallationCopyTest::freshPlace(const char *name) const
{
    QString ini = m_house.place(name);
    const Outcome saved = Configuration::defaultsFor(ini).save();
    if (!saved)
        qFatal("%s", qPrintable(saved.text));
    return ini;
}

/// By a desk, or by the start of one that settles what was marked.
void InstallationCopyTest::filesThatAreRemovedMeanwhileArrive()
{
    QVERIFY(m_house.copy());
    const QStringList files = CopyHouse::filesOf(m_house.target());
    QVERIFY(files.size() > 1);
    Interlude removal([this] {
        auto store = FileStore::create(Configuration::load(m_house.target()).value.fileStore);
        const auto all = store.value->list();
        for (const StoredFileInfo &file : all.value)
            QVERIFY(store.value->remove(file.name));
        QVERIFY(store.value->sweep());
    });
    const QString back = freshPlace("back");
    const auto copied = InstallationCopy::copy(m_house.target(), back, removal);
    QVERIFY2(copied.outcome.ok, qPrintable(copied.text()));
    QCOMPARE(CopyHouse::filesOf(back), files);
    QCOMPARE(CopyHouse::filesOf(m_house.target()), QStringList());
    const auto left =
        FileStore::create(Configuration::load(m_house.target()).value.fileStore).value->leftovers();
    QCOMPARE(left.value, QStringList()); // nothing is held any more
}

KODMS_TEST_MAIN(InstallationCopyTest, QCoreApplication)
#include "InstallationCopyTest.moc"
