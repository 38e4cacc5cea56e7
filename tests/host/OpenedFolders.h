// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QStringList>

class QUrl;

namespace KODMS::Tests {

/// Stands in for the system's file browser while it lives.
class OpenedFolders : public QObject {
    Q_OBJECT

public:
    OpenedFolders();
    ~OpenedFolders() override;

    QStringList folders;

public Q_SLOTS:
    void open(const QUrl &url);
};

} // namespace KODMS::Tests
