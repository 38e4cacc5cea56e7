// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/sample/SampleJob.h"

#include "services/odbpp/sample/SampleFeatures.h"

namespace KODMS::Services {

namespace {

constexpr quint32 StepStride = 7919;
constexpr quint32 LayerStride = 104729;

OdbLayer layer(int row, const QString &name, const char *type, const char *polarity = "POSITIVE")
{
    return {row, name, QStringLiteral("BOARD"), QString::fromLatin1(type),
            QString::fromLatin1(polarity)};
}

/// Components have a file of their own.
bool hasFeatures(const OdbLayer &row)
{
    return row.type != QLatin1String("COMPONENT");
}

} // namespace

QVector<OdbLayer> SampleJob::boardLayers(int copper)
{
    QVector<OdbLayer> layers;
    int row = 0;
    layers << layer(++row, QStringLiteral("comp_+_top"), "COMPONENT");
    layers << layer(++row, QStringLiteral("sst"), "SILK_SCREEN");
    layers << layer(++row, QStringLiteral("smt"), "SOLDER_MASK");
    for (int i = 1; i <= copper; ++i) {
        const bool isOuter = i == 1 || i == copper;
        const QString name = QStringLiteral("l%1").arg(i);
        layers << (isOuter || i % 2 == 0
                       ? layer(++row, name, "SIGNAL")
                       : layer(++row, name, i % 3 == 0 ? "POWER_GROUND" : "MIXED", "NEGATIVE"));
    }
    layers << layer(++row, QStringLiteral("smb"), "SOLDER_MASK");
    layers << layer(++row, QStringLiteral("drill"), "DRILL");
    layers << layer(++row, QStringLiteral("notes"), "DOCUMENT");
    layers.last().context = QStringLiteral("MISC");
    return layers;
}

QByteArray SampleJob::withLineEnds(QByteArray text) const
{
    return m_plan.lineEnd == "\n" ? text : text.replace("\n", m_plan.lineEnd);
}

QByteArray SampleJob::matrix() const
{
    QByteArray text;
    for (int i = 0; i < m_plan.steps.size(); ++i)
        text += "STEP {\n   COL=" + QByteArray::number(i + 1) +
                "\n   NAME=" + m_plan.steps[i].toUtf8() + "\n}\n";
    for (const OdbLayer &row : m_plan.layers)
        text += "\nLAYER {\n   ROW=" + QByteArray::number(row.row) +
                "\n   CONTEXT=" + row.context.toLatin1() + "\n   TYPE=" + row.type.toLatin1() +
                "\n   NAME=" + row.name.toUtf8() + "\n   POLARITY=" + row.polarity.toLatin1() +
                "\n   START_NAME=\n   END_NAME=\n   OLD_NAME=\n}\n";
    return withLineEnds(text);
}

QByteArray SampleJob::features(int step, int layer) const
{
    const quint32 seed = m_plan.seed + static_cast<quint32>(step) * StepStride +
                         static_cast<quint32>(layer) * LayerStride;
    return withLineEnds(SampleFeatures(seed).text(m_plan.featuresPerLayer));
}

qint64 SampleJob::featureCount() const
{
    qint64 layers = 0;
    for (const OdbLayer &row : m_plan.layers)
        layers += hasFeatures(row) ? 1 : 0;
    return layers * m_plan.steps.size() * m_plan.featuresPerLayer;
}

QVector<SampleJobFile> SampleJob::files() const
{
    const QString root = m_plan.name + QLatin1Char('/');
    QVector<SampleJobFile> files;
    files.append({root + QStringLiteral("matrix/matrix"), matrix()});
    files.append({root + QStringLiteral("misc/info"),
                  withLineEnds("JOB_NAME=" + m_plan.name.toUtf8() + "\nUNITS=INCH\n")});
    for (int s = 0; s < m_plan.steps.size(); ++s) {
        const QString step = root + QStringLiteral("steps/") + m_plan.steps[s] + QLatin1Char('/');
        files.append({step + QStringLiteral("stephdr"),
                      withLineEnds("X_DATUM=0\nY_DATUM=0\nX_ORIGIN=0\nY_ORIGIN=0\n")});
        for (int i = 0; i < m_plan.layers.size(); ++i) {
            const QString folder =
                step + QStringLiteral("layers/") + m_plan.layers[i].name + QLatin1Char('/');
            if (hasFeatures(m_plan.layers[i]))
                files.append({folder + QStringLiteral("features"), features(s, i)});
            else
                files.append({folder + QStringLiteral("components"),
                              withLineEnds("# components\nCMP 0 1.0 1.0 0 N U1 part\n")});
            files.append({folder + QStringLiteral("attrlist"), withLineEnds("UNITS=INCH\n")});
        }
    }
    files.append({root + QStringLiteral("symbols/logo/features"),
                  withLineEnds("not read: a symbol is no layer\n")});
    return files;
}

} // namespace KODMS::Services
