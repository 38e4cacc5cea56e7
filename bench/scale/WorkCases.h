// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "bench/scale/CountingRelay.h"
#include "bench/scale/ScaleInstallation.h"
#include "bench/scale/ServerLoad.h"

#include <QString>

#include <functional>
#include <vector>

namespace KODMS::Bench {

/// What one piece of a desk's work costs, mean over its repetitions.
struct WorkFigure {
    QString name;
    int times = 0;
    double wallMs = 0;
    double deskMs = 0;   ///< processor time of the desk's own thread
    double serverMs = 0; ///< processor time of the server, all its processes
    double roundTrips = 0;
    double sentBytes = 0;
    double receivedBytes = 0;
};

/// The work of one desk at a database server, piece by piece.
class WorkCases {
public:
    explicit WorkCases(ScaleInstallation &installation);

    std::vector<WorkFigure> measure();

    double indexBytes() const { return m_indexBytes; }

    qint64 bytesBefore() const { return m_bytesBefore; }

    qint64 bytesAfter() const { return m_bytesAfter; }

    const ServerLoad &server() const { return m_load; }

private:
    /// What `others` do before each repetition is not counted.
    WorkFigure of(const char *name, int times, const std::function<void(int)> &work,
                  const std::function<void()> &others = {});
    void add(WorkFigure &sum, const std::function<void()> &work);

    void collectFlows();
    void search(int number);
    void remark(int number);
    WorkFigure followOthers();
    WorkFigure lookForOthers();
    static void wait(int milliseconds);

    ScaleInstallation &m_installation;
    CountingRelay m_relay;
    ServerLoad m_load;
    std::vector<std::string> m_guids;
    std::vector<std::string> m_terms;
    double m_indexBytes = 0;
    qint64 m_bytesBefore = 0;
    qint64 m_bytesAfter = 0;
};

} // namespace KODMS::Bench
