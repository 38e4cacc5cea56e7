// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ListExport.h"

#include "services/api/internal/ListSource.h"
#include "services/disk/IoFailure.h"
#include "services/notices/NoticeHub.h"
#include "services/notices/OneLine.h"
#include "services/records/FlowViewRow.h"
#include "services/records/OrigFileViewRow.h"
#include "services/records/RowReader.h"
#include "services/session/Runtime.h"
#include "services/tables/TableFile.h"
#include "services/tables/XlsxFile.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace KODMS::Services {

namespace {

constexpr const char *Action = "list.export";

QString tr(const char *text)
{
    return QCoreApplication::translate("ListExport", text);
}

Outcome tooManyRows(int rows)
{
    return Outcome::failure(tr("结果有 %1 行，而工作表只能容纳 %2 行：请缩小筛选范围，或导出为 CSV")
                                .arg(rows)
                                .arg(XlsxFile::MostRows),
                            QStringLiteral("%1 rows are too many for a sheet").arg(rows));
}

/// One export: what is read, how a row becomes cells, and where they go.
template <typename Record> class ListWriting {
public:
    using RowOf = Record (*)(const SqlQuery &);

    ListWriting(const QVector<ListColumn<Record>> &columns, RowOf rowOf)
        : m_columns(columns), m_rowOf(rowOf)
    {
    }

    Outcome write(ListSource &source, const QString &path, ListExport::Format format,
                  Progress &progress)
    {
        const bool isSheet = format == ListExport::Format::Xlsx;
        if (isSheet && source.count() > XlsxFile::MostRows)
            return tooManyRows(source.count());
        auto file = TableFile::create(
            path, isSheet ? TableFile::Format::Xlsx : TableFile::Format::Csv, titles());
        if (!file)
            return file.outcome;
        progress.setUnit(Progress::Unit::Rows);
        progress.setTotal(source.count());
        if (Outcome filled = fill(source, *file.value, progress); !filled)
            return filled;
        m_receipt.cutCells = file.value->cutCells();
        return file.value->publish();
    }

    const ListReceipt &receipt() const { return m_receipt; }

private:
    QVector<TableColumn> titles() const
    {
        QVector<TableColumn> titles;
        for (const auto &column : m_columns)
            titles.append({column.title, column.width, column.isNumber});
        return titles;
    }

    Outcome fill(ListSource &source, TableFile &file, Progress &progress)
    {
        QVector<QStringList> rows;
        for (;;) {
            rows.fill({}, RowReader::chunkSize);
            const int count = source.readNext(
                [&](int place, const SqlQuery &query) { rows[place] = cellsOf(m_rowOf(query)); });
            if (count == 0)
                return Outcome::success();
            for (int i = 0; i < count; ++i) {
                if (Outcome added = file.addRow(rows.at(i)); !added)
                    return added;
            }
            m_receipt.rows += count;
            progress.advance(count);
            if (progress.isCancelled())
                return cancelledFailure();
        }
    }

    QStringList cellsOf(const Record &record) const
    {
        QStringList cells;
        for (const auto &column : m_columns)
            cells << column.text(record);
        return cells;
    }

    const QVector<ListColumn<Record>> &m_columns;
    RowOf m_rowOf;
    ListReceipt m_receipt;
};

Outcome failed(const QString &path, const Outcome &outcome)
{
    if (!outcome.isCancelled)
        reportFailure(lcFileStore(), Action, path,
                      outcome.cause.isEmpty() ? outcome.text : outcome.cause, outcome.text);
    return outcome;
}

void sayDone(const QString &path, const ListReceipt &receipt)
{
    const QString name = QDir::toNativeSeparators(path);
    qCInfo(lcFileStore).noquote() << Action << receipt.rows << "rows" << oneLine(name);
    NoticeHub::instance().raise(NoticeLevel::Information,
                                oneLine(tr("已导出 %1 行：%2").arg(receipt.rows).arg(name)));
    if (receipt.cutCells > 0)
        NoticeHub::instance().raise(
            NoticeLevel::Warning,
            tr("导出的文件中有 %1 个单元格超过 32,767 个字符，只保留了开头").arg(receipt.cutCells));
}

template <typename Record>
Result<ListReceipt> exported(const ShownSearch &search, ListWriting<Record> writing,
                             const QString &path, ListExport::Format format, Progress *progress)
{
    Runtime *runtime = Runtime::current();
    if (!runtime)
        return Outcome::failure(tr("服务尚未启动"));
    const DatabaseSettings settings = runtime->configuration().database;
    const Actor actor = runtime->records().actor();
    const auto work = [&](Progress &shown) {
        try {
            ListSource source(settings, actor);
            Outcome found = source.find(search);
            Outcome written = found ? writing.write(source, path, format, shown) : found;
            written.isCancelled = !written && shown.isCancelled();
            return written;
        } catch (const SqlError &error) {
            return Outcome::failure(error.userText(), error.logText());
        }
    };
    const Outcome outcome =
        progress ? work(*progress)
                 : TaskRunner::instance().run(tr("导出 %1").arg(QFileInfo(path).fileName()), work);
    if (!outcome)
        return failed(path, outcome);
    sayDone(path, writing.receipt());
    return writing.receipt();
}

} // namespace

int ListExport::mostSheetRows()
{
    return XlsxFile::MostRows;
}

Result<ListReceipt> ListExport::flows(const ShownSearch &search, const QVector<FlowColumn> &columns,
                                      const QString &path, Format format, Progress *progress)
{
    return exported(search, ListWriting<DataLib::Model::Odbpp_Flow_View>(columns, flowViewRow),
                    path, format, progress);
}

Result<ListReceipt> ListExport::origFiles(const ShownSearch &search,
                                          const QVector<OrigFileColumn> &columns,
                                          const QString &path, Format format, Progress *progress)
{
    return exported(search,
                    ListWriting<DataLib::Model::Odbpp_OrigFile_View>(columns, origFileViewRow),
                    path, format, progress);
}

} // namespace KODMS::Services
