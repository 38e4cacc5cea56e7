// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/JobHistory.h"

#include <QAbstractTableModel>

namespace KODMS::Host {

/// The history of one job, the latest first, as far back as somebody has asked for.
class HistoryLog : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { TimeColumn, WhoColumn, ActionColumn, ContentColumn, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Shows that flow's history, or reads again what happened to the one that is shown.
    /// A flow that cannot be read leaves the list empty.
    void show(const QString &flowGuid);
    /// Adds a page of older entries.
    void showOlder();
    void clear();

    QString jobName() const { return m_page.jobName; }

    bool hasOlder() const { return m_page.hasOlder; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void changed();

private:
    bool isKnown(const Services::HistoryPage &page) const;

    QString m_flowGuid;
    Services::HistoryPage m_page;
};

} // namespace KODMS::Host
