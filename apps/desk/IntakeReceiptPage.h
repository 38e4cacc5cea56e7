// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;
class QPushButton;

namespace KODMS::Host {

/// What an intake gave: the job's name, large, to be copied.
class IntakeReceiptPage : public QWidget {
    Q_OBJECT

public:
    explicit IntakeReceiptPage(QWidget *parent = nullptr);

    void showReceipt(const QString &jobName, const QString &origName);

Q_SIGNALS:
    void nextRequested();

private:
    QLabel *m_jobName = nullptr;
    QLabel *m_details = nullptr;
    QPushButton *m_next = nullptr;
};

} // namespace KODMS::Host
