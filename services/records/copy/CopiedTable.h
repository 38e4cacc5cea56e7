// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

namespace KODMS::Services {

/// A table that moves with an installation.
struct CopiedTable {
    enum class Key {
        Counted, ///< "id", given out by the engine
        Flow,    ///< "flow_id"
        Other    ///< texts, or several columns: a table of few rows
    };

    const char *name;
    Key key;

    /// All of them, none before one that it refers to. The log of changes and the steps of
    /// the schema are a database's own, and stay.
    static const QVector<CopiedTable> &all();
};

} // namespace KODMS::Services
