// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"
#include "services/records/Actor.h"
#include "services/records/Transaction.h"
#include "services/records/bll/ChangeStopped.h"
#include "services/records/bll/FlowRecords.h"
#include "services/records/bll/Right.h"
#include "services/records/bll/SessionMemory.h"

#include <functional>
#include <string>
#include <vector>

namespace KODMS::Services {

class Database;
class RecordContext;
class StoredFiles;

/// What a table service is asked to do.
struct Operation {
    const char *action; ///< "group.operation": the audit's action and the log's name
    const char *title;  ///< for people, marked for translation in the context "Change"
};

/// One operation of a table service that needs a right, from the first question (who are
/// you?) to the audit row: one transaction, and one way out for everything that
/// can go wrong. What its methods find wrong leaves the operation by exception.
class Change {
public:
    using Body = std::function<void(Change &)>;

    /// Runs `body` in a transaction with the current context. False, one log line
    /// and one notice when it was refused or failed; nothing is changed then.
    /// `record` names in the log what the operation was called for.
    static bool run(const Operation &operation, const std::string &record, const Body &body);
    /// The same, for a caller that also tells somebody why not.
    static Outcome outcomeOf(const Operation &operation, const std::string &record,
                             const Body &body);
    /// run() for what only reads: waits for no writer and keeps none waiting. Its refusal
    /// is audited all the same.
    static bool look(const Operation &operation, const std::string &record, const Body &body);
    static Outcome outcomeOfLook(const Operation &operation, const std::string &record,
                                 const Body &body);

    /// Who acts, as the database knows them now: a role taken away since sign-in
    /// counts no more.
    const Actor &actor() const { return m_actor; }

    Database &database();
    StoredFiles &storedFiles();
    /// Fails when the store cannot tell.
    bool isStored(const QString &storedName);
    SessionMemory *memory() const;

    /// The caller names the acting user; it must be the one who is signed in.
    void actsAs(int userId) const;
    /// A right that roles carry.
    void needs(Right right) const;
    /// A right that roles or the scope carry.
    void needs(Right right, const FlowRow &flow);
    bool isInScope(const FlowRow &flow);
    /// How the transitions see the actor.
    FlowVisitor visitor(const FlowRow &flow);
    FlowFacts facts(const FlowRow &flow);

    /// Finds the flow that the operation is about.
    FlowRow flowByGuid(const std::string &guid);
    FlowRow flowById(int id);
    FlowRow flowByJobName(const std::string &jobName);

    /// What the operation is about, for the audit, when it is no flow.
    void isAbout(const QString &kind, int id, const QString &name);

    /// Refuses when somebody else changed the group since this session saw it.
    void needsUnchanged(const FlowRow &flow, FieldGroup group);
    /// The body has moved the group's version on by one.
    void wrote(const FlowRow &flow, FieldGroup group);

    /// UTF-8 text without NUL, at most `longest` characters; else the change fails.
    static QString text(const std::string &bytes, int longest);

    void audit(const QString &before, const QString &after);

    /// Done once the change is on the disk.
    void afterwards(std::function<void()> step) { m_afterwards.push_back(std::move(step)); }

    [[noreturn]] static void refuse(const QString &cause, const QString &userText);
    [[noreturn]] static void fail(const QString &cause, const QString &userText);

private:
    Change(RecordContext &context, const Operation &operation, const QString &record);

    static Outcome outcomeAs(Transaction::Purpose purpose, const Operation &operation,
                             const std::string &record, const Body &body);
    Outcome runSafely(Transaction::Purpose purpose, const Body &body);
    void perform(Transaction::Purpose purpose, const Body &body);
    void follow(const std::function<void()> &step) const;
    void loadActor();
    FlowRow found(const std::optional<FlowRow> &flow);
    Outcome stopped(const ChangeStopped &why);
    QString auditRefusal(const QString &cause);
    Outcome reportFailed(const QString &cause, const QString &userText) const;
    QString noticeText(const QString &userText) const;
    QString lastChangeText(const FlowRow &flow, FieldGroup group);

    RecordContext &m_context;
    const Operation &m_operation;
    Actor m_actor;
    QString m_recordKind;
    int m_recordId = 0;
    QString m_recordName;
    std::vector<std::function<void()>> m_afterwards;
};

} // namespace KODMS::Services
