// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace KODMS::Host {

class NoticeLog;

/// Stands where a host with a CAM system would start it: what the desks hand over
/// is written into the notices, so that nobody waits for a job that went nowhere.
class CamRelay : public QObject {
    Q_OBJECT

public:
    explicit CamRelay(NoticeLog &log);

private Q_SLOTS:
    void importRequested(const QString &path, const QString &jobName);
    void inputRequested(const QString &jobName, const QString &path);
    void exportRequested(const QString &jobName, int jobId);

private:
    NoticeLog &m_log;
};

} // namespace KODMS::Host
