// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/filestore/FileStore.h"

#include <algorithm>

namespace KODMS::Tests {

/// Whether the store has a file of that name. One that cannot say ends the process: a test that
/// expects no file must not take silence for it. A folder that is not made yet cannot say either,
/// but it lists nothing.
inline bool hasFile(const Services::FileStore &store, const QString &name)
{
    const auto answer = store.has(name);
    if (answer)
        return answer.value;
    const auto all = store.list();
    if (!all)
        qFatal("%s: %s", qPrintable(name), qPrintable(answer.text()));
    return std::any_of(all.value.cbegin(), all.value.cend(),
                       [&name](const auto &file) { return file.name == name; });
}

} // namespace KODMS::Tests
