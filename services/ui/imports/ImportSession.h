// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/ui/Import_Info.h"
#include "services/imports/JobImport.h"
#include "services/ui/imports/ImportForm.h"

#include <QObject>
#include <QPointer>

#include <optional>

namespace KODMS::Services {

/// What an import window does: one job to import for, one chosen job at most, one
/// thing at a time. The window may be deleted while work runs.
class ImportSession final : public QObject {
    Q_OBJECT

public:
    ImportSession(ImportKind kind, ImportForm &form, QWidget &window);

    /// Refused while something runs; asks before it drops a chosen job.
    void setTarget(const UI::Import_Info &info);
    void choose(const QString &path);
    void import();

    bool isBusy() const { return m_isBusy; }

Q_SIGNALS:
    /// The import is recorded.
    void imported(bool isWebJob);

private:
    class Busy;

    void refuseTarget(const UI::Import_Info &info);
    bool mayDropChoice(const UI::Import_Info &info);
    Outcome storeAndRecord(JobImport &run, const ReadJob &read);
    Outcome storeInTask(JobImport &run, const ReadJob &read);
    bool confirmsSame(const EarlierImport &earlier);
    bool ask(const QString &text);
    void finish(const ReadJob &read);

    ImportKind m_kind;
    ImportForm &m_form;
    QWidget &m_window;
    UI::Import_Info m_info;
    std::optional<ReadJob> m_read;
    bool m_isBusy = false;
};

} // namespace KODMS::Services
