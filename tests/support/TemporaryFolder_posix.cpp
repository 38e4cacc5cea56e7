// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TemporaryFolder.h"

#include <QFile>

namespace KODMS::Tests {

namespace {

constexpr char Variable[] = "TMPDIR";

} // namespace

TemporaryFolder::TemporaryFolder(const QString &folder) : m_before(qEnvironmentVariable(Variable))
{
    qputenv(Variable, QFile::encodeName(folder));
}

TemporaryFolder::~TemporaryFolder()
{
    if (m_before.isNull())
        qunsetenv(Variable);
    else
        qputenv(Variable, QFile::encodeName(m_before));
}

} // namespace KODMS::Tests
