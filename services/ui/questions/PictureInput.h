// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/ui/questions/PictureFile.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class QMimeData;
class QWidget;

namespace KODMS::Services {

/// What a paste or drop brings: files or a picture itself.
struct BroughtPictures {
    QStringList paths;
    QImage image;
    int elsewhere = 0; ///< addresses that are no files of this machine

    bool isEmpty() const { return paths.isEmpty() && image.isNull() && elsewhere == 0; }

    /// Empty when the data holds nothing of that kind, or text that goes before.
    static BroughtPictures from(const QMimeData *data);
};

/// Brings the pictures that are pasted into or dropped on a form and its fields.
class PictureInput final : public QObject {
    Q_OBJECT

public:
    /// Watches `form` for drops and each of `fields` for pasting.
    PictureInput(QWidget &form, const QVector<QWidget *> &fields);

    /// What the clipboard holds now, if that is pictures.
    bool paste();

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    void brought(const KODMS::Services::BroughtPictures &pictures);

private:
    bool drop(QEvent *event);

    QWidget &m_form;
};

} // namespace KODMS::Services
