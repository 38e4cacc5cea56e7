// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGlobal>

namespace KODMS::Tests {

/// The most memory that this process held since the object was made.
class PeakMemory {
public:
    PeakMemory();

    /// False where the system does not tell.
    bool isKnown() const { return m_start > 0; }

    /// Bytes above what was held at the start.
    qint64 aboveStart() const;

private:
    qint64 m_start = 0;
};

} // namespace KODMS::Tests
