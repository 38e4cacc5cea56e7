// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/ui/Import_Info.h"

#include <QWidget>

#include <memory>

namespace KODMS::UI {

/// Imports a job's ODB++ archive or folder. A window of its own, kept by the
/// desk that made it and pointed at another job with setFlowGuid().
class KODMS_SERVICES_API DMS_Import_Widget : public QWidget {
    Q_OBJECT

public:
    /// Import of a pre-processed job (mode 0).
    explicit DMS_Import_Widget(QWidget *parent = nullptr);

    /// `mode` 1: the executor's import of a robot result.
    DMS_Import_Widget(int mode, QWidget *parent);
    ~DMS_Import_Widget() override;

    /// The job to import for.
    void setFlowGuid(const Import_Info &info);

Q_SIGNALS:
    /// A web job has been imported.
    void webJobHaveSent();

    /// The robot's result has been imported (mode 1).
    void robotImportComplete();

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace KODMS::UI
