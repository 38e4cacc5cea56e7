// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/gridfs/GridFsFailure.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr quint32 Unauthorized = 13;
constexpr quint32 AuthenticationFailed = 18;
constexpr quint32 AtlasError = 8000;
constexpr quint32 OutOfDiskSpace = 14031;

struct GridFsTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::GridFsStore)

public:
    static QString of(const QString &address, const bson_error_t &error)
    {
        if (isLost(error))
            return tr("无法连接文件服务器 %1").arg(address);
        if (isDenied(error))
            return tr("文件服务器 %1 拒绝访问：请检查用户、密码和权限").arg(address);
        if (isServer(error) && error.code == OutOfDiskSpace)
            return tr("文件服务器 %1 磁盘空间不足").arg(address);
        return tr("文件服务器 %1 报告错误").arg(address);
    }

private:
    static bool isServer(const bson_error_t &error) { return error.domain == MONGOC_ERROR_SERVER; }

    static bool isLost(const bson_error_t &error)
    {
        return error.domain == MONGOC_ERROR_SERVER_SELECTION || error.domain == MONGOC_ERROR_STREAM;
    }

    static bool isDenied(const bson_error_t &error)
    {
        if (error.domain == MONGOC_ERROR_CLIENT)
            return error.code == MONGOC_ERROR_CLIENT_AUTHENTICATE;
        return isServer(error) && (error.code == Unauthorized ||
                                   error.code == AuthenticationFailed || error.code == AtlasError);
    }
};

} // namespace

Outcome gridFsFailure(const char *doing, const QString &address, const bson_error_t &error)
{
    return Outcome::failure(
        GridFsTexts::of(address, error),
        QStringLiteral("%1 at %2: %3 (%4.%5)")
            .arg(QString::fromLatin1(doing), address, QString::fromUtf8(error.message))
            .arg(error.domain)
            .arg(error.code));
}

bool isDuplicate(const bson_error_t &error)
{
    return error.code == MONGOC_ERROR_DUPLICATE_KEY;
}

} // namespace KODMS::Services
