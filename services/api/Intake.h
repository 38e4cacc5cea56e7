// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"
#include "services/notices/Outcome.h"

#include <QString>

namespace KODMS::Services {

class Progress;

/// What a customer sent, and how it shall be booked.
struct IntakeRequest {
    QString path;         ///< an archive (zip, rar, tgz, tar, 7z, kos) or a folder
    QString customerCode; ///< three letters or digits; a new customer is created
    QString customerName; ///< short name of a new customer; empty: the code
    QString origName;     ///< empty: the name of the archive or folder
    QString description;
    QString tips;
    bool paid = false; ///< the order is paid already
};

struct IntakeReceipt {
    QString jobName; ///< customer code and serial number
    QString flowGuid;
    QString storedName; ///< of the file in the store
    int flowId = 0;
};

/// Takes in what a customer sent: the file is stored first, then one transaction
/// books customer, job, flow, original file, order. Needs the administrator's or
/// the original-file update right. GUI thread; long work shows progress and can be
/// cancelled. A failure leaves neither record nor file; its text is for people.
class KODMS_SERVICES_API Intake {
public:
    /// With `progress` the caller shows it; without, the service does where there
    /// are windows.
    static Result<IntakeReceipt> take(const IntakeRequest &request, Progress *progress = nullptr);
};

} // namespace KODMS::Services
