// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/Decoder.h"

#include <array>
#include <cstdint>
#include <vector>

namespace KODMS::Services {

/// A file that the Unix program "compress" has written (suffix .Z): LZW codes of 9
/// to 16 bits, in groups of eight that are filled up whenever the width changes.
class LzwDecoder final : public Decoder {
public:
    LzwDecoder();

    bool add(const char *bytes, std::size_t size, const Taker &take) override;
    bool finish(const Taker &take) override;

private:
    bool header(unsigned char byte);
    bool code(unsigned value);
    bool unwind(unsigned value);
    void learn();
    void restart();
    void widen();
    void startGroup();
    bool flush(const Taker &take);

    static constexpr unsigned LargestWidth = 16;
    static constexpr unsigned TableSize = 1U << LargestWidth;

    std::vector<std::uint16_t> m_prefix;
    std::vector<unsigned char> m_suffix;
    std::vector<unsigned char> m_stack;
    std::vector<char> m_output;
    int m_headerBytes = 0;
    unsigned m_maxWidth = 0;
    bool m_hasClear = false;
    unsigned m_width = 9;
    unsigned m_free = 0; ///< the next code to be learnt
    unsigned m_previous = TableSize;
    unsigned char m_first = 0; ///< byte that the last string begins with
    std::uint64_t m_bits = 0;
    unsigned m_bitCount = 0;
    unsigned m_inGroup = 0; ///< codes read of the group
    unsigned m_skip = 0;    ///< bits that fill up a group
};

} // namespace KODMS::Services
