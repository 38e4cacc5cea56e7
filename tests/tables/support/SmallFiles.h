// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Tests {

/// While it lives, no file of this process grows beyond so many bytes: writing fails
/// then, as on a full disk, however it is done.
class SmallFiles {
public:
    explicit SmallFiles(qint64 bytes);
    ~SmallFiles();
    SmallFiles(const SmallFiles &) = delete;
    SmallFiles &operator=(const SmallFiles &) = delete;

    /// False where the system has no such limit: nothing can be tested then.
    bool isInForce() const { return m_isInForce; }

private:
    quint64 m_before = 0;
    void (*m_handler)(int) = nullptr;
    bool m_isInForce = false;
};

} // namespace KODMS::Tests
