// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "foundation/model/DB_Search.h"

#include <QObject>

#include <memory>
#include <vector>

namespace KODMS::Services {

/// What a table was filled from: a view and the conditions that it was asked with.
struct ShownSearch {
    enum class View { Flows, OrigFiles };

    View view = View::Flows;
    std::vector<DataLib::Model::DB_Search> conditions;
};

/// Says what the desks ask the view services for, so that a host can do something
/// with the whole of what a desk shows a page of. GUI thread.
class KODMS_SERVICES_API ShownSearches : public QObject {
    Q_OBJECT

public:
    static ShownSearches &instance();

Q_SIGNALS:
    /// From within the desk's call, before it is answered.
    void searching(const KODMS::Services::ShownSearch &search);

private:
    friend class ServiceRuntime;

    ShownSearches();
    ~ShownSearches() override;

    /// Listens to the records that have just been opened.
    void attach();

    class Relay;
    std::unique_ptr<Relay> m_relay;
};

} // namespace KODMS::Services
