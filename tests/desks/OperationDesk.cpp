// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/OperationDesk.h"

#include <QItemSelectionModel>
#include <QPushButton>

namespace KODMS::Tests {

using UI::Desk;

namespace {

DataLib::Model::Odbpp_Flow_View flowOf(const JobRow &row)
{
    DataLib::Model::Odbpp_Flow_View flow;
    flow.id = row.id;
    flow.jobName = row.job.toStdString();
    flow.uuid = row.file.toStdString();
    flow.origFileSuffix = row.type.toStdString();
    flow.flowGuid = row.flow.toStdString();
    flow.preCheckUserId = row.owner;
    flow.origJobName = row.origin.toStdString();
    flow.preUserRealName = row.orderFlow.toStdString();
    flow.origUploadTime = row.archive.toStdString();
    return flow;
}

DataLib::Model::Odbpp_OrigFile_View fileOf(const JobRow &row)
{
    DataLib::Model::Odbpp_OrigFile_View file;
    file.id = row.id;
    file.origName = row.job.toStdString();
    file.uuid = row.file.toStdString();
    file.fileType = row.type.toStdString();
    file.flowGuid = row.flow.toStdString();
    file.preUserId = row.owner;
    file.koCode = row.origin.toStdString();
    return file;
}

template <typename Record>
Fakes::Page<Record> pageOf(const QVector<JobRow> &rows, Record (*record)(const JobRow &))
{
    Fakes::Page<Record> page;
    page.total = rows.size();
    for (const JobRow &row : rows)
        page.rows.push_back(record(row));
    return page;
}

std::unique_ptr<QWidget> makeWidget(Desk desk)
{
    if (desk == Desk::JobFlow)
        return std::make_unique<UI::DMS_Export_Widget>(nullptr);
    return std::make_unique<UI::DMS_Download_Widget>(nullptr);
}

} // namespace

JobRow jobRow(int number, const QString &type)
{
    const QString suffix = QString::number(number);
    JobRow row;
    row.id = number;
    row.job = QStringLiteral("board") + suffix;
    row.file = QStringLiteral("file") + suffix;
    row.type = type;
    row.flow = QStringLiteral("guid") + suffix;
    row.origin = QStringLiteral("A1B");
    return row;
}

OperationDesk::OperationDesk(Desk desk, const QVector<JobRow> &rows,
                             std::initializer_list<Right> rights)
    : m_desk(desk)
{
    auto &services = FakeServices::instance();
    services.flowPages.always(pageOf(rows, flowOf));
    services.origFilePages.always(pageOf(rows, fileOf));
    for (const Right right : rights)
        services.grant(right);
    services.setUser(DownloadUser);
    m_widget = makeWidget(desk);
    m_widget->resize(1200, 800);
    m_widget->show();
    services.forgetCalls();
}

UI::DMS_Export_Widget *OperationDesk::jobFlow() const
{
    return qobject_cast<UI::DMS_Export_Widget *>(m_widget.get());
}

UI::DMS_Download_Widget *OperationDesk::origFile() const
{
    return qobject_cast<UI::DMS_Download_Widget *>(m_widget.get());
}

void OperationDesk::select(int top, int bottom) const
{
    table()->setRangeSelected({top, 0, bottom, table()->columnCount() - 1}, true);
}

void OperationDesk::setCurrent(int row) const
{
    table()->setCurrentCell(row, 1, QItemSelectionModel::NoUpdate);
}

void OperationDesk::download() const
{
    if (auto *button = control<QPushButton>(*m_widget, "m_pDownloadPB"))
        button->click();
    else
        QMetaObject::invokeMethod(m_widget.get(), "on_m_pDownloadPB_clicked");
}

void addDeskRows()
{
    QTest::addColumn<Desk>("desk");
    QTest::newRow("job-flow desk") << Desk::JobFlow;
    QTest::newRow("original-file desk") << Desk::OrigFile;
}

} // namespace KODMS::Tests
