// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QProcess>

namespace KODMS::Tests {

/// Another program that holds a file or a folder open, as only Windows knows it, until it is let
/// go of or the object ends.
class FileHolder {
public:
    /// What others may do meanwhile.
    enum class Shares { Nothing, Reading, ReadingAndWriting };

    FileHolder(const QString &path, Shares shares);
    ~FileHolder();
    FileHolder(const FileHolder &) = delete;
    FileHolder &operator=(const FileHolder &) = delete;

    /// False when the program did not start, or could not open what it should hold.
    bool isHolding() const { return m_isHolding; }

    /// Returns when the program has ended.
    void release();

private:
    QProcess m_process;
    bool m_isHolding = false;
};

} // namespace KODMS::Tests
