// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/session/Runtime.h"

#include <QRandomGenerator>

namespace KODMS::Tests {

/// What people do all day, one step at a time, on the running installation. Each
/// step says on standard output what it tries before it begins, and "ok" or "no"
/// with the reason when it has ended.
class WorkSteps {
public:
    WorkSteps(quint32 seed, const QString &scratch);

    static QStringList names();

    /// True when the step was done.
    bool perform(const QString &name);
    bool performAny();

    static void say(const QString &line);

private:
    bool put();
    bool intake(bool asFolder);
    bool remark();
    bool verdict();
    bool assign();
    bool told(bool done, const QString &what);

    QString anyFlow();
    QByteArray noise(int size);
    QString writtenArchive(QByteArray &digest);
    Services::Database &database();

    QRandomGenerator m_random;
    QString m_scratch;
    int m_userId = 0;
    QString m_lastNotice;
};

} // namespace KODMS::Tests
