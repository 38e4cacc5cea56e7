// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <bson/bson.h>

namespace KODMS::Services {

class GridFsId;

/// A document that came from the server and belongs to the library: only as long as the
/// call that it is handed to.
class BsonView {
public:
    explicit BsonView(const bson_t *document) : m_document(document) {}

    /// A whole number in any of the ways in which drivers write one; -1 when it is none.
    qint64 number(const char *key) const;
    /// Milliseconds since 1970; -1 when it is no time.
    qint64 time(const char *key) const;
    /// Empty when it is no text.
    QString text(const char *key) const;
    /// Null when there is none.
    GridFsId id(const char *key) const;

    struct Bytes {
        const char *data = nullptr;
        qint64 size = -1; ///< when there are none
    };

    Bytes bytes(const char *key) const;

    /// The same for a document inside this one; false when there is none.
    template <typename Take> bool inside(const char *key, const Take &take) const
    {
        bson_t inner;
        const bool isThere = openInside(key, &inner);
        if (isThere)
            take(BsonView(&inner));
        return isThere;
    }

private:
    bool openInside(const char *key, bson_t *inner) const;

    const bson_t *m_document;
};

} // namespace KODMS::Services
