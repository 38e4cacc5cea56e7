// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DownloadDesk.h"

namespace KODMS::Tests {

using Fakes::Call;
using Fakes::ConditionList;

namespace {

constexpr char Search[] = "Odbpp_OrigFile_ViewBll::selectAndCountBySearchModel";

ConditionList listOf(int search, int argument)
{
    const auto calls = FakeServices::instance().calls(Search);
    const int index = search < 0 ? calls.size() + search : search;
    return calls.at(index).arguments.at(argument).value<ConditionList>();
}

} // namespace

DataLib::Model::Odbpp_OrigFile_View someFile(int id)
{
    DataLib::Model::Odbpp_OrigFile_View file;
    file.id = id;
    file.origName = "board" + std::to_string(id);
    file.koCode = "A1B";
    file.fileType = "tgz";
    file.jobSerialNumber = id;
    file.uuid = "file" + std::to_string(id) + ".tgz";
    file.flowGuid = "guid" + std::to_string(id);
    return file;
}

void answerWithFiles(int total)
{
    FakeServices::instance().origFilePages.compute([total](const Call &call) {
        const auto list = call.arguments.first().value<ConditionList>();
        const int first = std::stoi(list.back().pageStart);
        Fakes::Page<DataLib::Model::Odbpp_OrigFile_View> page;
        page.total = total;
        for (int row = first; row < qMin(first + 30, total); ++row)
            page.rows.push_back(someFile(row + 1));
        return page;
    });
}

std::unique_ptr<UI::DMS_Download_Widget> makeDownloadDesk(const QVector<Right> &rights)
{
    for (const Right right : rights)
        FakeServices::instance().grant(right);
    FakeServices::instance().setUser(DownloadUser);
    auto desk = std::make_unique<UI::DMS_Download_Widget>(nullptr);
    desk->resize(1200, 800);
    desk->show();
    desk->activateWindow();
    return desk;
}

int fileSearches()
{
    return FakeServices::instance().count(Search);
}

ConditionList fileConditions(int index)
{
    return listOf(index, 0);
}

ConditionList fileCountConditions(int index)
{
    return listOf(index, 1);
}

QString rightNames(const QVector<Right> &rights)
{
    QStringList names;
    for (const Right right : rights)
        names << rightName(right);
    return names.isEmpty() ? QStringLiteral("no right") : names.join(QStringLiteral(" + "));
}

QVector<QVector<Right>> combinations(const QVector<Right> &rights)
{
    QVector<QVector<Right>> all;
    for (int mask = 0; mask < 1 << rights.size(); ++mask) {
        QVector<Right> chosen;
        for (int bit = 0; bit < rights.size(); ++bit)
            if (mask & (1 << bit))
                chosen << rights.at(bit);
        all << chosen;
    }
    return all;
}

bool seesOrigFiles(const QVector<Right> &rights)
{
    return rights.contains(Right::ShowCompanyName) || rights.contains(Right::Admin) ||
           rights.contains(Right::TestAdmin);
}

} // namespace KODMS::Tests
