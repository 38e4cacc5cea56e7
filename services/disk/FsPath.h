// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

#include <filesystem>

namespace KODMS::Services {

/// The same path for the standard library. On Unix the bytes are those that Qt
/// itself would use for the name.
std::filesystem::path fsPath(const QString &path);
QString fromFsPath(const std::filesystem::path &path);
/// The path as libraries take it that know names as bytes only; UTF-8 where the system's are texts.
QByteArray libraryPath(const QString &path);
/// The path's last part as the system keeps it; where names are texts there, as UTF-8.
QByteArray nameBytes(const std::filesystem::path &path);

} // namespace KODMS::Services
