// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/StoredFiles.h"

#include <QSet>
#include <QStringList>

#include <functional>
#include <stdexcept>

namespace KODMS::Tests {

/// A file store in memory that can be told to fail.
class FakeStoredFiles final : public Services::StoredFiles {
public:
    Services::Result<bool> has(const QString &storedName) override
    {
        if (isAway)
            return Services::Outcome::failure(QStringLiteral("the store is away"),
                                              QStringLiteral("the store is away"));
        return names.contains(storedName);
    }

    Services::Outcome removeBody(const QString &storedName) override
    {
        if (meanwhile)
            meanwhile();
        if (throws)
            throw std::runtime_error("no memory left");
        if (!failure.isEmpty())
            return Services::Outcome::failure(failure);
        names.remove(storedName);
        removed << storedName;
        return Services::Outcome::success();
    }

    QSet<QString> names;
    QStringList removed;
    std::function<void()> meanwhile; ///< what others do while a file is being removed
    bool throws = false;
    bool isAway = false; ///< nothing can be asked
    QString failure;     ///< not empty: removals fail with this text
};

} // namespace KODMS::Tests
