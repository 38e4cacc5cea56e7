// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QSet>
#include <QString>

#include <optional>

namespace KODMS::Services {

/// Turns the bytes of entry names into text: UTF-8 where they are, else GB18030,
/// as older Chinese programs write them without saying so.
class EntryNames {
public:
    /// Bytes of names that an archive holds without a word on their encoding. When
    /// one of them is not UTF-8, none is: two bytes of GB18030 can look like UTF-8.
    void setUnmarked(const QSet<QByteArray> &names);

    /// Nothing when the bytes are text in neither encoding.
    std::optional<QString> decode(const QByteArray &name) const;

private:
    QSet<QByteArray> m_gb18030;
};

} // namespace KODMS::Services
