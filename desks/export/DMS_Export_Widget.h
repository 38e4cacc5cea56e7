// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/DesksExport.h"

#include <QList>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <vector>

class QComboBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpacerItem;
class QTableWidget;
class QTableWidgetItem;
class QVBoxLayout;

namespace KODMS::DataLib::Model {
struct DB_Search;
} // namespace KODMS::DataLib::Model

namespace KODMS::UI {

class DMS_Import_Widget;
class DMS_JobCheck_Widget;
template <typename Data, typename Table> class DMS_TurnPage_Plugin;

/// The job-flow desk: a paged table of job flows with filters, the questions of
/// the selected job, and the actions that the user's rights allow. The host
/// gives it a parent and a place; everything else it does itself. GUI thread.
class KODMS_DESKS_API DMS_Export_Widget : public QWidget {
    Q_OBJECT

public:
    explicit DMS_Export_Widget(QWidget *parent);
    ~DMS_Export_Widget() override;

    /// Remembers the flow that the host is concerned with and reloads the table.
    void setFlowDetailsData(QString details);

Q_SIGNALS:
    /// A job is exported: its name and its flow id.
    void emitExportJobInfo(const QString &_jobName, int);

public Q_SLOTS:
    /// The host's main window closes: closes the import window, if there is one.
    void on_parent_main_ui_closed();

    /// The host has learnt the name of a new web job.
    void on_parent_newWebItemNameGetted(const QString &str);

private Q_SLOTS:
    // Connections go by name and the order of these slots is interface.
    void on_m_pExportPB_Clicked();
    void updateExportJobTable();
    void on_m_pCreateQuestionPB_clicked();
    void on_m_pViewQuestionPB_clicked();
    void on_m_pResolveQuestionPB_clicked();
    void on_m_pCheckJobPB_clicked();
    void on_m_pJobPassPB_clicked();
    void on_m_pJobUnpassPB_clicked();
    void on_m_pJobTableWidget_ItemClicked(QTableWidgetItem *_item);
    void on_m_pQuestionTableWidget_ItemDoubleClicked(QTableWidgetItem *);
    void on_m_pFilterLE_textEdited(const QString &);
    void on_m_pJobFilterLE_textEdited(const QString &);
    void on_m_pLayerFilterLE_textEdited(const QString &);
    void on_m_pFeatureFilterLE_textEdited(const QString &);
    void on_m_pPrerFilterLE_textEdited(const QString &);
    void on_m_pCheckerFilterLE_textEdited(const QString &);
    void on_horizontalHeader_sectionClicked(int index);
    void on_m_pFilterCMB_currentIndexChanged(int index);
    void on_m_pStatusFilterCMB_currentIndexChanged(int index);
    void on_m_pAssignPB_clicked();
    void on_m_pJobTableWidget_itemChanged(QTableWidgetItem *item);
    void on_m_pImputPB_clicked();
    void on_m_TurnPage_currentPageChanged();
    void on_m_pDMS_Import_Widget_webJobHaveSent();
    void on_m_pDownloadPB_clicked();
    void execCAMRobot();

private:
    using TableData = QList<QList<QString>>;

    // Construction, in this order.
    void buildFilterControls();
    void buildFilterPairs();
    void buildFilterRows();
    void buildActions();
    void buildJobTable();
    void buildReviewButtons();
    void buildJobLayout();
    void buildQuestionBox();
    void buildDownloadButton();
    void buildBottomRow();
    void buildMainLayout();
    void InitExportTableWidget();
    void initQuestionTable();
    void FillExportTableWidget();
    void FillAssignerCMB();
    void connectControls();

    bool checkSelectIsLeagal();
    bool checkDownLoadSAuthority();
    bool checkInsertJobType(const QString &folder);
    void OpenFileFolder(QString path);

    void clearTableData();
    void clearQuestionTableData();
    void judgeSelectedJobs(int verdict);
    std::vector<DataLib::Model::DB_Search> searchConditions();
    void setCurerntUserFilter(std::vector<DataLib::Model::DB_Search> &list);

