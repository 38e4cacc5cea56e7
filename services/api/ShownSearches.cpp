// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/ShownSearches.h"

#include "services/records/SearchListener.h"
#include "services/records/conditions/SearchView.h"
#include "services/session/Runtime.h"

namespace KODMS::Services {

class ShownSearches::Relay final : public SearchListener {
public:
    explicit Relay(ShownSearches &owner) : m_owner(owner) {}

    void searching(const SearchView &view,
                   const std::vector<DataLib::Model::DB_Search> &conditions) override
    {
        const bool isFlows = &view == &SearchView::flows();
        Q_EMIT m_owner.searching(
            {isFlows ? ShownSearch::View::Flows : ShownSearch::View::OrigFiles, conditions});
    }

private:
    ShownSearches &m_owner;
};

ShownSearches::ShownSearches() : m_relay(std::make_unique<Relay>(*this)) {}

ShownSearches::~ShownSearches() = default;

ShownSearches &ShownSearches::instance()
{
    static ShownSearches searches;
    return searches;
}

void ShownSearches::attach()
{
    Runtime::current()->records().setSearchListener(m_relay.get());
}

} // namespace KODMS::Services
