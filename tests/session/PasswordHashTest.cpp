// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/PasswordHash.h"
#include "tests/support/TestMain.h"

#include <QTest>

#include <algorithm>
#include <ctime>
#include <vector>

using KODMS::Services::PasswordHash;

class PasswordHashTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void matchesItsPasswordOnly_data();
    void matchesItsPasswordOnly();
    void everyHashHasItsOwnSalt();
    void isArgon2idWithInteractiveLimits();
    void whatIsNoHashMatchesNothing_data();
    void whatIsNoHashMatchesNothing();
    void sameTextInOtherFormMatches();
    void anUnknownUserCostsAsMuchAsAKnownOne();
};

void PasswordHashTest::matchesItsPasswordOnly_data()
{
    QTest::addColumn<QString>("password");
    QTest::newRow("Latin") << QStringLiteral("correct horse");
    QTest::newRow("Chinese") << QStringLiteral("前处理人员的密码");
    QTest::newRow("emoji") << QStringLiteral("😀😀😀😀😀");
    QTest::newRow("with NUL inside") << QStringLiteral("abc") + QChar(0) + QStringLiteral("def");
    QTest::newRow("256 characters") << QString(256, QLatin1Char('x'));
}

void PasswordHashTest::matchesItsPasswordOnly()
{
    QFETCH(QString, password);
    const QString hash = PasswordHash::make(password);
    QVERIFY(!hash.isEmpty());
    QVERIFY(PasswordHash::matches(hash, password));
    QVERIFY(!PasswordHash::matches(hash, password.chopped(1)));
}

void PasswordHashTest::everyHashHasItsOwnSalt()
{
    QVERIFY(PasswordHash::make(QStringLiteral("same")) !=
            PasswordHash::make(QStringLiteral("same")));
}

void PasswordHashTest::isArgon2idWithInteractiveLimits()
{
    const QString hash = PasswordHash::make(QStringLiteral("x"));
    QVERIFY2(hash.startsWith(QLatin1String("$argon2id$v=19$m=65536,t=2,p=1$")), qPrintable(hash));
    QVERIFY(!PasswordHash::isOutdated(hash));
    QVERIFY(
        PasswordHash::isOutdated(QStringLiteral("$argon2id$v=19$m=8,t=1,p=1$c29tZXNhbHRzb21lc2E$"
                                                "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA")));
}

void PasswordHashTest::whatIsNoHashMatchesNothing_data()
{
    QTest::addColumn<QString>("hash");
    QTest::newRow("empty") << QString();
    QTest::newRow("the password itself") << QStringLiteral("secret");
    QTest::newRow("a head alone") << QStringLiteral("$argon2id$");
    QTest::newRow("longer than any hash") << QString(1000, QLatin1Char('$'));
}

void PasswordHashTest::whatIsNoHashMatchesNothing()
{
    QFETCH(QString, hash);
    QVERIFY(!PasswordHash::matches(hash, QStringLiteral("secret")));
    QVERIFY(!PasswordHash::matches(hash, QString()));
}

void PasswordHashTest::sameTextInOtherFormMatches()
{
    const QString composed = QStringLiteral("Caf\u00e9-Stra\u00dfe");
    const QString hash = PasswordHash::make(composed);
    QVERIFY(PasswordHash::matches(hash, composed.normalized(QString::NormalizationForm_D)));
}

/// Medians of a few tries in processor time, with room for a busy machine: a missing
/// second hash would make the ratio about a thousand.
void PasswordHashTest::anUnknownUserCostsAsMuchAsAKnownOne()
{
    const QString known = PasswordHash::make(QStringLiteral("right"));
    const auto median = [](const QString &hash) {
        std::vector<std::clock_t> times;
        for (int i = 0; i < 3; ++i) {
            const std::clock_t begin = std::clock();
            if (PasswordHash::matches(hash, QStringLiteral("wrong")))
                return std::clock_t(0);
            times.push_back(std::clock() - begin);
        }
        std::sort(times.begin(), times.end());
        return times[times.size() / 2];
    };
    (void)PasswordHash::matches(QString(), QString()); // what is made once is made now
    const std::clock_t unknownTime = median(QString());
    const std::clock_t knownTime = median(known);
    QVERIFY(knownTime > 0 && unknownTime > 0);
    QVERIFY2(unknownTime * 10 > knownTime && knownTime * 10 > unknownTime,
             qPrintable(QStringLiteral("%1 against %2").arg(unknownTime).arg(knownTime)));
}

KODMS_TEST_MAIN(PasswordHashTest, QCoreApplication)

#include "PasswordHashTest.moc"
