// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

namespace KODMS::Services {

// What goes wrong in every kind of file store, in the same words.

/// Not a name that a stored file, a database or a bucket can have.
Outcome badNameFailure(const QString &name);
/// A second put under one name.
Outcome takenFailure(const QString &name);
Outcome missingFailure(const QString &name);
/// The local file changed while it was read.
Outcome changedFailure(const QString &path);

} // namespace KODMS::Services
