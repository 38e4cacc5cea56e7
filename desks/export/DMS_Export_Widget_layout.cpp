// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/export/DMS_Export_Widget.h"

#include "desks/common/DMS_TurnPage_Plugin.h"
#include "desks/common/DeskControls.h"
#include "desks/common/NamedControl.h"
#include "desks/common/StyleSheets.h"
#include "foundation/ui/DMS_UICommon.h"

#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace KODMS::UI {

namespace {

constexpr char SearchHint[] = "请输入搜索项";
constexpr char ExactSearchHint[] = "该项仅支持精确搜索";

} // namespace

void DMS_Export_Widget::buildFilterControls()
{
    m_pJobGroupBox = makeNamed<QGroupBox>("m_pJobGroupBox", this);
    m_pFilterLE = makeFilter("m_pFilterLE", SearchHint, m_pJobGroupBox);
    m_pFilterCMB = makeNamed<QComboBox>("m_pFilterCMB", this);
    m_pFilterCMB->insertItems(0, {QStringLiteral("全部"), QStringLiteral("料号名称"),
                                  QStringLiteral("板层"), QStringLiteral("feature数"),
                                  QStringLiteral("执行者")});
    m_pFilterCMB->setCurrentIndex(0);
}

void DMS_Export_Widget::buildFilterPairs()
{
    m_pJobFilterLabel =
        makeNamed<QLabel>("m_pJobFilterLabel", QStringLiteral("料号名称："), m_pJobGroupBox);
    m_pJobFilterLE = makeFilter("m_pJobFilterLE", SearchHint, m_pJobGroupBox);
    m_pLayerFilterLabel =
        makeNamed<QLabel>("m_pLayerFilterLabel", QStringLiteral("板层："), m_pJobGroupBox);
    m_pLayerFilterLE = makeFilter("m_pLayerFilterLE", ExactSearchHint, m_pJobGroupBox);
    m_pFeatureFilterLabel =
        makeNamed<QLabel>("m_pFeatureFilterLabel", QStringLiteral("Feature数："), m_pJobGroupBox);
    m_pFeatureFilterLE = makeFilter("m_pFeatureFilterLE", ExactSearchHint, m_pJobGroupBox);
    m_pLayerFilterLabel->setVisible(false);
    m_pLayerFilterLE->setVisible(false);
    m_pFeatureFilterLabel->setVisible(false);
    m_pFeatureFilterLE->setVisible(false);

    m_pPrerFilterLabel =
        makeNamed<QLabel>("m_pPrerFilterLabel", QStringLiteral("前处理人："), m_pJobGroupBox);
    m_pPrerFilterLE = makeFilter("m_pPrerFilterLE", SearchHint, m_pJobGroupBox);
    m_pCheckerFilterLabel =
        makeNamed<QLabel>("m_pCheckerFilterLabel", QStringLiteral("批号："), m_pJobGroupBox);
    m_pCheckerFilterLE = makeFilter("m_pCheckerFilterLE", SearchHint, m_pJobGroupBox);

    // Items in the order of StatusFilter.
    m_pStatusFilterCMB = makeNamed<QComboBox>("m_pStatusFilterCMB", this);
    m_pStatusFilterCMB->insertItems(0, {QStringLiteral("全部"), QStringLiteral("待前处理"),
                                        QStringLiteral("前处理未审核"),
                                        QStringLiteral("审核未通过"), QStringLiteral("审核通过"),
                                        QStringLiteral("完成"), QStringLiteral("机器人处理中")});
    m_pStatusFilterCMB->setCurrentIndex(0);
}

