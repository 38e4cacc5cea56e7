// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleFactory.h"

#include "services/records/sample/SampleTime.h"
#include "services/records/sample/SampleWords.h"

#include <algorithm>
#include <utility>

namespace KODMS::Services {

namespace {

constexpr qint64 firstTime = 1546392600000; // 2019-01-02, in milliseconds since 1970
constexpr qint64 lastTime = 1793350800000;  // 2026-10-30
constexpr qint64 minute = 60000;
constexpr int flowsPerBatch = 40;
constexpr int openPairs = 7;

QString sixDigits(int number)
{
    return QString::number(number).rightJustified(6, QLatin1Char('0'));
}

} // namespace

SampleFactory::SampleFactory(Plan plan) : m_plan(std::move(plan)), m_random(m_plan.seed)
{
    // Every open state is there as soon as there are flows enough to show them.
    m_open = std::max(m_plan.flows * 3 / 100, std::min(openPairs, m_plan.flows / 2));
}

/// The open flows are every second one of the newest.
SampleFactory::Pair SampleFactory::stateOf(int number)
{
    static constexpr Pair open[openPairs] = {{0, 0}, {1, 0}, {1, 1}, {1, 2},
                                             {2, 0}, {2, 1}, {2, 2}};
    const int fromEnd = m_plan.flows - 1 - number;
    const bool isOpen = fromEnd < 2 * m_open && fromEnd % 2 == 0;
    return isOpen ? open[m_openMade++ % openPairs] : Pair{3, 2};
}

SampleFlow SampleFactory::next()
{
    const int number = m_made++;
    const qint64 step = (lastTime - firstTime) / std::max(1, m_plan.flows);
    m_time = firstTime + number * step +
             static_cast<qint64>(m_random.next() % static_cast<quint64>(step));

    SampleFlow flow;
    flow.id = m_plan.lastFlowId + number + 1;
    flow.createTime = SampleTime::text(m_time);
    flow.guid = m_random.guid(m_time);
    // One flow in nine comes through the web customer, the others from everybody.
    const bool isWeb = m_random.percent(11);
    SampleCustomer &customer =
        m_plan.customers[isWeb ? 0 : m_random.below(m_plan.customers.size())];
    flow.customerId = customer.id;
    flow.customerCode = customer.code;
    flow.serialNumber = ++customer.lastSerial;
    flow.jobName = customer.code + sixDigits(flow.serialNumber);
    flow.batchNumber = 1 + number / flowsPerBatch;
    flow.hasBodies = m_plan.flows - number <= m_plan.flowsWithBodies;

    const Pair state = stateOf(number);
    const bool isOpen = state.status != 3;
    setTexts(flow);
    setPeople(flow, isOpen);
    setFile(flow, state);
    setState(flow, state);
    addQuestions(flow, isOpen);
    flow.payment = !isOpen || m_random.percent(50) ? 1 : 0;
    return flow;
}

QString SampleFactory::after(int minutes)
{
    m_time += minute * (minutes / 2 + m_random.below(minutes));
    return SampleTime::text(m_time);
}

void SampleFactory::setTexts(SampleFlow &flow)
{
    const QString &board = m_random.oneOf(SampleWords::boardNames());
    flow.origName = board + QLatin1Char('_') + QString::number(1000 + m_random.below(9000)) +
                    QStringLiteral("_v") + QString::number(1 + m_random.below(9));
    flow.sourceTips = m_random.oneOf(SampleWords::sources());
    if (m_random.percent(15))
        flow.description = m_random.oneOf(SampleWords::remarks());
    if (m_random.percent(25))
        flow.remark = m_random.oneOf(SampleWords::remarks());
}

void SampleFactory::setPeople(SampleFlow &flow, bool isOpen)
{
    const QVector<SampleUser> &people =
        isOpen && !m_plan.accounts.isEmpty() ? m_plan.accounts : m_plan.staff;
    const auto anybody = [&] { return people.at(m_random.below(people.size())).id; };
    flow.creator = anybody();
    flow.executor = anybody();
    flow.checker = anybody();
}

SampleFile SampleFactory::makeFile(const SampleFlow &flow, int kind, const QString &type,
                                   qint64 time)
{
    SampleFile file;
    file.id = ++m_plan.lastFileId;
    file.guid = m_random.guid(time);
    file.kind = kind;
    file.fileType = type;
    file.customerCode = flow.customerCode;
    file.createTime = SampleTime::text(time);
    file.baseName = kind == 0 ? flow.origName : flow.jobName;
    // What came as a folder was packed on its way into the store.
    file.storedName =
        m_random.guid(time) + QLatin1Char('.') + (type.isEmpty() ? QStringLiteral("zip") : type);
    return file;
}

void SampleFactory::setFile(SampleFlow &flow, Pair state)
{
    static const QStringList types{QStringLiteral("tgz"),
                                   QStringLiteral("tgz"),
                                   QStringLiteral("zip"),
                                   QStringLiteral("zip"),
                                   QStringLiteral("zip"),
                                   QStringLiteral("rar"),
                                   QString()};
    const bool mayBeFinishedJob = state.status > 1 || (state.status == 1 && state.flag == 2);
    flow.fileType =
        mayBeFinishedJob && m_random.percent(5) ? QStringLiteral("kos") : m_random.oneOf(types);
    if (flow.hasBodies && flow.fileType == QLatin1String("rar"))
        flow.fileType = QStringLiteral("zip"); // nobody but its maker can write a rar
    if (flow.fileType.isEmpty())
        flow.origName += SampleWords::gerberMark(); // layers of a board come as a folder
    SampleFile file = makeFile(flow, 0, flow.fileType, m_time);
    file.userId = flow.creator;
    flow.origFileId = file.id;
    flow.files << file;
}

void SampleFactory::addImport(SampleFlow &flow)
{
    flow.importTime = after(1440);
    flow.importer = flow.executor;
    flow.origJobName = flow.origName.toLower();
    flow.layerCount = 2 * (1 + m_random.below(m_random.percent(90) ? 4 : 12));
    flow.featureCount = 500 + m_random.below(200000);
    if (flow.fileType == QLatin1String("kos")) {
        flow.importFileId = flow.origFileId; // needs no preparation: it is the job itself
        return;
    }
    SampleFile file = makeFile(flow, 1, QStringLiteral("tgz"), m_time);
    file.userId = flow.importer;
    flow.importFileId = file.id;
    flow.files << file;
}

void SampleFactory::addResult(SampleFlow &flow)
{
    SampleFile file = makeFile(flow, 2, QStringLiteral("tgz"), m_time);
    file.userId = flow.executor;
    flow.resultFileId = file.id;
    flow.files << file;
}

void SampleFactory::setState(SampleFlow &flow, Pair state)
{
    flow.flowStatus = state.status;
    flow.checkFlag = state.flag;
    const bool isUntouched = state.status == 0;
    if (isUntouched && m_random.percent(40)) {
        flow.executor = 0; // nobody has been asked yet
        flow.checker = 0;
        return;
    }
    flow.assignTime = after(60);
    if (isUntouched)
        return;
    addImport(flow);
    if (state.status == 1 && state.flag == 0)
        return;
    flow.checkTime = after(300);
    flow.reviewer = flow.checker;
    const bool hasResult = (state.status == 2 && (state.flag != 0 || m_random.percent(50))) ||
                           (state.status == 3 && m_random.percent(10));
    if (hasResult) {
        after(400);
        addResult(flow);
    }
    if (state.status > 1 && state.flag != 0) {
        flow.robotCheckTime = after(200);
        flow.robotReviewer = flow.checker;
    }
}

void SampleFactory::addQuestions(SampleFlow &flow, bool isOpen)
{
    const int count = m_random.percent(isOpen ? 60 : 12) ? 1 + m_random.below(3) : 0;
    for (int i = 0; i < count; ++i) {
        SampleQuestion question;
        question.title = m_random.oneOf(SampleWords::questionTitles());
        question.description = m_random.oneOf(SampleWords::questionTexts());
        question.checkFlag = isOpen ? m_random.below(4) : 3;
        question.creator = flow.checker != 0 ? flow.checker : flow.creator;
        question.createTime = SampleTime::text(m_time + minute * (i + 1));
        flow.questions << question;
    }
}

} // namespace KODMS::Services
