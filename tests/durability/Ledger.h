// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/common/support/TestInstallation.h"

#include <QHash>

namespace KODMS::Tests {

/// What workers said that they did, to be compared with what is there.
class Ledger {
public:
    /// Everything that was acknowledged, and the one step that may have been
    /// under way when the worker ended.
    void read(const QStringList &lines);

    /// What is missing or wrong in the running installation; empty when nothing is.
    QStringList differences(TestInstallation &home);

    int acknowledged() const { return m_acknowledged; }

    /// Files that were stored and never recorded: a repair may take them.
    void forgetPuts() { m_puts.clear(); }

private:
    /// A value was acknowledged; another one may have been on its way.
    struct Value {
        QString known;
        QString tried;

        bool allows(const QString &value) const { return value == known || value == tried; }
    };

    using Values = QHash<QString, Value>;

    void acknowledge(const QStringList &words);
    Values *valuesOf(const QString &step);
    void settleTried(TestInstallation &home);
    QStringList compare(const Values &values, TestInstallation &home, const QString &sql,
                        const QString &what);
    QStringList compareFiles(TestInstallation &home);

    Values m_remarks;
    Values m_verdicts;
    Values m_assignments;
    QHash<QString, QString> m_puts;    ///< stored name: digest
    QHash<QString, QString> m_intakes; ///< job: stored name and digest
    int m_acknowledged = 0;
};

} // namespace KODMS::Tests
