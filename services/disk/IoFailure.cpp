// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/disk/IoFailure.h"

#include <QCoreApplication>

#include <cerrno>
#include <system_error>

namespace KODMS::Services {

namespace {

struct IoFailureTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::IoFailure)

public:
    static QString of(const QString &path, int error)
    {
        switch (error) {
        case ENOSPC:
#ifdef EDQUOT // not everywhere
        case EDQUOT:
#endif
            return tr("磁盘空间不足：%1").arg(path);
        case EROFS:
        case EACCES:
        case EPERM:
            return tr("没有权限：%1").arg(path);
        case ENOENT:
            return tr("文件不存在：%1").arg(path);
        case EBUSY:
            return tr("文件正被其他程序使用：%1").arg(path);
        case ENAMETOOLONG:
            return tr("路径过长：%1").arg(path);
        case EISDIR:
            return tr("应为文件，却是文件夹：%1").arg(path);
        case ENOTDIR:
            return tr("应为文件夹，却是文件：%1").arg(path);
        default:
            return tr("文件读写失败：%1").arg(path);
        }
    }

    static QString cancelled()
    {
        return tr("已取消");
    }
};

} // namespace

Outcome ioFailure(const char *doing, const QString &path, int error)
{
    const QString reason = QString::fromStdString(std::generic_category().message(error));
    return Outcome::failure(
        IoFailureTexts::of(path, error),
        QStringLiteral("%1 %2: %3").arg(QString::fromLatin1(doing), path, reason));
}

Outcome cancelledFailure()
{
    return Outcome::failure(IoFailureTexts::cancelled(), QStringLiteral("cancelled"));
}

} // namespace KODMS::Services
