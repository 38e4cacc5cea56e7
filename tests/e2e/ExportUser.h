// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/export/DMS_Export_Widget.h"
#include "tests/e2e/DeskUser.h"

namespace KODMS::Tests {

/// Somebody at a job-flow desk.
class ExportUser : public DeskUser {
public:
    enum Column {
        Id = 0,
        JobName = 1,
        Status = 6,
        FlowGuid = 8,
        PreProcessor = 9,
        PreChecker = 10,
        Remark = 12
    };

    ExportUser() : DeskUser(std::make_unique<UI::DMS_Export_Widget>(nullptr)) {}
};

} // namespace KODMS::Tests
