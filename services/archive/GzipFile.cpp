// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/GzipFile.h"

#include <algorithm>
#include <archive.h>
#include <zlib.h>

namespace KODMS::Services {

namespace {

constexpr std::size_t InputSize = std::size_t{1} << 17;
constexpr std::size_t OutputSize = std::size_t{1} << 18;
constexpr int GzipWindow = 15 + 16;

} // namespace

GzipFile::GzipFile() : m_stream(std::make_unique<z_stream_s>()) {}

GzipFile::~GzipFile()
{
    if (!m_input.empty())
        inflateEnd(m_stream.get());
}

bool GzipFile::open(const QString &path)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly) || inflateInit2(m_stream.get(), GzipWindow) != Z_OK)
        return false;
    m_input.resize(InputSize);
    m_output.resize(OutputSize);
    return true;
}

bool GzipFile::attachTo(archive *reader)
{
    const auto read = [](archive *to, void *self, const void **bytes) -> la_ssize_t {
        auto *file = static_cast<GzipFile *>(self);
        const qint64 got = file->fill();
        *bytes = file->m_output.data();
        if (got < 0)
            archive_set_error(to, -1, "%s", file->m_error.toUtf8().constData());
        return static_cast<la_ssize_t>(got);
    };
    return archive_read_open(reader, this, nullptr, read, nullptr) == ARCHIVE_OK;
}

bool GzipFile::readToEnd()
{
    qint64 got = 1;
    while (got > 0)
        got = fill();
    return got == 0;
}

qint64 GzipFile::fail(const char *text)
{
    m_error = QString::fromLatin1(text);
    return -1;
}

/// More input; false at the end of the file.
bool GzipFile::fetch()
{
    const qint64 got =
        m_file.read(reinterpret_cast<char *>(m_input.data()), static_cast<qint64>(m_input.size()));
    m_stream->next_in = m_input.data();
    m_stream->avail_in = static_cast<uInt>(std::max(got, qint64{0}));
    m_position += std::max(got, qint64{0});
    return got > 0;
}

/// After a member: another one, or zeros up to the end of the file, as tapes had.
bool GzipFile::nextMember()
{
    while (m_stream->avail_in > 0 || fetch()) {
        if (*m_stream->next_in != 0)
            return inflateReset(m_stream.get()) == Z_OK;
        ++m_stream->next_in;
        --m_stream->avail_in;
    }
    m_isAtEnd = true;
    return false;
}

qint64 GzipFile::fill()
{
    m_stream->next_out = m_output.data();
    m_stream->avail_out = static_cast<uInt>(m_output.size());
    while (!m_isAtEnd && m_stream->avail_out > 0) {
        if (!m_isInMember && !nextMember())
            break;
        m_isInMember = true;
        if (m_stream->avail_in == 0 && !fetch())
            return fail(m_file.error() == QFile::NoError ? "the gzip stream is cut short"
                                                         : "the gzip file cannot be read");
        const int result = inflate(m_stream.get(), Z_NO_FLUSH);
        if (result == Z_STREAM_END)
            m_isInMember = false;
        else if (result != Z_OK)
            return fail(m_stream->msg ? m_stream->msg : "the gzip stream is damaged");
    }
    return static_cast<qint64>(m_output.size()) - m_stream->avail_out;
}

} // namespace KODMS::Services
