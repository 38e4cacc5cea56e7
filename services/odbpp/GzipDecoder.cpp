// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/GzipDecoder.h"

#include <cstdint>
#include <isa-l/igzip_lib.h>

namespace KODMS::Services {

namespace {

constexpr std::size_t OutputSize = std::size_t{1} << 17;

} // namespace

GzipDecoder::GzipDecoder() : m_state(std::make_unique<inflate_state>()), m_output(OutputSize)
{
    isal_inflate_init(m_state.get());
    m_state->crc_flag = ISAL_GZIP;
}

GzipDecoder::~GzipDecoder() = default;

/// After a member: zeros, or another member. True when one begins.
bool GzipDecoder::nextMember()
{
    while (m_state->avail_in > 0 && *m_state->next_in == 0) {
        ++m_state->next_in;
        --m_state->avail_in;
    }
    if (m_state->avail_in == 0)
        return false;
    isal_inflate_reset(m_state.get());
    m_state->crc_flag = ISAL_GZIP;
    m_isInMember = true;
    return true;
}

bool GzipDecoder::add(const char *bytes, std::size_t size, const Taker &take)
{
    m_state->next_in = reinterpret_cast<unsigned char *>(const_cast<char *>(bytes));
    m_state->avail_in = static_cast<std::uint32_t>(size);
    for (;;) {
        if (!m_isInMember && !nextMember())
            return true;
        m_state->next_out = m_output.data();
        m_state->avail_out = static_cast<std::uint32_t>(m_output.size());
        const int result = isal_inflate(m_state.get());
        const std::size_t made = m_output.size() - m_state->avail_out;
        if (made > 0 && !take(reinterpret_cast<const char *>(m_output.data()), made))
            return false;
        if (result == ISAL_INCORRECT_CHECKSUM)
            return damaged("the gzip stream has a wrong sum");
        if (result != ISAL_DECOMP_OK)
            return damaged("the gzip stream is damaged");
        m_isInMember = m_state->block_state != ISAL_BLOCK_FINISH;
        if (m_isInMember && m_state->avail_in == 0 && m_state->avail_out > 0)
            return true;
    }
}

bool GzipDecoder::finish(const Taker &)
{
    return !m_isInMember || damaged("the gzip stream is cut short");
}

} // namespace KODMS::Services
