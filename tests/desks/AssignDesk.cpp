// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/AssignDesk.h"

#include <algorithm>

namespace KODMS::Tests {

using Fakes::Call;

const QString AssignText::NoRight = QStringLiteral("对不起，你没有该权限！");
const QString AssignText::SelectRow = QStringLiteral("请选择一行数据");
const QString AssignText::Reassign =
    QStringLiteral("有一个或多个项已经有指派人了！是否对这些项目重新指派？");

namespace {

FakeServices &services()
{
    return FakeServices::instance();
}

bool isIn(const std::vector<int> &numbers, int number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

} // namespace

AssignDesk::AssignDesk(Kind kind, int total, const std::vector<int> &taken) : m_kind(kind)
{
    if (services().users.take({}).rows.empty())
        services().users.always({{{31, "pre-checker 1", 3, 10},
                                  {32, "pre-checker 2", 3, 10},
                                  {33, "neither", 3, 6},
                                  {41, "executor 1", 2, 6},
                                  {42, "executor 2", 2, 6}},
                                 true});
    answer(total, taken);
    if (kind == Kind::JobFlows)
        m_desk = makeDesk({Right::Admin});
    else
        m_desk = makeDownloadDesk({Right::Admin});
    services().setUser(Me);
    services().forgetCalls();
}

/// Rows are told apart by nothing but what assignment goes by.
void AssignDesk::answer(int total, const std::vector<int> &taken) const
{
    if (m_kind == Kind::JobFlows)
        answerWithFlows(total);
    else
        answerWithFiles(total);
    auto flows = services().flowPages;
    services().flowPages.compute([flows, taken](const Call &call) mutable {
        auto page = flows.take(call);
        for (auto &flow : page.rows) {
            flow.jobName = "the same job";
            flow.preCheckUserRealName = isIn(taken, flow.id) ? "somebody" : "";
        }
        return page;
    });
    auto files = services().origFilePages;
    services().origFilePages.compute([files, taken](const Call &call) mutable {
        auto page = files.take(call);
        for (auto &file : page.rows) {
            file.origName = "the same file";
            file.jobSerialNumber = 1000 - file.id;
            file.preUserRealName = isIn(taken, file.id) ? "somebody" : "";
        }
        return page;
    });
}

void AssignDesk::select(const QVector<int> &rows, int current) const
{
    QTableWidget *table = this->table();
    table->clearSelection();
    for (int row : rows)
        for (int column = 0; column < table->columnCount(); ++column)
            table->item(row, column)->setSelected(true);
    table->selectionModel()->setCurrentIndex(table->model()->index(current, 1),
                                             QItemSelectionModel::NoUpdate);
}

QVector<int> AssignDesk::selectedRows() const
{
    QVector<int> rows;
    for (int row = 0; row < table()->rowCount(); ++row)
        if (table()->item(row, 0)->isSelected())
            rows << row;
    return rows;
}

int AssignDesk::searches() const
{
    return m_kind == Kind::JobFlows ? KODMS::Tests::searches() : fileSearches();
}

void AssignDesk::refreshFromElsewhere()
{
    services().raiseRefreshExportJobTable();
    services().raiseRefreshOrigFileTable();
}

QString AssignDesk::firstTime(int id, int person, int user) const
{
    if (m_kind == Kind::JobFlows)
        return QStringLiteral("Kodms_PreCheckAssignBll::s_PreCheckAssign(\"guid%1\", %2, %3)")
            .arg(id)
            .arg(user)
            .arg(31 + person);
    return QStringLiteral("Kodms_OrigFileAssignBll::AssignOrigFile(%1, %2, \"guid%1\", %2, %3)")
        .arg(id)
        .arg(user)
        .arg(41 + person);
}

QString AssignDesk::again(int id, int person, int user) const
{
    if (m_kind == Kind::JobFlows)
        return QStringLiteral("Kodms_PreCheckAssignBll::Update_PreCheckAssign(\"guid%1\", %2, %3)")
            .arg(id)
            .arg(user)
            .arg(31 + person);
    return QStringLiteral("Kodms_OrigFileAssignBll::AssignOrigFileUpdate(%2, \"guid%1\", %3)")
        .arg(id)
        .arg(user)
        .arg(41 + person);
}

QString AssignDesk::nameOf(Kind kind)
{
    return kind == Kind::JobFlows ? QStringLiteral("job-flow desk")
                                  : QStringLiteral("original-file desk");
}

void AssignDesk::addBoth()
{
    QTest::addColumn<Kind>("kind");
    for (const Kind kind : {Kind::JobFlows, Kind::OrigFiles})
        QTest::addRow("%s", qPrintable(nameOf(kind))) << kind;
}

QStringList AssignDesk::written()
{
    return services().operationLines().filter(QStringLiteral("AssignBll::"));
}

void AssignDesk::refuseAll()
{
    for (const char *operation : {"Kodms_PreCheckAssignBll::s_PreCheckAssign",
                                  "Kodms_PreCheckAssignBll::Update_PreCheckAssign",
                                  "Kodms_OrigFileAssignBll::AssignOrigFile",
                                  "Kodms_OrigFileAssignBll::AssignOrigFileUpdate"})
        services().result(operation).always(0);
}

} // namespace KODMS::Tests
