// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QToolButton>

namespace KODMS::Host {

/// Says in the status bar how many records others have changed since the desks were last
/// read; a click asks for a refresh. Not to be seen while there are none.
class ChangesField : public QToolButton {
    Q_OBJECT

public:
    explicit ChangesField(QWidget *parent);

private:
    void showCount(int records);
};

} // namespace KODMS::Host
