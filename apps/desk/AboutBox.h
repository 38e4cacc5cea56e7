// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class QFormLayout;

namespace KODMS::Host {

/// Versions, the installation and the licences.
class AboutBox : public QDialog {
    Q_OBJECT

public:
    explicit AboutBox(QWidget *parent = nullptr);

    /// Everything that the box says, as lines for a support request.
    static QString plainText();

private:
    void addRows(QFormLayout &form);
};

} // namespace KODMS::Host
