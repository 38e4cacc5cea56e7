// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultTrial.h"
#include "tests/faults/FaultySqlDriver.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTest>

#include <memory>

using namespace KODMS::Tests;

/// Everything that is done at the desks, with the records and the file store failing at
/// each of its steps in turn: whoever waits is told, nothing is half done, and it can be
/// done again.
class FaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void eachStepGoesWrong_data();
    void eachStepGoesWrong();

private:
    FaultTrial &trial(int operation);

    std::unique_ptr<FaultTrial> m_trial;
    int m_operation = -1;
    int m_tried = 0;
};

namespace {

struct Fault {
    const char *name;
    FaultLayer layer;
    FaultKind kind;
};

const std::vector<Fault> faults{
    {"a statement fails", FaultLayer::Records, FaultKind::Failed},
    {"a statement throws", FaultLayer::Records, FaultKind::Thrown},
    {"the records keep throwing", FaultLayer::Records, FaultKind::KeepsThrowing},
    {"the records are lost", FaultLayer::Records, FaultKind::Lost},
    {"an answer of the records is lost", FaultLayer::Records, FaultKind::AnswerLost},
    {"a call of the store fails", FaultLayer::Store, FaultKind::Failed},
    {"a call of the store throws", FaultLayer::Store, FaultKind::Thrown},
    {"the store keeps throwing", FaultLayer::Store, FaultKind::KeepsThrowing},
    {"the store is lost", FaultLayer::Store, FaultKind::Lost},
    {"an answer of the store is lost", FaultLayer::Store, FaultKind::AnswerLost},
};

bool losesAnswerOfRecords(const Fault &fault)
{
    return fault.layer == FaultLayer::Records && fault.kind == FaultKind::AnswerLost;
}

/// The short test leaves out every other fault of an operation, but never the one after
/// which nobody knows what is on the disk.
bool isTried(std::size_t operation, std::size_t fault)
{
    return KODMS_EVERY_STEP || (operation + fault) % 2 == 0 ||
           losesAnswerOfRecords(faults.at(fault));
}

/// All of them in the long test. In the short one the commits when their answers are lost,
/// else one step, another one in each row.
QVector<int> stepsToTry(const FaultTrial &trial, const Fault &fault, int row)
{
    const int count = trial.steps(fault.layer);
    QVector<int> steps;
    if (KODMS_EVERY_STEP)
        for (int step = 1; step <= count; ++step)
            steps << step;
    else if (losesAnswerOfRecords(fault))
        steps = trial.commits();
    else if (count > 0)
        steps << 1 + row * 5 % count;
    return steps;
}

} // namespace

void FaultsTest::initTestCase()
{
    FaultySqlDriver::install();
}

void FaultsTest::cleanupTestCase()
{
    m_trial.reset();
    qDebug("%d faults tried", m_tried);
}

/// The one of the row before is kept: rows of one operation follow each other.
FaultTrial &FaultsTest::trial(int operation)
{
    if (operation != m_operation) {
        const auto index = static_cast<std::size_t>(operation);
        m_trial.reset();
        m_trial = std::make_unique<FaultTrial>(faultedOperations().at(index));
        m_operation = operation;
        qDebug("%s: %d statements, %d calls of the store", faultedOperations().at(index).name,
               m_trial->steps(FaultLayer::Records), m_trial->steps(FaultLayer::Store));
    }
    return *m_trial;
}

void FaultsTest::eachStepGoesWrong_data()
{
    QTest::addColumn<int>("operation");
    QTest::addColumn<int>("fault");
    for (std::size_t operation = 0; operation < faultedOperations().size(); ++operation)
        for (std::size_t fault = 0; fault < faults.size(); ++fault)
            if (isTried(operation, fault))
                QTest::addRow("%s, %s", faultedOperations().at(operation).name,
                              faults.at(fault).name)
                    << static_cast<int>(operation) << static_cast<int>(fault);
}

void FaultsTest::eachStepGoesWrong()
{
    QFETCH(int, operation);
    QFETCH(int, fault);
    FaultTrial &tried = trial(operation);
    QVERIFY2(tried.problems().isEmpty(), qPrintable(tried.problems().join(QLatin1Char('\n'))));
    const Fault &what = faults.at(static_cast<std::size_t>(fault));
    QStringList problems;
    const QVector<int> steps = stepsToTry(tried, what, operation + fault);
    for (const int step : steps) {
        const FaultTrial::Result result = tried.run(what.layer, what.kind, step);
        QVERIFY(result.wasHit);
        ++m_tried;
        for (const QString &problem : result.problems)
            problems << QStringLiteral("step %1: %2").arg(step).arg(problem);
    }
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

KODMS_TEST_MAIN(FaultsTest, QApplication)
#include "FaultsTest.moc"
