// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/ChangesField.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/LiveChanges.h"
#include "services/api/SampleData.h"
#include "services/api/SignIn.h"
#include "services/notices/Progress.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/PlainConnection.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QTranslator>
#include <QWindow>

#include <functional>
#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::LiveChanges;
using KODMS::Services::SignIn;
using KODMS::UI::DMS_UICommon;

namespace {

constexpr int patience = 30'000;
/// Longer than the host waits between two tries.
constexpr int longEnough = 700;

} // namespace

/// What others change while somebody sits at the host.
class LiveRefreshTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void theStatusBarSaysWhatOthersChanged();
    void theNumberIsSpokenInBothLanguages_data();
    void theNumberIsSpokenInBothLanguages();
    void aClickRefreshes();
    void theKeyRefreshes();
    void ownChangesAreNotSaid();
    void nothingMovesByItselfUnlessPreferred();
    void aPreferredRefreshHappensByItself();
    void aRefreshThatFailedIsTriedAgain();
    void whatCannotBeReadIsSaid();
    void itWaitsWhileSomethingIsInTheWay_data();
    void itWaitsWhileSomethingIsInTheWay();
    void thePreferenceIsRememberedForItsUser();
    void aHiddenWindowDoesNotLook();
    void aProgramOfItsOwnIsNoticedInTime();

private:
    void open(const QString &role);
    void changeElsewhere(int number);
    static void lookNow();

    template <typename Control> Control &named(const char *name) const
    {
        return *m_window->findChild<Control *>(QLatin1String(name));
    }

    QTableWidget &jobs() const
    {
        return *m_window->findChild<QTabWidget *>(QStringLiteral("deskTabs"))
                    ->currentWidget()
                    ->findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
    }

    ChangesField &field() const { return named<ChangesField>("foreignChanges"); }

    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
    std::unique_ptr<NoticeLog> m_notices;
    std::unique_ptr<HandOverLog> m_handOvers;
    std::unique_ptr<MainWindow> m_window;
    std::unique_ptr<PlainConnection> m_elsewhere;
};

void LiveRefreshTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    KODMS::Services::NoProgress progress;
    KODMS::Services::SampleRequest request;
    request.flows = 100;
    QVERIFY(KODMS::Services::SampleData::generate(request, progress));
    m_elsewhere = std::make_unique<PlainConnection>(m_installation->place());
}

void LiveRefreshTest::init()
{
    m_preferences =
        std::make_unique<Preferences>(Preferences::fileBeside(m_installation->configPath()));
    m_notices = std::make_unique<NoticeLog>();
    connect(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice, m_notices.get(),
            &NoticeLog::add);
    m_handOvers = std::make_unique<HandOverLog>();
    open(QStringLiteral("admin"));
}

void LiveRefreshTest::cleanup()
{
    if (m_window)
        named<QAction>("automaticRefreshAction").setChecked(false);
    m_window.reset();
    SignIn::signOut();
}

void LiveRefreshTest::cleanupTestCase()
{
    m_elsewhere.reset();
    m_installation.reset();
}

