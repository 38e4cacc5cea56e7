// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultTrial.h"

#include "services/notices/NoticeHub.h"
#include "services/tasks/TaskRunner.h"
#include "tests/faults/WarningCatcher.h"
#include "tests/faults/YesSayer.h"
#include "tests/support/NoticeLog.h"

#include <QEventLoop>

#include <algorithm>
#include <exception>

namespace KODMS::Tests {

using namespace Services;

namespace {

/// What the desks have put off is done, and windows that were sent away are gone.
void settle()
{
    do {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (TaskRunner::instance().isBusy());
    QCoreApplication::processEvents();
}

int countLoud(const NoticeLog &log)
{
    return static_cast<int>(
        std::count_if(log.notices.begin(), log.notices.end(), [](const auto &notice) {
            return notice.level >= static_cast<int>(NoticeLevel::Warning);
        }));
}

QString textOf(const CheckReport &report)
{
    QStringList lines;
    for (const CheckFinding &finding : report.findings)
        lines << finding.kind + QLatin1Char(' ') + finding.text;
    return lines.join(QStringLiteral("; "));
}

bool hasOther(const CheckReport &report, const QStringList &harmless)
{
    return std::any_of(report.findings.begin(), report.findings.end(),
                       [&](const CheckFinding &finding) {
                           return finding.isProblem || !harmless.contains(finding.kind);
                       });
}

} // namespace

FaultTrial::FaultTrial(const FaultedOperation &operation)
    : m_operation(operation), m_house(operation.prepare)
{
    learn();
}

void FaultTrial::learn()
{
    m_house.putBack();
    m_house.open();
    m_states.insert(m_house.records());
    m_deedsBefore = m_house.deeds();
    const QString essenceBefore = m_house.rows(QLatin1String(m_operation.essence));
    FaultPlan::watchCommits([this] { addState(); });
    const Said said = carryOut();
    FaultPlan::watchCommits({});
    m_statements = FaultPlan::calls(FaultLayer::Records);
    m_storeCalls = FaultPlan::calls(FaultLayer::Store);
    m_deeds = m_house.deeds();
    m_essence = m_house.rows(QLatin1String(m_operation.essence));
    if (!said.logged.isEmpty() || said.notices > 0 || !said.escaped.isEmpty())
        m_problems << QStringLiteral("goes wrong without a fault: ") +
                          said.logged.join(QLatin1Char('/')) + said.escaped;
    const bool changes = qstrcmp(m_operation.name, "export") != 0;
    if (changes == (m_essence == essenceBefore))
        m_problems << QStringLiteral("has left behind: ") + m_essence;
    checkTemporaryFiles(m_problems);
    if (!m_operation.otherEnds)
        return;
    m_house.putBack();
    m_house.open();
    m_operation.otherEnds(m_house, [this] { m_states.insert(m_house.records()); });
}

/// After a commit: what only looked has left nothing new.
void FaultTrial::addState()
{
    const QString records = m_house.records();
    if (m_states.contains(records))
        return;
    m_states.insert(records);
    m_commits << FaultPlan::calls(FaultLayer::Records);
}

FaultTrial::Result FaultTrial::run(FaultLayer layer, FaultKind kind, int step)
{
    Result result;
    m_house.putBack();
    m_house.open();
    const Said said = carryOut(layer, kind, step);
    result.wasHit = FaultPlan::isHit();
    if (!result.wasHit)
        return result;
    const bool isIdle = layer == FaultLayer::Store && kind == FaultKind::Failed &&
                        step == m_operation.idleStoreCall;
    if (!isIdle && !isAnsweredByStatements(said))
        checkSaid(said, result.problems);
    m_house.close(); // a lost connection stays lost
    checkTemporaryFiles(result.problems);
    m_house.open();
    checkRecords(result.problems);
    checkStore(result.problems);
    checkOnceMore(result.problems);
    return result;
}

FaultTrial::Said FaultTrial::carryOut(FaultLayer layer, FaultKind kind, int step)
{
    settle(); // a refresh that waits for its turn is none of this operation's
    Said said;
    const WarningCatcher warnings;
    const YesSayer yes;
    const Scene scene = m_operation.sitDown(m_house);
    const QPointer<QWidget> desk = scene.user->desk<QWidget>();
    const NoticeLog notices;
    FaultPlan::arm(layer, kind, step);
    act(scene, said);
    FaultPlan::disarm();
    said.logged = warnings.texts();
    said.notices = countLoud(notices);
    said.deskIsGone = desk.isNull();
    return said;
}

FaultTrial::Said FaultTrial::carryOut()
{
    constexpr int never = 1'000'000;
    return carryOut(FaultLayer::Store, FaultKind::Failed, never);
}

/// From an event loop, as in a host.
void FaultTrial::act(const Scene &scene, Said &said)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        try {
            scene.act();
        } catch (const std::exception &error) {
            said.escaped = QString::fromUtf8(error.what());
        }
        loop.quit();
    });
    loop.exec();
    settle();
}

