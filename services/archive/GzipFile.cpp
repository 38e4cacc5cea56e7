// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/GzipFile.h"

#include <algorithm>
#include <archive.h>
#include <isa-l/igzip_lib.h>

namespace KODMS::Services {

namespace {

constexpr std::size_t InputSize = std::size_t{1} << 18;
constexpr std::size_t BlockSize = std::size_t{1} << 19;
constexpr std::size_t BlockCount = 4;

} // namespace

GzipFile::GzipFile()
    : m_state(std::make_unique<inflate_state>()), m_full(BlockCount), m_empty(BlockCount)
{
}

GzipFile::~GzipFile()
{
    m_full.close();
    m_empty.close();
    if (m_thread.joinable())
        m_thread.join();
}

bool GzipFile::open(const QString &path)
{
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    m_input.resize(InputSize);
    isal_inflate_init(m_state.get());
    m_state->crc_flag = ISAL_GZIP;
    for (std::size_t i = 0; i < BlockCount; ++i) {
        Block block;
        block.bytes.resize(BlockSize);
        m_empty.push(std::move(block));
    }
    m_thread = std::thread([this] { run(); });
    return true;
}

bool GzipFile::attachTo(archive *reader)
{
    const auto read = [](archive *to, void *self, const void **bytes) -> la_ssize_t {
        auto *file = static_cast<GzipFile *>(self);
        const qint64 got = file->advance();
        *bytes = file->m_current.bytes.data();
        if (got < 0)
            archive_set_error(to, -1, "%s", file->m_current.error.toUtf8().constData());
        return static_cast<la_ssize_t>(got);
    };
    return archive_read_open(reader, this, nullptr, read, nullptr) == ARCHIVE_OK;
}

bool GzipFile::readToEnd()
{
    qint64 got = 1;
    while (got > 0)
        got = advance();
    return got == 0;
}

/// The end and damage are final: that block stays the present one.
qint64 GzipFile::advance()
{
    const bool isLast = !m_current.bytes.empty() && m_current.size <= 0;
    if (isLast)
        return m_current.size;
    if (m_current.size > 0)
        m_empty.push(std::move(m_current));
    auto next = m_full.pop();
    m_current = next ? std::move(*next) : Block();
    return m_current.size;
}

void GzipFile::run()
{
    while (auto block = m_empty.pop()) {
        fill(*block);
        const bool isLast = block->size <= 0;
        if (!m_full.push(std::move(*block)) || isLast)
            return;
    }
}

/// More input; false at the end of the file.
bool GzipFile::fetch()
{
    const qint64 got =
        m_file.read(reinterpret_cast<char *>(m_input.data()), static_cast<qint64>(m_input.size()));
    m_state->next_in = m_input.data();
    m_state->avail_in = static_cast<uint32_t>(std::max(got, qint64{0}));
    m_fetched += std::max(got, qint64{0});
    return got > 0;
}

/// After a member: another one, or zeros up to the end of the file, as tapes had.
bool GzipFile::nextMember()
{
    while (m_state->avail_in > 0 || fetch()) {
        if (*m_state->next_in != 0) {
            isal_inflate_reset(m_state.get());
            m_state->crc_flag = ISAL_GZIP;
            return true;
        }
        ++m_state->next_in;
        --m_state->avail_in;
    }
    m_isAtEnd = true;
    return false;
}

/// Says what is wrong, if anything is.
QString GzipFile::inflateSome()
{
    if (m_state->avail_in == 0 && !fetch())
        return m_file.error() == QFile::NoError ? QStringLiteral("the gzip stream is cut short")
                                                : QStringLiteral("the gzip file cannot be read");
    const int result = isal_inflate(m_state.get());
    if (result == ISAL_INCORRECT_CHECKSUM)
        return QStringLiteral("the gzip stream has a wrong sum");
    if (result != ISAL_DECOMP_OK)
        return QStringLiteral("the gzip stream is damaged");
    m_isInMember = m_state->block_state != ISAL_BLOCK_FINISH;
    return QString();
}

void GzipFile::fill(Block &block)
{
    m_state->next_out = block.bytes.data();
    m_state->avail_out = static_cast<uint32_t>(block.bytes.size());
    while (!m_isAtEnd && m_state->avail_out > 0) {
        if (!m_isInMember && !nextMember())
            break;
        m_isInMember = true;
        block.error = inflateSome();
        if (!block.error.isEmpty())
            break;
    }
    const auto unpacked = static_cast<qint64>(block.bytes.size()) - m_state->avail_out;
    block.size = block.error.isEmpty() ? unpacked : -1;
    block.position = m_fetched;
}

} // namespace KODMS::Services
