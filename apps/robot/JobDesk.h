// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "apps/robot/ConnectionRules.h"
#include "services/api/RobotWork.h"

#include <QObject>

#include <random>

namespace KODMS::Robot {

/// How the robot works.
struct WorkManner {
    int workMs = 3000;     ///< from taking a job to its result
    double failRate = 0;   ///< share of the jobs that it fails on, 0 to 1
    unsigned int seed = 0; ///< decides which
};

/// The jobs that the robot has at hand, each from its taking to its result. What the process
/// leaves undone when it ends, however it ends, stands in the records and is taken up again.
class JobDesk : public QObject {
    Q_OBJECT

public:
    explicit JobDesk(const WorkManner &manner);

    RobotAnswer take(const RobotRequest &request);

    /// Takes up what an earlier process of this account left undone.
    Services::Outcome takeUp();

    int atHand() const { return m_atHand; }

private:
    struct Task {
        Services::RobotJob job;
        bool fails = false;
        int waitMs = 0; ///< before the next try, when the delivery did not work
    };

    void begin(const Services::RobotJob &job);
    void later(const Task &task, int ms);
    void deliver(const Task &task);
    void retryOrDrop(Task task, const QString &why);
    static Services::Outcome handOver(const Task &task);
    static bool isWanted(const Services::RobotJob &job);

    WorkManner m_manner;
    std::mt19937 m_random;
    int m_atHand = 0;
};

} // namespace KODMS::Robot
