// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <string_view>

namespace KODMS::Services {

/// Why a line of a job's file cannot be read: for people (translated) and for the log.
struct LineRefusal {
    QString text;
    QString cause;
};

/// The failure that names file and line; line 0: the file as a whole.
Outcome odbRefused(const QString &file, qint64 line, const LineRefusal &why);

/// The beginning of some bytes of a job, fit for a message of one line.
QString odbQuoted(std::string_view bytes);

/// A name of a job as text: UTF-8, else GB18030, as older Chinese programs write it.
/// Empty when it is neither, or no name of a file.
QString odbName(std::string_view bytes);

/// Names of steps and layers that mean the same have the same key: upper and lower
/// case are one, and so are a name and what it became as the name of a file.
QString odbKey(const QString &name);

} // namespace KODMS::Services
