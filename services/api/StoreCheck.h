// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>
#include <QVector>

namespace KODMS::Services {

class Progress;

/// One thing that is not as it should be.
struct CheckFinding {
    QString kind;            ///< for programs: "missing-file", "damaged-file", "unrecorded-file",
                             ///< "delete-mark", "leftover", "record", "database", "configuration"
    QString name;            ///< stored name, path or record
    QString text;            ///< for people, translated
    bool isProblem = true;   ///< false: worth knowing, nothing is wrong
    bool isRepaired = false; ///< was put right by this run
};

struct KODMS_SERVICES_API CheckReport {
    qint64 records = 0;       ///< of stored files
    qint64 sampleRecords = 0; ///< made without a file; not looked for in the store
    qint64 files = 0;         ///< in the store
    qint64 bytes = 0;
    qint64 filesRead = 0; ///< whose SHA-256 was compared
    QVector<CheckFinding> findings;

    /// True when no finding is a problem that stays.
    bool isClean() const;
};

struct CheckOptions {
    bool repair = false;      ///< put right what is safe to: remains, marks, unrecorded files
    bool readContents = true; ///< compare the SHA-256 of every file
};

/// Compares the records with the file store in both directions while desks work.
/// Needs a running installation; the operator of the tool, or an administrator.
class KODMS_SERVICES_API StoreCheck {
public:
    /// Fails only when the check could not be made.
    static Result<CheckReport> check(const CheckOptions &options, Progress *progress = nullptr);
};

} // namespace KODMS::Services