void LiveRefreshTest::open(const QString &role)
{
    m_window.reset();
    QVERIFY(m_installation->signIn(role));
    m_window = std::make_unique<MainWindow>(*m_preferences, *m_notices, *m_handOvers);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

/// Another desk writes a remark on the flow of that number, counted from 1.
void LiveRefreshTest::changeElsewhere(int number)
{
    const QString flow =
        QStringLiteral("(SELECT id FROM job_flows ORDER BY id LIMIT 1 OFFSET %1)").arg(number - 1);
    m_elsewhere->run(QStringLiteral("BEGIN"));
    m_elsewhere->run(QStringLiteral("UPDATE job_flows SET tips = tips || '+', "
                                    "remark_version = remark_version + 1 WHERE id = ") +
                     flow);
    m_elsewhere->run(
        QStringLiteral("INSERT INTO events (create_time, action, record_kind, record_id) SELECT "
                       "'2024-03-18T00:00:00.000Z', 'remark.UpdateTips', 'flow', ") +
        flow);
    m_elsewhere->run(QStringLiteral("COMMIT"));
}

/// What otherwise happens within two seconds.
void LiveRefreshTest::lookNow()
{
    LiveChanges::instance().setWatched(false);
    LiveChanges::instance().setWatched(true);
}

void LiveRefreshTest::theStatusBarSaysWhatOthersChanged()
{
    QVERIFY(!field().isVisible());
    for (const int flow : {1, 2, 3, 3})
        changeElsewhere(flow);
    QTRY_VERIFY_WITH_TIMEOUT(field().isVisible(), patience);
    QCOMPARE(field().text(), QStringLiteral("3 项他人更改 - 刷新 (F5)"));
    QVERIFY(m_window->rect().contains(field().mapTo(m_window.get(), field().rect().center())));
}

void LiveRefreshTest::theNumberIsSpokenInBothLanguages_data()
{
    QTest::addColumn<bool>("english");
    QTest::addColumn<int>("flows");
    QTest::addColumn<QString>("text");
    QTest::newRow("one, Chinese") << false << 1 << QStringLiteral("1 项他人更改 - 刷新 (F5)");
    QTest::newRow("several, Chinese") << false << 3 << QStringLiteral("3 项他人更改 - 刷新 (F5)");
    QTest::newRow("one, English") << true << 1
                                  << QStringLiteral("1 change by others - refresh (F5)");
    QTest::newRow("several, English")
        << true << 3 << QStringLiteral("3 changes by others - refresh (F5)");
}

void LiveRefreshTest::theNumberIsSpokenInBothLanguages()
{
    QFETCH(bool, english);
    QFETCH(int, flows);
    QFETCH(QString, text);
    QTranslator translator;
    if (english) {
        QVERIFY(translator.load(QStringLiteral("kodms_en"), QStringLiteral(":/i18n")));
        QCoreApplication::installTranslator(&translator);
    }
    for (int flow = 1; flow <= flows; ++flow)
        changeElsewhere(flow);
    lookNow();
    QCOMPARE(field().text(), text);
}

void LiveRefreshTest::aClickRefreshes()
{
    changeElsewhere(1);
    lookNow();
    QVERIFY(field().isVisible());
    const QSignalSpy exportDesk(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    const QSignalSpy fileDesk(DMS_UICommon::interface(), &DMS_UICommon::refreshOrigFileTable);
    QTest::mouseClick(&field(), Qt::LeftButton);
    QCOMPARE(exportDesk.size(), 1);
    QCOMPARE(fileDesk.size(), 1);
    QVERIFY(!field().isVisible());
    lookNow();
    QVERIFY(!field().isVisible());
}

void LiveRefreshTest::theKeyRefreshes()
{
    QTableWidget &table = jobs();
    table.setCurrentCell(0, 1);
    const QString remark = table.item(0, 12)->text();
    const QString job = table.item(0, 1)->text();
    const QStringList upToJob =
        m_elsewhere->texts(QStringLiteral("SELECT count(*) FROM job_flows WHERE id <= "
                                          "(SELECT id FROM job_flows WHERE job_name = '%1')")
                               .arg(job));
    changeElsewhere(upToJob.value(0).toInt());
    lookNow();
    QVERIFY(field().isVisible());
    QCOMPARE(table.item(0, 12)->text(), remark); // nothing moves by itself
    QTest::keyClick(&table, Qt::Key_F5);
    QVERIFY(!field().isVisible());
    QCOMPARE(table.item(0, 1)->text(), job);
    QCOMPARE(table.item(0, 12)->text(), remark + QLatin1Char('+'));
}

void LiveRefreshTest::ownChangesAreNotSaid()
{
    QTableWidget &table = jobs();
    table.setCurrentCell(0, 12);
    table.item(0, 12)->setText(QStringLiteral("my own remark"));
    QCOMPARE(m_elsewhere->texts(
                 QStringLiteral("SELECT count(*) FROM job_flows WHERE tips = 'my own remark'")),
             QStringList(QStringLiteral("1")));
    lookNow();
    QVERIFY(!field().isVisible());
}

void LiveRefreshTest::nothingMovesByItselfUnlessPreferred()
{
    QVERIFY(!named<QAction>("automaticRefreshAction").isChecked());
    const QSignalSpy refresh(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    changeElsewhere(1);
    lookNow();
    QVERIFY(field().isVisible());
    QTest::qWait(longEnough);
    QCOMPARE(refresh.size(), 0);
}

void LiveRefreshTest::aPreferredRefreshHappensByItself()
{
    named<QAction>("automaticRefreshAction").trigger();
    QSignalSpy refresh(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    changeElsewhere(1);
    lookNow();
    QTRY_COMPARE_WITH_TIMEOUT(refresh.size(), 1, patience);
    QVERIFY(!field().isVisible());
    QTest::qWait(longEnough);
    QCOMPARE(refresh.size(), 1);
}

/// When the records can be read again, without another change.
void LiveRefreshTest::aRefreshThatFailedIsTriedAgain()
{
    changeElsewhere(1);
    lookNow();
    QVERIFY(field().isVisible());
    m_elsewhere->run(QStringLiteral("ALTER TABLE events RENAME TO gone"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others.*events")));
    named<QAction>("automaticRefreshAction").trigger();
    QTRY_VERIFY_WITH_TIMEOUT(LiveChanges::instance().hasFailed(), patience);
    QTest::qWait(longEnough);
    QVERIFY(field().isVisible());
    m_elsewhere->run(QStringLiteral("ALTER TABLE gone RENAME TO events"));
    QTRY_VERIFY_WITH_TIMEOUT(!field().isVisible(), patience);
}

/// Quietly: nobody has asked for anything.
void LiveRefreshTest::whatCannotBeReadIsSaid()
{
    const auto &outage = named<QLabel>("outageField");
    QVERIFY(!outage.isVisible());
    m_elsewhere->run(QStringLiteral("ALTER TABLE events RENAME TO gone"));
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("look for changes by others.*events")));
    lookNow();
    QTRY_VERIFY_WITH_TIMEOUT(outage.isVisible(), patience);
    QCOMPARE(outage.text(), QStringLiteral("数据库暂时无法读取"));
    m_elsewhere->run(QStringLiteral("ALTER TABLE gone RENAME TO events"));
    QTRY_VERIFY_WITH_TIMEOUT(!outage.isVisible(), patience);
    QCOMPARE(m_notices->rowCount(), 0);
}

using Hindrance = std::function<std::function<void()>(MainWindow &, QTableWidget &)>;
Q_DECLARE_METATYPE(Hindrance)

/// Each puts something in the way, and gives what takes it away again.
void LiveRefreshTest::itWaitsWhileSomethingIsInTheWay_data()
{
    QTest::addColumn<Hindrance>("hindrance");
    const auto add = [](const char *name, const Hindrance &hindrance) {
        QTest::newRow(name) << hindrance;
    };
    add("a selected row", [](MainWindow &, QTableWidget &table) {
        QTest::mouseClick(table.viewport(), Qt::LeftButton, Qt::NoModifier,
                          table.visualItemRect(table.item(1, 1)).center());
        return [&table] { table.clearSelection(); };
    });
    add("a selected row of the other desk", [](MainWindow &window, QTableWidget &table) {
        table.selectRow(1);
        window.showDesk(1);
        return [&table] { table.clearSelection(); };
    });
    add("an open editor", [](MainWindow &, QTableWidget &table) {
        table.setCurrentCell(1, 12);
        table.editItem(table.item(1, 12));
        table.clearSelection();
        return [&table] {
            QTest::keyClick(table.viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
            table.clearSelection();
        };
    });
    add("an open dialog", [](MainWindow &window, QTableWidget &) {
        auto *dialog = new QDialog(&window);
        dialog->open();
        return [dialog] { delete dialog; };
    });
    add("another window", [](MainWindow &, QTableWidget &) {
        auto *other = new QWidget;
        other->show();
        return [other] { delete other; };
    });
    add("an open menu", [](MainWindow &window, QTableWidget &) {
        auto *menu = new QMenu(&window);
        menu->addAction(QStringLiteral("copy"));
        menu->popup(window.mapToGlobal({100, 100}));
        return [menu] { delete menu; };
    });
    add("a mouse button that is down", [](MainWindow &window, QTableWidget &) {
        const QPoint place(window.width() / 2, window.height() - 4);
        QTest::mousePress(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
        return [&window, place] {
            QTest::mouseRelease(window.windowHandle(), Qt::LeftButton, Qt::NoModifier, place);
        };
    });
    add("a page number that is being typed", [](MainWindow &window, QTableWidget &table) {
        auto *page = window.findChild<QLineEdit *>(QStringLiteral("m_pGotoPageLE"));
        page->setFocus();
        page->selectAll();
        QTest::keyClicks(page, QStringLiteral("1"));
        return [&table] { table.setFocus(); };
    });
}

void LiveRefreshTest::itWaitsWhileSomethingIsInTheWay()
{
    QFETCH(Hindrance, hindrance);
    named<QAction>("automaticRefreshAction").trigger();
    jobs().clearSelection();
    const QSignalSpy refresh(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    const auto away = hindrance(*m_window, jobs());
    changeElsewhere(1);
    lookNow();
    QVERIFY(field().isVisible());
    QTest::qWait(longEnough);
    QCOMPARE(refresh.size(), 0);
    QVERIFY(field().isVisible());
    away();
    QTRY_COMPARE_WITH_TIMEOUT(refresh.size(), 1, patience);
    QVERIFY(!field().isVisible());
}

void LiveRefreshTest::thePreferenceIsRememberedForItsUser()
{
    named<QAction>("automaticRefreshAction").trigger();
    open(QStringLiteral("check-authority"));
    QVERIFY(!named<QAction>("automaticRefreshAction").isChecked());
    open(QStringLiteral("admin"));
    QVERIFY(named<QAction>("automaticRefreshAction").isChecked());
}

void LiveRefreshTest::aHiddenWindowDoesNotLook()
{
    QVERIFY(LiveChanges::instance().isWatched());
    m_window->showMinimized();
    QTRY_VERIFY_WITH_TIMEOUT(!LiveChanges::instance().isWatched(), patience);
    m_window->showNormal();
    QTRY_VERIFY_WITH_TIMEOUT(LiveChanges::instance().isWatched(), patience);
    m_window->hide();
    QVERIFY(!LiveChanges::instance().isWatched());
    changeElsewhere(1);
    m_window->show();
    QVERIFY(LiveChanges::instance().isWatched());
    QVERIFY(field().isVisible());
}

void LiveRefreshTest::aProgramOfItsOwnIsNoticedInTime()
{
    QProcess admin;
    admin.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    admin.start(QStringLiteral(KODMS_ADMIN_PROGRAM),
                {QStringLiteral("--config"), m_installation->configPath(), QStringLiteral("sample"),
                 QStringLiteral("--flows"), QStringLiteral("3")});
    QVERIFY(admin.waitForFinished(patience));
    QCOMPARE(admin.exitCode(), 0);
    QTRY_VERIFY_WITH_TIMEOUT(field().isVisible(), patience);
}

KODMS_TEST_MAIN(LiveRefreshTest, QApplication)
#include "LiveRefreshTest.moc"
