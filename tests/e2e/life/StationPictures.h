// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

namespace KODMS::Tests {

/// Pictures of the stations of a job's life, for people to look at.
class StationPictures {
public:
    /// Draws the window into NAME.png in the folder that KODMS_STATION_PICTURES names;
    /// does nothing without it. A picture that cannot be written ends the process.
    static void take(QWidget &window, const char *name);
};

} // namespace KODMS::Tests
