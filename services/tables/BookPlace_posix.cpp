// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/BookPlace.h"

namespace KODMS::Services {

BookPlace::BookPlace(FileHandle &file) : m_file(file), m_path(file.path()) {}

BookPlace::~BookPlace() = default;

Outcome BookPlace::deliver()
{
    return Outcome::success();
}

} // namespace KODMS::Services
