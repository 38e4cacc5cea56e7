// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsServer.h"

#include "services/disk/IoFailure.h"
#include "services/notices/NoticeHub.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <cerrno>

namespace KODMS::Services {

namespace {

constexpr int ConnectMs = 4000;
constexpr int SelectionMs = 4000;
constexpr int SocketMs = 30000;
constexpr int MajorityMs = 20000;
constexpr int ErrorsOfTheServerByTheirCode = 2;

struct GridFsServerTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::GridFsStore)

public:
    /// Nothing of the address is repeated: what could not be read may be the password.
    static Outcome badAddress()
    {
        return Outcome::failure(
            tr("[fileStore] uri 不是有效的地址，应为 mongodb://主机:端口；用户名和密码中的特殊字符"
               "须写作 %XX"),
            QStringLiteral("uri of [fileStore] cannot be read"));
    }

    static Outcome noUser()
    {
        return Outcome::failure(tr("[fileStore] passwordFile 需要 uri 中有用户名"),
                                QStringLiteral("a password without a user"));
    }

    static Outcome emptyPassword(const QString &path)
    {
        return Outcome::failure(tr("密码文件是空的：%1").arg(path),
                                QStringLiteral("no password in %1").arg(path));
    }
};

struct DestroyUri {
    void operator()(mongoc_uri_t *uri) const { mongoc_uri_destroy(uri); }
};

using Uri = std::unique_ptr<mongoc_uri_t, DestroyUri>;

/// The library's own lines are for those who look for the cause of something; what
/// fails is reported by whoever asked for it.
void logLine(mongoc_log_level_t, const char *domain, const char *message, void *)
{
    qCInfo(lcFileStore).noquote() << domain << message;
}

void initialiseLibrary()
{
    static const bool done = [] {
        mongoc_log_set_handler(logLine, nullptr);
        mongoc_init();
        return true;
    }();
    Q_UNUSED(done)
}

void setUnlessGiven(mongoc_uri_t *uri, const char *option, int value)
{
    if (!mongoc_uri_has_option(uri, option))
        mongoc_uri_set_option_as_int32(uri, option, value);
}

void setDefaults(mongoc_uri_t *uri)
{
    setUnlessGiven(uri, MONGOC_URI_CONNECTTIMEOUTMS, ConnectMs);
    setUnlessGiven(uri, MONGOC_URI_SERVERSELECTIONTIMEOUTMS, SelectionMs);
    setUnlessGiven(uri, MONGOC_URI_SOCKETTIMEOUTMS, SocketMs);
    mongoc_write_concern_t *majority = mongoc_write_concern_new();
    mongoc_write_concern_set_wmajority(majority, MajorityMs);
    mongoc_uri_set_write_concern(uri, majority);
    mongoc_write_concern_destroy(majority);
    // What has just been written must be found again.
    mongoc_read_prefs_t *primary = mongoc_read_prefs_new(MONGOC_READ_PRIMARY);
    mongoc_uri_set_read_prefs_t(uri, primary);
    mongoc_read_prefs_destroy(primary);
}

QString hostsOf(const mongoc_uri_t *uri)
{
    QStringList hosts;
    for (const auto *host = mongoc_uri_get_hosts(uri); host; host = host->next)
        hosts << QString::fromUtf8(host->host_and_port);
    if (hosts.isEmpty()) // found through the name service
        hosts << QString::fromUtf8(mongoc_uri_get_srv_hostname(uri));
    return hosts.join(QLatin1Char(','));
}

/// The first line is the password.
Outcome setPassword(mongoc_uri_t *uri, const QString &path)
{
    if (path.isEmpty())
        return Outcome::success();
    const char *user = mongoc_uri_get_username(uri);
    if (!user || !*user)
        return GridFsServerTexts::noUser();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return ioFailure("open", path, file.exists() ? EACCES : ENOENT);
    QByteArray line = file.readLine(4096);
    while (line.endsWith('\n') || line.endsWith('\r'))
        line.chop(1);
    if (line.isEmpty())
        return GridFsServerTexts::emptyPassword(path);
    return mongoc_uri_set_password(uri, line.constData()) ? Outcome::success()
                                                          : GridFsServerTexts::badAddress();
}

} // namespace

Result<std::shared_ptr<GridFsServer>> GridFsServer::at(const FileStoreSettings &settings)
{
    initialiseLibrary();
    bson_error_t error{};
    const Uri uri(mongoc_uri_new_with_error(settings.uri.toUtf8().constData(), &error));
    if (!uri)
        return GridFsServerTexts::badAddress();
    if (Outcome set = setPassword(uri.get(), settings.passwordFile); !set)
        return set;
    setDefaults(uri.get());
    mongoc_client_pool_t *pool = mongoc_client_pool_new(uri.get());
    if (!pool)
        return GridFsServerTexts::badAddress();
    mongoc_client_pool_set_error_api(pool, ErrorsOfTheServerByTheirCode);
    mongoc_client_pool_set_appname(pool, "kodms");
    return std::shared_ptr<GridFsServer>(
        new GridFsServer(pool, hostsOf(uri.get()), settings.database, settings.bucket));
}

GridFsServer::GridFsServer(mongoc_client_pool_t *pool, QString address, QString database,
                           QString bucket)
    : m_pool(pool), m_address(std::move(address)), m_database(std::move(database)),
      m_bucket(std::move(bucket))
{
}

GridFsServer::~GridFsServer()
{
    mongoc_client_pool_destroy(m_pool);
}

mongoc_client_t *GridFsServer::take()
{
    return mongoc_client_pool_pop(m_pool);
}

void GridFsServer::giveBack(mongoc_client_t *client)
{
    mongoc_client_pool_push(m_pool, client);
}

} // namespace KODMS::Services
