// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DropZone.h"

#include "apps/desk/PlainText.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMimeData>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace KODMS::Host {

DropZone::DropZone(QWidget *parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("dropZone"));
    setAcceptDrops(true);
    m_label = new QLabel(this);
    m_label->setObjectName(QStringLiteral("dropText"));
    m_label->setTextFormat(Qt::PlainText);
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setMinimumHeight(m_label->fontMetrics().height() * 3);
    auto *file = new QPushButton(tr("选择文件…"), this);
    file->setObjectName(QStringLiteral("chooseFile"));
    auto *folder = new QPushButton(tr("选择文件夹…"), this);
    folder->setObjectName(QStringLiteral("chooseFolder"));
    for (QPushButton *button : {file, folder})
        button->setAutoDefault(false); // Enter in a field of the form means the form
    setFocusProxy(file);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(file);
    buttons->addWidget(folder);
    buttons->addStretch();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(16, 12, 16, 12);
    column->addWidget(m_label);
    column->addLayout(buttons);
    connect(file, &QPushButton::clicked, this, &DropZone::chooseFile);
    connect(folder, &QPushButton::clicked, this, &DropZone::chooseFolder);
    showPath();
}

void DropZone::setPath(const QString &path)
{
    if (path == m_path)
        return;
    m_path = path;
    showPath();
    Q_EMIT pathChanged(m_path);
}

void DropZone::showPath()
{
    if (m_path.isEmpty()) {
        m_label->setText(tr("把客户的压缩包或文件夹拖到这里"));
        m_label->setToolTip(QString());
        return;
    }
    const QFileInfo info(m_path);
    const QString what = info.isDir() ? tr("文件夹") : QLocale().formattedDataSize(info.size());
    const QString name = m_label->fontMetrics().elidedText(info.fileName(), Qt::ElideMiddle, 420);
    m_label->setText(QStringLiteral("%1\n%2").arg(name, what));
    m_label->setToolTip(plainToolTip(QDir::toNativeSeparators(m_path)));
}

void DropZone::chooseFile()
{
    const QString path = QFileDialog::getOpenFileName(
        this, tr("选择客户的压缩包"), QString(),
        tr("压缩包 (*.zip *.rar *.tgz *.gz *.tar *.7z *.kos);;所有文件 (*)"));
    if (!path.isEmpty())
        setPath(path);
}

void DropZone::chooseFolder()
{
    const QString path = QFileDialog::getExistingDirectory(this, tr("选择客户的文件夹"));
    if (!path.isEmpty())
        setPath(path);
}

void DropZone::dragEnterEvent(QDragEnterEvent *event)
{
    if (!event->mimeData()->hasUrls())
        return;
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
    setHovered(true);
}

void DropZone::dragLeaveEvent(QDragLeaveEvent *)
{
    setHovered(false);
}

void DropZone::dropEvent(QDropEvent *event)
{
    setHovered(false);
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1) {
        Q_EMIT refused(tr("一次只能接收一个文件或文件夹"));
        return;
    }
    const QString path = urls.first().toLocalFile();
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        Q_EMIT refused(tr("只能接收本机上的文件或文件夹"));
        return;
    }
    event->setDropAction(Qt::CopyAction); // never a move: the file stays its owner's
    event->accept();
    setPath(path);
}

void DropZone::setHovered(bool hovered)
{
    setProperty("hovered", hovered);
    style()->unpolish(this);
    style()->polish(this);
}

} // namespace KODMS::Host
