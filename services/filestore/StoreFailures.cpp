// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/filestore/StoreFailures.h"

#include <QCoreApplication>

namespace KODMS::Services {

namespace {

constexpr int ShownLength = 80;

struct StoreTexts {
    Q_DECLARE_TR_FUNCTIONS(KODMS::Services::FileStore)

public:
    static QString badName(const QString &name)
    {
        return tr("不能用作文件库中的名称：%1").arg(name);
    }

    static QString taken(const QString &name) { return tr("文件库中已有此文件：%1").arg(name); }

    static QString missing(const QString &name) { return tr("文件库中没有文件：%1").arg(name); }

    static QString changed(const QString &path) { return tr("文件在存入时被修改：%1").arg(path); }
};

} // namespace

Outcome badNameFailure(const QString &name)
{
    const QString shown = name.left(ShownLength);
    return Outcome::failure(StoreTexts::badName(shown),
                            QStringLiteral("not a stored name: %1").arg(shown));
}

Outcome takenFailure(const QString &name)
{
    return Outcome::failure(StoreTexts::taken(name),
                            QStringLiteral("already stored: %1").arg(name));
}

Outcome missingFailure(const QString &name)
{
    return Outcome::failure(StoreTexts::missing(name), QStringLiteral("not stored: %1").arg(name));
}

Outcome changedFailure(const QString &path)
{
    return Outcome::failure(StoreTexts::changed(path),
                            QStringLiteral("changed while it was read: %1").arg(path));
}

} // namespace KODMS::Services
