// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/JobDownload.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/DownloadRights.h"
#include "desks/common/FolderBrowser.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/OrderPayment.h"
#include "desks/common/SelectionChecks.h"
#include "desks/common/TableHelpers.h"
#include "foundation/bll/Odbpp_JobFlowBll.h"
#include "foundation/common/Common.h"
#include "foundation/common/DBS_API.h"
#include "foundation/common/DMS_Function.h"
#include "foundation/ui/DMS_StdCommon.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTableWidget>

#include <optional>

namespace KODMS::UI {

namespace {

constexpr char ConfirmDownload[] = "确认下载这些job?";
constexpr char MixedKinds[] = "请确认选择的下载的料时同一种类型（tgz或者gerber）。\n"
                              "若选择的Gerber，目前仅支持单选！?";
constexpr char NoFlowGuid[] = "文件获取失败.";
constexpr char RowFailed[] = "下载失败或文件已下载!";
constexpr char Complete[] = "Download complete!";

constexpr char FlowGuidKey[] = "FlowGUID";
const QLatin1String WebOrigin("web");
const QLatin1String TgzType("tgz");
const QLatin1String NoType("file");     // a file without a type is fetched under this one,
const QLatin1String NoTypeIsZip("zip"); // and unpacked as this one
constexpr int FinishedFlowStatus = 3;
constexpr int FinishedCheckFlag = 2;

constexpr QLatin1Char Slash('/');

std::optional<QString> jobNameOfFlow(const QString &flowGuid)
{
    std::vector<DataLib::Model::Odbpp_JobFlow> flows;
    DataLib::BLL::Odbpp_JobFlowBll().select({{FlowGuidKey, flowGuid.toStdString()}}, {}, flows);
    if (flows.empty())
        return std::nullopt;
    return QString::fromStdString(flows.front().jobName);
}

QString downloadRoot()
{
    return QString::fromStdString(Common::commonInterface()->getConfig().downloadDir);
}

void makeJobFolder(const QString &root, const QString &flowJob)
{
    QDir dir;
    if (dir.cd(root) && !dir.exists(flowJob))
        dir.mkdir(flowJob);
}

/// "|" and the robot's parameters, for the end of a path; nothing without parameters.
QString robotSuffix(const QString &flowJob)
{
    const QString parameters =
        QString::fromStdString(DBS_API::getWebRobotParaByJobName(flowJob.toStdString()));
    return parameters.isEmpty() ? parameters : QLatin1Char('|') + parameters;
}

} // namespace

JobDownload::JobDownload(const DownloadDesk &desk) : m_desk(desk), m_window(desk.window) {}

void JobDownload::run() const
{
    if (!mayBegin())
        return;
    const QVector<Row> rows = selectedRows();
    for (const Row &row : rows) {
        if (m_desk.its.needsFlowGuid && row.flowGuid.isEmpty()) {
            inform(m_window, NoFlowGuid);
            break;
        }
        download(row);
        if (!m_window)
            return;
    }
    inform(m_window, Complete);
    if (m_window)
        showInFileBrowser(m_desk.lastPath);
}

bool JobDownload::mayBegin() const
{
    if (m_desk.table->currentRow() == -1) {
        inform(m_window, m_desk.its.noRowMessage);
        return false;
    }
    if (m_desk.its.finishesForOthers && !isPrivileged()) {
        finishInstead();
        return false;
    }
    if (m_desk.its.checksOwner && !userMayHaveSelection(m_window, m_desk.table, m_desk.its))
        return false;
    if (isUnpaidWebJob()) {
        inform(m_window, OrderUnpaid);
        return false;
    }
    if (!confirm(m_window, ConfirmDownload, QMessageBox::Yes | QMessageBox::Cancel))
        return false;
    if (!selectionIsOneKind(m_desk.table, m_desk.its)) {
        inform(m_window, MixedKinds);
        return false;
    }
    return true;
}

/// Who has only an order history finishes the flow that is current there.
void JobDownload::finishInstead() const
{
    const QString job = cellText(m_desk.table, m_desk.table->currentRow(), JobColumn::JobName);
    DBS_API::kodms_update_flow_status(job.toStdString(), FinishedFlowStatus, FinishedCheckFlag);
    if (m_window && m_desk.reload)
        m_desk.reload();
}

/// Asks for the current row alone, whatever else is selected.
bool JobDownload::isUnpaidWebJob() const
{
    const int row = m_desk.table->currentRow();
    if (cellText(m_desk.table, row, m_desk.its.originColumn) != WebOrigin)
        return false;
    return !isOrderPaid(cellText(m_desk.table, row, m_desk.its.orderFlowColumn));
}

QVector<JobDownload::Row> JobDownload::selectedRows() const
{
    QVector<Row> rows;
    for (int row = 0; row < m_desk.table->rowCount(); ++row)
        if (hasSelectedCell(m_desk.table, row))
            rows.append(rowAt(row));
    return rows;
}

JobDownload::Row JobDownload::rowAt(int row) const
{
    const auto text = [this, row](int column) { return cellText(m_desk.table, row, column); };
    const QString fileType = text(m_desk.its.fileTypeColumn);
    const bool isWeb = text(m_desk.its.originColumn).toLower() == WebOrigin;
    const bool isTgz =
        isWeb || text(m_desk.its.archiveColumn).toLower() == TgzType || fileType == TgzType;
    return {text(m_desk.its.jobNameColumn),
            text(m_desk.its.fileColumn),
            fileType.isEmpty() ? NoType : fileType,
            text(m_desk.its.flowColumn),
            isWeb,
            isTgz};
}

void JobDownload::download(const Row &row) const
{
    const std::optional<QString> flowJob = jobNameOfFlow(row.flowGuid);
    if (flowJob && m_window)
        fetch(row, *flowJob);
    else
        inform(m_window, RowFailed);
}

void JobDownload::fetch(const Row &row, const QString &flowJob) const
{
    const QString root = downloadRoot();
    const Target target{flowJob, root + flowJob, root + flowJob + QLatin1Char('.') + row.fileType};
    DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName(
        flowJob.toStdString(), row.storedFile.toStdString(), row.fileType.toStdString());
    if (!m_window)
        return;
    m_desk.lastPath = target.folder;
    makeJobFolder(root, flowJob);
    const bool isThere = unpack(row, target);
    if (!m_window)
        return;
    if (!isThere) {
        inform(m_window, RowFailed);
        return;
    }
    QFile::remove(target.archive);
    handOver(row, target);
}

/// What cannot be unpacked is put into the job's folder as it is, under its stored
/// name; false when it is there already, or was not fetched at all.
bool JobDownload::unpack(const Row &row, const Target &target) const
{
    const QString type = row.fileType == NoType ? NoTypeIsZip : row.fileType;
    const QString into = target.folder + Slash;
    const int files = DMS_Function::ExtractorFileFromcompressFile(
        target.archive.toStdWString(), type.toStdWString(), into.toStdWString());
    const bool isUnpacked = files != 0 && files != -1;
    return isUnpacked || QFile::copy(target.archive, into + row.storedFile);
}

void JobDownload::handOver(const Row &row, const Target &target) const
{
    if (row.isTgz)
        handOverTgz(target);
    else
        handOverLayers(row, target);
    if (m_window && row.isWeb && m_desk.gotWebItem)
        m_desk.gotWebItem(target.flowJob);
}

void JobDownload::handOverTgz(const Target &target) const
{
    const QString suffix = robotSuffix(target.flowJob);
    if (!m_window)
        return;
    if (findJobFile(target.folder, m_desk.jobFileName))
        DMS_UICommon::interface()->importNewJob(target.folder + Slash + m_desk.jobFileName + suffix,
                                                target.flowJob);
    else
        DMS_UICommon::interface()->inputNewJob(target.flowJob, target.folder + suffix);
}

/// Without layers there is nothing to hand over. The CAM side knows the path of a
/// job file among the layers as the folder and the name written together.
void JobDownload::handOverLayers(const Row &row, const Target &target) const
{
    const QString layers = target.folder + Slash + row.jobName + QStringLiteral("/layer");
    if (!QFileInfo(layers).isDir())
        return;
    if (findJobFile(layers, m_desk.jobFileName))
        DMS_UICommon::interface()->importNewJob(layers + row.jobName + QStringLiteral(".tgz"),
                                                target.flowJob);
    else
        DMS_UICommon::interface()->inputNewJob(target.flowJob, layers);
}

} // namespace KODMS::UI
