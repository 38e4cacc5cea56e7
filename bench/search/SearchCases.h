// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/model/DB_Search.h"
#include "services/records/Actor.h"

#include <QString>
#include <QVector>

#include <vector>

namespace KODMS::Bench {

class BenchDatabase;

using List = std::vector<DataLib::Model::DB_Search>;

/// One line of the table: the same question with many different terms.
struct SearchCase {
    QString name;
    bool isFlowView = true;
    Services::Actor actor;
    std::vector<List> lists; ///< one for each term; without page window
    int pageStart = 0;
    bool isAfterChange = false; ///< a flow is changed before each question
};

/// The cases of the desks: what their filters send.
std::vector<SearchCase> searchCases(BenchDatabase &database, int terms);

} // namespace KODMS::Bench