/// The search index alone went wrong, and the statements answered in its place: that is
/// for the log only.
bool FaultTrial::isAnsweredByStatements(const Said &said) const
{
    const bool isIndexAlone =
        said.logged.size() == 1 && said.logged.first().startsWith(QLatin1String("column index:"));
    return isIndexAlone && said.escaped.isEmpty() && !said.deskIsGone && said.notices == 0 &&
           m_house.rows(QLatin1String(m_operation.essence)) == m_essence;
}

void FaultTrial::checkSaid(const Said &said, QStringList &problems) const
{
    if (!said.escaped.isEmpty())
        problems << QStringLiteral("an exception came out of the desk: ") + said.escaped;
    if (said.deskIsGone)
        problems << QStringLiteral("the desk is gone");
    if (said.logged.isEmpty())
        problems << QStringLiteral("nothing in the log");
    if (said.notices == 0)
        problems << QStringLiteral("no notice");
}

void FaultTrial::checkRecords(QStringList &problems) const
{
    if (!m_states.contains(m_house.records()))
        problems << QStringLiteral("records that no step leaves:\n") + m_house.records();
    QStringList expected = m_deeds;
    const QStringList deeds = m_house.deeds();
    for (const QString &deed : deeds)
        if (!expected.removeOne(deed))
            problems << QStringLiteral("a deed too many: ") + deed;
}

/// Whoever was interrupted leaves at most a file that nothing names.
void FaultTrial::checkStore(QStringList &problems)
{
    const CheckReport report = m_house.check(false);
    if (hasOther(report, {QStringLiteral("unrecorded-file")}))
        problems << QStringLiteral("the check finds: ") + textOf(report);
    if (report.findings.isEmpty() && report.records == report.files)
        return;
    const CheckReport repaired = m_house.check(true);
    const CheckReport after = m_house.check(false);
    if (!repaired.isClean() || !after.findings.isEmpty() || after.records != after.files)
        problems << QStringLiteral("after a repair the check finds: ") + textOf(after);
}

void FaultTrial::checkTemporaryFiles(QStringList &problems) const
{
    const QStringList found = m_house.temporaryFiles();
    if (!m_operation.leavesCopies && !found.isEmpty())
        problems << QStringLiteral("temporary files: ") + found.join(QLatin1Char(' '));
}

/// What was not done can be done now.
void FaultTrial::checkOnceMore(QStringList &problems)
{
    const QLatin1String query(m_operation.essence);
    if (m_house.rows(query) == m_essence)
        return;
    const Said said = carryOut();
    if (m_house.rows(query) != m_essence)
        problems << QStringLiteral("a second time: ") + m_house.rows(query) +
                        said.logged.join(QLatin1Char('/'));
}

} // namespace KODMS::Tests
