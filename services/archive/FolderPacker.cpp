// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/FolderPacker.h"

#include "services/archive/ArchiveWalk.h"
#include "services/archive/ZipWriter.h"
#include "services/disk/Disk.h"
#include "services/disk/FileHandle.h"
#include "services/disk/FsPath.h"
#include "services/disk/IoFailure.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace KODMS::Services {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t PieceSize = std::size_t{1} << 18;
constexpr int FileMode = 0644;
constexpr int FolderMode = 0755;

struct FolderPackerTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::FolderPacker)

public:
    static Outcome empty(const QString &folder)
    {
        return Outcome::failure(tr("文件夹中没有文件：%1").arg(folder),
                                QStringLiteral("no files in %1").arg(folder));
    }

    static Outcome special(const QString &path)
    {
        return Outcome::failure(tr("不能打包链接或特殊文件：%1").arg(path),
                                QStringLiteral("neither file nor folder: %1").arg(path));
    }

    static Outcome changed(const QString &path)
    {
        return Outcome::failure(tr("文件在打包时被修改：%1").arg(path),
                                QStringLiteral("changed while it was packed: %1").arg(path));
    }

    static Outcome badName(const QString &path)
    {
        return Outcome::failure(tr("文件名无法识别：%1").arg(path),
                                QStringLiteral("name is not UTF-8: %1").arg(path));
    }
};

/// A folder's content, found before anything is written.
struct Member {
    fs::path path;
    QByteArray name; ///< in the archive, UTF-8
    bool isFolder = false;
    qint64 size = 0;
};

class Packing {
public:
    Packing(const QString &folder, const QString &zipPath, const LimitSettings &limits,
            Progress &progress)
        : m_folder(QDir::cleanPath(folder)), m_zipPath(zipPath), m_limits(limits),
          m_progress(progress), m_clashes(limits.archiveEntries)
    {
    }

    Result<qint64> run()
    {
        std::error_code error;
        const fs::path root = fsPath(m_folder);
        if (Disk::typeBehindLinks(root, error) != Disk::FileType::directory)
            return ioFailure("pack", m_folder, error ? error.value() : ENOTDIR);
        const QByteArray rootName = nameBytes(root);
        if (Outcome found = collect(root, rootName.isEmpty() ? rootName : rootName + '/'); !found)
            return found;
        if (m_files == 0)
            return FolderPackerTexts::empty(m_folder);
        m_progress.setTotal(m_bytes);
        if (Outcome written = write(); !written)
            return written;
        return m_files;
    }

    /// As the archive will be judged when it is unpacked.
    Outcome checkMember(const Member &member)
    {
        const QString name = QString::fromUtf8(member.name);
        const auto path = EntryPath::of(name);
        if (!path)
            return path.outcome;
        m_bytes += member.size;
        if (static_cast<qint64>(m_members.size()) >= m_limits.archiveEntries)
            return tooManyEntries(name, m_limits.archiveEntries);
        if (m_bytes > m_limits.archiveBytes)
            return tooManyBytes(name, m_limits.archiveBytes);
        return member.isFolder ? m_clashes.addFolder(path.value.path)
                               : m_clashes.addFile(path.value.path, name);
    }

    Outcome checkRatio() const
    {
        std::error_code error;
        const auto size = static_cast<qint64>(Disk::fileSize(fsPath(m_zipPath), error));
        const qint64 allowed = allowedBytes(size, m_limits);
        return m_bytes > allowed ? tooManyBytes(m_folder, allowed) : Outcome::success();
    }

private:
    Outcome collect(const fs::path &folder, const QByteArray &prefix)
    {
        std::error_code error;
        std::vector<fs::path> children = Disk::children(folder, error);
        if (error)
            return ioFailure("list", fromFsPath(folder), error.value());
        std::sort(children.begin(), children.end());
        for (const fs::path &child : children) {
            if (m_progress.isCancelled())
                return cancelledFailure();
            if (Outcome added = add(child, prefix); !added)
                return added;
        }
        return Outcome::success();
    }

    Outcome add(const fs::path &path, const QByteArray &prefix)
    {
        const QByteArray own = nameBytes(path);
        if (QString::fromUtf8(own).toUtf8() != own)
            return FolderPackerTexts::badName(fromFsPath(path));
        std::error_code error;
        const Disk::FileType type = Disk::typeOf(path, error);
        Member member{path, prefix + own, type == Disk::FileType::directory, 0};
        if (member.isFolder)
            member.name += '/';
        else if (type != Disk::FileType::regular)
            return FolderPackerTexts::special(fromFsPath(path));
        else
            member.size = static_cast<qint64>(Disk::fileSize(path, error));
        if (Outcome good = checkMember(member); !good)
            return good;
        m_members.push_back(member);
        m_files += member.isFolder ? 0 : 1;
        return member.isFolder ? collect(path, member.name) : Outcome::success();
    }

    Outcome write()
    {
        Result<FileHandle> zip = FileHandle::createNew(m_zipPath);
        if (!zip)
            return zip.outcome;
        ZipWriter writer(zip.value);
        Outcome done = writeMembers(writer);
        if (done)
            done = zip.value.close();
        if (done)
            done = checkRatio();
        if (!done) {
            std::error_code ignored;
            Disk::remove(fsPath(m_zipPath), ignored);
        }
        return done;
    }

    Outcome writeMembers(ZipWriter &zip)
    {
        for (const Member &member : m_members)
            if (Outcome put = writeMember(member, zip); !put)
                return put;
        return zip.finish();
    }

    Outcome writeMember(const Member &member, ZipWriter &zip)
    {
        std::error_code error;
        const qint64 modified = Disk::modifiedAt(member.path, error);
        if (error)
            return ioFailure("stat", fromFsPath(member.path), error.value());
        if (member.isFolder)
            return zip.addFolder(member.name, modified);
        if (Outcome begun = zip.beginFile(member.name, modified, member.size); !begun)
            return begun;
        const Outcome content = writeContent(member, zip);
        return content ? zip.endFile() : content;
    }

    Outcome writeContent(const Member &member, ZipWriter &zip)
    {
        const QString path = fromFsPath(member.path);
        Result<FileHandle> source = FileHandle::openForReading(path);
        if (!source)
            return source.outcome;
        const auto before = source.value.stamp();
        qint64 size = 0;
        for (;;) {
            if (m_progress.isCancelled())
                return cancelledFailure();
            const auto got = source.value.read(m_piece.data(), static_cast<qint64>(m_piece.size()));
            if (!got)
                return got.outcome;
            if (got.value == 0)
                break;
            size += got.value;
            if (size > member.size)
                return FolderPackerTexts::changed(path);
            if (Outcome put = zip.write(m_piece.data(), got.value); !put)
                return put;
            m_progress.advance(got.value);
        }
        const auto after = source.value.stamp();
        if (size != member.size || !before || !after || !(before.value == after.value))
            return FolderPackerTexts::changed(path);
        return Outcome::success();
    }

    QString m_folder;
    QString m_zipPath;
    LimitSettings m_limits;
    Progress &m_progress;
    PathClashes m_clashes;
    std::vector<Member> m_members;
    std::vector<char> m_piece = std::vector<char>(PieceSize);
    qint64 m_files = 0;
    qint64 m_bytes = 0;
};

} // namespace

Result<qint64> packFolder(const QString &folder, const QString &zipPath,
                          const LimitSettings &limits, Progress &progress)
{
    return Packing(folder, zipPath, limits, progress).run();
}

} // namespace KODMS::Services
