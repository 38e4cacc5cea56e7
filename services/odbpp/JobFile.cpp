// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/JobFile.h"

#include "services/archive/ArchiveWalk.h"
#include "services/odbpp/GzipDecoder.h"
#include "services/odbpp/LzwDecoder.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr std::size_t MagicSize = 2;
constexpr std::string_view CompressMagic = "\x1f\x9d";
constexpr std::string_view GzipMagic = "\x1f\x8b";

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

} // namespace

JobFile::JobFile(const QString &path, const LimitSettings &limits, LineReader &reader)
    : m_path(path), m_limits(limits), m_lines(path, reader)
{
}

Outcome JobFile::add(const char *bytes, qint64 size)
{
    m_packedBytes += size;
    if (m_hasBegun)
        return decode(bytes, static_cast<std::size_t>(size));
    m_head.append(bytes, static_cast<std::size_t>(size));
    return m_head.size() < MagicSize ? Outcome::success() : begin();
}

Outcome JobFile::begin()
{
    m_hasBegun = true;
    const std::string_view magic = std::string_view(m_head).substr(0, MagicSize);
    if (magic == CompressMagic)
        m_decoder = std::make_unique<LzwDecoder>();
    else if (magic == GzipMagic)
        m_decoder = std::make_unique<GzipDecoder>();
    return decode(m_head.data(), m_head.size());
}

Outcome JobFile::decode(const char *bytes, std::size_t size)
{
    if (!m_decoder)
        return text(bytes, size);
    const auto take = [this](const char *part, std::size_t length) {
        m_failure = text(part, length);
        return m_failure.ok;
    };
    return m_decoder->add(bytes, size, take) ? Outcome::success() : damaged();
}

Outcome JobFile::text(const char *bytes, std::size_t size)
{
    m_textBytes += static_cast<qint64>(size);
    if (m_decoder && m_textBytes > allowedBytes(m_packedBytes, m_limits))
        return odbRefused(m_path, 0,
                          {tr("解压后过大"), QStringLiteral("swells beyond the limits")});
    return m_lines.add(bytes, size);
}

/// Damage of the packing, or what the lines said.
Outcome JobFile::damaged() const
{
    if (!m_failure)
        return m_failure;
    return odbRefused(m_path, 0, {tr("压缩数据已损坏"), QString::fromLatin1(m_decoder->damage())});
}

Outcome JobFile::finish()
{
    if (!m_hasBegun) {
        const Outcome begun = begin();
        if (!begun)
            return begun;
    }
    const auto take = [this](const char *part, std::size_t length) {
        m_failure = text(part, length);
        return m_failure.ok;
    };
    if (m_decoder && !m_decoder->finish(take))
        return damaged();
    return m_lines.finish();
}

} // namespace KODMS::Services
