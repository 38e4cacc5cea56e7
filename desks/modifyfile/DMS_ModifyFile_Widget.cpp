// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"

#include "desks/common/DeskControls.h"
#include "desks/common/NamedControl.h"
#include "desks/common/StyleSheets.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpacerItem>
#include <QVBoxLayout>

#include <utility>

namespace KODMS::UI {

DMS_ModifyFile_Widget *DMS_ModifyFile_Widget::m_pDMS_ModifyFile_Widget = nullptr;

DMS_ModifyFile_Widget::DMS_ModifyFile_Widget(QWidget *parent) : QWidget(parent, Qt::Window)
{
    buildPathRow();
    buildNameRow();
    buildImportRow();
    buildMainLayout();
    connectControls();
}

DMS_ModifyFile_Widget::~DMS_ModifyFile_Widget() = default;

void DMS_ModifyFile_Widget::setData(QString origName, QString fileType, QString uuid, QString id,
                                    QString customerCode, QString flowGuid, QString serialNumber)
{
    m_OrigName = std::move(origName);
    m_FileType = std::move(fileType);
    m_Uuid = std::move(uuid);
    m_Id = std::move(id);
    m_CustomerCode = std::move(customerCode);
    m_FlowGuid = std::move(flowGuid);
    m_SerialNumber = std::move(serialNumber);
}

void DMS_ModifyFile_Widget::buildPathRow()
{
    m_pGroupBox = makeNamed<QGroupBox>("m_pGroupBox", QStringLiteral("导入"), this);
    m_pGroupBox->setStyleSheet(GroupBoxStyle);
    m_pOpenFilePB =
        makeButton("m_pOpenFilePB", QStringLiteral("选择文件"), PushButtonGrayStyle, m_pGroupBox);
    m_pOpenDirPB =
        makeButton("m_pOpenDirPB", QStringLiteral("选择文件夹"), PushButtonGrayStyle, m_pGroupBox);
    m_pPathLE = makeNamed<QLineEdit>("m_pPathLE", m_pGroupBox);
    m_pPathLayout = makeNamed<QHBoxLayout>("m_pPathLayout");
    m_pPathLayout->addWidget(m_pOpenFilePB);
    m_pPathLayout->addWidget(m_pOpenDirPB);
    m_pPathLayout->addWidget(m_pPathLE);
}

void DMS_ModifyFile_Widget::buildNameRow()
{
    m_pNameLabel = makeNamed<QLabel>("m_pNameLabel", QStringLiteral("文件名："), m_pGroupBox);
    m_pNameLE = makeNamed<QLineEdit>("m_pNameLE", m_pGroupBox);
    m_pNameLayout = makeNamed<QHBoxLayout>("m_pNameLayout");
    m_pNameLayout->addWidget(m_pNameLabel);
    m_pNameLayout->addWidget(m_pNameLE);
}

void DMS_ModifyFile_Widget::buildImportRow()
{
    m_pSingleImportPB =
        makeButton("m_pSingleImportPB", QStringLiteral("导入"), PushButtonBlueStyle, m_pGroupBox);
    m_pImportSpacer = makeSpacer(2, 1);
    m_pImportLayout = makeNamed<QHBoxLayout>("m_pImportLayout");
    m_pImportLayout->addItem(m_pImportSpacer);
    m_pImportLayout->addWidget(m_pSingleImportPB);
}

void DMS_ModifyFile_Widget::buildMainLayout()
{
    m_pGroupLayout = makeNamed<QVBoxLayout>("m_pGroupLayout", m_pGroupBox);
    m_pGroupLayout->addLayout(m_pPathLayout);
    m_pGroupLayout->addLayout(m_pNameLayout);
    m_pGroupLayout->addLayout(m_pImportLayout);
    m_pMainSpacer = new QSpacerItem(1, 2, QSizePolicy::Minimum, QSizePolicy::Expanding);
    m_pMainLayout = makeNamed<QVBoxLayout>("m_pMainLayout", this);
    m_pMainLayout->addWidget(m_pGroupBox);
    m_pMainLayout->addItem(m_pMainSpacer);
    m_pMainLayout->addWidget(m_pGroupBox); // moves it below the spacer, to the bottom of the window
}

void DMS_ModifyFile_Widget::connectControls()
{
    connect(m_pOpenFilePB, SIGNAL(clicked()), this, SLOT(on_m_pOpenFilePB_clicked()));
    connect(m_pOpenDirPB, SIGNAL(clicked()), this, SLOT(on_m_pOpenDirPB_clicked()));
    connect(m_pSingleImportPB, SIGNAL(clicked()), this, SLOT(on_m_pSingleImportPB_clicked()));
}

} // namespace KODMS::UI
