// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QStringList>

namespace KODMS::Services {

/// Who is signed in; id 0 = nobody.
struct SignedInUser {
    int id = 0;
    QString loginName;
    QString realName;
    QStringList roles; ///< names as kodms-admin takes them, for example "check-authority"
    int department = 0;
    int post = 0;
};

/// Signing in and out of the running services. GUI thread.
class KODMS_SERVICES_API SignIn {
public:
    /// Takes about 0.1 s. A failure does not tell whether the user exists; after
    /// five in a row further tries are refused for a growing time, and the text
    /// says for how long. A success replaces the user signed in before.
    static Outcome signIn(const QString &loginName, const QString &password);

    static void signOut();

    /// For the administration tool, whose user holds the database in hand anyway:
    /// acts as "kodms-admin" (id 0) with the administrator's rights. The table
    /// services, which ask for a signed-in person, still refuse.
    static void actAsOperator();

    static SignedInUser current();
};

} // namespace KODMS::Services
