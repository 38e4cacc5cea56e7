// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/MutationRun.h"

#include "services/archive/Unpacker.h"
#include "tests/archive/HostileCorpus.h"
#include "tests/archive/RawRar.h"
#include "tests/archive/RawTar.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/support/ProcessorTime.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

namespace KODMS::Tests {

using namespace Services;

namespace {

constexpr int LargestHostile = 1 << 16;
/// What a hang is. Processor time, since other work may keep the machine busy.
constexpr double MostSeconds = 2;

/// In memory where that can be: making and removing thousands of files is not what
/// is tested here.
QString place()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return (memory.isWritable() ? memory.filePath() : QDir::tempPath()) +
           QStringLiteral("/kodms-mutations-XXXXXX");
}

QByteArray text(int lines)
{
    QByteArray result;
    for (int i = 0; i < lines; ++i)
        result += "X" + QByteArray::number(i * 7919 % 100000) + "Y" +
                  QByteArray::number(i * 104729 % 100000) + "D01*\n";
    return result;
}

/// What is between the head and the sums of a gzip file.
QByteArray deflated(const QByteArray &bytes)
{
    const QByteArray packed = gzipped(bytes);
    return packed.mid(10, packed.size() - 18);
}

RawZipEntry packedEntry(const QByteArray &name, const QByteArray &content)
{
    RawZipEntry entry;
    entry.name = name;
    entry.content = content;
    entry.packed = deflated(content);
    entry.method = 8;
    return entry;
}

QByteArray zipOfMany()
{
    QVector<RawZipEntry> entries;
    for (int i = 0; i < 80; ++i)
        entries.append(packedEntry("job/layer" + QByteArray::number(i), text(i % 7 + 1)));
    return rawZip(entries);
}

QVector<QByteArray> goodArchives()
{
    const QVector<RawTarEntry> tar{{"job/", "", '5', {}},
                                   {"job/matrix", text(40)},
                                   {"job/link", "", '2', "matrix"},
                                   {QByteArray(120, 'n'), text(3)},
                                   {"料号", text(9)}};
    const RarFiles rar{{"job/a", text(30)}, {"job/b", text(4)}};
    return {rawZip({{"job/a", text(30)}, {"料号", text(5), true}, {"\xc1\xcf", "1"}}),
            rawZip({packedEntry("job/a", text(300)), packedEntry("job/b", text(20))}),
            rawZip({packedEntry("job/a", text(50))}, {true, 1, false}),
            zipOfMany(),
            rawTar(tar),
            gzipped(rawTar(tar)),
            gzipped(rawTar(tar).left(700)) + gzipped(rawTar(tar).mid(700)),
            sevenZip({{QStringLiteral("job/a"), text(60)}, {QStringLiteral("料号"), text(6)}}),
            rawRar4(rar),
            rawRar5(rar)};
}

} // namespace

MutationRun::MutationRun(quint32 seed) : m_random(seed), m_dir(place())
{
    // The good ones more often: what is refused early exercises little.
    for (int i = 0; i < 6; ++i)
        m_archives += goodArchives();
    for (const HostileArchive &hostile : hostileArchives())
        if (!hostile.archive.isEmpty() && hostile.archive.size() < LargestHostile)
            m_archives.append(hostile.archive);
}

int MutationRun::below(int limit)
{
    return static_cast<int>(m_random() % static_cast<unsigned>(qMax(1, limit)));
}

void MutationRun::changeOnce(QByteArray &bytes)
{
    static const QByteArray telling("\x00\x01\x7f\x80\xff/\\.:", 9);
    const int at = below(bytes.size());
    const int length = 1 + below(qMin(64, bytes.size() - at));
    switch (below(7)) {
    case 0: // a bit
        bytes[at] = static_cast<char>(bytes.at(at) ^ (1 << below(8)));
        break;
    case 1: // a byte with a meaning
        bytes[at] = telling.at(below(telling.size()));
        break;
    case 2: // a number at its limit
        bytes.replace(at, qMin(4, bytes.size() - at), QByteArray(4, below(2) ? '\xff' : '\0'));
        break;
    case 3: // cut
        bytes.truncate(at);
        break;
    case 4: // a piece is missing
        bytes.remove(at, length);
        break;
    case 5: // a piece is there twice
        bytes.insert(below(bytes.size()), bytes.mid(at, length));
        break;
    default: // a piece of another archive
        bytes.replace(at, length, m_archives.at(below(m_archives.size())).mid(at, length));
        break;
    }
}

QByteArray MutationRun::mutated()
{
    QByteArray bytes = m_archives.at(below(m_archives.size()));
    for (int changes = 1 + below(3); changes > 0 && !bytes.isEmpty(); --changes)
        changeOnce(bytes);
    return bytes;
}

QString MutationRun::run(int mutations)
{
    if (!writeFile(m_dir.filePath(QStringLiteral("a/b/beside")), "beside"))
        return QStringLiteral("no folder to work in");
    for (int i = 0; i < mutations; ++i)
        if (const QString wrong = tryOne(mutated()); !wrong.isEmpty())
            return QStringLiteral("mutation %1: %2").arg(i).arg(wrong);
    return QFileInfo::exists(QStringLiteral("/tmp/evil")) ? QStringLiteral("an escape to /tmp")
                                                          : QString();
}

QString MutationRun::tryOne(const QByteArray &archive)
{
    const QString file = m_dir.filePath(QStringLiteral("sent"));
    const QString target = m_dir.filePath(QStringLiteral("a/b/target"));
    if (!writeFile(file, archive))
        return QStringLiteral("cannot write");
    LimitSettings limits;
    limits.archiveEntries = 1000;
    limits.archiveBytes = qint64{32} << 20;
    NoProgress progress;
    const double start = processorTime();
    const auto unpacked = unpackArchive(file, target, limits, progress);
    const double seconds = processorTime() - start;
    m_slowest = qMax(m_slowest, seconds);
    if (seconds > MostSeconds)
        return QStringLiteral("took %1 s").arg(seconds);
    ++(unpacked ? m_unpacked : m_refused);
    const bool hasFiles = unpacked && unpacked.value > 0;
    if (QFileInfo::exists(target) != hasFiles)
        return QStringLiteral("refused, but there is a target, or the other way round");
    if (hasFiles && !QDir(target).removeRecursively())
        return QStringLiteral("the target cannot be removed");
    return leftovers();
}

/// Everything but the archive and what stood there before.
QString MutationRun::leftovers() const
{
    QStringList found;
    QDirIterator it(m_dir.path(),
                    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        found << QDir(m_dir.path()).relativeFilePath(it.next());
    found.sort();
    const QStringList expected{QStringLiteral("a"), QStringLiteral("a/b"),
                               QStringLiteral("a/b/beside"), QStringLiteral("sent")};
    return found == expected ? QString()
                             : QStringLiteral("left: ") + found.join(QStringLiteral(", "));
}

} // namespace KODMS::Tests
