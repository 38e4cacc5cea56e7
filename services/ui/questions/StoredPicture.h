// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QImage>
#include <QSize>
#include <QString>

namespace KODMS::Services {

class FileStore;
class Progress;

/// Reads a question's picture out of the store, by way of a file in `folder` that is
/// gone afterwards; not larger than `bound` if that is valid. Any thread.
Result<QImage> readStoredPicture(const FileStore &store, const QString &storedName,
                                 const QString &folder, const QSize &bound, Progress &progress);

} // namespace KODMS::Services
