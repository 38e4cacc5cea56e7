// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultyFileStore.h"

#include "tests/faults/FaultPlan.h"

#include <QVector>

#include <stdexcept>

namespace KODMS::Tests {

using namespace Services;

namespace {

Outcome gone()
{
    return Outcome::failure(QStringLiteral("文件库无法访问"),
                            QStringLiteral("the file store cannot be reached"));
}

/// Asks the plan, then does what the call is about, or not; `failure` is what the call
/// says when it fails.
template <typename Answer, typename Call> Answer asked(const Answer &failure, const Call &call)
{
    switch (FaultPlan::next(FaultLayer::Store)) {
    case FaultPlan::Turn::Works:
        break;
    case FaultPlan::Turn::Throws:
        throw std::runtime_error("the file store has thrown");
    case FaultPlan::Turn::LosesItsAnswer:
        Q_UNUSED(call())
        return failure;
    case FaultPlan::Turn::Fails:
    case FaultPlan::Turn::IsLost:
        return failure;
    }
    return call();
}

} // namespace

Result<std::unique_ptr<FileStore>> FaultyFileStore::create(const FileStoreSettings &settings)
{
    auto inner = FileStore::create(settings);
    if (!inner)
        return inner.outcome;
    return std::unique_ptr<FileStore>(new FaultyFileStore(std::move(inner.value)));
}

Outcome FaultyFileStore::put(const QString &localPath, const QString &name, Progress &progress)
{
    return asked(gone(), [&] { return m_inner->put(localPath, name, progress); });
}

Outcome FaultyFileStore::get(const QString &name, const QString &localPath,
                             Progress &progress) const
{
    return asked(gone(), [&] { return m_inner->get(name, localPath, progress); });
}

Outcome FaultyFileStore::remove(const QString &name)
{
    return asked(gone(), [&] { return m_inner->remove(name); });
}

Result<bool> FaultyFileStore::has(const QString &name) const
{
    return asked(Result<bool>(gone()), [&] { return m_inner->has(name); });
}

Result<StoredFileInfo> FaultyFileStore::find(const QString &name) const
{
    return asked(Result<StoredFileInfo>(gone()), [&] { return m_inner->find(name); });
}

Result<QVector<StoredFileInfo>> FaultyFileStore::list() const
{
    return asked(Result<QVector<StoredFileInfo>>(gone()), [&] { return m_inner->list(); });
}

Outcome FaultyFileStore::verify(const QString &name, Progress &progress) const
{
    return asked(gone(), [&] { return m_inner->verify(name, progress); });
}

Result<std::unique_ptr<StoreHold>> FaultyFileStore::hold()
{
    return m_inner->hold();
}

bool FaultyFileStore::isPutterAlive(const QString &name) const
{
    return m_inner->isPutterAlive(name);
}

Result<QStringList> FaultyFileStore::leftovers() const
{
    return m_inner->leftovers();
}

Outcome FaultyFileStore::sweep()
{
    return m_inner->sweep();
}

QString FaultyFileStore::placeText() const
{
    return m_inner->placeText();
}

} // namespace KODMS::Tests
