// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/Decoder.h"

#include <memory>
#include <vector>

struct inflate_state;

namespace KODMS::Services {

/// A gzip file of one or more members, with their sums.
class GzipDecoder final : public Decoder {
public:
    GzipDecoder();
    ~GzipDecoder() override;

    bool add(const char *bytes, std::size_t size, const Taker &take) override;
    bool finish(const Taker &take) override;

private:
    bool nextMember();

    std::unique_ptr<inflate_state> m_state;
    std::vector<unsigned char> m_output;
    bool m_isInMember = true;
};

} // namespace KODMS::Services
