// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

namespace KODMS::Services {

/// A picture of a question before it is stored: the bytes as they were found to be one.
/// Any thread.
struct PictureFile {
    static constexpr qint64 MostBytes = 20 * 1024 * 1024;
    static constexpr qint64 MostPixels = 40'000'000;
    static constexpr QSize ThumbnailSize{120, 90};

    QString fileName; ///< the last part of where it came from; only for people
    QString suffix;
    QByteArray bytes;
    QImage thumbnail;

    /// Reads a whole ordinary file and looks at its content, whatever it is called.
    static Result<PictureFile> fromFile(const QString &path);

    /// A picture out of the clipboard, as PNG.
    static Result<PictureFile> fromImage(const QImage &image, const QString &fileName);

    /// Decodes a picture; not larger than `bound` if that is valid. Looks at the size
    /// before it spends memory on it.
    static Result<QImage> decode(const QByteArray &bytes, const QSize &bound);
};

} // namespace KODMS::Services
