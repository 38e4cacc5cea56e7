// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/session/ForeignChanges.h"

#include "services/records/Database.h"

namespace KODMS::Services {

namespace {

constexpr int mostAtOnce = 1000;

/// Nothing that a desk shows is changed by a refusal or by somebody's coming.
bool isChange(const SqlQuery &event)
{
    return event.number("refused") == 0 &&
           !event.text("action").startsWith(QLatin1String("session."));
}

/// What has no number of its own is known by its name.
QString recordOf(const SqlQuery &event)
{
    const QString kind = event.text("record_kind");
    const qint64 id = event.int64("record_id");
    return id != 0 ? kind + QLatin1Char('#') + QString::number(id)
                   : kind + QLatin1Char(':') + event.text("record_name");
}

} // namespace

ForeignChanges::ForeignChanges(Database &database) : m_database(database)
{
    m_database.setWriteListener(this);
}

ForeignChanges::~ForeignChanges()
{
    m_database.setWriteListener(nullptr);
}

void ForeignChanges::begin()
{
    m_known = readMark();
    m_records.clear();
    m_hasUnnamed = false;
}

void ForeignChanges::end()
{
    m_known.reset();
    m_records.clear();
    m_hasUnnamed = false;
}

void ForeignChanges::look()
{
    if (!m_known)
        return;
    Mark now = readMark();
    if (!now.isBeyond(*m_known))
        return;
    const bool areNamed = readEvents(now);
    if (!areNamed)
        m_hasUnnamed = true;
    m_known = now;
}

/// True when there were any. When there were too many for once, the rest is for the next look.
bool ForeignChanges::readEvents(Mark &upTo)
{
    if (upTo.event == m_known->event)
        return false;
    SqlQuery events = m_database.query("select_new_events");
    events.bind(":known", m_known->event)
        .bind(":newest", upTo.event)
        .bind(":most", mostAtOnce)
        .exec();
    qint64 last = m_known->event;
    int read = 0;
    while (events.next()) {
        last = events.int64("id");
        if (isChange(events))
            m_records.insert(recordOf(events));
        ++read;
    }
    if (read == mostAtOnce)
        upTo.event = last;
    return read > 0;
}

int ForeignChanges::count() const
{
    return m_records.size() + (m_hasUnnamed ? 1 : 0);
}

/// What others have written until now is read before it is mixed with what is written here.
void ForeignChanges::writeBegins()
{
    qint64 before = -1;
    while (m_known && m_known->event != before) {
        before = m_known->event;
        look();
    }
}

void ForeignChanges::writeEnds()
{
    if (m_known)
        m_own = readMark();
}

/// Whoever writes without the writers' lock may have ended meanwhile, and says nothing else.
void ForeignChanges::written()
{
    if (!m_known)
        return;
    m_hasUnnamed = m_hasUnnamed || m_own.isPassed;
    m_known = m_own;
}

ForeignChanges::Mark ForeignChanges::readMark()
{
    const Mark known = m_known.value_or(Mark());
    SqlQuery query = m_database.query("select_write_mark");
    query.bind(":change", known.change)
        .bind(":moment", known.moment)
        .bind(":writer", known.writer)
        .exec();
    Mark mark;
    if (query.next())
        mark = {query.int64("version"), query.int64("event"), query.int64("change"),
                query.text("moment"),   query.text("writer"), query.number("by_others") != 0};
    return mark;
}

} // namespace KODMS::Services
