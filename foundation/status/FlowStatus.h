// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <Qt>

#include <optional>

namespace KODMS::UI {

/// The check flag of a question as the desks show it.
struct QuestionCheck {
    QString text;
    std::optional<Qt::GlobalColor> colour; ///< none: the table's own text colour
};

/// The cell string of a flow's status pair: the status word, followed by "|" and
/// a colour code. A pair that no flow should have gives "未知" without a code.
QString flowStatusText(int flowStatus, int checkFlag);

/// Word and colour of a question's check flag; "未知" without a colour for a flag
/// that no question should have.
QuestionCheck questionCheckText(int checkFlag);

} // namespace KODMS::UI
