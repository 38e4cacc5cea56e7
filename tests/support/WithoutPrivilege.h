// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>

#include <cstdint>

namespace KODMS::Tests {

/// While it lives, this thread is bound by the permissions of files and folders, which the
/// administrator's account is not: it keeps who it is and loses the power to pass them over.
/// For an ordinary account nothing changes.
class WithoutPrivilege {
public:
    WithoutPrivilege();
    ~WithoutPrivilege();
    WithoutPrivilege(const WithoutPrivilege &) = delete;
    WithoutPrivilege &operator=(const WithoutPrivilege &) = delete;

    /// False where the system does not let go of the power: nothing can be tested then.
    bool isBound() const { return m_isBound; }

private:
    std::uint32_t m_before = 0;
    int m_securityBefore = 0;
    bool m_isBound = false;
};

/// A program that is bound by the permissions of files and folders, whoever starts it.
class OrdinaryProcess : public QProcess {
    Q_OBJECT

protected:
    void setupChildProcess() override;
};

} // namespace KODMS::Tests
