// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/bll/support/ChangingCases.h"

#include "foundation/bll/Kodms_OrigFileAssignBll.h"
#include "foundation/bll/Kodms_PreCheckAssignBll.h"
#include "foundation/bll/Odbpp_JobBll.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/bll/Odbpp_OrigFilesBll.h"
#include "foundation/bll/Odbpp_QuestionsBll.h"
#include "foundation/common/DBS_API.h"
#include "services/records/Guid.h"
#include "services/records/bll/QuestionChanges.h"
#include "services/records/bll/RobotChanges.h"
#include "services/records/bll/StoredFileRecords.h"

namespace KODMS::Tests {

using namespace DataLib;
using Services::Role;

namespace {

const std::vector<Role> reviewers{Role::Admin, Role::CheckAuthority};
const std::vector<Role> filers{Role::Admin, Role::OrigFileUpdate};

void importKos(RecordsHome &home, const TestJob &job)
{
    home.addFile(QStringLiteral("job.kos"), QStringLiteral("kos"));
    home.set(QStringLiteral("job_flows"), QStringLiteral("last_import_file_id"),
             home.one(QStringLiteral("SELECT max(id) AS value FROM orig_files")), job.flowId);
}

void putFile(RecordsHome &home, const TestJob &)
{
    home.files().names.insert(QStringLiteral("new.zip"));
}

bool input(const TestJob &, int user)
{
    return BLL::Odbpp_OrigFilesBll().inputOrigFile(Services::newGuid().toStdString(), "b",
                                                   "new.zip", "zip", "A1B", 0, user);
}

void askQuestion(RecordsHome &home, const TestJob &job)
{
    home.addQuestion(job);
}

bool resolveQuestion(const TestJob &, int user)
{
    return BLL::Odbpp_QuestionsBll().UpdateQuestionStatus(1, 2, user);
}

bool raiseQuestion(const TestJob &job, int user)
{
    Services::NewQuestion question;
    question.flowId = job.flowId;
    question.userId = user;
    question.title = QStringLiteral("new");
    return Services::QuestionChanges::raise(question).outcome.ok;
}

bool answerQuestion(const TestJob &, int user)
{
    bool isOvertaken = false;
    return Services::QuestionChanges::answer({1, user, 0, QStringLiteral("new"), 2}, isOvertaken)
        .ok;
}

std::vector<ChangingCase> stateCases()
{
    const auto state = [](int status, int flag) {
        return [=](const TestJob &job, int user) {
            return BLL::Odbpp_JobFlowBll().UpdateState(user, status, flag, job.flowGuid);
        };
    };
    return {
        {"verdict on an import", 1, 0, reviewers, {}, false, true, state(1, 2)},
        {"verdict on a robot's result", 2, 1, reviewers, {}, false, true, state(2, 2)},
        {"state of an import", 0, 0, {Role::Admin}, {Role::PreProcess}, false, true, state(1, 0)},
        {"state after a kos replacement", 0, 0, filers, {}, false, true, state(1, 2), importKos},
        {"robot takes the job", 1, 2, {Role::Robot}, {}, false, true, state(2, 0)},
        {"finish",
         2,
         2,
         {},
         {},
         true,
         false,
         [](const TestJob &job, int) {
             return DBS_API::kodms_update_flow_status(job.jobName, 3, 2);
         }},
        {"verdict on the job",
         1,
         0,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobBll().UpdateCheckFlag(user, 2, 2, job.jobName, job.flowId);
         }},
        {"review time",
         1,
         2,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, 0, "",
                                                                       user, "", 0, "");
         }},
        {"robot review time",
         2,
         2,
         reviewers,
         {},
         false,
         true,
         [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, 0, "", 0,
                                                                       "", user, "");
         }},
        {"import time", 1, 0, {Role::Admin}, {}, true, true, [](const TestJob &job, int user) {
             return BLL::Odbpp_JobFlowBll().UpdatePreImportOrCheckTime(job.flowGuid, user, user, "",
                                                                       0, "", 0, "");
         }}};
}

