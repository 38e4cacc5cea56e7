// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/OdbRefusal.h"

#include <string>

namespace KODMS::Services {

/// Reads a text file of a job line by line.
class LineReader {
public:
    LineReader() = default;
    virtual ~LineReader() = default;
    LineReader(const LineReader &) = delete;
    LineReader &operator=(const LineReader &) = delete;

    /// The line without its end and without blanks around it. False: refused.
    virtual bool line(std::string_view text) = 0;
    /// After the last line. False: something is missing.
    virtual bool end() = 0;

    /// Why the last call returned false.
    const LineRefusal &refusal() const { return m_refusal; }

protected:
    bool refuse(const QString &text, const QString &cause)
    {
        m_refusal = {text, cause};
        return false;
    }

private:
    LineRefusal m_refusal;
};

/// Cuts the bytes of a file into lines, whatever their size, and holds at most one
/// line of them. Lines end with LF or CR LF.
class LineSplitter {
public:
    /// `file` is what failures name; `reader` outlives the splitter.
    LineSplitter(const QString &file, LineReader &reader) : m_file(file), m_reader(reader) {}

    Outcome add(const char *bytes, std::size_t size);
    Outcome finish();

private:
    bool take(std::string_view line);
    bool refuse(const QString &text, const QString &cause);

    QString m_file;
    LineReader &m_reader;
    std::string m_open; ///< the beginning of a line whose end has not come yet
    qint64 m_lines = 0;
    LineRefusal m_refusal;
};

} // namespace KODMS::Services
