// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QObject>
#include <QString>

#include <memory>

namespace KODMS::UI {

/// The hub of the user interface: the signed-in user's rights, refresh of open
/// desks, hand-over of jobs to the CAM side. GUI thread.
class KODMS_SERVICES_API DMS_UICommon : public QObject {
    Q_OBJECT

public:
    /// The one instance; never null, never owned by the caller, not to be kept.
    static DMS_UICommon *interface();

    // Each right stands alone: administrators have the others only when granted.
    bool hasAdminRole();
    bool hasPreProcessRole();
    bool hasPreCheckAssignRole();
    bool hasTestAdminRole();
    bool hasCheckAuthority();
    bool hasOrigFileUpdateAuthority();
    bool hasOrigFileAssignRole();
    bool hasShowCompanyNameRole();

    /// Asks every open desk to reload: raises both refresh signals.
    void emitGobalSingal();

    /// Hands a downloaded job file to the CAM side. `path` may carry "|" and the
    /// web robot's parameters.
    void importNewJob(const QString &path, const QString &jobName);

    /// Hands a downloaded job folder to the CAM side. `path` may carry "|" and the
    /// web robot's parameters.
    void inputNewJob(const QString &jobName, const QString &path);

    /// Asks the CAM side to export a job.
    void sendemitCAMExportJobInfo(const QString &jobName, int jobId);

Q_SIGNALS:
    /// The original-file desks are to reload.
    void refreshOrigFileTable();

    /// The job-flow desks are to reload.
    void refreshExportJobTable();

    /// Something happened that people should see. `level`: 0 = information,
    /// 1 = warning, 2 = error.
    void serviceNotice(int level, const QString &text);

    // What a desk hands to the CAM side; the host connects its CAM system here.
    void camImportRequested(const QString &path, const QString &jobName);
    void camInputRequested(const QString &jobName, const QString &path);
    void camExportRequested(const QString &jobName, int jobId);

private:
    DMS_UICommon();
    ~DMS_UICommon() override;

    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KODMS::UI
