// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DeskList.h"

#include "apps/desk/ListColumns.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace KODMS::Host {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("DeskList", text);
}

/// The name that was chosen tells the format, or else the kind of file that was.
QString withSuffix(const QString &path, const QString &filter)
{
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("xlsx") || suffix == QLatin1String("csv"))
        return path;
    return path + (filter.contains(QLatin1String("*.csv")) ? QLatin1String(".csv")
                                                           : QLatin1String(".xlsx"));
}

bool mayReplace(const QString &path, QWidget *parent)
{
    return !QFileInfo::exists(path) ||
           QMessageBox::question(parent, tr("导出列表"),
                                 tr("%1 已存在，要替换吗？").arg(QFileInfo(path).fileName())) ==
               QMessageBox::Yes;
}

/// The folder of the last export of this session, or the documents.
QString &folder()
{
    static QString last = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return last;
}

QString askForPath(const QString &title, QWidget *parent)
{
    QFileDialog dialog(parent, tr("导出列表"), folder());
    dialog.setObjectName(QStringLiteral("exportDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilters({tr("Excel 工作簿 (*.xlsx)"), tr("CSV 文件 (*.csv)")});
    dialog.selectFile(title + QLatin1Char('-') + QDate::currentDate().toString(Qt::ISODate));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QString chosen = dialog.selectedFiles().first();
    folder() = QFileInfo(chosen).path();
    // What the dialog has not seen under this name, it has not asked about.
    const QString path = withSuffix(chosen, dialog.selectedNameFilter());
    return path == chosen || mayReplace(path, parent) ? path : QString();
}

} // namespace

Services::Result<Services::ListReceipt> DeskList::save(const QString &path) const
{
    using Services::ListExport;
    const bool isSheet = path.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive);
    const auto format = isSheet ? ListExport::Format::Xlsx : ListExport::Format::Csv;
    return search.view == Services::ShownSearch::View::Flows
               ? ListExport::flows(search, ListColumns::flows(columns), path, format)
               : ListExport::origFiles(search, ListColumns::origFiles(columns), path, format);
}

void DeskList::saveAs(QWidget *parent) const
{
    const QString path = askForPath(title, parent);
    if (path.isEmpty())
        return;
    const auto receipt = save(path);
    if (receipt || receipt.outcome.isCancelled)
        return;
    QMessageBox box(QMessageBox::Warning, tr("导出列表"), receipt.text(), QMessageBox::Ok, parent);
    box.setObjectName(QStringLiteral("exportFailure"));
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace KODMS::Host
