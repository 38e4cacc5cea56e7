// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QTranslator>

namespace KODMS::Console {

/// What every program without windows does first: it reads and writes UTF-8, makes its files for
/// their owner only, speaks English, and watches for Ctrl-C. Lives as long as the application
/// object, from right behind its making.
class ProgramSetup {
public:
    ProgramSetup();

    ProgramSetup(const ProgramSetup &) = delete;
    ProgramSetup &operator=(const ProgramSetup &) = delete;

private:
    QTranslator m_english;
};

} // namespace KODMS::Console
