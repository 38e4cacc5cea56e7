// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/imports/ImportDropArea.h"

#include "services/ui/imports/FileNameLabel.h"

#include <QBoxLayout>
#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>
#include <QUrl>

namespace KODMS::Services {

ImportDropArea::ImportDropArea(QWidget *parent)
    : QFrame(parent), m_text(new FileNameLabel(this)),
      m_layout(new QBoxLayout(QBoxLayout::TopToBottom, this))
{
    setObjectName(QStringLiteral("importDropArea"));
    setAcceptDrops(true);
    m_text->setObjectName(QStringLiteral("importPath"));
    m_layout->setContentsMargins(16, 12, 16, 12);
    m_layout->addWidget(m_text, 1);
    m_layout->addWidget(buildButtons());
    showPath(QString());
    setCompact(false);
}

QWidget *ImportDropArea::buildButtons()
{
    auto *buttons = new QWidget(this);
    auto *file = new QPushButton(tr("选择文件(&F)…"), buttons);
    file->setObjectName(QStringLiteral("chooseImportFile"));
    auto *folder = new QPushButton(tr("选择文件夹(&D)…"), buttons);
    folder->setObjectName(QStringLiteral("chooseImportFolder"));
    auto *row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch();
    row->addWidget(file);
    row->addWidget(folder);
    row->addStretch();
    setFocusProxy(file);
    connect(file, &QPushButton::clicked, this, &ImportDropArea::chooseFile);
    connect(folder, &QPushButton::clicked, this, &ImportDropArea::chooseFolder);
    return buttons;
}

void ImportDropArea::showPath(const QString &path)
{
    if (path.isEmpty()) {
        m_text->setWhole(tr("把 ODB++ 压缩包或文件夹拖到这里"));
        m_text->setToolTip(QString());
        return;
    }
    m_text->setWhole(QFileInfo(path).fileName());
    m_text->setToolTip(
        QStringLiteral("<p>%1</p>").arg(QDir::toNativeSeparators(path).toHtmlEscaped()));
}

void ImportDropArea::setCompact(bool isCompact)
{
    m_layout->setDirection(isCompact ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    m_text->setAlignment(isCompact ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
    setSizePolicy(QSizePolicy::Preferred,
                  isCompact ? QSizePolicy::Maximum : QSizePolicy::Expanding);
}

/// The colours are the palette's: whatever look the host has, the place is seen.
void ImportDropArea::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor line = palette().color(m_isHovered ? QPalette::Highlight : QPalette::WindowText);
    QPen pen(line, m_isHovered ? 3 : 1, Qt::DashLine);
    painter.setOpacity(m_isHovered ? 1 : 0.6);
    painter.setPen(pen);
    painter.drawRoundedRect(QRectF(rect()).adjusted(1.5, 1.5, -1.5, -1.5), 6, 6);
}

void ImportDropArea::chooseFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("选择 ODB++ 压缩包"), QString(),
        tr("压缩包 (*.tgz *.gz *.zip *.tar *.7z *.rar);;所有文件 (*)"));
    if (!path.isEmpty())
        Q_EMIT chosen(path);
}

void ImportDropArea::chooseFolder()
{
    const QString path = QFileDialog::getExistingDirectory(this, tr("选择 ODB++ 文件夹"));
    if (!path.isEmpty())
        Q_EMIT chosen(path);
}

void ImportDropArea::dragEnterEvent(QDragEnterEvent *event)
{
    if (!isEnabled() || !event->mimeData()->hasUrls())
        return;
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
    setHovered(true);
}

void ImportDropArea::dragLeaveEvent(QDragLeaveEvent *)
{
    setHovered(false);
}

void ImportDropArea::setHovered(bool isHovered)
{
    m_isHovered = isHovered;
    update();
}

void ImportDropArea::dropEvent(QDropEvent *event)
{
    setHovered(false);
    if (!isEnabled())
        return;
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1) {
        Q_EMIT refused(tr("一次只能导入一个文件或文件夹"));
        return;
    }
    const QString path = urls.first().toLocalFile();
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        Q_EMIT refused(tr("只能导入本机上的文件或文件夹"));
        return;
    }
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
    Q_EMIT chosen(path);
}

} // namespace KODMS::Services
