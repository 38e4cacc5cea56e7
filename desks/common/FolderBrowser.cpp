// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/FolderBrowser.h"

#include "desks/common/ProgramStart.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

namespace KODMS::UI {

void showInFileBrowser(const QString &folder)
{
    QString path = folder;
    path.replace(QLatin1Char('/'), QLatin1Char('\\'));
    if (startProgram({QStringLiteral("explorer.exe"),
                      QStringLiteral("/select , \"%1\"").arg(path, 0, QLatin1Char(' '))}))
        return;
    if (!folder.isEmpty()) // no folder is not the folder that we happen to run in
        QDesktopServices::openUrl(QUrl::fromLocalFile(QFileInfo(folder).absoluteFilePath()));
}

} // namespace KODMS::UI
