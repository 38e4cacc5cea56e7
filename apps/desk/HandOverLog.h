// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QAbstractTableModel>
#include <QDateTime>
#include <QVector>

namespace KODMS::Host {

/// What the desks handed to the CAM side in this session, newest first. Keeps the
/// last 1000.
class HandOverLog : public QAbstractTableModel {
    Q_OBJECT

public:
    enum class Kind { Import, Input, Export };
    Q_ENUM(Kind)

    struct HandOver {
        QDateTime time;
        Kind kind = Kind::Import;
        QString jobName;
        QString path;       ///< empty where only the job is named
        QString parameters; ///< what the CAM side is to know besides
    };

    enum Column { TimeColumn, KindColumn, JobColumn, PathColumn, ParametersColumn, ColumnCount };

    explicit HandOverLog(QObject *parent = nullptr) : QAbstractTableModel(parent) {}

    /// By row, so that 0 is the newest; an empty record for a row that is not there.
    HandOver at(int row) const;

    static QString kindText(Kind kind);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

public Q_SLOTS:
    /// `path` may carry "|" and parameters.
    void addImport(const QString &path, const QString &jobName);
    void addInput(const QString &jobName, const QString &path);
    void addExport(const QString &jobName, int jobId);
    void clear();

Q_SIGNALS:
    void countChanged();

private:
    void add(Kind kind, const QString &jobName, const QString &path, const QString &parameters);
    static QString cellText(const HandOver &handOver, int column);

    QVector<HandOver> m_handOvers; ///< oldest first
};

} // namespace KODMS::Host
