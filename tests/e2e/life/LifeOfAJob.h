// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/UserAdmin.h"

#include <QByteArray>
#include <QStringList>

namespace KODMS::Tests {

class DeskUser;
class LifeHouse;

/// One job on its way through the house: what the records and the store hold of it, and
/// what its history will have to tell.
class LifeOfAJob {
public:
    enum class File { Original, Import, Result };

    explicit LifeOfAJob(LifeHouse &house) : m_house(house) {}

    /// The job that was taken in under this name.
    void begin(const QString &name);

    LifeHouse &house() const { return m_house; }

    const QString &name() const { return m_name; }

    const QString &flowGuid() const { return m_flowGuid; }

    /// Of the flow f, its job j and its row c of the original-file desk.
    QString record(const QString &expression) const;

    /// "1,0": flow status and check flag.
    QString state() const;

    /// The name in the store of the file that is in force; empty: none.
    QString storedName(File file) const;

    /// What the store keeps of that file, read past the services.
    QByteArray storedBytes(File file) const;

    /// Its row in the job table, where the name stands in that column.
    int rowAt(const DeskUser &desk, int column) const;

    /// What the job-flow desk calls its status when this user looks; empty: not there.
    QString statusFor(const Services::NewUser &person) const;

    /// Notes what somebody has done to the job now.
    void did(const QString &who, const QString &action, const QString &content);

    /// As the history tells a change; before the first there is nothing.
    static QString change(const QString &before, const QString &after);

    /// "who: action: content" of all that, the first deed first.
    const QStringList &deeds() const { return m_deeds; }

private:
    LifeHouse &m_house;
    QString m_name;
    QString m_flowGuid;
    QStringList m_deeds;
};

} // namespace KODMS::Tests
