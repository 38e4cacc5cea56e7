// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/TempDatabase.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using KODMS::Tests::PlainConnection;
using KODMS::Tests::TempDatabase;
using KODMS::Tests::TestDatabase;

namespace {

bool runServer(const QStringList &command)
{
    constexpr int patience = 100000; // ms
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QStringLiteral(KODMS_SOURCE_DIR "/tests/postgres/server"), command);
    return process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

PlainConnection connectionTo(const QString &name)
{
    return PlainConnection(TestDatabase::settingsAt(name));
}

const QString home = QStringLiteral("postgres");

} // namespace

/// A server of this test's own that sorts after a language, where nothing else is asked for.
class TestPostgresLanguage : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void aDatabaseThatIsMadeHasItsOwnOrder();
    void theServersOwnAreRefused();

private:
    QTemporaryDir m_dir;
    QByteArray m_common; ///< the file of the server for all tests
};

void TestPostgresLanguage::initTestCase()
{
    m_common = qgetenv("KODMS_TEST_SERVER");
    const QStringList there = connectionTo(home).texts(
        QStringLiteral("SELECT 1 FROM pg_collation WHERE collprovider = 'i' AND "
                       "CAST(current_setting('server_version_num') AS INTEGER) >= 150000 LIMIT 1"));
    if (there.isEmpty())
        QSKIP("this server knows no databases in the order of a language");
    qputenv("KODMS_TEST_LANGUAGE", "de");
    QVERIFY(runServer({QStringLiteral("start"), m_dir.path(), QStringLiteral("child")}));
    qputenv("KODMS_TEST_SERVER", m_dir.filePath(QStringLiteral("server")).toLocal8Bit());
    QString why;
    QVERIFY2(TestDatabase::isEngineThere(&why), qPrintable(why));
}

void TestPostgresLanguage::cleanupTestCase()
{
    QVERIFY(runServer({QStringLiteral("stop"), m_dir.path()}));
    qputenv("KODMS_TEST_SERVER", m_common); // where the end of the application cleans up
}

void TestPostgresLanguage::aDatabaseThatIsMadeHasItsOwnOrder()
{
    DatabaseSettings settings = TestDatabase::settingsAt(QStringLiteral("made"));
    const Database database(settings, Database::Open::Create);
    QCOMPARE(connectionTo(settings.name)
                 .texts(QStringLiteral(
                     "SELECT CAST(datlocprovider AS TEXT) || ' ' || datcollate || ' ' || "
                     "datctype FROM pg_database WHERE datname = 'made'")),
             QStringList(QStringLiteral("c C.UTF-8 C.UTF-8")));
    const TempDatabase forTests; // which makes its own
}

void TestPostgresLanguage::theServersOwnAreRefused()
{
    try {
        const Database database(TestDatabase::settingsAt(home));
        QFAIL("a database in the order of a language is taken");
    } catch (const SqlError &error) {
        QCOMPARE(error.kind(), SqlError::Kind::Unfit);
        QVERIFY2(error.userText().contains(QStringLiteral("icu")), qPrintable(error.userText()));
    }
}

KODMS_TEST_MAIN(TestPostgresLanguage, QCoreApplication)
#include "TestPostgresLanguage.moc"
