// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/HostUser.h"

#include "apps/desk/HistoryLog.h"
#include "apps/desk/MainWindow.h"
#include "tests/e2e/ExportUser.h"
#include "tests/e2e/life/LifeHouse.h"

#include <QApplication>
#include <QDialog>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 60000;

} // namespace

HostUser::HostUser(LifeHouse &house, const Services::NewUser &person)
    : m_house(house), m_person(person), m_window(house.enter(person))
{
}

void HostUser::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    m_house.enter(m_person); // other windows may be in front
    QTest::keyClick(&m_window, key, modifiers);
}

DeskUser HostUser::desk(Qt::Key key) const
{
    press(key, Qt::ControlModifier);
    press(Qt::Key_F5);
    QCoreApplication::processEvents();
    auto *tabs = m_window.findChild<QTabWidget *>(QStringLiteral("deskTabs"));
    return DeskUser(*tabs->currentWidget());
}

DeskUser HostUser::jobFlows() const
{
    return desk(Qt::Key_1);
}

DeskUser HostUser::origFiles() const
{
    return desk(Qt::Key_2);
}

void HostUser::pressAndAnswer(Qt::Key key, Qt::KeyboardModifiers modifiers,
                              const std::function<void(QDialog &)> &answer) const
{
    actAndAnswer([&] { press(key, modifiers); }, answer);
}

QVector<ToldDeed> HostUser::history(const DeskUser &jobFlows, int row) const
{
    jobFlows.clickCell(row, ExportUser::JobName);
    const QString job = jobFlows.column(ExportUser::JobName).at(row);
    auto *title = m_window.findChild<QLabel *>(QStringLiteral("historyTitle"));
    if (!title->isVisible()) // it comes back for a user who left it open
        press(Qt::Key_F7);
    if (!QTest::qWaitFor([&] { return title->text().contains(job); }, PatienceMs))
        qFatal("the history of %s does not come", qPrintable(job));
    auto *older = m_window.findChild<QPushButton *>(QStringLiteral("olderHistory"));
    while (older->isEnabled())
        QTest::mouseClick(older, Qt::LeftButton);
    const auto *model = m_window.findChild<QTableView *>(QStringLiteral("history"))->model();
    QVector<ToldDeed> deeds;
    for (int entry = model->rowCount() - 1; entry >= 0; --entry) {
        const auto text = [model, entry](int column) {
            return model->index(entry, column).data().toString();
        };
        deeds.append({text(Host::HistoryLog::TimeColumn), text(Host::HistoryLog::WhoColumn),
                      text(Host::HistoryLog::ActionColumn), text(Host::HistoryLog::ContentColumn)});
    }
    return deeds;
}

void actAndAnswer(const std::function<void()> &act, const std::function<void(QDialog &)> &answer)
{
    QTimer watch;
    bool isAnswered = false;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || isAnswered)
            return;
        isAnswered = true;
        answer(*dialog);
    });
    watch.start(10);
    act();
    if (!QTest::qWaitFor([&] { return isAnswered; }, PatienceMs))
        qFatal("no dialog came up");
}

void chooseFile(QDialog &dialog, const QString &path)
{
    auto *name = dialog.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    if (!name)
        qFatal("%s asks for no file", qPrintable(dialog.windowTitle()));
    name->setText(path);
    QTest::keyClick(name, Qt::Key_Return);
}

void commitText(QWidget &field, const QString &text)
{
    field.setFocus();
    QInputMethodEvent event;
    event.setCommitString(text);
    QApplication::sendEvent(&field, &event);
}

} // namespace KODMS::Tests
