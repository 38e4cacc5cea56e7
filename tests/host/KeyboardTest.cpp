// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/AboutBox.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/IntakeDialog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/ShortcutsBox.h"
#include "apps/desk/SignInWindow.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "foundation/ui/DMS_Import_Widget.h"
#include "foundation/ui/DMS_JobCheck_Widget.h"
#include "services/api/SampleData.h"
#include "services/api/SignIn.h"
#include "services/notices/Progress.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QSet>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QTimer>

#include <algorithm>
#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::SignIn;

/// Whoever works without a mouse or without eyes.
class KeyboardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void everyControlHasAName_data();
    void everyControlHasAName();
    void everyControlOfTheOtherWindowsHasAName();
    void tabReachesEveryControl_data();
    void tabReachesEveryControl();
    void ctrlFGoesToTheSearch();
    void theMenusKeysWorkInAFieldThatTakesThem_data();
    void theMenusKeysWorkInAFieldThatTakesThem();
    void everyMenuAndActionHasItsLetter();
    void noKeyIsGivenTwice();
    void helpListsEveryKey();
    void enterShowsTheQuestions();
    void aKeySortsByTheCurrentColumn_data();
    void aKeySortsByTheCurrentColumn();

private:
    void openAs(const QString &role);

    template <typename Control> Control *shown(const char *name) const
    {
        const QTabWidget *tabs = m_window->findChild<QTabWidget *>(QStringLiteral("deskTabs"));
        const QWidget *desk = tabs->currentWidget();
        return desk->findChild<Control *>(QLatin1String(name));
    }

    QTemporaryDir m_dir;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<NoticeLog> m_notices;
    std::unique_ptr<HandOverLog> m_handOvers;
    std::unique_ptr<MainWindow> m_window;
};

namespace {

/// A field that claims every key for itself, as a platform's editing keys may.
class KeyTaker : public QLineEdit {
public:
    QStringList taken;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::ShortcutOverride)
            return QLineEdit::event(event);
        const auto *key = static_cast<QKeyEvent *>(event);
        taken << QKeySequence(static_cast<int>(key->modifiers()) | key->key()).toString();
        event->accept();
        return true;
    }
};

bool isInteractive(const QWidget &widget)
{
    if (qobject_cast<const QHeaderView *>(&widget) ||
        widget.objectName().startsWith(QLatin1String("qt_")))
        return false; // parts of another control
    const QWidget *parent = widget.parentWidget();
    if (parent &&
        (qobject_cast<const QComboBox *>(parent) || qobject_cast<const QTabBar *>(parent) ||
         qobject_cast<const QLineEdit *>(parent) || qobject_cast<const QMenuBar *>(parent) ||
         parent->inherits("QComboBoxPrivateContainer") || parent->inherits("QDockWidget")))
        return qobject_cast<const QAbstractItemView *>(&widget) && parent->inherits("QDockWidget");
    return qobject_cast<const QAbstractButton *>(&widget) ||
           qobject_cast<const QLineEdit *>(&widget) || qobject_cast<const QComboBox *>(&widget) ||
           qobject_cast<const QAbstractItemView *>(&widget) ||
           qobject_cast<const QTextEdit *>(&widget) ||
           qobject_cast<const QPlainTextEdit *>(&widget) || qobject_cast<const QTabBar *>(&widget);
}

/// The controls that a screen reader would call nothing at all.
QStringList nameless(const QWidget &root, int *controls)
{
    QStringList found;
    const auto widgets = root.findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (!isInteractive(*widget))
            continue;
        ++*controls;
        QAccessibleInterface *face = QAccessible::queryAccessibleInterface(widget);
        if (!face || face->text(QAccessible::Name).trimmed().isEmpty())
            found << QString::fromLatin1(widget->metaObject()->className()) + QLatin1Char(' ') +
                         widget->objectName();
    }
    return found;
}

void rolesAndDesks()
{
    QTest::addColumn<QString>("role");
    for (const char *role :
         {"admin", "test-admin", "pre-process", "check-authority", "show-company-name",
          "orig-file-update", "pre-check-assign", "orig-file-assign", ""})
        QTest::newRow(*role ? role : "ordinary user") << QString::fromLatin1(role);
}

} // namespace

void KeyboardTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    KODMS::Services::NoProgress progress;
    KODMS::Services::SampleRequest request;
    request.flows = 100;
    QVERIFY(KODMS::Services::SampleData::generate(request, progress).ok);
    m_preferences = std::make_unique<Preferences>(m_dir.filePath(QStringLiteral("desk.ini")));
}

void KeyboardTest::init()
{
    m_notices = std::make_unique<NoticeLog>();
    m_handOvers = std::make_unique<HandOverLog>();
}

void KeyboardTest::cleanup()
{
    m_window.reset();
    SignIn::signOut();
}

