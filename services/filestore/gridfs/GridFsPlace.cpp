// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsPlace.h"

#include "services/filestore/gridfs/GridFsFailure.h"

namespace KODMS::Services {

namespace {

/// What the server answers, gone with the scope.
class Reply {
public:
    Reply() = default;

    ~Reply() { bson_destroy(&m_document); }

    Reply(const Reply &) = delete;
    Reply &operator=(const Reply &) = delete;

    /// To be filled by the library.
    bson_t *fill()
    {
        bson_destroy(&m_document);
        return &m_document;
    }

    BsonView view() const { return BsonView(&m_document); }

private:
    bson_t m_document = BSON_INITIALIZER;
};

Bson unordered()
{
    Bson options;
    options.flag("ordered", false);
    return options;
}

} // namespace

GridFsPlace::GridFsPlace(std::shared_ptr<GridFsServer> server)
    : m_server(std::move(server)), m_client(m_server->take())
{
}

GridFsPlace::~GridFsPlace()
{
    for (mongoc_collection_t *open : m_collections)
        mongoc_collection_destroy(open);
    m_server->giveBack(m_client);
}

QString GridFsPlace::nameOf(Part part) const
{
    static const std::array<const char *, PartCount> suffixes{
        ".files", ".chunks", ".kodms.puts", ".kodms.removed", ".kodms.live", ".kodms.strays"};
    return m_server->bucket() + QString::fromLatin1(suffixes[part]);
}

mongoc_collection_t *GridFsPlace::collection(Part part) const
{
    mongoc_collection_t *&open = m_collections[part];
    if (!open)
        open = mongoc_client_get_collection(m_client, m_server->database().toUtf8().constData(),
                                            nameOf(part).toUtf8().constData());
    return open;
}

Outcome GridFsPlace::failure(const char *doing, const bson_error_t &error) const
{
    return gridFsFailure(doing, m_server->addressText(), error);
}

Outcome GridFsPlace::each(Part part, const Bson &filter, const Bson &options,
                          const std::function<bool(const BsonView &)> &take) const
{
    return readAll(
        mongoc_collection_find_with_opts(collection(part), filter.get(), options.get(), nullptr),
        take);
}

/// In the order of the index, so that a server steps from value to value through it.
Outcome GridFsPlace::eachValue(Part part, const char *field,
                               const std::function<bool(const GridFsId &)> &take) const
{
    std::vector<Bson> stages(2);
    stages[0].document("$sort", Bson().small(field, 1));
    stages[1].document("$group",
                       Bson().text("_id", QStringLiteral("$%1").arg(QString::fromLatin1(field))));
    Bson pipeline;
    pipeline.documents("pipeline", stages);
    Bson options;
    options.flag("allowDiskUse", true); // where another client has made no index
    return readAll(mongoc_collection_aggregate(collection(part), MONGOC_QUERY_NONE, pipeline.get(),
                                               options.get(), nullptr),
                   [&take](const BsonView &group) { return take(group.id("_id")); });
}

Outcome GridFsPlace::readAll(mongoc_cursor_t *cursor, const Take &take) const
{
    const bson_t *document = nullptr;
    while (mongoc_cursor_next(cursor, &document) && take(BsonView(document))) {
    }
    bson_error_t error{};
    const bool isFailed = mongoc_cursor_error(cursor, &error);
    mongoc_cursor_destroy(cursor);
    return isFailed ? failure("find", error) : Outcome::success();
}

Result<bool> GridFsPlace::any(Part part, const Bson &filter) const
{
    bool isThere = false;
    const Outcome looked =
        each(part, filter, Bson().number("limit", 1).document("projection", Bson().small("_id", 1)),
             [&isThere](const BsonView &) {
                 isThere = true;
                 return false;
             });
    if (!looked)
        return looked;
    return isThere;
}

Outcome GridFsPlace::insert(Part part, const std::vector<Bson> &documents) const
{
    mongoc_bulk_operation_t *bulk =
        mongoc_collection_create_bulk_operation_with_opts(collection(part), unordered().get());
    bson_error_t error{};
    bool done = true;
    for (const Bson &document : documents)
        done =
            done && mongoc_bulk_operation_insert_with_opts(bulk, document.get(), nullptr, &error);
    Reply reply;
    done = done && mongoc_bulk_operation_execute(bulk, reply.fill(), &error) != 0;
    mongoc_bulk_operation_destroy(bulk);
    return done ? Outcome::success() : failure("insert", error);
}

Outcome GridFsPlace::insert(Part part, const Bson &document) const
{
    bson_error_t error{};
    const bool done =
        mongoc_collection_insert_one(collection(part), document.get(), nullptr, nullptr, &error);
    return done ? Outcome::success() : failure("insert", error);
}

Result<qint64> GridFsPlace::update(Part part, const Bson &filter, const Bson &change) const
{
    bson_error_t error{};
    Reply reply;
    if (!mongoc_collection_update_many(collection(part), filter.get(), change.get(), nullptr,
                                       reply.fill(), &error))
        return failure("update", error);
    return reply.view().number("matchedCount");
}

Result<bool> GridFsPlace::updateOrInsert(Part part, const Bson &filter, const Bson &change) const
{
    bson_error_t error{};
    if (mongoc_collection_update_one(collection(part), filter.get(), change.get(),
                                     Bson().flag("upsert", true).get(), nullptr, &error))
        return true;
    if (isDuplicate(error))
        return false;
    return failure("update", error);
}

Result<qint64> GridFsPlace::remove(Part part, const Bson &filter) const
{
    bson_error_t error{};
    Reply reply;
    if (!mongoc_collection_delete_many(collection(part), filter.get(), nullptr, reply.fill(),
                                       &error))
        return failure("remove", error);
    return reply.view().number("deletedCount");
}

Outcome GridFsPlace::command(const char *database, const Bson &command, bson_t *reply) const
{
    bson_error_t error{};
    const bool done = mongoc_client_write_command_with_opts(m_client, database, command.get(),
                                                            nullptr, reply, &error);
    return done ? Outcome::success() : failure("command", error);
}

Outcome GridFsPlace::makeIndexes() const
{
    const auto hasFiles = any(Files, Bson());
    if (!hasFiles || hasFiles.value)
        return hasFiles.outcome;
    const auto index = [this](Part part, const char *first, const char *second, bool unique) {
        std::vector<Bson> indexes(1);
        Bson &description = indexes.front();
        description.document("key", Bson().small(first, 1).small(second, 1))
            .text("name", QStringLiteral("%1_1_%2_1")
                              .arg(QString::fromLatin1(first), QString::fromLatin1(second)));
        if (unique)
            description.flag("unique", true);
        Reply reply;
        return command(m_server->database().toUtf8().constData(),
                       Bson().text("createIndexes", nameOf(part)).documents("indexes", indexes),
                       reply.fill());
    };
    const Outcome files = index(Files, "filename", "uploadDate", false);
    return files ? index(Chunks, "files_id", "n", true) : files;
}

Result<qint64> GridFsPlace::now() const
{
    // As a read it is asked again on a new connection when the server was restarted.
    bson_error_t error{};
    Reply reply;
    if (!mongoc_client_read_command_with_opts(m_client, "admin", Bson().small("hello", 1).get(),
                                              nullptr, nullptr, reply.fill(), &error))
        return failure("ask for the time", error);
    return reply.view().time("localTime");
}

} // namespace KODMS::Services
