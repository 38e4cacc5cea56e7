// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/desk/BenchInstallation.h"
#include "bench/search/Stopwatch.h"

#include <QString>
#include <QVector>

namespace KODMS::Bench {

/// One row of the table.
struct Measured {
    QString name;
    QString goal;
    Stopwatch watch = {};
    Stopwatch search = {}; ///< keystrokes: the search and the fill alone, once more
    double ratio = 0;      ///< of two things measured side by side; 0: there is no other thing
};

/// `count` desks built one after the other, first page included; then the same,
/// shown and painted.
QVector<Measured> measureBuilding(int count);

/// A page of 30 rows of 18 cells put into the table by the page bar, beside a
/// bare loop of setItem over the same texts, taking turns.
Measured measureFilling(int count);

/// Parts of the job names, of `length` letters and all different, that the
/// signed-in user's own desk shows on its pages; `count` at most.
QStringList termsOnDesk(int count, int length);

/// From the last key of each term to the repainted table. Terms go into the
/// field `edit` of a desk for the signed-in user.
Measured measureKeystrokes(const QString &name, const char *edit, const QStringList &terms);

/// `count` cold starts of the host: from the start of the process to the usable
/// sign-in window, as the host itself tells. Empty when there is no host program.
QVector<Measured> measureHostStart(const QString &program, const QString &configPath, int count);

} // namespace KODMS::Bench
