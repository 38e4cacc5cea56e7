// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::DataLib::Model {

/// Base of the records that are stored under an integer key.
/// Value type: copy freely, any thread.
struct BaseInt {
    BaseInt() = default;
    BaseInt(const BaseInt &) = default;
    BaseInt(BaseInt &&) = default;
    BaseInt &operator=(const BaseInt &) = default;
    BaseInt &operator=(BaseInt &&) = default;
    virtual ~BaseInt() = default;

    /// True when the record was found in, or has been stored to, the database.
    virtual bool isPersist() const { return id != 0; }

    int id = 0; ///< primary key; 0 = not stored
};

} // namespace KODMS::DataLib::Model
