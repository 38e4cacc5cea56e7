// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/ZipCrew.h"

#include <algorithm>
#include <cstring>
#include <exception>

namespace KODMS::Services {

namespace {

constexpr quint64 FewestEntries = 64;
constexpr quint64 MostEntries = 50000;
constexpr quint64 GroupSize = 4;
constexpr unsigned MaxReaders = 4;
constexpr std::size_t BatchBytes = std::size_t{1} << 18;
constexpr std::size_t BatchesAhead = 16;

unsigned readerCount()
{
    return std::min(std::thread::hardware_concurrency(), MaxReaders);
}

} // namespace

/// One reader's work, on its thread.
class ZipCrew::Worker {
public:
    Worker(const ZipCrew &crew, std::size_t number, Queue &queue)
        : m_crew(crew), m_number(number), m_queue(queue)
    {
    }

    void run()
    {
        auto reader = m_crew.m_first->again();
        if (!reader) {
            fail(reader.outcome);
            return;
        }
        m_reader = std::move(reader.value);
        for (quint64 ordinal = 0; takeEntry(ordinal); ++ordinal) {
        }
        flush();
    }

private:
    /// False when there is nothing more to do.
    bool takeEntry(quint64 ordinal)
    {
        if (ordinal % GroupSize == 0 && !flush())
            return false;
        const bool isOwn = m_crew.ownerOf(ordinal) == m_number;
        ArchiveEntry entry;
        bool hasEntry = false;
        if (Outcome read = m_reader->next(entry, hasEntry); !read)
            return isOwn ? fail(read) : false;
        if (!isOwn)
            return hasEntry;
        if (!hasEntry) {
            m_batch.events.push_back({Event::Kind::ArchiveEnd});
            return false;
        }
        const bool isFile = entry.kind == ArchiveEntry::Kind::File;
        m_batch.events.push_back({Event::Kind::Entry, std::move(entry)});
        return !isFile || takeContent();
    }

    bool takeContent()
    {
        for (;;) {
            const auto got = m_reader->read(m_piece.data(), static_cast<qint64>(m_piece.size()));
            if (!got)
                return fail(got.outcome);
            const auto size = static_cast<std::size_t>(got.value);
            m_batch.bytes.insert(m_batch.bytes.end(), m_piece.begin(),
                                 m_piece.begin() + static_cast<std::ptrdiff_t>(size));
            m_batch.events.push_back(
                {size > 0 ? Event::Kind::Data : Event::Kind::EntryEnd, {}, size});
            if (size == 0)
                return true;
            if (m_batch.bytes.size() >= BatchBytes && !flush())
                return false;
        }
    }

    bool flush()
    {
        if (m_batch.events.empty())
            return true;
        m_batch.position = m_reader ? m_reader->position() : 0;
        return m_queue.push(std::exchange(m_batch, Batch()));
    }

    bool fail(const Outcome &failure)
    {
        m_batch.events.push_back({Event::Kind::Failure, {}, 0, failure});
        flush();
        return false;
    }

    const ZipCrew &m_crew;
    std::size_t m_number;
    Queue &m_queue;
    std::unique_ptr<ArchiveReader> m_reader;
    Batch m_batch;
    std::vector<char> m_piece = std::vector<char>(BatchBytes);
};

bool ZipCrew::isWorthwhile(const ArchiveReader &reader)
{
    const quint64 entries = reader.expectedEntries();
    return reader.type() == ArchiveType::Zip && entries >= FewestEntries &&
           entries <= MostEntries && readerCount() > 1;
}

ZipCrew::ZipCrew(std::unique_ptr<ArchiveReader> first) : m_first(std::move(first))
{
    const unsigned count = readerCount();
    for (unsigned i = 0; i < count; ++i)
        m_queues.push_back(std::make_unique<Queue>(BatchesAhead));
    for (unsigned i = 0; i < count; ++i)
        m_threads.emplace_back([this, i] { run(i); });
}

ZipCrew::~ZipCrew()
{
    for (const auto &queue : m_queues)
        queue->close();
    for (std::thread &thread : m_threads)
        thread.join();
}

std::size_t ZipCrew::ownerOf(quint64 ordinal) const
{
    return static_cast<std::size_t>(ordinal / GroupSize % m_queues.size());
}

void ZipCrew::run(std::size_t number)
{
    Queue &queue = *m_queues[number];
    try {
        Worker(*this, number, queue).run();
    } catch (const std::exception &) {
        // Out of memory: the end of the queue says that something is missing.
    }
    queue.finish();
}

/// The event that comes next; none when its reader has given up.
ZipCrew::Event *ZipCrew::current()
{
    if (m_event == m_batch.events.size()) {
        auto next = m_queues[ownerOf(m_ordinal)]->pop();
        m_batch = next ? std::move(*next) : Batch();
        m_event = 0;
        m_byte = 0;
        m_readOfEvent = 0;
        m_position = std::max(m_position, m_batch.position);
    }
    return m_batch.events.empty() ? nullptr : &m_batch.events[m_event];
}

Outcome ZipCrew::gone() const
{
    return m_first->damage(QString(), QStringLiteral("a reader has given up"));
}

Outcome ZipCrew::next(ArchiveEntry &entry, bool &hasEntry)
{
    hasEntry = false;
    const Event *event = current();
    if (!event)
        return gone();
    if (event->kind == Event::Kind::Failure)
        return event->failure;
    if (event->kind == Event::Kind::ArchiveEnd)
        return Outcome::success();
    entry = event->entry;
    hasEntry = true;
    m_isInFile = entry.kind == ArchiveEntry::Kind::File;
    ++m_event;
    m_ordinal += m_isInFile ? 0 : 1;
    return Outcome::success();
}

Result<qint64> ZipCrew::read(char *buffer, qint64 size)
{
    if (!m_isInFile)
        return qint64{0};
    const Event *event = current();
    if (!event)
        return gone();
    if (event->kind == Event::Kind::Failure)
        return event->failure;
    if (event->kind == Event::Kind::EntryEnd) {
        m_isInFile = false;
        ++m_ordinal;
        ++m_event;
        return qint64{0};
    }
    const std::size_t part = std::min(static_cast<std::size_t>(size), event->size - m_readOfEvent);
    std::memcpy(buffer, m_batch.bytes.data() + m_byte, part);
    m_byte += part;
    m_readOfEvent += part;
    if (m_readOfEvent == event->size) {
        ++m_event;
        m_readOfEvent = 0;
    }
    return static_cast<qint64>(part);
}

} // namespace KODMS::Services