void KeyboardTest::openAs(const QString &role)
{
    QVERIFY(m_installation->signIn(role));
    m_window = std::make_unique<MainWindow>(*m_preferences, *m_notices, *m_handOvers);
    m_window->showNotices();
    m_window->showHandOvers();
    m_window->showHistory();
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void KeyboardTest::everyControlHasAName_data()
{
    rolesAndDesks();
}

void KeyboardTest::everyControlHasAName()
{
    QFETCH(QString, role);
    openAs(role);
    auto *tabs = m_window->findChild<QTabWidget *>(QStringLiteral("deskTabs"));
    for (int desk = 0; desk < tabs->count(); ++desk)
        tabs->setCurrentIndex(desk);
    int controls = 0;
    const QStringList found = nameless(*m_window, &controls);
    QVERIFY2(found.isEmpty(), qPrintable(found.join(QStringLiteral("; "))));
    QVERIFY(controls > 30);
}

void KeyboardTest::everyControlOfTheOtherWindowsHasAName()
{
    openAs(QStringLiteral("admin"));
    SignInWindow signIn;
    IntakeDialog intake(m_window.get());
    AboutBox about(m_window.get());
    ShortcutsBox keys(*m_window);
    KODMS::UI::DMS_ModifyFile_Widget modify(m_window.get());
    modify.setWindowFlag(Qt::Window);
    KODMS::UI::DMS_Import_Widget import(m_window.get());
    KODMS::UI::DMS_JobCheck_Widget raise(1, false, m_window.get());
    KODMS::UI::DMS_JobCheck_Widget answer(1, true, m_window.get());
    for (QWidget *window : {static_cast<QWidget *>(&signIn), static_cast<QWidget *>(&import),
                            static_cast<QWidget *>(&raise), static_cast<QWidget *>(&answer),
                            static_cast<QWidget *>(&intake), static_cast<QWidget *>(&about),
                            static_cast<QWidget *>(&keys), static_cast<QWidget *>(&modify)}) {
        window->show();
        int controls = 0;
        const QStringList found = nameless(*window, &controls);
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QStringLiteral("; "))));
        QVERIFY(controls > 0);
    }
}

void KeyboardTest::tabReachesEveryControl_data()
{
    rolesAndDesks();
}

/// From the first search field on, until the field comes round again.
void KeyboardTest::tabReachesEveryControl()
{
    QFETCH(QString, role);
    openAs(role);
    for (int desk = 0; desk < 2; ++desk) {
        m_window->showDesk(desk);
        QSet<QWidget *> reached;
        for (int step = 0; step < 200; ++step) {
            QWidget *at = QApplication::focusWidget();
            QVERIFY(at);
            if (reached.contains(at))
                break;
            reached << at;
            QTest::keyClick(at, Qt::Key_Tab);
        }
        const auto buttons = m_window->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            const bool isOffered = button->isVisible() && button->isEnabled() &&
                                   isInteractive(*button) &&
                                   !qobject_cast<QTableView *>(button->parentWidget()) &&
                                   button->objectName() != QLatin1String("noticeCount"); // F8
            QVERIFY2(!isOffered || reached.contains(button), qPrintable(button->text()));
        }
        QVERIFY(reached.contains(shown<QTableWidget>("m_pJobTableWidget")));
    }
}

void KeyboardTest::ctrlFGoesToTheSearch()
{
    openAs(QStringLiteral("admin"));
    shown<QTableWidget>("m_pJobTableWidget")->setFocus();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), shown<QLineEdit>("m_pJobFilterLE"));
    shown<QLineEdit>("m_pJobFilterLE")->setText(QStringLiteral("A1"));
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(shown<QLineEdit>("m_pJobFilterLE")->selectedText(), QStringLiteral("A1"));
    QTest::keyClick(m_window.get(), Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), shown<QLineEdit>("m_pFilterLE"));
    shown<QTableWidget>("m_pJobTableWidget")->setFocus();
    QTest::keyClick(m_window.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), shown<QLineEdit>("m_pFilterLE"));
    QTest::keyClick(m_window.get(), Qt::Key_1, Qt::ControlModifier);
    QCOMPARE(QApplication::focusWidget(), shown<QLineEdit>("m_pJobFilterLE"));
}

void KeyboardTest::theMenusKeysWorkInAFieldThatTakesThem_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("export the list") << QStringLiteral("exportAction");
    QTest::newRow("switch the user") << QStringLiteral("switchUserAction");
    QTest::newRow("the shortcuts") << QStringLiteral("shortcutsAction");
    QTest::newRow("the history") << QStringLiteral("historyAction");
}

/// On some platforms a field's own editing keys are among those of the menus.
void KeyboardTest::theMenusKeysWorkInAFieldThatTakesThem()
{
    QFETCH(QString, action);
    openAs(QStringLiteral("admin"));
    auto *menuAction = m_window->findChild<QAction *>(action);
    const QKeySequence keys = menuAction->shortcut();
    menuAction->disconnect(m_window.get()); // what it does is another test's
    const QSignalSpy triggered(menuAction, &QAction::triggered);
    KeyTaker field;
    field.setParent(m_window->centralWidget());
    field.show();
    field.setFocus();
    const int key = keys[0];
    QTest::keyClick(&field, static_cast<Qt::Key>(key & ~Qt::KeyboardModifierMask),
                    static_cast<Qt::KeyboardModifiers>(key & Qt::KeyboardModifierMask));
    QCOMPARE(triggered.size(), 1);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier); // no menu's: the field keeps it
    QVERIFY(!field.taken.contains(keys.toString()));
    QVERIFY(field.taken.contains(QStringLiteral("Ctrl+A")));
}

