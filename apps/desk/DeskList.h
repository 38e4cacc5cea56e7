// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/ListExport.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace KODMS::Host {

/// The whole list behind the page that a desk shows, on its way into a file.
struct DeskList {
    QString title;       ///< of the desk, for the file's name
    QStringList columns; ///< the titles that the table shows, from left to right
    Services::ShownSearch search;

    /// Writes the file; its suffix tells the format, CSV unless it is xlsx.
    Services::Result<Services::ListReceipt> save(const QString &path) const;

    /// Asks where to, writes, and says in a box what went wrong.
    void saveAs(QWidget *parent) const;
};

} // namespace KODMS::Host
