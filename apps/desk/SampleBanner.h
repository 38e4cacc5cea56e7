// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QLabel>

namespace KODMS::Host {

/// The strip that says that this is a sample installation. Hidden on a real one.
class SampleBanner : public QLabel {
    Q_OBJECT

public:
    explicit SampleBanner(QWidget *parent = nullptr);
};

} // namespace KODMS::Host