    QLineEdit *m_pFilterLE = nullptr;
    QComboBox *m_pFilterCMB = nullptr;
    QSpacerItem *m_pTopSpacer = nullptr;
    QLabel *m_pJobFilterLabel = nullptr;
    QLineEdit *m_pJobFilterLE = nullptr;
    QLabel *m_pLayerFilterLabel = nullptr;
    QLineEdit *m_pLayerFilterLE = nullptr;
    QLabel *m_pFeatureFilterLabel = nullptr;
    QLineEdit *m_pFeatureFilterLE = nullptr;
    QHBoxLayout *m_pFilterRow1Layout = nullptr;
    QLabel *m_pPrerFilterLabel = nullptr;
    QLineEdit *m_pPrerFilterLE = nullptr;
    QLabel *m_pCheckerFilterLabel = nullptr; // the batch number, in spite of the name
    QLineEdit *m_pCheckerFilterLE = nullptr;
    QComboBox *m_pStatusFilterCMB = nullptr;
    QHBoxLayout *m_pFilterRow2Layout = nullptr;
    QVBoxLayout *m_pFilterLayout = nullptr;
    QHBoxLayout *m_pSpareLayout = nullptr; // in no place of the desk
    QComboBox *m_pAssignerCMB = nullptr;
    QPushButton *m_pAssignPB = nullptr;
    QHBoxLayout *m_pAssignLayout = nullptr;
    QPushButton *m_pImputPB = nullptr;
    QSpacerItem *m_pImportSpacer = nullptr;
    QHBoxLayout *m_pImportLayout = nullptr;
    QVBoxLayout *m_pActionLayout = nullptr;
    QHBoxLayout *m_pTopLayout = nullptr;
    QGroupBox *m_pJobGroupBox = nullptr;
    QTableWidget *m_pJobTableWidget = nullptr;
    QPushButton *m_pJobPassPB = nullptr;   // reviewers only
    QPushButton *m_pJobUnpassPB = nullptr; // reviewers only
    QPushButton *m_pRefreshPB = nullptr;
    QPushButton *m_pSendRobotPB = nullptr; // reviewers only
    QSpacerItem *m_pReviewSpacer = nullptr;
    QHBoxLayout *m_pReviewLayout = nullptr;
    QVBoxLayout *m_pJobLayout = nullptr;
    QGroupBox *m_pQuestionGroupBox = nullptr;
    QTableWidget *m_pQuestionTableWidget = nullptr;
    QPushButton *m_pCreateQuestionPB = nullptr; // reviewers only
    QPushButton *m_pViewQuestionPB = nullptr;
    QPushButton *m_pResolveQuestionPB = nullptr;
    QSpacerItem *m_pQuestionSpacer = nullptr;
    QHBoxLayout *m_pQuestionButtonLayout = nullptr;
    QVBoxLayout *m_pQuestionLayout = nullptr;
    QPushButton *m_pDownloadPB = nullptr; // neither administrators nor file updaters
    QPushButton *m_pExportPB = nullptr;
    QSpacerItem *m_pBottomSpacer = nullptr;
    QHBoxLayout *m_pBottomLayout = nullptr;
    // The three windows: on first use; they may go before the desk.
    QPointer<DMS_JobCheck_Widget> m_pCreateQuestionWidget;
    QPointer<DMS_JobCheck_Widget> m_pViewQuestionWidget;
    QPointer<DMS_Import_Widget> m_pDMS_Import_Widget;
    QVector<int> m_AssignerIds; // user ids, in the order of the assigner combo
    QString m_flowDetails;
    int m_SortDescending = 0;
    int m_SortColumn = -1;
    QString m_SpareText;
    QString m_LocateJobName; // column 0 of the row that the next fill selects
    QString m_webItemName;
    QString m_JobFileName;  // the file that checkInsertJobType() last looked at
    QString m_DownloadPath; // the job folder last downloaded to
    TableData m_TableData;  // the rows of the present page
    DMS_TurnPage_Plugin<TableData, QTableWidget *> *m_TurnPage = nullptr;
};

} // namespace KODMS::UI
