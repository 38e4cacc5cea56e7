// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/StationPictures.h"

#include <QCoreApplication>
#include <QDir>
#include <QPixmap>
#include <QWidget>

namespace KODMS::Tests {

void StationPictures::take(QWidget &window, const char *name)
{
    const QString folder = qEnvironmentVariable("KODMS_STATION_PICTURES");
    if (folder.isEmpty())
        return;
    QCoreApplication::processEvents();
    const QString path = QDir(folder).filePath(QLatin1String(name) + QStringLiteral(".png"));
    if (!QDir().mkpath(folder) || !window.grab().save(path))
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace KODMS::Tests
