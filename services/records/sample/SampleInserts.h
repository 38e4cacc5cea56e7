// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/sample/BatchInsert.h"
#include "services/records/sample/SampleFlow.h"

namespace KODMS::Services {

/// The three inserts of a load, prepared once: flows and questions into their
/// temporary tables, stored files into their own.
class SampleInserts {
public:
    explicit SampleInserts(Database &database);

    void flow(const SampleFlow &flow);
    void question(int flowId, const SampleQuestion &question);
    void file(const SampleFile &file, bool hasBody);

    /// Afterwards everything is in its table.
    void flush();

private:
    BatchInsert m_flow;
    BatchInsert m_question;
    BatchInsert m_file;
};

} // namespace KODMS::Services
