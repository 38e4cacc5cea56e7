// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/PictureInput.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace KODMS::Services {

BroughtPictures BroughtPictures::from(const QMimeData *data)
{
    BroughtPictures brought;
    if (!data)
        return brought;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile())
            brought.paths << url.toLocalFile();
        else
            ++brought.elsewhere;
    }
    if (brought.paths.isEmpty() && data->hasImage()) {
        brought.image = qvariant_cast<QImage>(data->imageData());
        brought.elsewhere = 0; // a browser brings the picture beside its address
    }
    return brought;
}

PictureInput::PictureInput(QWidget &form, const QVector<QWidget *> &fields)
    : QObject(&form), m_form(form)
{
    form.setAcceptDrops(true);
    form.installEventFilter(this);
    for (QWidget *field : fields) {
        field->setAcceptDrops(false);
        field->installEventFilter(this);
    }
}

bool PictureInput::paste()
{
    const QMimeData *data = QApplication::clipboard()->mimeData();
    const BroughtPictures pictures = BroughtPictures::from(data);
    if (pictures.isEmpty())
        return false;
    Q_EMIT brought(pictures);
    return true;
}

bool PictureInput::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && watched != &m_form) {
        const QMimeData *data = QApplication::clipboard()->mimeData();
        const bool isText = data && data->hasText() && !data->hasUrls();
        return static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste) && !isText && paste();
    }
    return watched == &m_form && drop(event);
}

bool PictureInput::drop(QEvent *event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
        return false;
    auto *drop = static_cast<QDropEvent *>(event);
    const BroughtPictures pictures = BroughtPictures::from(drop->mimeData());
    if (pictures.isEmpty())
        return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop)
        Q_EMIT brought(pictures);
    return true;
}

} // namespace KODMS::Services
