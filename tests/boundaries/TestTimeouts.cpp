// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

/// How long the tests may take, as CTest knows it.
class TestTimeouts : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void noFunctionEndsBeforeItsTest();
    void aServerIsGivenThreeTimesAsLong();

private:
    struct Times {
        int test = 0;     ///< seconds
        int function = 0; ///< milliseconds
    };

    static Times timesOf(const QJsonArray &properties);

    QHash<QString, Times> m_times;
};

TestTimeouts::Times TestTimeouts::timesOf(const QJsonArray &properties)
{
    Times times;
    for (const QJsonValue &property : properties) {
        const QString name = property[QStringLiteral("name")].toString();
        const QJsonValue value = property[QStringLiteral("value")];
        if (name == QLatin1String("TIMEOUT"))
            times.test = value.toInt();
        if (name != QLatin1String("ENVIRONMENT"))
            continue;
        const QJsonArray environment = value.toArray();
        for (const QJsonValue &variable : environment) {
            const QString text = variable.toString();
            if (text.startsWith(QLatin1String("QTEST_FUNCTION_TIMEOUT=")))
                times.function = text.section(QLatin1Char('='), 1).toInt();
        }
    }
    return times;
}

void TestTimeouts::initTestCase()
{
    constexpr int patience = 60000; // ms
    // Asked in the build's folder, CTest would empty the log of the run that is at work there.
    const QTemporaryDir elsewhere;
    QFile tests(elsewhere.filePath(QStringLiteral("CTestTestfile.cmake")));
    QVERIFY(tests.open(QIODevice::WriteOnly));
    tests.write("subdirs(\"" KODMS_BUILD_DIR "\")\n");
    tests.close();
    QProcess ctest;
    ctest.setWorkingDirectory(elsewhere.path());
    ctest.start(QStringLiteral(KODMS_CTEST), {QStringLiteral("--show-only=json-v1")});
    QVERIFY(ctest.waitForFinished(patience) && ctest.exitCode() == 0);
    const QJsonObject all = QJsonDocument::fromJson(ctest.readAllStandardOutput()).object();
    const QJsonArray known = all[QStringLiteral("tests")].toArray();
    for (const QJsonValue &test : known) {
        const Times times = timesOf(test[QStringLiteral("properties")].toArray());
        if (times.function > 0)
            m_times.insert(test[QStringLiteral("name")].toString(), times);
    }
    QVERIFY(m_times.contains(QStringLiteral("boundaries.Timeouts")));
}

/// QtTest's own clock would otherwise end a function that CTest lets go on.
void TestTimeouts::noFunctionEndsBeforeItsTest()
{
    constexpr int second = 1000; // ms
    for (auto test = m_times.cbegin(); test != m_times.cend(); ++test)
        QVERIFY2(test->function >= test->test * second, qPrintable(test.key()));
}

void TestTimeouts::aServerIsGivenThreeTimesAsLong()
{
    const QString ending = QStringLiteral(".postgres");
    for (auto test = m_times.cbegin(); test != m_times.cend(); ++test) {
        if (!test.key().endsWith(ending))
            continue;
        const Times embedded = m_times.value(test.key().chopped(ending.size()));
        QVERIFY2(embedded.function > 0 && test->function == 3 * embedded.function &&
                     test->test == 3 * embedded.test,
                 qPrintable(test.key()));
    }
}

KODMS_TEST_MAIN(TestTimeouts, QCoreApplication)
#include "TestTimeouts.moc"
