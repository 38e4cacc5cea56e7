// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace KODMS::Host {

/// Says in the status bar that the database cannot be read at the moment, also to somebody
/// who does nothing. Not to be seen while it can.
class OutageField : public QLabel {
    Q_OBJECT

public:
    explicit OutageField(QWidget *parent);
};

} // namespace KODMS::Host
