// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/JobHistory.h"

#include "services/records/Database.h"
#include "services/records/TimeText.h"
#include "services/records/bll/Change.h"

#include <QCoreApplication>

#include <limits>

namespace KODMS::Services {

namespace {

constexpr Operation readHistory{"history.read", QT_TRANSLATE_NOOP("Change", "查看历史")};

QString tr(const char *text)
{
    return QCoreApplication::translate("JobHistory", text);
}

/// A file as its owner named it, in place of the name under which the store keeps it; one
/// that is recorded no more keeps that.
QString fileName(Database &database, const QString &storedName)
{
    SqlQuery query = database.query("select_name_of_stored_file");
    query.bind(":name", storedName).exec();
    return query.next() ? query.text("name") : storedName;
}

/// Job, description and pictures of a question as it was raised, the pictures named as files.
QString withPictureNames(Database &database, int question, const QString &value)
{
    QString text = value;
    SqlQuery query = database.query("select_question_pictures");
    query.bind(":question", question).exec();
    while (query.next())
        text.replace(query.text("stored_name"), query.text("file_name"));
    return text;
}

/// A row of the original-file desk stands in the audit as its name and its stored file, which
/// the entry about the file tells already.
QString rowName(const QString &value)
{
    return value.section(QLatin1Char(' '), 0, -2);
}

/// Only where the services themselves have written a file's name: what people write is theirs.
void nameFiles(Database &database, int record, HistoryEntry *entry)
{
    if (entry->isRefused)
        return;
    if (entry->action == QLatin1String("question.raise"))
        entry->after = withPictureNames(database, record, entry->after);
    if (entry->action == QLatin1String("file.UpdateZipUUID_OrigName") ||
        entry->action == QLatin1String("file.DelOrigFile")) {
        entry->before = rowName(entry->before);
        entry->after = rowName(entry->after);
    } else if (entry->action.startsWith(QLatin1String("file.")) ||
               entry->action == QLatin1String("intake.take") ||
               entry->action == QLatin1String("state.robotResult")) {
        entry->before = fileName(database, entry->before);
        entry->after = fileName(database, entry->after);
    }
}

HistoryEntry entryOf(const SqlQuery &query)
{
    HistoryEntry entry;
    entry.id = query.int64("id");
    entry.time = shownTime(query.text("create_time"));
    entry.who = query.text("real_name");
    entry.action = query.text("action");
    if (query.text("record_kind") != QLatin1String("flow"))
        entry.about = query.text("record_name");
    entry.before = query.text("before_value");
    entry.after = query.text("after_value");
    entry.isRefused = query.number("refused") != 0;
    return entry;
}

void readPage(Database &database, int flowId, qint64 before, HistoryPage *page)
{
    SqlQuery query = database.query("select_events_of_flow");
    query.bind(":before", before > 0 ? before : std::numeric_limits<qint64>::max())
        .bind(":flow", flowId)
        .bind(":same_flow", flowId)
        .bind(":most", JobHistory::pageSize + 1)
        .exec();
    while (query.next()) {
        page->entries.append(entryOf(query));
        nameFiles(database, query.number("record_id"), &page->entries.last());
    }
    page->hasOlder = page->entries.size() > JobHistory::pageSize;
    if (page->hasOlder)
        page->entries.removeLast();
}

} // namespace

Result<HistoryPage> JobHistory::of(const QString &flowGuid, qint64 before)
{
    HistoryPage page;
    const bool isRead = Change::look(readHistory, flowGuid.toStdString(), [&](Change &change) {
        const FlowRow flow = change.flowByGuid(flowGuid.toStdString());
        if (!change.isInScope(flow))
            Change::refuse(QStringLiteral("the flow is not in the user's scope"),
                           tr("该料号不在您的范围内"));
        page.jobName = flow.jobName;
        readPage(change.database(), flow.id, before, &page);
    });
    if (!isRead)
        return Outcome::failure(tr("无法查看该料号的历史"));
    return page;
}

} // namespace KODMS::Services
