// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/transfer/MongoServer.h"
#include "bench/transfer/TransferCases.h"

namespace KODMS::Bench {

/// Putting and getting one large file, beside PyMongo's gridfs on the same server. Each
/// run puts into a bucket of its own, since the server may take longer the more is there.
bool hasPyMongo();
std::vector<TransferCase> gridFsCases(const Material &material, const MongoServer &server);

} // namespace KODMS::Bench
