// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/OdbJob.h"

#include <QByteArray>

#include <utility>

namespace KODMS::Services {

/// What a made-up ODB++ job is to look like.
struct SampleJobPlan {
    QString name = QStringLiteral("board");
    QStringList steps{QStringLiteral("pcb")};
    QVector<OdbLayer> layers; ///< see SampleJob::boardLayers()
    int featuresPerLayer = 50;
    quint32 seed = 1;
    QByteArray lineEnd = QByteArrayLiteral("\n");
};

struct SampleJobFile {
    QString path; ///< the job's folder first
    QByteArray content;
};

/// A made-up job, the same for the same plan, that looks like one from a CAM system:
/// matrix, step headers, features of every kind, symbols and attributes.
class SampleJob {
public:
    explicit SampleJob(SampleJobPlan plan) : m_plan(std::move(plan)) {}

    /// The rows of a board with so many copper layers.
    static QVector<OdbLayer> boardLayers(int copper);

    QVector<SampleJobFile> files() const;

    /// Of all layers of all steps.
    qint64 featureCount() const;

    QByteArray matrix() const;
    /// The features of one layer of one step.
    QByteArray features(int step, int layer) const;

private:
    QByteArray withLineEnds(QByteArray text) const;

    SampleJobPlan m_plan;
};

} // namespace KODMS::Services
