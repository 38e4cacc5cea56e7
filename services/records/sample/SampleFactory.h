// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/sample/SampleFlow.h"
#include "services/records/sample/SampleRandom.h"

namespace KODMS::Services {

/// Thinks up flows, oldest first. 97 % are finished; the rest, among the newest,
/// stands at every other point of a job's life. The same plan gives the same flows.
class SampleFactory {
public:
    struct Plan {
        int flows = 0;
        quint32 seed = 0;
        int lastFlowId = 0; ///< ids go on from here
        int lastFileId = 0;
        int flowsWithBodies = 0;      ///< the newest; their files are in the store
        QVector<SampleUser> accounts; ///< people who can sign in: the open work is theirs
        QVector<SampleUser> staff;    ///< everybody, accounts included
        QVector<SampleCustomer> customers;
    };

    explicit SampleFactory(Plan plan);

    SampleFlow next();

private:
    struct Pair {
        int status;
        int flag;
    };

    Pair stateOf(int number);
    void setFile(SampleFlow &flow, Pair state);
    void setState(SampleFlow &flow, Pair state);
    void setPeople(SampleFlow &flow, bool isOpen);
    void setTexts(SampleFlow &flow);
    void addImport(SampleFlow &flow);
    void addResult(SampleFlow &flow);
    void addQuestions(SampleFlow &flow, bool isOpen);
    SampleFile makeFile(const SampleFlow &flow, int kind, const QString &type, qint64 time);
    QString after(int minutes);

    Plan m_plan;
    SampleRandom m_random;
    int m_made = 0;
    int m_open = 0;
    int m_openMade = 0;
    qint64 m_time = 0;
};

} // namespace KODMS::Services
