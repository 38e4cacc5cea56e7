// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/config/Configuration.h"
#include "services/odbpp/Decoder.h"
#include "services/odbpp/LineSplitter.h"

#include <memory>

namespace KODMS::Services {

/// One text file of a job, fed with its bytes piece by piece: plain, or packed by
/// "compress" or gzip, which its first bytes tell. Unpacking is held to the limits
/// of archives: what comes out is counted.
class JobFile {
public:
    /// `path` is what failures name; `reader` outlives the object.
    JobFile(const QString &path, const LimitSettings &limits, LineReader &reader);

    Outcome add(const char *bytes, qint64 size);
    Outcome finish();

    /// Bytes of text so far.
    qint64 textBytes() const { return m_textBytes; }

private:
    Outcome begin();
    Outcome decode(const char *bytes, std::size_t size);
    Outcome text(const char *bytes, std::size_t size);
    Outcome damaged() const;

    QString m_path;
    LimitSettings m_limits;
    LineSplitter m_lines;
    std::unique_ptr<Decoder> m_decoder;
    std::string m_head;
    bool m_hasBegun = false;
    qint64 m_packedBytes = 0;
    qint64 m_textBytes = 0;
    Outcome m_failure;
};

} // namespace KODMS::Services
