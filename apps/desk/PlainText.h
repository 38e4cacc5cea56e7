// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QTextDocument>

namespace KODMS::Host {

/// A tooltip that shows `text` letter by letter: tooltips read markup, and a
/// notice may quote what a customer or a file name says.
inline QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
}

} // namespace KODMS::Host
