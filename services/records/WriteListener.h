// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace KODMS::Services {

/// Learns when a connection writes. Writers follow one another, so that what stands
/// there when a write begins is of others, and what came since is its own. In the
/// thread of the records; what it throws ends the write.
class WriteListener {
public:
    virtual ~WriteListener() = default;

    /// Inside the transaction, before its first statement.
    virtual void writeBegins() = 0;

    /// Inside the transaction, after its last statement.
    virtual void writeEnds() = 0;

    /// The change is on the disk.
    virtual void written() = 0;
};

} // namespace KODMS::Services
