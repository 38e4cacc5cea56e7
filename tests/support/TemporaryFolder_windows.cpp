// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TemporaryFolder.h"

#include <QDir>

#include <windows.h>

namespace KODMS::Tests {

namespace {

/// Not by way of bytes: the code page need not have the folder's characters.
void setVariable(const QString &folder)
{
    const std::wstring value = QDir::toNativeSeparators(folder).toStdWString();
    ::SetEnvironmentVariableW(L"TMP", value.c_str());
}

} // namespace

TemporaryFolder::TemporaryFolder(const QString &folder) : m_before(QDir::tempPath())
{
    setVariable(folder);
}

TemporaryFolder::~TemporaryFolder()
{
    setVariable(m_before);
}

} // namespace KODMS::Tests
