// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/FolderBrowser.h"
#include "desks/common/JobDownload.h"
#include "desks/common/SelectionChecks.h"

namespace KODMS::UI {

void DMS_Export_Widget::on_m_pDownloadPB_clicked()
{
    const JobDownload download(
        {this, m_pJobTableWidget, JobFlowDesk, m_JobFileName, m_DownloadPath, {}, {}});
    download.run();
}

bool DMS_Export_Widget::checkSelectIsLeagal()
{
    return selectionIsOneKind(m_pJobTableWidget, JobFlowDesk);
}

bool DMS_Export_Widget::checkDownLoadSAuthority()
{
    return userMayHaveSelection(this, m_pJobTableWidget, JobFlowDesk);
}

bool DMS_Export_Widget::checkInsertJobType(const QString &folder)
{
    return findJobFile(folder, m_JobFileName);
}

void DMS_Export_Widget::OpenFileFolder(QString path)
{
    showInFileBrowser(path);
}

} // namespace KODMS::UI
