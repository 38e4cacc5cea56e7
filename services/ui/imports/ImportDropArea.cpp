// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/imports/ImportDropArea.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

namespace KODMS::Services {

ImportDropArea::ImportDropArea(QWidget *parent) : QFrame(parent)
{
    setObjectName(QStringLiteral("importDropArea"));
    setFrameShape(QFrame::StyledPanel);
    setAcceptDrops(true);
    m_text = new QLabel(this);
    m_text->setObjectName(QStringLiteral("importPath"));
    m_text->setTextFormat(Qt::PlainText);
    m_text->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto *file = new QPushButton(tr("选择文件(&F)…"), this);
    file->setObjectName(QStringLiteral("chooseImportFile"));
    auto *folder = new QPushButton(tr("选择文件夹(&D)…"), this);
    folder->setObjectName(QStringLiteral("chooseImportFolder"));
    auto *row = new QHBoxLayout(this);
    row->addWidget(m_text, 1);
    row->addWidget(file);
    row->addWidget(folder);
    setFocusProxy(file);
    connect(file, &QPushButton::clicked, this, &ImportDropArea::chooseFile);
    connect(folder, &QPushButton::clicked, this, &ImportDropArea::chooseFolder);
    showPath(QString());
}

void ImportDropArea::showPath(const QString &path)
{
    if (path.isEmpty()) {
        m_text->setText(tr("把 ODB++ 压缩包或文件夹拖到这里"));
        m_text->setToolTip(QString());
        return;
    }
    m_text->setText(QFileInfo(path).fileName());
    m_text->setToolTip(
        QStringLiteral("<p>%1</p>").arg(QDir::toNativeSeparators(path).toHtmlEscaped()));
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
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void ImportDropArea::dropEvent(QDropEvent *event)
{
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
    event->acceptProposedAction();
    Q_EMIT chosen(path);
}

} // namespace KODMS::Services