void DMS_Export_Widget::buildFilterRows()
{
    m_pTopSpacer = makeSpacer(3, 1);
    m_pFilterRow1Layout = makeNamed<QHBoxLayout>("m_pFilterRow1Layout");
    m_pFilterRow1Layout->addWidget(m_pFilterLE);
    m_pFilterRow1Layout->addWidget(m_pFilterCMB);
    m_pFilterRow1Layout->addWidget(m_pJobFilterLabel);
    m_pFilterRow1Layout->addWidget(m_pJobFilterLE);
    m_pFilterRow1Layout->addWidget(m_pLayerFilterLabel);
    m_pFilterRow1Layout->addWidget(m_pLayerFilterLE);
    m_pFilterRow1Layout->addWidget(m_pFeatureFilterLabel);
    m_pFilterRow1Layout->addWidget(m_pFeatureFilterLE);

    m_pFilterRow2Layout = makeNamed<QHBoxLayout>("m_pFilterRow2Layout");
    m_pFilterRow2Layout->addWidget(m_pPrerFilterLabel);
    m_pFilterRow2Layout->addWidget(m_pPrerFilterLE);
    m_pFilterRow2Layout->addWidget(m_pCheckerFilterLabel);
    m_pFilterRow2Layout->addWidget(m_pCheckerFilterLE);
    m_pFilterRow2Layout->addWidget(m_pStatusFilterCMB);

    // Kept free and inserted nowhere; the desk owns it like everything else.
    m_pSpareLayout = makeNamed<QHBoxLayout>("m_pSpareLayout");
    m_pSpareLayout->setParent(this);

    m_pFilterLE->setVisible(false);
    m_pFilterCMB->setVisible(false);
    m_pFilterLayout = makeNamed<QVBoxLayout>("m_pFilterLayout");
    m_pFilterLayout->addLayout(m_pFilterRow1Layout);
    m_pFilterLayout->addLayout(m_pFilterRow2Layout);
}

void DMS_Export_Widget::buildActions()
{
    m_pAssignerCMB = makeNamed<QComboBox>("m_pAssignerCMB", m_pJobGroupBox);
    m_pAssignPB = makeNamed<QPushButton>("m_pAssignPB", QStringLiteral("指派"), m_pJobGroupBox);
    m_pAssignLayout = makeNamed<QHBoxLayout>("m_pAssignLayout");
    m_pAssignLayout->addWidget(m_pAssignerCMB);
    m_pAssignLayout->addWidget(m_pAssignPB);

    m_pImputPB =
        makeNamed<QPushButton>("m_pImputPB", QStringLiteral("导入前处理料号"), m_pJobGroupBox);
    m_pImportSpacer = makeSpacer(3, 1);
    m_pImportLayout = makeNamed<QHBoxLayout>("m_pImportLayout");
    m_pImportLayout->addItem(m_pImportSpacer);
    m_pImportLayout->addWidget(m_pImputPB);

    m_pActionLayout = makeNamed<QVBoxLayout>("m_pActionLayout");
    m_pActionLayout->addLayout(m_pAssignLayout);
    m_pActionLayout->addLayout(m_pImportLayout);

    m_pTopLayout = makeNamed<QHBoxLayout>("m_pTopLayout");
    m_pTopLayout->addLayout(m_pFilterLayout);
    m_pTopLayout->addItem(m_pTopSpacer);
    m_pTopLayout->addLayout(m_pActionLayout);
}

void DMS_Export_Widget::buildJobTable()
{
    m_pJobTableWidget = makeTable("m_pJobTableWidget", m_pJobGroupBox);
    m_TurnPage = makeNamed<DMS_TurnPage_Plugin<TableData, QTableWidget *>>(
        "m_TurnPage", m_TableData, m_pJobTableWidget, m_pJobGroupBox);
    m_pReviewSpacer = makeSpacer(5, 1);
    m_pReviewLayout = makeNamed<QHBoxLayout>("m_pReviewLayout");
    m_pReviewLayout->addItem(m_pReviewSpacer);
}

void DMS_Export_Widget::buildReviewButtons()
{
    if (!DMS_UICommon::interface()->hasAdminRole() &&
        !DMS_UICommon::interface()->hasCheckAuthority())
        return;
    m_pJobPassPB =
        makeButton("m_pJobPassPB", QStringLiteral("通过"), PushButtonBlueStyle, m_pJobGroupBox);
    m_pJobUnpassPB =
        makeButton("m_pJobUnpassPB", QStringLiteral("不通过"), PushButtonGrayStyle, m_pJobGroupBox);
    m_pCreateQuestionPB = makeButton("m_pCreateQuestionPB", QStringLiteral("创建问题"),
                                     PushButtonBlueStyle, m_pJobGroupBox);
    m_pSendRobotPB = makeButton("m_pSendRobotPB", QStringLiteral("发送机器人"), PushButtonBlueStyle,
                                m_pJobGroupBox);
    connect(m_pSendRobotPB, SIGNAL(clicked()), this, SLOT(execCAMRobot()));
    m_pReviewLayout->addWidget(m_pSendRobotPB);
    m_pReviewLayout->addWidget(m_pJobUnpassPB);
    m_pReviewLayout->addWidget(m_pJobPassPB);
    m_pReviewLayout->addWidget(m_pCreateQuestionPB);
}

