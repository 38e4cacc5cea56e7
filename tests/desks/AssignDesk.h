// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/desks/DownloadDesk.h"

#include <QPushButton>

namespace KODMS::Tests {

/// What the assign buttons of both desks say.
struct AssignText {
    static const QString NoRight;
    static const QString SelectRow;
    static const QString Reassign;
};

/// A desk of either kind for an administrator, with rows 1 to `total` of which
/// those in `taken` have somebody, and two people to pick.
class AssignDesk {
public:
    enum class Kind { JobFlows, OrigFiles };

    /// Who clicks.
    static constexpr int Me = 9;

    explicit AssignDesk(Kind kind, int total = 4, const std::vector<int> &taken = {});

    static QString nameOf(Kind kind);

    /// A data row for each desk, in the column "kind".
    static void addBoth();

    /// What was written, in order.
    static QStringList written();

    /// The services of both desks refuse to assign.
    static void refuseAll();

    QTableWidget *table() const { return jobTable(*m_desk); }

    QWidget *widget() const { return m_desk.get(); }

    void close() { m_desk.reset(); }

    template <typename Control> Control *control(const char *name) const
    {
        return KODMS::Tests::control<Control>(*m_desk, name);
    }

    /// Selects these rows, counted from 0, and puts the cursor into `current`.
    void select(const QVector<int> &rows, int current) const;

    void press() const { QTest::mouseClick(control<QPushButton>("m_pAssignPB"), Qt::LeftButton); }

    QVector<int> selectedRows() const;

    int searches() const;

    static void refreshFromElsewhere();

    /// The line of the call that gives row `id` to the person picked.
    QString firstTime(int id, int person = 0, int user = Me) const;
    QString again(int id, int person = 0, int user = Me) const;

private:
    void answer(int total, const std::vector<int> &taken) const;

    Kind m_kind;
    std::unique_ptr<QWidget> m_desk;
};

} // namespace KODMS::Tests

Q_DECLARE_METATYPE(KODMS::Tests::AssignDesk::Kind)
