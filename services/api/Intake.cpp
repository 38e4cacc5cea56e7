// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/Intake.h"

#include "foundation/ui/DMS_UICommon.h"
#include "services/api/internal/IntakeBooking.h"
#include "services/api/internal/IntakeFile.h"
#include "services/notices/NoticeHub.h"
#include "services/records/Transaction.h"
#include "services/records/bll/Audit.h"
#include "services/records/bll/ChangeStopped.h"
#include "services/session/Runtime.h"
#include "services/session/TakeBack.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr const char *Action = "intake.take";

QString tr(const char *text)
{
    return QCoreApplication::translate("Intake", text);
}

class IntakeRun {
public:
    IntakeRun(Runtime &runtime, const IntakeRequest &request)
        : m_runtime(runtime), m_database(runtime.records().database()), m_request(request)
    {
    }

    Result<IntakeReceipt> take(Progress *progress)
    {
        if (Outcome allowed = inTransaction([this] { checkRequest(); }); !allowed)
            return allowed;
        const Configuration &configuration = m_runtime.configuration();
        auto file = IntakeFile::at(m_request.path, configuration.limits);
        if (!file)
            return refused(file.outcome);
        if (Outcome stored = store(file.value, progress); !stored)
            return failed(stored);
        IntakeReceipt receipt;
        Outcome booked = inTransaction([&] { receipt = book(file.value); });
        if (booked)
            return receipt;
        takeBackUnrecorded(m_runtime, file.value.storedName());
        return booked;
    }

private:
    void checkRequest()
    {
        IntakeBooking booking(m_database, m_runtime.records().actor());
        booking.requireRight();
        booking.requireGood(m_request);
    }

    IntakeReceipt book(const IntakeFile &file)
    {
        IntakeBooking booking(m_database, m_runtime.records().actor());
        booking.requireRight();
        return booking.book(m_request, file);
    }

    Outcome store(const IntakeFile &file, Progress *progress)
    {
        FileStore &fileStore = m_runtime.fileStore();
        const QString staging = m_runtime.configuration().paths.staging;
        const auto work = [&](Progress &shown) {
            Outcome outcome = file.putInto(fileStore, staging, shown);
            m_isCancelled = shown.isCancelled();
            return outcome;
        };
        return progress ? work(*progress)
                        : TaskRunner::instance().run(tr("接收 %1").arg(file.baseName()), work);
    }

    /// Everything or nothing; what goes wrong becomes a text.
    template <typename Body> Outcome inTransaction(const Body &body)
    {
        try {
            Transaction transaction(m_database);
            body();
            transaction.commit();
            return Outcome::success();
        } catch (const ChangeStopped &why) {
            if (why.kind() == ChangeStopped::Kind::Refused)
                auditRefusal(why.cause());
            return refused(Outcome::failure(why.userText(), why.cause()));
        } catch (const SqlError &error) {
            reportFailure(lcRecords(), Action, m_request.path, error.logText(), error.userText());
            return Outcome::failure(error.userText(), error.logText());
        } catch (const std::exception &error) {
            return failed(
                Outcome::failure(tr("内部错误，未接收"), QString::fromUtf8(error.what())));
        }
    }

    void auditRefusal(const QString &cause)
    {
        try {
            writeAudit(m_database,
                       {m_runtime.records().actor().userId, QString::fromLatin1(Action), QString(),
                        0, m_request.customerCode.left(20), QString(), cause, true});
        } catch (const std::exception &error) {
            qCWarning(lcRecords).noquote() << Action << error.what();
        }
    }

    Outcome refused(const Outcome &outcome) const
    {
        const QString cause = outcome.cause.isEmpty() ? outcome.text : outcome.cause;
        reportRefusal(Action, m_request.path, cause, outcome.text);
        return outcome;
    }

    /// What the person at the screen has cancelled needs no notice.
    Outcome failed(const Outcome &outcome) const
    {
        const QString cause = outcome.cause.isEmpty() ? outcome.text : outcome.cause;
        if (!m_isCancelled && !outcome.isCancelled)
            reportFailure(lcFileStore(), Action, m_request.path, cause, outcome.text);
        return outcome;
    }

    Runtime &m_runtime;
    Database &m_database;
    const IntakeRequest &m_request;
    bool m_isCancelled = false;
};

} // namespace

Result<IntakeReceipt> Intake::take(const IntakeRequest &request, Progress *progress)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(tr("服务尚未启动"));
    Result<IntakeReceipt> receipt = IntakeRun(*runtime, request).take(progress);
    if (receipt)
        UI::DMS_UICommon::interface()->emitGobalSingal();
    return receipt;
}

} // namespace KODMS::Services
