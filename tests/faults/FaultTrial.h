// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/faults/FaultHouse.h"
#include "tests/faults/FaultPlan.h"
#include "tests/faults/FaultedOperation.h"

#include <QSet>
#include <QVector>

namespace KODMS::Tests {

/// Carries one operation out again and again from the same beginning, each time with one
/// fault, and looks at what became of it.
class FaultTrial {
public:
    /// Carries it out once without a fault, to know how it goes.
    explicit FaultTrial(const FaultedOperation &operation);

    struct Result {
        bool wasHit = false;  ///< else the operation has fewer steps
        QStringList problems; ///< each a sentence; none: as it should be
    };

    Result run(FaultLayer layer, FaultKind kind, int step);

    /// What is wrong with the operation as it goes without a fault.
    const QStringList &problems() const { return m_problems; }

    /// How many calls of the layer the operation makes.
    int steps(FaultLayer layer) const
    {
        return layer == FaultLayer::Records ? m_statements : m_storeCalls;
    }

    /// The steps of the records after which more is on the disk.
    const QVector<int> &commits() const { return m_commits; }

private:
    struct Said {
        QStringList logged; ///< warnings
        int notices = 0;    ///< warnings and errors
        QString escaped;    ///< an exception that nobody caught
        bool deskIsGone = false;
    };

    Said carryOut(FaultLayer layer, FaultKind kind, int step);
    void addState();
    Said carryOut();
    static void act(const Scene &scene, Said &said);
    void learn();
    bool isAnsweredByStatements(const Said &said) const;
    void checkSaid(const Said &said, QStringList &problems) const;
    void checkRecords(QStringList &problems) const;
    void checkStore(QStringList &problems);
    void checkTemporaryFiles(QStringList &problems) const;
    void checkOnceMore(QStringList &problems);

    const FaultedOperation &m_operation;
    FaultHouse m_house;
    QSet<QString> m_states; ///< the records before, after, and after each commit between
    QStringList m_deeds;    ///< that are added when all goes well
    QStringList m_deedsBefore;
    QString m_essence;
    QStringList m_problems;
    QVector<int> m_commits;
    int m_statements = 0;
    int m_storeCalls = 0;
};

} // namespace KODMS::Tests
