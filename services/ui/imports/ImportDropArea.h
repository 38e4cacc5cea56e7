// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QLabel;

namespace KODMS::Services {

/// Where a job to import is dropped or chosen. One file or folder at a time.
class ImportDropArea final : public QFrame {
    Q_OBJECT

public:
    explicit ImportDropArea(QWidget *parent);

    /// What is chosen; empty: nothing.
    void showPath(const QString &path);

Q_SIGNALS:
    void chosen(const QString &path);
    void refused(const QString &why);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void chooseFile();
    void chooseFolder();

    QLabel *m_text;
};

} // namespace KODMS::Services
