// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/desks/OperationDesk.h"
#include "tests/fakes/MessageBoxProbe.h"

#include <QTemporaryDir>

#include <functional>

namespace KODMS::Tests {

/// Everything around a download: a download folder, services that put real files
/// into it, a user who answers, a file browser. The flow "guid3" is the job
/// "flow3"; unless told otherwise there is one such flow for each GUID, its web
/// robot has no parameters, its order is paid, and its archive unpacks.
class DownloadWorld : public QObject {
public:
    DownloadWorld();
    ~DownloadWorld() override;

    /// The download folder, with the separator at its end.
    QString root() const { return m_folder.path() + QStringLiteral("/jobs/"); }

    /// A path in the download folder.
    bool exists(const QString &path) const;
    QString content(const QString &path) const;
    void write(const QString &path, const QString &content) const;

    /// What unpacking puts into a job's folder: files, and folders ending in "/".
    void archivesHold(const QStringList &paths) { m_archived = paths; }

    /// What unpacking answers for the archive of a job; it then writes nothing.
    void unpackingFails(const QString &flowJob, int answer) { m_failing[flowJob] = answer; }

    /// Fetching the job's archive brings no file.
    void fetchingFails(const QString &flowJob) { m_missing << flowJob; }

    /// Done when a call of this operation ("Class::operation") comes, before it is answered.
    void during(const QString &operation, std::function<void()> action);

    /// Done while the box with this text is open.
    void whileOpen(const QString &boxText, std::function<void()> action);

    /// The next question is answered with Yes.
    void agree() { probe.answer(QMessageBox::Yes); }

    /// Notes the desk's signal in the story.
    void listenTo(UI::DMS_Download_Widget *desk);

    /// All that happened, in order: calls (without questions for rights, user and
    /// configuration), box("text"), started("program", "arguments"),
    /// newWebItem("job"). The download folder reads "ROOT/".
    QStringList story() const;

    /// The lines of the story that begin with `start`.
    QStringList story(const QString &start) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

    Fakes::MessageBoxProbe probe;

private:
    void answerAsServices();
    int fetch(const Fakes::Call &call);
    int unpack(const Fakes::Call &call);
    void act(const QString &occasion);

    QTemporaryDir m_folder;
    QStringList m_archived;
    QStringList m_missing;
    std::map<QString, int> m_failing;
    std::map<QString, std::function<void()>> m_actions;
};

} // namespace KODMS::Tests
