// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/ShownSearches.h"

#include <QHash>
#include <QObject>

#include <functional>
#include <optional>

namespace KODMS::Host {

/// Knows from which search each desk's table was filled last. A desk searches while it
/// is built, when the desks are told to refresh, and when somebody works in it, which
/// only the desk in front allows.
class DeskSearches : public QObject {
    Q_OBJECT

public:
    /// `inFront` gives the number of the desk in front. Made before the desks are.
    explicit DeskSearches(std::function<int()> inFront, QObject *parent = nullptr);

    /// Until done(), it is this desk that searches.
    void begin(int desk) { m_acting = desk; }

    void done() { m_acting.reset(); }

    /// Nothing when the desk has not searched yet.
    std::optional<Services::ShownSearch> last(int desk) const;

private:
    void take(const Services::ShownSearch &search);

    std::function<int()> m_inFront;
    std::optional<int> m_acting;
    QHash<int, Services::ShownSearch> m_last;
};

} // namespace KODMS::Host
