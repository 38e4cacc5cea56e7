// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/SqlQuery.h"
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

private:
    SqlQuery m_flow;
    SqlQuery m_question;
    SqlQuery m_file;
};

} // namespace KODMS::Services
