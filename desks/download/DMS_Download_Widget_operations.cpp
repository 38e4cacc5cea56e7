// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/FolderBrowser.h"
#include "desks/common/JobDownload.h"
#include "desks/common/SelectionChecks.h"

namespace KODMS::UI {

void DMS_Download_Widget::on_m_pDownloadPB_Clicked()
{
    const JobDownload download({this, m_pJobTableWidget, OrigFileDesk, m_JobFileName,
                                m_DownloadPath, [this] { updateDownloadJobTable(); },
                                [this](const QString &job) { Q_EMIT newWebItemNameGetted(job); }});
    download.run();
}

bool DMS_Download_Widget::checkSelectIsLeagal()
{
    return selectionIsOneKind(m_pJobTableWidget, OrigFileDesk);
}

bool DMS_Download_Widget::checkDownLoadSAuthority()
{
    return userMayHaveSelection(this, m_pJobTableWidget, OrigFileDesk);
}

bool DMS_Download_Widget::checkInsertJobType(const QString &folder)
{
    return findJobFile(folder, m_JobFileName);
}

void DMS_Download_Widget::OpenFileFolder(QString path)
{
    showInFileBrowser(path);
}

} // namespace KODMS::UI
