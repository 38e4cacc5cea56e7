// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskProgress.h"

namespace KODMS::Services {

void TaskProgress::setUnit(Unit unit)
{
    m_unit = unit;
}

/// A task of several steps reports each step's total: what counts is the present one.
void TaskProgress::setTotal(qint64 bytes)
{
    m_done = 0;
    m_total = bytes;
}

void TaskProgress::advance(qint64 bytes)
{
    m_done += bytes;
}

bool TaskProgress::isCancelled() const
{
    return m_isCancelled;
}

void TaskProgress::cancel()
{
    m_isCancelled = true;
}

Progress::Unit TaskProgress::unit() const
{
    return m_unit;
}

qint64 TaskProgress::total() const
{
    return m_total;
}

qint64 TaskProgress::done() const
{
    return m_done;
}

} // namespace KODMS::Services
