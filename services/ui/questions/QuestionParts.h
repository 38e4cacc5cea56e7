// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

class QHBoxLayout;
class QPushButton;

namespace KODMS::Services {

/// A label that takes every text as it stands.
QLabel *plainLabel(const char *name, QWidget *parent);

QPushButton *namedButton(const char *name, const QString &text, QWidget *parent);

/// The label of a field, with a hint beside it where that is not empty.
QHBoxLayout *fieldLabel(const QString &text, const QString &hint, QWidget *field);

/// The word under everything else: how the last action ended. Said to screen readers too.
class MessageLine final : public QLabel {
public:
    explicit MessageLine(QWidget *parent);

    /// Empty: nothing is to be said.
    void say(const QString &text, bool isError);
};

} // namespace KODMS::Services
