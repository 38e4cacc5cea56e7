// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Role.h"

#include <QStringList>

#include <initializer_list>

namespace KODMS::Services {

/// The roles of one user. Value type.
class RoleSet {
public:
    RoleSet() = default;

    RoleSet(std::initializer_list<Role> roles)
    {
        for (const Role role : roles)
            insert(role);
    }

    void insert(Role role) { m_bits |= bit(role); }

    void remove(Role role) { m_bits &= ~bit(role); }

    bool has(Role role) const { return (m_bits & bit(role)) != 0; }

    bool hasAnyOf(std::initializer_list<Role> roles) const
    {
        for (const Role role : roles) {
            if (has(role))
                return true;
        }
        return false;
    }

    bool isEmpty() const { return m_bits == 0; }

    /// Names, in the order of the enumeration.
    QStringList names() const
    {
        QStringList list;
        for (const Role role : allRoles()) {
            if (has(role))
                list << roleName(role);
        }
        return list;
    }

    bool operator==(const RoleSet &other) const { return m_bits == other.m_bits; }

private:
    static unsigned bit(Role role) { return 1U << static_cast<unsigned>(role); }

    unsigned m_bits = 0;
};

} // namespace KODMS::Services
