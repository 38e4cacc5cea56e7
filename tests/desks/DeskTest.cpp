// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DeskTest.h"

#include <QApplication>

namespace KODMS::Tests {

using Fakes::Call;
using Fakes::ConditionList;

namespace {

constexpr char Search[] = "Odbpp_Flow_ViewBll::selectAndCountBySearchModel";

ConditionList listOf(int search, int argument)
{
    const auto calls = FakeServices::instance().calls(Search);
    const int index = search < 0 ? calls.size() + search : search;
    return calls.at(index).arguments.at(argument).value<ConditionList>();
}

} // namespace

DataLib::Model::Odbpp_Flow_View someFlow(int id)
{
    DataLib::Model::Odbpp_Flow_View flow;
    flow.id = id;
    flow.jobName = "A1B" + std::to_string(100000 + id);
    flow.origJobName = "board";
    flow.flowGuid = "guid" + std::to_string(id);
    flow.tips = "board";
    return flow;
}

void answerWithFlows(int total)
{
    FakeServices::instance().flowPages.compute([total](const Call &call) {
        const auto list = call.arguments.first().value<ConditionList>();
        const int first = std::stoi(list.back().pageStart);
        Fakes::Page<DataLib::Model::Odbpp_Flow_View> page;
        page.total = total;
        for (int row = first; row < qMin(first + 30, total); ++row)
            page.rows.push_back(someFlow(row + 1));
        return page;
    });
}

std::unique_ptr<UI::DMS_Export_Widget> makeDesk(std::initializer_list<Right> rights)
{
    for (const Right right : rights)
        FakeServices::instance().grant(right);
    auto desk = std::make_unique<UI::DMS_Export_Widget>(nullptr);
    desk->resize(1200, 800);
    desk->show();
    QApplication::setActiveWindow(desk.get());
    return desk;
}

QStringList columnTexts(const QTableWidget *table, int column)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row)
        texts << table->item(row, column)->text();
    return texts;
}

int searches()
{
    return FakeServices::instance().count(Search);
}

ConditionList conditions(int index)
{
    return listOf(index, 0);
}

ConditionList countConditions(int index)
{
    return listOf(index, 1);
}

QString rightName(Right right)
{
    switch (right) {
    case Right::Admin:
        return QStringLiteral("admin");
    case Right::PreProcess:
        return QStringLiteral("pre-process");
    case Right::PreCheckAssign:
        return QStringLiteral("pre-check-assign");
    case Right::TestAdmin:
        return QStringLiteral("test-admin");
    case Right::CheckAuthority:
        return QStringLiteral("check-authority");
    case Right::OrigFileUpdate:
        return QStringLiteral("orig-file-update");
    case Right::OrigFileAssign:
        return QStringLiteral("orig-file-assign");
    case Right::ShowCompanyName:
        return QStringLiteral("show-company-name");
    }
    return {};
}

} // namespace KODMS::Tests
