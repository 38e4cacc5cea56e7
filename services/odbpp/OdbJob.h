// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace KODMS::Services {

/// One row of a job's matrix.
struct OdbLayer {
    int row = 0;
    QString name;
    QString context;  ///< "BOARD" or "MISC"
    QString type;     ///< "SIGNAL", "POWER_GROUND", "DRILL", ...
    QString polarity; ///< "POSITIVE" or "NEGATIVE"

    /// A board layer that carries copper: what the number of layers of a board counts.
    bool isCopper() const;
};

/// What an import needs to know of an ODB++ job. Value type.
struct OdbJob {
    QString name;      ///< the job's own folder
    QStringList steps; ///< in the order of the matrix
    QVector<OdbLayer> layers;
    qint64 featureCount = 0; ///< of all layers of all steps
    qint64 files = 0;        ///< of every kind
    qint64 bytes = 0;        ///< in all these files, unpacked

    int layerCount() const;
};

} // namespace KODMS::Services
