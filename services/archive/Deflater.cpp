// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/Deflater.h"

#include <isa-l/igzip_lib.h>

namespace KODMS::Services {

namespace {

/// The library's best: a hundredth larger than what zlib makes by default of plot
/// data, in a twentieth of the time.
constexpr uint32_t Level = 3;
constexpr std::size_t OutputStep = std::size_t{1} << 16;

} // namespace

Deflater::Deflater() : m_stream(std::make_unique<isal_zstream>()), m_tables(ISAL_DEF_LVL3_DEFAULT)
{
}

Deflater::~Deflater() = default;

void Deflater::begin()
{
    isal_deflate_init(m_stream.get());
    m_stream->gzip_flag = IGZIP_DEFLATE;
    m_stream->level = Level;
    m_stream->level_buf = m_tables.data();
    m_stream->level_buf_size = static_cast<uint32_t>(m_tables.size());
}

void Deflater::add(const char *bytes, qint64 size, bool isLast, std::vector<char> &packed)
{
    // The library does not write to its input, though it does not say so.
    m_stream->next_in = reinterpret_cast<uint8_t *>(const_cast<char *>(bytes));
    m_stream->avail_in = static_cast<uint32_t>(size);
    m_stream->end_of_stream = isLast ? 1 : 0;
    do {
        const std::size_t before = packed.size();
        packed.resize(before + OutputStep);
        m_stream->next_out = reinterpret_cast<uint8_t *>(packed.data() + before);
        m_stream->avail_out = static_cast<uint32_t>(OutputStep);
        isal_deflate(m_stream.get());
        packed.resize(before + OutputStep - m_stream->avail_out);
    } while (m_stream->avail_out == 0 || m_stream->avail_in > 0);
}

} // namespace KODMS::Services
