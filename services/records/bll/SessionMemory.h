// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/ShownRecords.h"

#include <QHash>
#include <QSet>

#include <array>
#include <optional>

namespace KODMS::Services {

/// The fields of a flow that are guarded together against lost updates.
enum class FieldGroup { State, File, Assignment, Remark };

/// What this session has seen of each flow. A write on a group that somebody else
/// changed since it was last shown here would overwrite what its author never saw.
class SessionMemory final : public ShownRecords {
public:
    /// A row of the original-file desk shows neither state nor remark of its flow.
    void shown(const ShownRow &row) override;

    /// Nothing when the group was never shown to this session.
    std::optional<int> lastShown(int flowId, FieldGroup group) const;

    /// The job's name for a flow's GUID, as it was shown; what else is given stays as it is.
    QString nameOf(const QString &record) const { return m_names.value(record, record); }

    /// This session's own write made the group's version `version`.
    void wrote(int flowId, FieldGroup group, int version);

    /// The steps of a replacement follow each other without looking at results.
    /// Once one was refused, the later ones must not move the flow on.
    void replacementFailed(const QString &flowGuid) { m_failedReplacements.insert(flowGuid); }

    void replacementWorked(const QString &flowGuid) { m_failedReplacements.remove(flowGuid); }

    bool hasFailedReplacement(const QString &flowGuid) const
    {
        return m_failedReplacements.contains(flowGuid);
    }

    /// The same for the three steps of a verdict: the job's flags, known by the flow's id,
    /// and the flow's state, known by its GUID, before the stamp.
    void verdictBegan(int flowId, const QString &flowGuid)
    {
        m_failedFlags.remove(flowId);
        m_failedMoves.remove(flowGuid);
    }

    void flagsFailed(int flowId) { m_failedFlags.insert(flowId); }

    void moveFailed(const QString &flowGuid) { m_failedMoves.insert(flowGuid); }

    void moveWorked(const QString &flowGuid) { m_failedMoves.remove(flowGuid); }

    bool hasFailedFlags(int flowId) const { return m_failedFlags.contains(flowId); }

    bool hasFailedMove(const QString &flowGuid) const { return m_failedMoves.contains(flowGuid); }

    /// Another user signs in.
    void clear();

private:
    using Versions = std::array<std::optional<int>, 4>;

    QHash<int, Versions> m_versions;
    QHash<QString, QString> m_names; ///< of jobs, by their flows' GUIDs
    QSet<QString> m_failedReplacements;
    QSet<int> m_failedFlags;
    QSet<QString> m_failedMoves;
};

} // namespace KODMS::Services