void DMS_Export_Widget::buildJobLayout()
{
    m_pJobLayout = makeNamed<QVBoxLayout>("m_pJobLayout", m_pJobGroupBox);
    m_pJobLayout->addLayout(m_pTopLayout);
    m_pJobLayout->addWidget(m_pJobTableWidget);
    m_pJobLayout->addWidget(m_TurnPage);
    m_pJobLayout->addLayout(m_pReviewLayout);
}

void DMS_Export_Widget::buildQuestionBox()
{
    m_pQuestionGroupBox = makeNamed<QGroupBox>("m_pQuestionGroupBox", this);
    m_pQuestionTableWidget = makeTable("m_pQuestionTableWidget", m_pQuestionGroupBox);
    m_pResolveQuestionPB = makeButton("m_pResolveQuestionPB", QStringLiteral("解决"),
                                      PushButtonGrayStyle, m_pQuestionGroupBox);
    m_pViewQuestionPB = makeButton("m_pViewQuestionPB", QStringLiteral("查看问题"),
                                   PushButtonBlueStyle, m_pQuestionGroupBox);
    m_pQuestionSpacer = makeSpacer(5, 1);
    m_pQuestionButtonLayout = makeNamed<QHBoxLayout>("m_pQuestionButtonLayout");
    m_pQuestionButtonLayout->addItem(m_pQuestionSpacer);
    m_pQuestionButtonLayout->addWidget(m_pResolveQuestionPB);
    m_pQuestionButtonLayout->addWidget(m_pViewQuestionPB);
    m_pQuestionLayout = makeNamed<QVBoxLayout>("m_pQuestionLayout", m_pQuestionGroupBox);
    m_pQuestionLayout->addWidget(m_pQuestionTableWidget);
    m_pQuestionLayout->addLayout(m_pQuestionButtonLayout);
}

/// Whoever may change original files filters by status here and downloads on the
/// original-file desk; everybody else has it the other way round.
void DMS_Export_Widget::buildDownloadButton()
{
    if (DMS_UICommon::interface()->hasAdminRole() ||
        DMS_UICommon::interface()->hasOrigFileUpdateAuthority())
        return;
    m_pStatusFilterCMB->setVisible(false);
    m_pDownloadPB = makeNamed<QPushButton>("m_pDownloadPB", QStringLiteral("下载"), this);
}

void DMS_Export_Widget::buildBottomRow()
{
    m_pRefreshPB = makeButton("m_pRefreshPB", QStringLiteral("刷新"), PushButtonBlueStyle, this);
    m_pExportPB = makeButton("m_pExportPB", QStringLiteral("导出"), PushButtonBlueStyle, this);
    m_pExportPB->setVisible(false);
    m_pBottomSpacer = makeSpacer(5, 1);
    m_pBottomLayout = makeNamed<QHBoxLayout>("m_pBottomLayout");
    m_pBottomLayout->addItem(m_pBottomSpacer);
    if (m_pDownloadPB)
        m_pBottomLayout->addWidget(m_pDownloadPB);
    m_pBottomLayout->addWidget(m_pRefreshPB);
    m_pBottomLayout->addWidget(m_pExportPB);
}

void DMS_Export_Widget::buildMainLayout()
{
    auto *mainLayout = new QVBoxLayout(this);
    mainLayout->addWidget(m_pJobGroupBox);
    mainLayout->addWidget(m_pQuestionGroupBox);
    mainLayout->addLayout(m_pBottomLayout);
}

} // namespace KODMS::UI
