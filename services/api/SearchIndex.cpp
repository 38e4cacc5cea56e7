// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SearchIndex.h"

#include "services/session/Runtime.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SearchIndex", text);
}

QString textOf(const IndexStatus &status)
{
    switch (status.state) {
    case IndexStatus::State::Loading:
        return tr("正在读取");
    case IndexStatus::State::Failed:
        return tr("无法建立，由数据库直接查询");
    case IndexStatus::State::Ready:
        break;
    case IndexStatus::State::Off:
        return tr("未启用，由数据库直接查询");
    }
    constexpr double kibi = 1024.0;
    constexpr double second = 1000.0;
    return tr("%1 个流程，%2 个原始文件，%3 MiB，读取用时 %4 秒")
        .arg(status.flows)
        .arg(status.origFiles)
        .arg(static_cast<double>(status.bytes) / kibi / kibi, 0, 'f', 1)
        .arg(status.loadMilliseconds / second, 0, 'f', 2);
}

SearchIndexState stateOf(const IndexStatus &status)
{
    return {status.state == IndexStatus::State::Ready,
            status.flows,
            status.origFiles,
            status.bytes,
            status.loadMilliseconds,
            textOf(status)};
}

} // namespace

SearchIndexState SearchIndex::state()
{
    if (Runtime::current() == nullptr)
        return stateOf(IndexStatus());
    ColumnIndex &index = Runtime::current()->searchIndex();
    index.takeLoaded(); // whether or not anybody has searched since
    return stateOf(index.status());
}

SearchIndexState SearchIndex::load()
{
    if (Runtime::current() != nullptr)
        Runtime::current()->searchIndex().load();
    return state();
}

} // namespace KODMS::Services
