// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/durability/WorkSteps.h"

#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/common/Common.h"
#include "services/api/Intake.h"
#include "services/disk/Sha256.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Guid.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/UserRecords.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"

#include <QDir>

#include <unistd.h>
#include <vector>

namespace KODMS::Tests {

using namespace Services;
using namespace DataLib::BLL;

namespace {

constexpr int NoiseSize = 150 * 1024;

} // namespace

WorkSteps::WorkSteps(quint32 seed, const QString &scratch) : m_random(seed), m_scratch(scratch)
{
    const auto admin = UserRecords(database()).byLogin(QStringLiteral("admin"));
    Runtime::current()->setActor(admin->actor());
    m_userId = admin->id;
    QObject::connect(&NoticeHub::instance(), &NoticeHub::raised,
                     [this](int, const QString &text) { m_lastNotice = text; });
}

QStringList WorkSteps::names()
{
    return {QStringLiteral("put"),    QStringLiteral("intake"),  QStringLiteral("intake-folder"),
            QStringLiteral("remark"), QStringLiteral("verdict"), QStringLiteral("assign")};
}

void WorkSteps::say(const QString &line)
{
    const QByteArray bytes = line.toUtf8().replace('\n', ' ') + '\n';
    if (::write(STDOUT_FILENO, bytes.constData(), static_cast<std::size_t>(bytes.size())) !=
        bytes.size())
        ::_exit(3);
}

Database &WorkSteps::database()
{
    return Runtime::current()->records().database();
}

bool WorkSteps::performAny()
{
    const QStringList all = names();
    return perform(all.at(m_random.bounded(all.size())));
}

bool WorkSteps::perform(const QString &name)
{
    if (name == QLatin1String("put"))
        return put();
    if (name == QLatin1String("remark"))
        return remark();
    if (name == QLatin1String("verdict"))
        return verdict();
    if (name == QLatin1String("assign"))
        return assign();
    return intake(name == QLatin1String("intake-folder"));
}

bool WorkSteps::told(bool done, const QString &what)
{
    say(done ? QStringLiteral("ok ") + what : QStringLiteral("no ") + m_lastNotice);
    return done;
}

QByteArray WorkSteps::noise(int size)
{
    std::vector<quint32> words(static_cast<std::size_t>(size) / sizeof(quint32));
    m_random.fillRange(words.data(), static_cast<qsizetype>(words.size()));
    return QByteArray(reinterpret_cast<const char *>(words.data()), size);
}

QString WorkSteps::writtenArchive(QByteArray &digest)
{
    const QByteArray zip = rawZip({{"board.gbr", noise(NoiseSize)}});
    digest = Sha256::of(zip);
    const QString path = m_scratch + QStringLiteral("/sent.zip");
    if (!writeFile(path, zip))
        ::_exit(4);
    return path;
}

bool WorkSteps::put()
{
    QByteArray digest;
    const QString path = writtenArchive(digest);
    const QString name = newGuid() + QStringLiteral(".zip");
    const auto config = Common::commonInterface()->getConfig();
    const QString what = QStringLiteral("put %1 %2").arg(name, QString::fromLatin1(digest));
    say(QStringLiteral("try ") + what);
    return told(Common::MongodbPut(config.fileStoreDb, config.fileStoreBucket, path.toStdString(),
                                   name.toStdString()) == 0,
                what);
}

bool WorkSteps::intake(bool asFolder)
{
    QByteArray digest = "any";
    IntakeRequest request;
    request.customerCode = QStringLiteral("A1B");
    if (asFolder) {
        request.path = m_scratch + QStringLiteral("/folder");
        if (!writeFile(request.path + QStringLiteral("/board.gbr"), noise(NoiseSize)))
            ::_exit(4);
    } else {
        request.path = writtenArchive(digest);
    }
    say(QStringLiteral("try intake"));
    const auto receipt = Intake::take(request);
    if (!receipt)
        m_lastNotice = receipt.text();
    return told(bool(receipt), QStringLiteral("intake %1 %2 %3")
                                   .arg(receipt.value.jobName, receipt.value.storedName,
                                        QString::fromLatin1(digest)));
}

/// One of the flows that were there before the work began.
QString WorkSteps::anyFlow()
{
    const auto flow = FlowRecords(database()).byId(1 + m_random.bounded(5));
    return flow ? flow->guid : QString();
}

bool WorkSteps::remark()
{
    const QString flow = anyFlow();
    const QString text = newGuid();
    const QString what = QStringLiteral("remark %1 %2").arg(flow, text);
    say(QStringLiteral("try ") + what);
    return told(Odbpp_JobFlowBll().UpdateTips(m_userId, text.toStdString(), flow.toStdString()),
                what);
}

bool WorkSteps::verdict()
{
    const QString flow = anyFlow();
    const int flag = 1 + m_random.bounded(2);
    const QString what = QStringLiteral("verdict %1 %2").arg(flow).arg(flag);
    say(QStringLiteral("try ") + what);
    return told(Odbpp_JobFlowBll().UpdateState(m_userId, 1, flag, flow.toStdString()), what);
}

bool WorkSteps::assign()
{
    const QString flow = anyFlow();
    const int present = FlowRecords(database()).byGuid(flow)->checkerId;
    const int assignee = present == 2 ? 3 : 2; // to somebody else: the same again is no change
    const QString what = QStringLiteral("assign %1 %2").arg(flow).arg(assignee);
    const bool isFirst = present == 0;
    say(QStringLiteral("try ") + what);
    Kodms_PreCheckAssignBll service;
    const std::string guid = flow.toStdString();
    return told(isFirst ? service.s_PreCheckAssign(guid, m_userId, assignee)
                        : service.Update_PreCheckAssign(guid, m_userId, assignee),
                what);
}

} // namespace KODMS::Tests
