// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QBoxLayout;

namespace KODMS::Services {

class FileNameLabel;

/// Where a job to import is dropped or chosen. One file or folder at a time. Large while
/// nothing is chosen, then a line.
class ImportDropArea final : public QFrame {
    Q_OBJECT

public:
    explicit ImportDropArea(QWidget *parent);

    /// What is chosen; empty: nothing.
    void showPath(const QString &path);

    /// Whether there is something else to be seen below.
    void setCompact(bool isCompact);

    // Also called by the window around it, which takes drops everywhere.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

Q_SIGNALS:
    void chosen(const QString &path);
    void refused(const QString &why);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *buildButtons();
    void chooseFile();
    void chooseFolder();
    void setHovered(bool isHovered);

    FileNameLabel *m_text;
    QBoxLayout *m_layout;
    bool m_isHovered = false;
};

} // namespace KODMS::Services
