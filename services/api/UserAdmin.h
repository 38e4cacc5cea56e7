// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>
#include <QVector>

namespace KODMS::Services {

struct NewUser {
    QString loginName;  ///< [a-z0-9._-]{1,32}, begins with a letter or digit; unique
    QString realName;   ///< 1 to 64 characters, shown in the desks
    QString password;   ///< at least 8 characters
    int department = 0; ///< 3 (with post 10): pre-checker; 2 (with post 6): executor
    int post = 0;
    QStringList roles;
};

struct UserAccount {
    int id = 0;
    QString loginName;
    QString realName;
    int department = 0;
    int post = 0;
    bool enabled = true;
    QStringList roles;
};

/// The users of the running installation, for its operator (the administration tool) and
/// for a signed-in administrator; anybody else is refused. Every change is audited. The last
/// enabled administrator can be neither disabled nor deprived of the role.
class KODMS_SERVICES_API UserAdmin {
public:
    /// The role names, in their order of listing.
    static QStringList roleNames();

    /// What add() would find wrong with anything but the password: to be asked before
    /// somebody thinks one up.
    static Outcome check(const NewUser &user);
    /// Returns the new user's id.
    static Result<int> add(const NewUser &user);
    /// Every user, disabled ones too, by login name.
    static Result<QVector<UserAccount>> list();
    /// Fails when there is no such user.
    static Outcome checkKnown(const QString &loginName);
    static Outcome setPassword(const QString &loginName, const QString &password);
    static Outcome grantRole(const QString &loginName, const QString &role);
    static Outcome revokeRole(const QString &loginName, const QString &role);
    static Outcome setEnabled(const QString &loginName, bool enabled);
};

} // namespace KODMS::Services
