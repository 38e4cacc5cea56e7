// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/disk/BoundedQueue.h"

#include <QFile>
#include <QString>

#include <memory>
#include <thread>
#include <vector>

struct archive;
struct inflate_state;

namespace KODMS::Services {

/// A gzip file read as the bytes in it, for the archive library, whose own gzip
/// reader does not look at the sums: a flipped bit would pass unseen. A thread of
/// its own unpacks a little ahead of the reader.
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

    /// Bytes of the gzip file behind what was handed out so far.
    qint64 position() const { return m_current.position; }

    const QString &errorText() const { return m_current.error; }

private:
    struct Block {
        std::vector<unsigned char> bytes;
        qint64 size = 0; ///< of it unpacked; 0 at the end, -1 on damage
        qint64 position = 0;
        QString error;
    };

    void run();
    /// The reader's next block.
    qint64 advance();
    // What follows belongs to the unpacking thread once it runs.
    void fill(Block &block);
    bool fetch();
    bool nextMember();
    QString inflateSome();

    QFile m_file;
    std::unique_ptr<inflate_state> m_state;
    std::vector<unsigned char> m_input;
    qint64 m_fetched = 0;
    bool m_isInMember = true;
    bool m_isAtEnd = false;

    BoundedQueue<Block> m_full;
    BoundedQueue<Block> m_empty;
    Block m_current;
    std::thread m_thread;
};

} // namespace KODMS::Services
