// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/odbpp/LineSplitter.h"
#include "services/odbpp/RecordFields.h"

namespace KODMS::Services {

/// Counts the features of one layer: lines, pads, arcs, texts, barcodes and surfaces,
/// each one feature. Format: "ODB++ Format Specification", version 8.1, line record
/// text and the file "features"; version 7 writes the same records. Every record is
/// looked at as far as its place and size go; symbols and attributes are skipped.
class FeatureReader final : public LineReader {
public:
    bool line(std::string_view text) override;
    bool end() override;

    qint64 count() const { return m_count; }

private:
    enum class Place { Outside, InSurface, InContour };

    bool header(std::string_view name, RecordFields &fields);
    bool declaredCount(RecordFields &fields);
    bool feature(char kind, RecordFields &fields);
    bool pad(RecordFields &fields);
    bool surfaceRecord(std::string_view name, RecordFields &fields);
    bool beginContour(RecordFields &fields);

    bool coordinates(RecordFields &fields, int number);
    bool integer(RecordFields &fields, int smallest, int &value);
    bool symbol(RecordFields &fields);
    bool polarity(RecordFields &fields);
    bool text(RecordFields &fields);
    bool oneOf(RecordFields &fields, std::string_view letters);
    bool badField(FieldFault fault, std::string_view field);
    bool unknown(std::string_view name);

    qint64 m_count = 0;
    qint64 m_declared = -1;
    Place m_place = Place::Outside;
};

} // namespace KODMS::Services
