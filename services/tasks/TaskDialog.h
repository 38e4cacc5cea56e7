// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>
#include <QElapsedTimer>

class QLabel;
class QProgressBar;
class QPushButton;

namespace KODMS::Services {

class TaskProgress;

/// Says what is being done, how far it is and how fast, and offers to cancel.
class TaskDialog final : public QDialog {
    Q_OBJECT

public:
    /// `progress` outlives the dialog.
    TaskDialog(const QString &what, TaskProgress &progress, QWidget *parent);

public Q_SLOTS:
    /// Cancels the task; the dialog stays until the task has ended.
    void reject() override;

private:
    QLabel *makeTitle(const QString &what);
    void stayOnTop();
    void showProgress();
    QString numberText(qint64 number) const;
    QString amountText(qint64 done, qint64 total) const;
    QString rateText(qint64 done);

    TaskProgress &m_progress;
    QLabel *m_amount;
    QLabel *m_rate;
    QProgressBar *m_bar;
    QPushButton *m_cancel;
    QElapsedTimer m_sinceMark;
    qint64 m_mark = 0;
};

} // namespace KODMS::Services
