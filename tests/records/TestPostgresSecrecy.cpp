// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/PostgresServer.h"
#include "tests/records/support/CuttingRelay.h"
#include "tests/records/support/TempDatabase.h"
#include "tests/support/TestMain.h"

#include <QFile>
#include <QSqlDatabase>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

using namespace KODMS::Services;
using KODMS::Tests::CuttingRelay;
using KODMS::Tests::TempDatabase;

namespace {

/// Why a database cannot be opened; empty when it can.
QString refusal(const DatabaseSettings &settings, Database::Open mode)
{
    try {
        const Database database(settings, mode);
        return {};
    } catch (const SqlError &error) {
        return error.kind() == SqlError::Kind::Unfit ? error.driverText() : error.logText();
    }
}

} // namespace

/// What is kept from others: the line, which the test's server does not encrypt, and the password.
class TestPostgresSecrecy : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void nothingIsSaidUnlessItIsEncrypted_data();
    void nothingIsSaidUnlessItIsEncrypted();
    void whoeverDoesNotInsistIsLetIn_data();
    void whoeverDoesNotInsistIsLetIn();
    void aRootCertificateThatCannotBeReadIsNamed_data();
    void aRootCertificateThatCannotBeReadIsNamed();
    void aPathOfAnyCharactersIsHandedOn();
    void aRefusedPasswordStaysSecret();
    void theEndOfThePasswordsLineIsNoPartOfIt_data();
    void theEndOfThePasswordsLineIsNoPartOfIt();
    void aPasswordFileThatIsNotThereIsNamed();

private:
    std::optional<TempDatabase> m_database;
    std::unique_ptr<CuttingRelay> m_relay;
    DatabaseSettings m_settings; ///< of the way past the relay
};

void TestPostgresSecrecy::init()
{
    m_database.emplace();
    m_settings = m_database->settings();
    m_relay = std::make_unique<CuttingRelay>(m_settings.host, m_settings.port);
    m_settings.host = QStringLiteral("127.0.0.1");
    m_settings.port = m_relay->port();
}

void TestPostgresSecrecy::cleanup()
{
    m_relay.reset();
    m_database.reset();
}

void TestPostgresSecrecy::nothingIsSaidUnlessItIsEncrypted_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<bool>("creates");
    for (const char *mode : {"require", "verify-ca", "verify-full"}) {
        QTest::addRow("%s", mode) << QString::fromLatin1(mode) << false;
        QTest::addRow("%s at the making", mode) << QString::fromLatin1(mode) << true;
    }
}

void TestPostgresSecrecy::nothingIsSaidUnlessItIsEncrypted()
{
    QFETCH(QString, mode);
    QFETCH(bool, creates);
    m_settings.sslMode = mode;
    const QString why =
        refusal(m_settings, creates ? Database::Open::Create : Database::Open::Existing);
    QVERIFY2(why.contains(QStringLiteral("SSL")), qPrintable(why));
    QByteArray heard = m_relay->heard();
    QVERIFY(!heard.isEmpty());
    heard.replace(QByteArray::fromHex("0000000804d2162f"),
                  QByteArray()); // a request for encryption
    QCOMPARE(heard, QByteArray());
}

void TestPostgresSecrecy::whoeverDoesNotInsistIsLetIn_data()
{
    QTest::addColumn<QString>("mode");
    QTest::newRow("nothing said") << QString();
    QTest::newRow("disable") << QStringLiteral("disable");
    QTest::newRow("prefer") << QStringLiteral("prefer");
}

void TestPostgresSecrecy::whoeverDoesNotInsistIsLetIn()
{
    QFETCH(QString, mode);
    m_settings.sslMode = mode;
    QCOMPARE(refusal(m_settings, Database::Open::Existing), QString());
    QVERIFY(m_relay->heard().contains(m_settings.user.toUtf8()));
}

void TestPostgresSecrecy::aRootCertificateThatCannotBeReadIsNamed_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("not there") << QStringLiteral("nowhere.crt");
    QTest::newRow("of a name that the driver splits") << QStringLiteral("a;b.crt");
}

void TestPostgresSecrecy::aRootCertificateThatCannotBeReadIsNamed()
{
    QFETCH(QString, name);
    const QTemporaryDir dir;
    m_settings.sslMode = QStringLiteral("verify-full");
    m_settings.sslRootCertificate = dir.filePath(name);
    const QString why = refusal(m_settings, Database::Open::Existing);
    QVERIFY2(why.contains(m_settings.sslRootCertificate), qPrintable(why));
    QCOMPARE(m_relay->heard(), QByteArray());
}

/// Quotes and blanks do not end it: what follows would be taken for another setting.
void TestPostgresSecrecy::aPathOfAnyCharactersIsHandedOn()
{
    const QTemporaryDir dir;
    m_settings.sslMode = QStringLiteral("prefer");
    m_settings.sslRootCertificate = dir.filePath(QStringLiteral("the 'root\\ sslmode=require"));
    QFile file(m_settings.sslRootCertificate);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(refusal(m_settings, Database::Open::Existing), QString());
}

void TestPostgresSecrecy::aRefusedPasswordStaysSecret()
{
    auto settings = m_database->settings();
    const QTemporaryDir dir;
    settings.passwordFile = dir.filePath(QStringLiteral("password"));
    QFile file(settings.passwordFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("let-me-in '\\\n");
    file.close();
    try {
        Database database(settings);
        QFAIL("the server takes any password");
    } catch (const SqlError &error) {
        QCOMPARE(error.kind(), SqlError::Kind::Refused);
        QVERIFY(!error.logText().contains(QStringLiteral("let-me-in")));
        const QString place =
            QStringLiteral("%1:%2/%3").arg(settings.host).arg(settings.port).arg(settings.name);
        QVERIFY2(error.logText().contains(place), qPrintable(error.logText()));
    }
}

/// What is read is looked at: the password of the test's server has no blank at its end.
void TestPostgresSecrecy::theEndOfThePasswordsLineIsNoPartOfIt()
{
    QFETCH(QByteArray, content);
    auto settings = m_database->settings();
    const QTemporaryDir dir;
    settings.passwordFile = dir.filePath(QStringLiteral("password"));
    QFile file(settings.passwordFile);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    const QString name = QStringLiteral("line end");
    QString password;
    {
        QSqlDatabase connection = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), name);
        PostgresServer(settings).configure(connection, settings.name);
        password = connection.password();
    }
    QSqlDatabase::removeDatabase(name);
    QCOMPARE(password, QStringLiteral("let me in "));
}

void TestPostgresSecrecy::theEndOfThePasswordsLineIsNoPartOfIt_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("none") << QByteArray("let me in ");
    QTest::newRow("one") << QByteArray("let me in \n");
    QTest::newRow("of two characters") << QByteArray("let me in \r\n");
    QTest::newRow("and more lines") << QByteArray("let me in \r\nsecond\r\n");
}

void TestPostgresSecrecy::aPasswordFileThatIsNotThereIsNamed()
{
    auto settings = m_database->settings();
    settings.passwordFile = QStringLiteral("/nowhere/password");
    try {
        Database database(settings);
        QFAIL("opened without its password file");
    } catch (const SqlError &error) {
        QCOMPARE(error.kind(), SqlError::Kind::Unfit);
        QVERIFY(error.logText().contains(settings.passwordFile));
    }
}

KODMS_TEST_MAIN(TestPostgresSecrecy, QCoreApplication)
#include "TestPostgresSecrecy.moc"
