// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/PictureFile.h"

#include "services/notices/OneLine.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QLocale>

namespace KODMS::Services {

namespace {

constexpr int LongestFileName = 200;

QString tr(const char *text)
{
    return QCoreApplication::translate("PictureFile", text);
}

/// Formats that hold pixels and nothing else.
bool isKnown(const QByteArray &format)
{
    for (const char *known : {"png", "jpeg", "jpg", "bmp", "gif", "webp"})
        if (format == known)
            return true;
    return false;
}

QString shownName(const QString &path)
{
    const QString name = oneLine(QFileInfo(path).fileName());
    return name.size() > LongestFileName ? name.right(LongestFileName) : name;
}

Outcome tooManyBytes(const QString &name, qint64 size)
{
    const QLocale locale;
    return Outcome::failure(tr("图片过大：%1（%2，最大 %3）")
                                .arg(name, locale.formattedDataSize(size),
                                     locale.formattedDataSize(PictureFile::MostBytes)));
}

Outcome named(const QString &name, const Outcome &failed)
{
    return Outcome::failure(tr("%1：%2").arg(name, failed.text), failed.cause);
}

Result<PictureFile> madeOf(const QByteArray &bytes, const QString &name)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = QImageReader::imageFormat(&buffer);
    auto thumbnail = PictureFile::decode(bytes, PictureFile::ThumbnailSize);
    if (!thumbnail)
        return named(name, thumbnail.outcome);
    return PictureFile{name, QString::fromLatin1(format), bytes, thumbnail.value};
}

} // namespace

Result<PictureFile> PictureFile::fromFile(const QString &path)
{
    const QString name = shownName(path);
    const QFileInfo info(path);
    if (!info.isFile()) // a pipe or device would never end
        return Outcome::failure(tr("%1：不是文件").arg(name));
    if (info.size() > MostBytes)
        return tooManyBytes(name, info.size());
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Outcome::failure(tr("%1：无法读取（%2）").arg(name, file.errorString()));
    const QByteArray bytes = file.read(MostBytes + 1);
    if (bytes.size() > MostBytes) // it has grown meanwhile
        return tooManyBytes(name, bytes.size());
    return madeOf(bytes, name);
}

Result<PictureFile> PictureFile::fromImage(const QImage &image, const QString &fileName)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    if (image.isNull() || !buffer.open(QIODevice::WriteOnly) || !image.save(&buffer, "PNG"))
        return Outcome::failure(tr("剪贴板中没有可用的图片"));
    if (bytes.size() > MostBytes)
        return tooManyBytes(fileName, bytes.size());
    return madeOf(bytes, fileName);
}

Result<QImage> PictureFile::decode(const QByteArray &bytes, const QSize &bound)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead() || !isKnown(reader.format()))
        return Outcome::failure(tr("不是可识别的图片（PNG、JPEG、BMP、GIF）"));
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        return Outcome::failure(tr("图片已损坏"));
    if (qint64{size.width()} * size.height() > MostPixels)
        return Outcome::failure(tr("图片过大：%1 × %2 像素").arg(size.width()).arg(size.height()));
    if (bound.isValid() && (size.width() > bound.width() || size.height() > bound.height()))
        reader.setScaledSize(size.scaled(bound, Qt::KeepAspectRatio).expandedTo(QSize(1, 1)));
    const QImage image = reader.read();
    if (image.isNull())
        return Outcome::failure(tr("图片已损坏"), reader.errorString());
    return image;
}

} // namespace KODMS::Services
