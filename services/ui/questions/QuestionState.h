// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <Qt>

#include <optional>

namespace KODMS::Services {

/// How a question's check flag is shown: the desks' words (translated here) and colours.
struct QuestionState {
    QString text;
    std::optional<Qt::GlobalColor> colour; ///< none: that of ordinary text
};

/// The states that a question can have are the flags from 0 up to here.
constexpr int QuestionStates = 4;

QuestionState questionState(int checkFlag);

} // namespace KODMS::Services
