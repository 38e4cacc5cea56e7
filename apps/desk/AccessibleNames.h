// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QWidget;

namespace KODMS::Host {

/// Gives controls that have no words of their own a name that a screen reader can say:
/// those of the desks by their object names, whenever a window comes up with them.
class AccessibleNames : public QObject {
    Q_OBJECT

public:
    /// Looks at every window of the application while it lives.
    explicit AccessibleNames(QObject *parent);

    static void apply(QWidget &widget);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace KODMS::Host
