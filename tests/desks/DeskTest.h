// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/export/DMS_Export_Widget.h"
#include "tests/fakes/FakeServices.h"

#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>

#include <initializer_list>
#include <memory>

namespace KODMS::Tests {

using Fakes::FakeServices;
using Fakes::Right;

/// The fields of a flow that tests tell apart; everything else is empty.
DataLib::Model::Odbpp_Flow_View someFlow(int id);

/// The flow view answers as a database of `total` flows would, with ids from 1
/// on, in order: the page that the condition list asks for.
void answerWithFlows(int total);

/// A job-flow desk for a user with these rights, shown in a window of its own.
std::unique_ptr<UI::DMS_Export_Widget> makeDesk(std::initializer_list<Right> rights = {});

/// A control or layout of the desk by its member name; null when the desk has none.
template <typename Control = QWidget> Control *control(const QObject &desk, const char *name)
{
    return desk.findChild<Control *>(QLatin1String(name));
}

inline QTableWidget *jobTable(const QObject &desk)
{
    return control<QTableWidget>(desk, "m_pJobTableWidget");
}

inline QTableWidget *questionTable(const QObject &desk)
{
    return control<QTableWidget>(desk, "m_pQuestionTableWidget");
}

/// The texts of a column of the job table, top to bottom.
QStringList columnTexts(const QTableWidget *table, int column);

/// How many times the flow view has been asked.
int searches();

/// The two condition lists of search number `index`; -1 is the last one.
Fakes::ConditionList conditions(int index = -1);
Fakes::ConditionList countConditions(int index = -1);

/// Rights by name, for data rows.
QString rightName(Right right);

} // namespace KODMS::Tests

Q_DECLARE_METATYPE(QVector<KODMS::Fakes::Right>)
