// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace KODMS::Tests {

/// A request, byte for byte as a desk writes it.
inline QByteArray deskRequest(const QString &jobName, bool fromWeb = false)
{
    return "{\n    \"module\": \"robot\",\n    \"msgParams\": {\n        \"fromWeb\": " +
           QByteArray(fromWeb ? "true" : "false") + ",\n        \"jobname\": \"" +
           jobName.toLower().toUtf8() + "\"\n    },\n    \"msgType\": 1\n}\n";
}

} // namespace KODMS::Tests
