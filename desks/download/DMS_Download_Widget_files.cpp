// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DeskOperations.h"
#include "desks/common/MessageBoxes.h"
#include "desks/common/TableHelpers.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "foundation/bll/Odbpp_JobCompressBll.h"
#include "foundation/common/Common.h"

#include <QTableWidget>

namespace KODMS::UI {

namespace {

constexpr char ConfirmDelete[] = "确认删除此job:";
constexpr char ConfirmUpdate[] = "确认更改原始文件:";
constexpr char UpdateEnd[] = "吗?";

KODMS_Config config()
{
    return Common::commonInterface()->getConfig();
}

bool isSure(QWidget *desk, const QString &question)
{
    return confirm(desk, question, QMessageBox::Yes | QMessageBox::Cancel);
}

} // namespace

/// The row is read before the question: by the answer, another one may stand there.
/// It stays in the table until the next search.
void DMS_Download_Widget::on_DelFile_clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, OrigFileDesk.noRowMessage);
        return;
    }
    const QString origName = cellText(m_pJobTableWidget, row, OrigFileColumn::OrigName);
    const std::string uuid = cellText(m_pJobTableWidget, row, OrigFileColumn::Uuid).toStdString();
    const std::string flowGuid =
        cellText(m_pJobTableWidget, row, OrigFileColumn::FlowGuid).toStdString();
    const int id = cellText(m_pJobTableWidget, row, OrigFileColumn::Id).toInt();
    if (!isSure(this, QString::fromUtf8(ConfirmDelete) + origName + QLatin1Char('?')))
        return;
    const std::string downloads = config().downloadDir;
    Q_UNUSED(downloads) // what was downloaded of the file stays there
    const std::string database = config().fileStoreDb;
    const std::string bucket = config().fileStoreBucket;
    Common::MongodbDel(database, bucket, uuid);
    DataLib::BLL::Odbpp_JobCompressBll().DelOrigFile(id, uuid, flowGuid);
}

void DMS_Download_Widget::on_m_pUpdateFilePB_Clicked()
{
    const int row = m_pJobTableWidget->currentRow();
    if (row == -1) {
        inform(this, OrigFileDesk.noRowMessage);
        return;
    }
    const auto text = [this, row](int column) { return cellText(m_pJobTableWidget, row, column); };
    const QString origName = text(OrigFileColumn::OrigName);
    const QString fileType = text(OrigFileColumn::FileType);
    const QString uuid = text(OrigFileColumn::Uuid);
    const QString id = text(OrigFileColumn::Id);
    const QString customerCode = text(OrigFileColumn::CustomerCode);
    const QString flowGuid = text(OrigFileColumn::FlowGuid);
    const QString serialNumber = text(OrigFileColumn::SerialNumber);
    if (!isSure(this, QString::fromUtf8(ConfirmUpdate) + origName + QString::fromUtf8(UpdateEnd)))
        return;
    if (!m_pModifyFileWidget)
        m_pModifyFileWidget = new DMS_ModifyFile_Widget(this);
    m_pModifyFileWidget->show();
    m_pModifyFileWidget->setData(origName, fileType, uuid, id, customerCode, flowGuid,
                                 serialNumber);
}

void DMS_Download_Widget::on_m_pOpenFileFolder()
{
    OpenFileFolder(QString::fromStdString(config().downloadDir));
}

} // namespace KODMS::UI
