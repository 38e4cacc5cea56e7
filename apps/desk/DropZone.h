// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFrame>

class QLabel;

namespace KODMS::Host {

/// A framed place that takes one local file or folder by drag and drop, or by its
/// two buttons.
class DropZone : public QFrame {
    Q_OBJECT

public:
    explicit DropZone(QWidget *parent = nullptr);

    /// The chosen file or folder; empty when none is.
    QString path() const { return m_path; }

public Q_SLOTS:
    void setPath(const QString &path);

Q_SIGNALS:
    void pathChanged(const QString &path);
    /// What was dropped cannot be taken; `why` is for people.
    void refused(const QString &why);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private Q_SLOTS:
    void chooseFile();
    void chooseFolder();

private:
    void setHovered(bool hovered);
    void showPath();

    QString m_path;
    QLabel *m_label = nullptr;
};

} // namespace KODMS::Host
