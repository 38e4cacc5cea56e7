// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/download/DMS_Download_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/DeskControls.h"
#include "desks/common/DownloadRights.h"
#include "desks/common/NamedControl.h"
#include "desks/common/StyleSheets.h"
#include "foundation/ui/DMS_StdCommon.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace KODMS::UI {

namespace {

constexpr char SearchHint[] = "请输入搜索项";
constexpr char JobNameHint[] = "请输入搜索项,仅限料号名称";

} // namespace

void DMS_Download_Widget::buildSearchControls()
{
    m_pFilterLE = makeFilter("m_pFilterLE", SearchHint, this);
    m_pFilterCMB = makeNamed<QComboBox>("m_pFilterCMB", this);
    m_pJobTableWidget = makeTable("m_pJobTableWidget", this);
}

void DMS_Download_Widget::buildForHistory()
{
    const QStringList items{QStringLiteral("全部"), QStringLiteral("料号名称")};
    initOrderHisTableWidget();
    m_pUserIdLabel = makeNamed<QLabel>("m_pUserIdLabel", this);
    m_pUserIdLabel->setText(QString::number(DMS_StdCommon::interface()->getCurrentUser().id));
    m_pFilterCMB->insertItems(0, items);
}

/// Items in the order of FileFilter.
void DMS_Download_Widget::buildForOrigFiles()
{
    const QStringList items{
        QStringLiteral("全部"),     QStringLiteral("原料号名"), QStringLiteral("客户代号"),
        QStringLiteral("流水号"),   QStringLiteral("备注"),     QStringLiteral("执行人"),
        QStringLiteral("客户简称"), QStringLiteral("客户二级"), QStringLiteral("客户三级")};
    m_pFilterCMB->insertItems(0, items);
    InitDownloadTableWidget();
}

void DMS_Download_Widget::buildSearchRow()
{
    m_pFilterSpacer = makeSpacer(1, 7);
    m_pFilterLayout = makeNamed<QHBoxLayout>("m_pFilterLayout");
    m_pFilterLayout->addWidget(m_pFilterLE);
    m_pFilterLayout->addWidget(m_pFilterCMB);
    if (m_pUserIdLabel) {
        m_pUserIdLabel->setVisible(false);
        m_pFilterLayout->addWidget(m_pUserIdLabel);
    }
    m_pFilterLayout->addItem(m_pFilterSpacer);
}

void DMS_Download_Widget::buildAssignRow()
{
    m_pRobotComplete = makeNamed<QPushButton>("m_pRobotComplete", QStringLiteral("完成"), this);
    m_pRobotComplete->setVisible(false);
    m_pRobotImport = makeNamed<QPushButton>("m_pRobotImport", QStringLiteral("重新导入"), this);
    m_pAssignerCMB = makeNamed<QComboBox>("m_pAssignerCMB", this);
    m_pAssignPB = makeNamed<QPushButton>("m_pAssignPB", QStringLiteral("指派"), this);
    m_pAssignLayout = makeNamed<QHBoxLayout>("m_pAssignLayout");
    m_pAssignLayout->addWidget(m_pRobotComplete);
    m_pAssignLayout->addWidget(m_pRobotImport);
    m_pAssignLayout->addWidget(m_pAssignerCMB);
    m_pAssignLayout->addWidget(m_pAssignPB);

    m_pTopLayout = makeNamed<QHBoxLayout>("m_pTopLayout");
    m_pTopLayout->addLayout(m_pFilterLayout);
    m_pTopLayout->addLayout(m_pAssignLayout);
}

void DMS_Download_Widget::buildButtons()
{
    m_pDownloadPB = makeButton("m_pDownloadPB", QStringLiteral("下载"), PushButtonBlueStyle, this);
    m_pRefreshPB = makeButton("m_pRefreshPB", QStringLiteral("刷新"), PushButtonBlueStyle, this);
    m_pUpdateFilePB =
        makeButton("m_pUpdateFilePB", QStringLiteral("更改文件"), PushButtonBlueStyle, this);
    m_pOpenFolderPB =
        makeButton("m_pOpenFolderPB", QStringLiteral("打开文件夹"), PushButtonBlueStyle, this);
    DelFile = makeButton("DelFile", QStringLiteral("删除文件"), PushButtonBlueStyle, this);
}

void DMS_Download_Widget::buildButtonRow()
{
    m_pButtonSpacer = makeSpacer(1, 7);
    m_pButtonLayout = makeNamed<QHBoxLayout>("m_pButtonLayout");
    m_pButtonLayout->addItem(m_pButtonSpacer);
    m_pButtonLayout->addWidget(DelFile);
    m_pButtonLayout->addWidget(m_pOpenFolderPB);
    m_pButtonLayout->addWidget(m_pUpdateFilePB);
    m_pButtonLayout->addWidget(m_pRefreshPB);
    m_pButtonLayout->addWidget(m_pDownloadPB);
    DelFile->setEnabled(mayChangeFiles());
    m_pUpdateFilePB->setEnabled(mayChangeFiles());
}

void DMS_Download_Widget::buildPageBar()
{
    m_TurnPage = makeNamed<DMS_TurnPage_Plugin<TableData, QTableWidget *>>(
        "m_TurnPage", m_TableData, m_pJobTableWidget, this);
}

void DMS_Download_Widget::buildMainLayout()
{
    m_pMainLayout = makeNamed<QVBoxLayout>("m_pMainLayout", this);
    m_pMainLayout->addLayout(m_pTopLayout);
    m_pMainLayout->addWidget(m_pJobTableWidget);
    m_pMainLayout->addWidget(m_TurnPage);
    m_pMainLayout->addLayout(m_pButtonLayout);
}

void DMS_Download_Widget::hideByRole()
{
    if (isPrivileged()) {
        m_pRobotImport->setVisible(false);
        return;
    }
    m_pAssignerCMB->setVisible(false);
    m_pAssignPB->setVisible(false);
    m_pUpdateFilePB->setVisible(false);
    m_pOpenFolderPB->setVisible(false);
    DelFile->setVisible(false);
    m_pDownloadPB->setText(QStringLiteral("完成"));
    m_pFilterLE->setPlaceholderText(QString::fromUtf8(JobNameHint));
}

} // namespace KODMS::UI
