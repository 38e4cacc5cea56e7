// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

namespace KODMS::Services {

struct SampleUser {
    int id = 0;
    QString realName;
};

struct SampleCustomer {
    int id = 0;
    QString code;
    int lastSerial = 0;
};

/// A stored file of a generated flow. kind: 0 original, 1 imported job, 2 result.
struct SampleFile {
    int id = 0;
    QString guid;
    QString baseName;
    QString storedName;
    QString fileType;
    QString customerCode;
    int kind = 0;
    int userId = 0;
    QString createTime;
};

struct SampleQuestion {
    QString title;
    QString description;
    int checkFlag = 0;
    int creator = 0;
    QString createTime;
};

/// One generated flow with all that belongs to it. Ids of 0 and empty times: none.
struct SampleFlow {
    int id = 0;
    int customerId = 0;
    QString customerCode;
    int serialNumber = 0;
    QString jobName;
    QString guid;
    QString origName;
    QString description;
    QString sourceTips;
    QString remark;
    QString origJobName;
    int layerCount = 0;
    int featureCount = 0;
    int flowStatus = 0;
    int checkFlag = 0;
    int batchNumber = 0;
    QString fileType;
    int payment = 0;
    int creator = 0;
    int executor = 0;
    int checker = 0;
    int importer = 0;
    int reviewer = 0;
    int robotReviewer = 0;
    int origFileId = 0;
    int importFileId = 0;
    int resultFileId = 0;
    QString createTime;
    QString assignTime;
    QString importTime;
    QString checkTime;
    QString robotCheckTime;
    bool hasBodies = false; ///< its files are in the store
    QVector<SampleFile> files;
    QVector<SampleQuestion> questions;
};

} // namespace KODMS::Services
