// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/sample/SampleInserts.h"

namespace KODMS::Services {

namespace {

/// 0 and the empty text stand for nothing.
QVariant id(int number)
{
    return number == 0 ? QVariant(QVariant::Int) : QVariant(number);
}

QVariant time(const QString &text)
{
    return text.isEmpty() ? QVariant() : QVariant(text);
}

} // namespace

SampleInserts::SampleInserts(Database &database)
    : m_flow(
          database, "sample_flows",
          "id, customer_id, customer_code, serial_number, job_name, guid, orig_name, description, "
          "source_tips, remark, orig_job_name, layer_count, feature_count, flow_status, "
          "check_flag, batch_number, file_type, payment, creator, executor, checker, importer, "
          "reviewer, robot_reviewer, orig_file_id, import_file_id, result_file_id, create_time, "
          "assign_time, import_time, check_time, robot_check_time"),
      m_question(database, "sample_questions",
                 "flow_id, title, description, check_flag, creator, create_time"),
      m_file(database, "orig_files",
             "id, guid, base_name, stored_name, file_type, customer_code, kind, "
             "has_body, create_user_id, create_time")
{
}

void SampleInserts::flow(const SampleFlow &f)
{
    m_flow.add({f.id,
                f.customerId,
                f.customerCode,
                f.serialNumber,
                f.jobName,
                f.guid,
                f.origName,
                f.description,
                f.sourceTips,
                f.remark,
                f.origJobName,
                f.layerCount,
                f.featureCount,
                f.flowStatus,
                f.checkFlag,
                f.batchNumber,
                f.fileType,
                f.payment,
                id(f.creator),
                id(f.executor),
                id(f.checker),
                id(f.importer),
                id(f.reviewer),
                id(f.robotReviewer),
                id(f.origFileId),
                id(f.importFileId),
                id(f.resultFileId),
                f.createTime,
                time(f.assignTime),
                time(f.importTime),
                time(f.checkTime),
                time(f.robotCheckTime)});
}

void SampleInserts::question(int flowId, const SampleQuestion &question)
{
    m_question.add({flowId, question.title, question.description, question.checkFlag,
                    id(question.creator), question.createTime});
}

void SampleInserts::file(const SampleFile &file, bool hasBody)
{
    m_file.add({file.id, file.guid, file.baseName, file.storedName, file.fileType,
                file.customerCode, file.kind, hasBody ? 1 : 0, id(file.userId), file.createTime});
}

void SampleInserts::flush()
{
    m_file.flush();
    m_flow.flush();
    m_question.flush();
}

} // namespace KODMS::Services
