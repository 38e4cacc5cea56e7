// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Tests {

/// As long as it lives, this process and those that it starts make their temporary files in the
/// folder.
class TemporaryFolder {
public:
    explicit TemporaryFolder(const QString &folder);
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;

private:
    QString m_before; ///< null: there was none
};

} // namespace KODMS::Tests
