// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QFile>
#include <QString>

#include <memory>
#include <vector>

struct archive;
struct z_stream_s;

namespace KODMS::Services {

/// A gzip file read as the bytes in it, for the archive library, whose own gzip
/// reader does not look at the sums: a flipped bit would pass unseen.
class GzipFile {
public:
    GzipFile();
    ~GzipFile();
    GzipFile(const GzipFile &) = delete;
    GzipFile &operator=(const GzipFile &) = delete;

    bool open(const QString &path);
    /// Makes the library read from here. The object must outlive the archive's use.
    bool attachTo(archive *reader);
    /// Reads what the archive library left unread. False when anything up to the
    /// file's last byte is damaged.
    bool readToEnd();

    /// Bytes of the gzip file read so far.
    qint64 position() const { return m_position; }

    const QString &errorText() const { return m_error; }

private:
    /// Bytes unpacked into m_output; 0 at the end, -1 on damage.
    qint64 fill();
    bool fetch();
    bool nextMember();
    qint64 fail(const char *text);

    QFile m_file;
    std::unique_ptr<z_stream_s> m_stream;
    std::vector<unsigned char> m_input;
    std::vector<unsigned char> m_output;
    qint64 m_position = 0;
    bool m_isInMember = true;
    bool m_isAtEnd = false;
    QString m_error;
};

} // namespace KODMS::Services
