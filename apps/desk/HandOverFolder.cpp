// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverFolder.h"

#include "apps/desk/PlainText.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace KODMS::Host {

namespace {

QString text(const char *source, const QString &folder)
{
    return QCoreApplication::translate("HandOverFolder", source)
        .arg(plainLine(QDir::toNativeSeparators(folder)));
}

} // namespace

QString HandOverFolder::of(const HandOverLog::HandOver &handOver)
{
    if (handOver.path.trimmed().isEmpty())
        return {};
    const QFileInfo info(handOver.path);
    const bool isFile = handOver.kind == HandOverLog::Kind::Import && !info.isDir();
    return isFile || info.isFile() ? info.absolutePath() : info.absoluteFilePath();
}

QString HandOverFolder::open(const HandOverLog::HandOver &handOver)
{
    const QString folder = of(handOver);
    if (folder.isEmpty())
        return {};
    if (!QFileInfo(folder).isDir())
        return text(QT_TRANSLATE_NOOP("HandOverFolder", "文件夹已不存在，可能已被移动或删除：\n%1"),
                    folder);
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder)))
        return text(QT_TRANSLATE_NOOP("HandOverFolder", "系统的文件管理器无法打开文件夹：\n%1"),
                    folder);
    return {};
}

} // namespace KODMS::Host
