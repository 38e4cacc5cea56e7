// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QLineEdit;
class QPushButton;
class QSpacerItem;
class QString;
class QTableWidget;
class QWidget;

namespace KODMS::UI {

// The controls that both desks are built of. `name` becomes the object name.

/// A stretch: takes whatever width is left over.
QSpacerItem *makeSpacer(int width, int height);

/// A search field that says what may be typed.
QLineEdit *makeFilter(const char *name, const char *hint, QWidget *parent);

/// A button with one of the shared style sheets.
QPushButton *makeButton(const char *name, const QString &caption, const QString &style,
                        QWidget *parent);

/// A table in the shared look, every second row shaded.
QTableWidget *makeTable(const char *name, QWidget *parent);

} // namespace KODMS::UI
