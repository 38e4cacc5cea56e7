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
class DMS_ModifyFile_Widget;
template <typename Data, typename Table> class DMS_TurnPage_Plugin;

/// The original-file desk: a paged table of the customers' files for users with
/// a view of them all, and of their own finished job flows for everybody else,
/// with a search and the actions that the user's rights allow. The host gives it
/// a parent and a place; its shape is fixed when it is built. GUI thread.
class KODMS_DESKS_API DMS_Download_Widget : public QWidget {
    Q_OBJECT

public:
    explicit DMS_Download_Widget(QWidget *parent);
    ~DMS_Download_Widget() override;

Q_SIGNALS:
    /// For hosts that connect both desks alike; this desk exports no job.
    void emitExportJobInfo(const QString &_jobName, int);

    /// A web job was downloaded: its name.
    void newWebItemNameGetted(const QString &);

private Q_SLOTS:
    // Connections go by name and the order of these slots is interface.
    void on_m_pDownloadPB_Clicked();
    void on_m_pUpdateFilePB_Clicked();
    void updateDownloadJobTable();
    void on_m_pFilterLE_textEdited(const QString &);
    void on_m_pOpenFileFolder();
    void on_m_pFilterCMB_currentIndexChanged(int index);
    void on_m_pJobTableWidget_customContextMenuRequest(const QPoint &);
    void on_m_pJobTableWidget_Header_customContextMenuRequest(const QPoint &);
    void on_horizontalHeader_sectionClicked(int);
    void on__copyAct_triggered();
    void on__copyColumnAct_triggered();
    void on__copyRowAct_triggered();
    void on__copyAllAct_triggered();
    void on_m_pAssignPB_clicked();
    void on_m_TurnPage_currentPageChanged();
    void on_m_pRobotComplete_clicked();
    void on_m_pRobotImport_clicked();
    void on_m_pRobotImport_robotImportComplete();
    void on_DelFile_clicked();

private:
    using TableData = QList<QList<QString>>;

    // Construction, in this order.
    void buildSearchControls();
    void buildForHistory();
    void buildForOrigFiles();
    void buildSearchRow();
    void buildAssignRow();
    void buildButtons();
    void buildButtonRow();
    void buildPageBar();
    void InitDownloadTableWidget();
    void FillDownloadTableWidget();
    void initOrderHisTableWidget();
    void fillOrderHisTableWidget();
    void FillAssignerCMB();
    void buildMainLayout();
    void hideByRole();
    void connectControls();

    bool checkSelectIsLeagal();
    bool checkDownLoadSAuthority();
    bool checkInsertJobType(const QString &folder);
    void OpenFileFolder(QString path);
    void showImportWindow();

    void clearTableData();
    std::vector<DataLib::Model::DB_Search> fileConditions(const QString &text);
    void setCurerntUserFilter(std::vector<DataLib::Model::DB_Search> &list);

    QLineEdit *m_pFilterLE = nullptr;
    QComboBox *m_pFilterCMB = nullptr;
    QLabel *m_pUserIdLabel = nullptr; // the search's user id; only with the order history
    QSpacerItem *m_pFilterSpacer = nullptr;
    QHBoxLayout *m_pFilterLayout = nullptr;
    QPushButton *m_pRobotComplete = nullptr;
    QPushButton *m_pRobotImport = nullptr;
    QComboBox *m_pAssignerCMB = nullptr;
    QPushButton *m_pAssignPB = nullptr;
    QHBoxLayout *m_pAssignLayout = nullptr;
    QHBoxLayout *m_pTopLayout = nullptr;
    QTableWidget *m_pJobTableWidget = nullptr;
    QPushButton *DelFile = nullptr;
    QPushButton *m_pOpenFolderPB = nullptr;
    QPushButton *m_pDownloadPB = nullptr;
    QPushButton *m_pRefreshPB = nullptr;
    QPushButton *m_pUpdateFilePB = nullptr;
    QSpacerItem *m_pButtonSpacer = nullptr;
    QHBoxLayout *m_pButtonLayout = nullptr;
    QVBoxLayout *m_pMainLayout = nullptr;
    DMS_ModifyFile_Widget *m_pModifyFileWidget = nullptr; // on first use
    TableData m_TableData;                                // the rows of the present page
    DMS_TurnPage_Plugin<TableData, QTableWidget *> *m_TurnPage = nullptr;
    QVector<int> m_AssignerIds;                  // user ids, in the order of the assigner combo
    QTableWidgetItem *m_pCurrentItem = nullptr;  // when a menu last opened; may be gone since
    QPointer<DMS_Import_Widget> m_pImportWidget; // on first use
    int m_SortDescending = 0;
    int m_SortColumn = -1;
    QString m_EmptyText = QStringLiteral(""); // a cell text of the row that a fill selects
    QString m_SpareText;
    QString m_JobFileName;  // the file that checkInsertJobType() last looked at
    QString m_DownloadPath; // the job folder last downloaded to
};

} // namespace KODMS::UI
