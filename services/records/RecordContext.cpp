// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/RecordContext.h"

#include <utility>

namespace KODMS::Services {

namespace {

RecordContext *currentContext = nullptr;

} // namespace

RecordContext::RecordContext(std::unique_ptr<Database> database) : m_database(std::move(database))
{
}

RecordContext::~RecordContext()
{
    if (currentContext == this)
        currentContext = nullptr;
}

RecordContext *RecordContext::current()
{
    return currentContext;
}

void RecordContext::setCurrent(RecordContext *context)
{
    currentContext = context;
}

} // namespace KODMS::Services
