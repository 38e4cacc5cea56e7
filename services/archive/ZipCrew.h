// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/archive/ArchiveReader.h"
#include "services/disk/BoundedQueue.h"

#include <thread>
#include <vector>

namespace KODMS::Services {

/// A zip archive of many entries, read by several readers side by side: each unpacks
/// every so many-th group of entries a little ahead, and what they bring is handed
/// out in the order of the archive. So every check sees what a single reader shows.
class ZipCrew final : public EntrySource {
public:
    /// Not for other archives, nor for a few entries; nor for so many that several
    /// readers' lists of them would take too much memory.
    static bool isWorthwhile(const ArchiveReader &reader);

    explicit ZipCrew(std::unique_ptr<ArchiveReader> first);
    ~ZipCrew() override;

    ArchiveType type() const override { return ArchiveType::Zip; }

    Outcome next(ArchiveEntry &entry, bool &hasEntry) override;
    Result<qint64> read(char *buffer, qint64 size) override;

    qint64 position() const override { return m_position; }

private:
    struct Event {
        enum class Kind { Entry, Data, EntryEnd, ArchiveEnd, Failure };

        Kind kind = Kind::Failure;
        ArchiveEntry entry = {};
        std::size_t size = 0; ///< of the data
        Outcome failure = {};
    };

    /// Some of what one reader brought, of one group of entries.
    struct Batch {
        std::vector<Event> events;
        std::vector<char> bytes; ///< of all its data, in a row
        qint64 position = 0;
    };

    using Queue = BoundedQueue<Batch>;

    class Worker;

    std::size_t ownerOf(quint64 ordinal) const;
    void run(std::size_t number);
    Event *current();
    Outcome gone() const;

    const std::unique_ptr<ArchiveReader> m_first; ///< only the model of the others
    std::vector<std::unique_ptr<Queue>> m_queues; ///< one of each reader
    std::vector<std::thread> m_threads;
    quint64 m_ordinal = 0; ///< of the entry that comes next, or of the one being read
    bool m_isInFile = false;
    Batch m_batch;
    std::size_t m_event = 0; ///< the next one of the batch
    std::size_t m_byte = 0;  ///< of the batch, the first that was not handed out
    std::size_t m_readOfEvent = 0;
    qint64 m_position = 0;
};

} // namespace KODMS::Services
