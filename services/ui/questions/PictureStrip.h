// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/ui/questions/PictureFile.h"

#include <QListWidget>

namespace KODMS::Services {

/// The pictures of a question, side by side. Return or a double click asks to see one in
/// full; Del asks to take it out where that is allowed.
class PictureStrip final : public QListWidget {
    Q_OBJECT

public:
    explicit PictureStrip(QWidget *parent);

    void add(const QImage &thumbnail, const QString &fileName);
    /// In the place of a picture that cannot be shown.
    void addBroken(const QString &fileName, const QString &why);

Q_SIGNALS:
    void openRequested(int index);
    void removeRequested(int index);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void addItem(const QIcon &icon, const QString &fileName, const QString &help);
};

} // namespace KODMS::Services
