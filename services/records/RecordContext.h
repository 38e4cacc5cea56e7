// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/Actor.h"
#include "services/records/Database.h"

#include <memory>

namespace KODMS::Services {

class SearchListener;
class ShownRecords;
class StoredFiles;
class ViewIndex;

/// What every record service works with: the database, who acts, the file store
/// behind the records, and the memory of what was shown. One is current at a
/// time; services take RecordContext::current() and fail when there is none.
/// Belongs to the thread that made its database.
class RecordContext {
public:
    explicit RecordContext(std::unique_ptr<Database> database);
    /// No longer current afterwards.
    ~RecordContext();

    RecordContext(const RecordContext &) = delete;
    RecordContext &operator=(const RecordContext &) = delete;

    Database &database() { return *m_database; }

    /// Nobody (userId 0) until someone signs in.
    const Actor &actor() const { return m_actor; }

    void setActor(const Actor &actor) { m_actor = actor; }

    /// Null when no file store is open. Not owned.
    StoredFiles *storedFiles() const { return m_storedFiles; }

    void setStoredFiles(StoredFiles *files) { m_storedFiles = files; }

    /// Null when nothing remembers. Not owned.
    ShownRecords *shownRecords() const { return m_shownRecords; }

    void setShownRecords(ShownRecords *records) { m_shownRecords = records; }

    /// Null when nobody wants to know. Not owned.
    SearchListener *searchListener() const { return m_searchListener; }

    void setSearchListener(SearchListener *listener) { m_searchListener = listener; }

    /// Null when the statements answer every search. Not owned.
    ViewIndex *viewIndex() const { return m_viewIndex; }

    void setViewIndex(ViewIndex *index) { m_viewIndex = index; }

    /// Null when no database is open.
    static RecordContext *current();
    static void setCurrent(RecordContext *context);

private:
    std::unique_ptr<Database> m_database;
    Actor m_actor;
    StoredFiles *m_storedFiles = nullptr;
    ShownRecords *m_shownRecords = nullptr;
    SearchListener *m_searchListener = nullptr;
    ViewIndex *m_viewIndex = nullptr;
};

} // namespace KODMS::Services
