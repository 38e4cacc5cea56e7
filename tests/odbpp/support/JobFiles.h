// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/odbpp/sample/SampleJob.h"

#include <QMap>

namespace KODMS::Tests {

using JobFiles = QVector<Services::SampleJobFile>;

/// As the Unix program "compress" packs it.
QByteArray compressed(const QByteArray &bytes);

/// The files of a board of six copper layers.
JobFiles boardFiles(const QString &name = QStringLiteral("board"));

/// A job of one step "pcb" and one layer "l1" with these contents.
JobFiles smallJob(const QByteArray &features);
JobFiles jobWithMatrix(const QByteArray &matrix);

void writeJob(const QString &folder, const JobFiles &files);
QByteArray tarOf(const JobFiles &files);
QByteArray tgzOf(const JobFiles &files);
/// Deflated, names in UTF-8.
QByteArray zipOf(const JobFiles &files);

} // namespace KODMS::Tests
