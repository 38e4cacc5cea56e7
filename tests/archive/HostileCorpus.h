// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace KODMS::Tests {

/// An archive that must be refused whole. In a file called "sent".
struct HostileArchive {
    QByteArray title;
    QByteArray archive;
    QString named; ///< what the refusal must name
};

/// One of each kind that has hurt somebody, made anew.
QVector<HostileArchive> hostileArchives();

} // namespace KODMS::Tests
