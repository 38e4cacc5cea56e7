// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/TransferCases.h"

#include "services/archive/FolderPacker.h"
#include "services/archive/Unpacker.h"
#include "services/filestore/FileStore.h"

#include <QFile>

#include <memory>
#include <stdexcept>

namespace KODMS::Bench {

using namespace Services;

namespace {

using Store = std::shared_ptr<FileStore>;

struct Place {
    QString root;
    Store store;
};

void must(const Outcome &outcome)
{
    if (!outcome)
        throw std::runtime_error(outcome.cause.toStdString());
}

/// A store for one case.
Place placeIn(const QString &storeRoot, const char *name)
{
    const QString root = storeRoot + QLatin1Char('/') + QString::fromLatin1(name);
    FileStoreSettings settings;
    settings.kind = QStringLiteral("folder");
    settings.root = root;
    settings.database = QStringLiteral("bench");
    settings.bucket = QStringLiteral("files");
    auto store = FileStore::create(settings);
    must(store.outcome);
    return {root, Store(std::move(store.value))};
}

void put(FileStore &store, const QString &path, const QString &name)
{
    NoProgress progress;
    must(store.put(path, name, progress));
}

void fetchAndUnpack(const FileStore &store, const QString &name, const QString &folder)
{
    NoProgress progress;
    const QString local = folder + QStringLiteral("/fetched");
    must(store.get(name, local, progress));
    // The desks make the job's folder before they unpack.
    QDir().mkpath(folder + QStringLiteral("/job"));
    must(unpackArchive(local, folder + QStringLiteral("/job"), LimitSettings(), progress).outcome);
}

TransferCase unpackCase(const QString &title, double goal, const Place &place,
                        const std::function<QString()> &archive, const QString &name,
                        const QString &theirUnpack)
{
    TransferCase one;
    one.name = QStringLiteral("fetch + verify + unpack, ") + title;
    one.goal = goal;
    one.prepare = [=] {
        put(*place.store, archive(), name);
        return QStringList{archive(), place.root};
    };
    one.ours = [=](const QString &folder) { fetchAndUnpack(*place.store, name, folder); };
    one.theirs = [archive, theirUnpack] {
        const QString file = archive();
        return QStringLiteral("cp %1 fetched; sha256sum fetched; mkdir job; %2")
            .arg(file, theirUnpack);
    };
    return one;
}

TransferCase packCase(const Place &place, const Material &material)
{
    TransferCase one;
    one.name = QStringLiteral("store a folder of text files, packed");
    one.goal = 0.6;
    one.prepare = [&material] { return QStringList(material.textFolder()); };
    one.ours = [=, &material](const QString &work) {
        NoProgress progress;
        const QString zip = work + QStringLiteral("/packed.zip");
        must(packFolder(material.textFolder(), zip, LimitSettings(), progress).outcome);
        put(*place.store, zip, QStringLiteral("packed.zip"));
        must(place.store->remove(QStringLiteral("packed.zip")));
    };
    one.theirs = [&material] {
        const QFileInfo texts(material.textFolder());
        return QStringLiteral("here=$PWD; cd %1; zip -qr $here/packed.zip %2; cd $here; "
                              "cp packed.zip stored; sha256sum stored; rm stored")
            .arg(texts.path(), texts.fileName());
    };
    return one;
}

TransferCase putCase(const Place &place, const Material &material)
{
    TransferCase one;
    one.name = QStringLiteral("put one large file");
    one.goal = 1.0;
    one.prepare = [&material] { return QStringList(material.hugeFile()); };
    one.ours = [=, &material](const QString &) {
        put(*place.store, material.hugeFile(), QStringLiteral("large"));
        must(place.store->remove(QStringLiteral("large")));
    };
    one.theirs = [&material] {
        return QStringLiteral("cp %1 stored; sha256sum stored; rm stored").arg(material.hugeFile());
    };
    return one;
}

TransferCase getCase(const Place &place, const Material &material)
{
    TransferCase one;
    one.name = QStringLiteral("get one large file");
    one.goal = 0.7;
    one.prepare = [=, &material] {
        put(*place.store, material.hugeFile(), QStringLiteral("huge"));
        return QStringList{material.hugeFile(), place.root};
    };
    one.ours = [=](const QString &folder) {
        NoProgress progress;
        must(place.store->get(QStringLiteral("huge"), folder + QStringLiteral("/fetched"),
                              progress));
    };
    one.theirs = [&material] {
        return QStringLiteral("cp %1 fetched; sha256sum fetched").arg(material.hugeFile());
    };
    return one;
}

} // namespace

std::vector<TransferCase> transferCases(const Material &material, const QString &storeRoot)
{
    const QString tar = QStringLiteral("bsdtar -x -C job -f fetched");
    std::vector<TransferCase> cases;
    cases.push_back(unpackCase(
        QStringLiteral("tgz of one text file"), 0.5, placeIn(storeRoot, "one"),
        [&material] { return material.bigTgz(); }, QStringLiteral("big.tgz"), tar));
    cases.push_back(unpackCase(
        QStringLiteral("tgz of small files"), 0.8, placeIn(storeRoot, "tgz"),
        [&material] { return material.manyTgz(); }, QStringLiteral("many.tgz"), tar));
    cases.back().hasManyFiles = true;
    cases.push_back(unpackCase(
        QStringLiteral("zip of small files"), 0.6, placeIn(storeRoot, "zip"),
        [&material] { return material.manyZip(); }, QStringLiteral("many.zip"),
        QStringLiteral("unzip -q fetched -d job")));
    cases.back().hasManyFiles = true;
    cases.push_back(packCase(placeIn(storeRoot, "pack"), material));
    cases.push_back(putCase(placeIn(storeRoot, "put"), material));
    cases.push_back(getCase(placeIn(storeRoot, "get"), material));
    return cases;
}

} // namespace KODMS::Bench
