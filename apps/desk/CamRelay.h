// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

namespace KODMS::Host {

class HandOverLog;
class NoticeLog;

/// Stands where a host with a CAM system would start it: what the desks hand over
/// is listed for the CAM side and said in the notices, so that nobody waits for a job
/// that went nowhere.
class CamRelay : public QObject {
    Q_OBJECT

public:
    CamRelay(NoticeLog &notices, HandOverLog &handOvers);

private Q_SLOTS:
    void importRequested(const QString &path, const QString &jobName);
    void inputRequested(const QString &jobName, const QString &path);
    void exportRequested(const QString &jobName, int jobId);

private:
    NoticeLog &m_notices;
    HandOverLog &m_handOvers;
};

} // namespace KODMS::Host
