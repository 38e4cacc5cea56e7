// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/internal/BackupManifest.h"

#include "services/disk/Sha256.h"

#include <QCoreApplication>

#include <numeric>

namespace KODMS::Services {

namespace {

const QByteArray FirstLine = "kodms-backup 1";
constexpr int DigestLength = 64;

Outcome damaged(const QString &cause)
{
    return Outcome::failure(QCoreApplication::translate("Backup", "不是备份文件，或已损坏"), cause);
}

QByteArray line(const char *word, const StoredFileInfo &file)
{
    return QByteArray(word) + ' ' + file.sha256 + ' ' + QByteArray::number(file.size) + ' ' +
           file.name.toLatin1() + '\n';
}

bool readInfo(const QList<QByteArray> &words, StoredFileInfo &info)
{
    bool isNumber = false;
    if (words.size() != 4 || words.at(1).size() != DigestLength)
        return false;
    info.sha256 = words.at(1);
    info.size = words.at(2).toLongLong(&isNumber);
    info.name = QString::fromLatin1(words.at(3));
    return isNumber && info.size >= 0 && FileStore::isValidStoredName(info.name);
}

bool readLine(const QList<QByteArray> &words, BackupManifest &manifest)
{
    const QByteArray &word = words.at(0);
    if (word == "file") {
        StoredFileInfo info;
        const bool isGood = readInfo(words, info);
        manifest.files.append(info);
        return isGood;
    }
    if (word == "records")
        return readInfo(words, manifest.records);
    if (words.size() != 2)
        return false;
    bool isNumber = true;
    if (word == "time")
        manifest.time = QString::fromLatin1(words.at(1));
    else if (word == "engine")
        manifest.engine = QString::fromLatin1(words.at(1));
    else if (word == "schema")
        manifest.schemaVersion = words.at(1).toInt(&isNumber);
    else if (word == "flows")
        manifest.flows = words.at(1).toLongLong(&isNumber);
    else
        return false;
    return isNumber;
}

} // namespace

QString BackupManifest::entryName()
{
    return QStringLiteral("kodms-backup.txt");
}

QString BackupManifest::recordsEntry()
{
    return QStringLiteral("records.db");
}

QString BackupManifest::fileEntry(const QString &storedName)
{
    return QStringLiteral("files/") + storedName;
}

qint64 BackupManifest::bytes() const
{
    return std::accumulate(files.cbegin(), files.cend(), qint64{0},
                           [](qint64 sum, const StoredFileInfo &file) { return sum + file.size; });
}

QByteArray BackupManifest::toText() const
{
    QByteArray text = FirstLine + '\n';
    text += "time " + time.toLatin1() + '\n';
    text += "engine " + engine.toLatin1() + '\n';
    text += "schema " + QByteArray::number(schemaVersion) + '\n';
    text += "flows " + QByteArray::number(flows) + '\n';
    text += line("records", records);
    for (const StoredFileInfo &file : files)
        text += line("file", file);
    return text + "sum " + Sha256::of(text) + '\n';
}

Result<BackupManifest> BackupManifest::parse(const QByteArray &text)
{
    const int sumAt = text.lastIndexOf("\nsum ") + 1;
    if (!text.startsWith(FirstLine + '\n') || sumAt == 0)
        return damaged(QStringLiteral("not a backup's list"));
    if (text.mid(sumAt) != "sum " + Sha256::of(text.left(sumAt)) + '\n')
        return damaged(QStringLiteral("the backup's list does not have its sum"));
    BackupManifest manifest;
    const QList<QByteArray> lines = text.left(sumAt - 1).split('\n');
    for (int i = 1; i < lines.size(); ++i)
        if (!readLine(lines.at(i).split(' '), manifest))
            return damaged(QStringLiteral("line %1 of the backup's list").arg(i + 1));
    return manifest;
}

} // namespace KODMS::Services
