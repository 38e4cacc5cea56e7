// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/WithoutPrivilege.h"

#include <QtGlobal>

#ifdef Q_OS_LINUX
#include <linux/capability.h>
#include <linux/securebits.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>
#endif

namespace KODMS::Tests {

#ifdef Q_OS_LINUX

namespace {

constexpr int Powers[] = {CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH};

struct PowerSet {
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct data[_LINUX_CAPABILITY_U32S_3] = {};

    bool read() { return ::syscall(SYS_capget, &header, data) == 0; }

    bool write() { return ::syscall(SYS_capset, &header, data) == 0; }
};

} // namespace

WithoutPrivilege::WithoutPrivilege()
{
    PowerSet powers;
    if (!powers.read())
        return;
    m_before = powers.data[0].effective;
    for (const int power : Powers)
        powers.data[0].effective &= ~(1U << power);
    m_isBound = powers.write();
    // Else the question what may be done is answered with the powers that could be had back.
    m_securityBefore = ::prctl(PR_GET_SECUREBITS, 0, 0, 0, 0);
    ::prctl(PR_SET_SECUREBITS, m_securityBefore | SECBIT_NO_SETUID_FIXUP, 0, 0, 0);
}

WithoutPrivilege::~WithoutPrivilege()
{
    PowerSet powers;
    if (!m_isBound || !powers.read())
        return;
    ::prctl(PR_SET_SECUREBITS, m_securityBefore, 0, 0, 0);
    powers.data[0].effective = m_before;
    if (!powers.write())
        qFatal("the test cannot get its rights back");
}

void OrdinaryProcess::setupChildProcess()
{
    // Refused to an ordinary account, which has nothing to give up.
    for (const int power : Powers)
        ::prctl(PR_CAPBSET_DROP, power, 0, 0, 0);
}

#else

WithoutPrivilege::WithoutPrivilege() = default;
WithoutPrivilege::~WithoutPrivilege() = default;

void OrdinaryProcess::setupChildProcess() {}

#endif

} // namespace KODMS::Tests
