// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DeskSearches.h"

#include <utility>

namespace KODMS::Host {

DeskSearches::DeskSearches(std::function<int()> inFront, QObject *parent)
    : QObject(parent), m_inFront(std::move(inFront))
{
    connect(&Services::ShownSearches::instance(), &Services::ShownSearches::searching, this,
            &DeskSearches::take);
}

std::optional<Services::ShownSearch> DeskSearches::last(int desk) const
{
    const auto found = m_last.constFind(desk);
    if (found == m_last.constEnd())
        return std::nullopt;
    return found.value();
}

void DeskSearches::take(const Services::ShownSearch &search)
{
    m_last[m_acting.value_or(m_inFront())] = search;
}

} // namespace KODMS::Host
