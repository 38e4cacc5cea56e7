// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/host/OpenedFolders.h"

#include <QDesktopServices>
#include <QUrl>

namespace KODMS::Tests {

OpenedFolders::OpenedFolders()
{
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
}

OpenedFolders::~OpenedFolders()
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
}

void OpenedFolders::open(const QUrl &url)
{
    folders << url.toLocalFile();
}

} // namespace KODMS::Tests
