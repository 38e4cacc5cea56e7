// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

#include <string>

namespace KODMS::Services {

/// Writes a file of made-up features: lines, pads, arcs, texts, barcodes, surfaces.
class SampleFeatures {
public:
    explicit SampleFeatures(quint32 seed) : m_state(seed * 2654435761U + 1) {}

    /// The whole file, with header and tables.
    QByteArray text(int count);

private:
    quint32 next(quint32 below);

    void put(const char *text) { m_text += text; }

    void putHeader(int count);
    void putCoordinates(int number);
    void putSymbol();
    void putPolarity();
    void endRecord(const char *rest);
    void putFeature();
    void putSurface();
    void putContour(const char *kind);

    quint32 m_state;
    std::string m_text;
};

} // namespace KODMS::Services
