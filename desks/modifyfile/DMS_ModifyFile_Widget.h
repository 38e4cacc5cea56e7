// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/common/DesksExport.h"

#include <QString>
#include <QWidget>

class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpacerItem;
class QVBoxLayout;

namespace KODMS::UI {

/// Gives a job another original file: one archive or one folder, chosen here. A
/// window of its own, kept by the desk that made it and pointed at another job
/// with setData(). GUI thread.
class KODMS_DESKS_API DMS_ModifyFile_Widget : public QWidget {
    Q_OBJECT

public:
    explicit DMS_ModifyFile_Widget(QWidget *parent);
    ~DMS_ModifyFile_Widget() override;

    /// The row of the original-file desk that gets the file, as its cells show it.
    /// What was chosen and typed for the row before stays in the fields.
    void setData(QString origName, QString fileType, QString uuid, QString id, QString customerCode,
                 QString flowGuid, QString serialNumber);

    /// Packs a folder into one archive, stores it as the job's original file under
    /// `name`, and changes nothing else of the flow. The first text is not used.
    void l2FoldersSingleImport(QString unused, QString name, QString folder);

    /// Stores one archive (zip, rar, tgz, kos; nothing happens with others) as the
    /// job's original file and `name` as its name. A kos archive is a job that the
    /// robot takes as it is: the flow counts as imported and passed, and the robot
    /// is asked at once.
    void l2rartgzzipSingleImport(QString name, QString path);

public Q_SLOTS:
    // Connections go by name and the order of these slots is interface.
    void on_m_pOpenFilePB_clicked();
    void on_m_pOpenDirPB_clicked();

    /// Imports what was chosen last, and says that it is done whatever came of it.
    void on_m_pSingleImportPB_clicked();

private Q_SLOTS:
    void execCAMRobot();

private:
    // Construction, in this order.
    void buildPathRow();
    void buildNameRow();
    void buildImportRow();
    void buildMainLayout();
    void connectControls();

    void setChosen(int mode, const QString &path, const QString &name);

    static DMS_ModifyFile_Widget *m_pDMS_ModifyFile_Widget; // always null

    QString m_OrigName;
    QString m_FileType;
    QString m_Uuid;
    QString m_Id; // decimal
    QString m_CustomerCode;
    QString m_FlowGuid;
    QString m_SerialNumber; // six digits
    QString m_ChosenPath;
    QGroupBox *m_pGroupBox = nullptr;
    QPushButton *m_pOpenFilePB = nullptr;
    QLineEdit *m_pPathLE = nullptr;
    QPushButton *m_pOpenDirPB = nullptr;
    int m_Mode = 0; // what was chosen last: 0 a file, 1 a folder
    QHBoxLayout *m_pPathLayout = nullptr;
    QLabel *m_pNameLabel = nullptr;
    QLineEdit *m_pNameLE = nullptr;
    QHBoxLayout *m_pNameLayout = nullptr;
    QPushButton *m_pSingleImportPB = nullptr;
    QSpacerItem *m_pImportSpacer = nullptr;
    QHBoxLayout *m_pImportLayout = nullptr;
    QVBoxLayout *m_pGroupLayout = nullptr;
    QSpacerItem *m_pMainSpacer = nullptr;
    QVBoxLayout *m_pMainLayout = nullptr;
};

} // namespace KODMS::UI
