// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/PictureStrip.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace KODMS::Services {

namespace {

constexpr int Margin = 14;
constexpr int StripHeight = 144;

} // namespace

PictureStrip::PictureStrip(QWidget *parent) : QListWidget(parent)
{
    setObjectName(QStringLiteral("questionPictures"));
    setAccessibleName(tr("图片"));
    setViewMode(QListView::IconMode);
    setIconSize(PictureFile::ThumbnailSize);
    setGridSize(PictureFile::ThumbnailSize + QSize(Margin, Margin + fontMetrics().height()));
    setMovement(QListView::Static);
    setFlow(QListView::LeftToRight);
    setWrapping(false);
    setTextElideMode(Qt::ElideMiddle);
    setUniformItemSizes(true);
    setFixedHeight(StripHeight);
    setDragEnabled(false);
    setAcceptDrops(false); // the form takes drops anywhere
    connect(this, &QListWidget::itemActivated, this,
            [this](QListWidgetItem *item) { Q_EMIT openRequested(row(item)); });
}

void PictureStrip::add(const QImage &thumbnail, const QString &fileName)
{
    // On ground of one size, so that the names stand on one line.
    QPixmap ground(PictureFile::ThumbnailSize);
    ground.fill(Qt::transparent);
    const QRect place(QPoint(), thumbnail.size());
    QPainter(&ground).drawImage(place.translated(ground.rect().center() - place.center()).topLeft(),
                                thumbnail);
    addItem(QIcon(ground), fileName, fileName);
}

void PictureStrip::addBroken(const QString &fileName, const QString &why)
{
    addItem(style()->standardIcon(QStyle::SP_MessageBoxWarning), fileName,
            tr("%1：%2").arg(fileName, why));
}

void PictureStrip::addItem(const QIcon &icon, const QString &fileName, const QString &help)
{
    auto *item = new QListWidgetItem(icon, fileName, this);
    item->setToolTip(QStringLiteral("<p>%1</p>").arg(help.toHtmlEscaped()));
    item->setData(Qt::AccessibleTextRole, help);
}

void PictureStrip::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Delete) && currentRow() >= 0)
        Q_EMIT removeRequested(currentRow());
    else
        QListWidget::keyPressEvent(event);
}

} // namespace KODMS::Services