void KeyboardTest::everyMenuAndActionHasItsLetter()
{
    openAs(QStringLiteral("admin"));
    const auto menus = m_window->menuBar()->actions();
    QCOMPARE(menus.size(), 3);
    for (const QAction *menu : menus) {
        QVERIFY2(menu->text().contains(QLatin1Char('&')), qPrintable(menu->text()));
        QStringList letters;
        const auto actions = menu->menu()->actions();
        for (const QAction *action : actions) {
            if (action->isSeparator())
                continue;
            const int at = action->text().indexOf(QLatin1Char('&'));
            QVERIFY2(at >= 0, qPrintable(action->text()));
            const QString letter = action->text().mid(at + 1, 1).toUpper();
            QVERIFY2(!letters.contains(letter), qPrintable(action->text()));
            letters << letter;
        }
    }
}

void KeyboardTest::noKeyIsGivenTwice()
{
    openAs(QStringLiteral("admin"));
    QStringList keys;
    const auto actions = m_window->findChildren<QAction *>();
    for (const QAction *action : actions) {
        if (action->shortcut().isEmpty() || action->shortcutContext() != Qt::WindowShortcut)
            continue;
        QVERIFY2(!keys.contains(action->shortcut().toString()), qPrintable(action->text()));
        keys << action->shortcut().toString();
    }
    QVERIFY(keys.contains(QStringLiteral("F5")));
    QVERIFY(keys.contains(QStringLiteral("Ctrl+F")));
}

void KeyboardTest::helpListsEveryKey()
{
    openAs(QStringLiteral("admin"));
    QStringList labels;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&labels, &watch] {
        QWidget *box = QApplication::activeModalWidget();
        if (!box)
            return;
        watch.stop();
        const auto all = box->findChildren<QLabel *>();
        for (const QLabel *label : all)
            labels << label->text();
        box->close();
    });
    watch.start(20);
    QTest::keyClick(m_window.get(), Qt::Key_K, Qt::ControlModifier);
    const auto actions = m_window->findChildren<QAction *>();
    for (const QAction *action : actions) {
        const QString key = action->shortcut().toString(QKeySequence::NativeText);
        const bool isTold = key.isEmpty() || action->text().isEmpty() || labels.contains(key);
        QVERIFY2(isTold, qPrintable(key));
    }
    QVERIFY(labels.contains(QStringLiteral("接收客户文件")));
    QVERIFY(labels.contains(QStringLiteral("表格中按 F2"))); // what only a table knows
}

void KeyboardTest::enterShowsTheQuestions()
{
    openAs(QStringLiteral("admin"));
    m_window->showDesk(0);
    auto *jobs = shown<QTableWidget>("m_pJobTableWidget");
    const auto *questions = shown<QTableWidget>("m_pQuestionTableWidget");
    int row = 0;
    for (; row < jobs->rowCount() && questions->rowCount() == 0; ++row) {
        jobs->setCurrentCell(row, 1);
        QTest::keyClick(jobs, Qt::Key_Return);
    }
    QVERIFY(questions->rowCount() > 0);
}

void KeyboardTest::aKeySortsByTheCurrentColumn_data()
{
    QTest::addColumn<int>("desk");
    QTest::addColumn<int>("column");
    QTest::newRow("job flows by name") << 0 << 1;
    QTest::newRow("job flows by remark") << 0 << 12;
    QTest::newRow("original files by serial number") << 1 << 4;
}

/// As a click on the column's title does: up, then down.
void KeyboardTest::aKeySortsByTheCurrentColumn()
{
    QFETCH(int, desk);
    QFETCH(int, column);
    openAs(QStringLiteral("admin"));
    m_window->showDesk(desk);
    auto *table = shown<QTableWidget>("m_pJobTableWidget");
    const auto texts = [table, column] {
        QStringList cells;
        for (int row = 0; row < table->rowCount(); ++row)
            cells << table->item(row, column)->text();
        return cells;
    };
    const QStringList found = texts();
    QVERIFY(QSet<QString>(found.begin(), found.end()).size() > 2);
    table->setCurrentItem(nullptr);
    QTest::keyClick(m_window.get(), Qt::Key_F6);
    QCOMPARE(texts(), found); // no column, no order
    table->setCurrentCell(3, column);
    QStringList sorted = found;
    std::sort(sorted.begin(), sorted.end());
    QTest::keyClick(m_window.get(), Qt::Key_F6);
    QCOMPARE(texts(), sorted);
    std::reverse(sorted.begin(), sorted.end());
    QTest::keyClick(m_window.get(), Qt::Key_F6);
    QCOMPARE(texts(), sorted);
}

KODMS_TEST_MAIN(KeyboardTest, QApplication)
#include "KeyboardTest.moc"