bool deliverResult(const TestJob &job, int)
{
    Services::StoredFileRow file;
    file.guid = Services::newGuid();
    file.storedName = QStringLiteral("new.zip");
    return bool(Services::RobotChanges::deliver(
        {job.flowId, 0, QString::fromStdString(job.flowGuid), QString::fromStdString(job.jobName)},
        file, QStringLiteral("board")));
}

std::vector<ChangingCase> robotCases()
{
    return {{"robot takes the job by its name",
             1,
             2,
             {Role::Robot},
             {},
             false,
             false,
             [](const TestJob &job, int) {
                 return bool(Services::RobotChanges::take(QString::fromStdString(job.jobName)));
             }},
            {"robot delivers", 2, 0, {Role::Robot}, {}, false, false, deliverResult, putFile}};
}

std::vector<ChangingCase> fileCases()
{
    return {{"record a stored file", 0, 0, filers, {}, false, true, input, putFile},
            {"point the flow at a file",
             0,
             0,
             filers,
             {},
             false,
             false,
             [](const TestJob &job, int) {
                 return BLL::Odbpp_JobFlowBll().UpdateOrigFileGuid(job.fileGuid, job.flowGuid);
             }},
            {"name the last import",
             0,
             0,
             filers,
             {},
             false,
             false,
             [](const TestJob &job, int) {
                 return BLL::Odbpp_JobFlowBll().UpdateLastOdbppImportMongoFsGuid(job.storedName,
                                                                                 job.flowGuid);
             }},
            {"rename the row's file",
             0,
             0,
             filers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Odbpp_JobCompressBll().UpdateZipUUID_OrigName(
                     job.rowId, job.storedName, user, "x");
             }},
            {"delete a file", 0, 0, filers, {}, false, false, [](const TestJob &job, int) {
                 return BLL::Odbpp_JobCompressBll().DelOrigFile(job.rowId, job.storedName,
                                                                job.flowGuid);
             }}};
}

std::vector<ChangingCase> workCases()
{
    const std::vector<Role> executors{Role::Admin, Role::OrigFileAssign};
    const std::vector<Role> checkers{Role::Admin, Role::PreCheckAssign};
    return {{"assign an executor",
             0,
             0,
             executors,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_OrigFileAssignBll().AssignOrigFile(job.rowId, user, job.flowGuid,
                                                                      user, 1);
             }},
            {"reassign an executor",
             0,
             0,
             executors,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_OrigFileAssignBll().AssignOrigFileUpdate(user, job.flowGuid, 1);
             }},
            {"assign a pre-checker",
             0,
             0,
             checkers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_PreCheckAssignBll().s_PreCheckAssign(job.flowGuid, user, 1);
             }},
            {"reassign a pre-checker",
             0,
             0,
             checkers,
             {},
             false,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Kodms_PreCheckAssignBll().Update_PreCheckAssign(job.flowGuid, user, 1);
             }},
            {"remark",
             0,
             0,
             {},
             {},
             true,
             true,
             [](const TestJob &job, int user) {
                 return BLL::Odbpp_JobFlowBll().UpdateTips(user, "new", job.flowGuid);
             }},
            {"state of a question", 0, 0, {}, {}, true, true, resolveQuestion, askQuestion},
            {"raise a question", 0, 0, {}, {}, true, true, raiseQuestion},
            {"answer a question", 0, 0, {}, {}, true, true, answerQuestion, askQuestion}};
}

} // namespace

const std::vector<ChangingCase> &changingCases()
{
    static const std::vector<ChangingCase> all = [] {
        std::vector<ChangingCase> list = stateCases();
        for (const auto &more : {robotCases(), fileCases(), workCases()})
            list.insert(list.end(), more.begin(), more.end());
        return list;
    }();
    return all;
}

} // namespace KODMS::Tests
