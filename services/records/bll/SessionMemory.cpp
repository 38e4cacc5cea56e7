// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/bll/SessionMemory.h"

namespace KODMS::Services {

namespace {

std::size_t at(FieldGroup group)
{
    return static_cast<std::size_t>(group);
}

} // namespace

void SessionMemory::shown(const ShownRow &row)
{
    if (!row.jobName.isEmpty())
        m_names.insert(row.flowGuid, row.jobName);
    Versions &known = m_versions[row.flowId];
    known[at(FieldGroup::File)] = row.versions.file;
    known[at(FieldGroup::Assignment)] = row.versions.assignment;
    if (row.view == ShownRow::View::Flow) {
        known[at(FieldGroup::State)] = row.versions.state;
        known[at(FieldGroup::Remark)] = row.versions.remark;
    }
}

std::optional<int> SessionMemory::lastShown(int flowId, FieldGroup group) const
{
    const auto found = m_versions.constFind(flowId);
    if (found == m_versions.constEnd())
        return std::nullopt;
    return (*found)[at(group)];
}

void SessionMemory::wrote(int flowId, FieldGroup group, int version)
{
    m_versions[flowId][at(group)] = version;
}

void SessionMemory::clear()
{
    m_versions.clear();
    m_names.clear();
    m_failedReplacements.clear();
    m_failedFlags.clear();
    m_failedMoves.clear();
}

} // namespace KODMS::Services
