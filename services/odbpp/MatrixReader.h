// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/LineSplitter.h"
#include "services/odbpp/OdbJob.h"

#include <QSet>

namespace KODMS::Services {

/// Reads a job's matrix: which steps and which layers it has. Format: "ODB++ Format
/// Specification", version 8.1, structured text files and the file matrix/matrix;
/// version 7 writes the same records.
class MatrixReader final : public LineReader {
public:
    bool line(std::string_view text) override;
    bool end() override;

    const QStringList &steps() const { return m_steps; }

    /// In the order of their rows.
    const QVector<OdbLayer> &layers() const { return m_layers; }

private:
    enum class Block { None, Step, Layer, Other };

    bool beginBlock(std::string_view name);
    bool endBlock();
    bool setting(std::string_view key, std::string_view value);
    bool layerSetting(std::string_view key, std::string_view value);
    bool readName(std::string_view value);
    bool readRow(std::string_view value);
    bool endStep();
    bool endLayer();

    Block m_block = Block::None;
    QString m_name;
    OdbLayer m_layer;
    QStringList m_steps;
    QVector<OdbLayer> m_layers;
    QSet<QString> m_stepKeys;
    QSet<QString> m_layerKeys;
};

} // namespace KODMS::Services
