// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

#include <memory>
#include <vector>

struct isal_zstream;

namespace KODMS::Services {

/// Packs streams of bytes as raw deflate, one after the other. For one thread.
class Deflater {
public:
    Deflater();
    ~Deflater();
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    /// Begins a stream.
    void begin();
    /// Appends to `packed` what these bytes become, as far as that is clear yet; all
    /// of it with the last ones.
    void add(const char *bytes, qint64 size, bool isLast, std::vector<char> &packed);

private:
    std::unique_ptr<isal_zstream> m_stream;
    std::vector<unsigned char> m_tables;
};

} // namespace KODMS::Services
