// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DeskList.h"

#include "apps/desk/DeskTabs.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SampleData.h"
#include "services/api/SignIn.h"
#include "services/notices/Progress.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"
#include "tests/tables/support/SmallFiles.h"
#include "tests/tables/support/TableReaders.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::ShownSearch;
using KODMS::Services::SignIn;

Q_DECLARE_METATYPE(QMessageBox::StandardButton)

/// What the desk in front shows, page by page, is what the file holds.
class DeskListTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void cleanup()
    {
        SignIn::signOut();
        m_answer = QMessageBox::Ok;
    }

    void theFileHoldsWhatThePagesShow_data();
    void theFileHoldsWhatThePagesShow();
    void theFilterCounts();
    void movedAndHiddenColumns();
    void aRefreshOfBothDesksKeepsThemApart();
    void afterARefreshTheHistoryHasTheFilesTitles();
    void aKeyAsksWhereTo_data();
    void aKeyAsksWhereTo();
    void anExistingFileIsAskedAbout_data();
    void anExistingFileIsAskedAbout();
    void whatFailsIsSaidInABox();

private:
    std::unique_ptr<DeskTabs> tabsFor(const QString &role, int desk)
    {
        if (!m_installation->signIn(role))
            qFatal("no account has the role %s", qPrintable(role));
        auto tabs = std::make_unique<DeskTabs>(*m_preferences, SignIn::current().id);
        tabs->setCurrentIndex(desk);
        return tabs;
    }

    QVector<QStringList> exported(const DeskTabs &tabs)
    {
        const auto list = tabs.list();
        const QString path = m_dir->filePath(QStringLiteral("list.csv"));
        if (!list || !list->save(path))
            return {};
        return readCsv(path).rows;
    }

    QString exportTo(MainWindow &window, const QString &path, bool picksCsv = false);

    QString m_said;   ///< in the last box
    QString m_folder; ///< in which the dialog began
    QMessageBox::StandardButton m_answer = QMessageBox::Ok;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
};

namespace {

QTableWidget &tableOf(const DeskTabs &tabs)
{
    return *tabs.currentWidget()->findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
}

/// The visible cells from left to right, by the rules of the file.
QStringList shownRow(const QTableWidget &table, int row)
{
    QStringList cells;
    const QHeaderView &header = *table.horizontalHeader();
    for (int visual = 0; visual < header.count(); ++visual) {
        const int column = header.logicalIndex(visual);
        if (!header.isSectionHidden(column))
            cells
                << (row < 0 ? table.horizontalHeaderItem(column) : table.item(row, column))->text();
    }
    return cells;
}

/// Titles, and the rows of every page by pressing its button.
QVector<QStringList> allPages(const DeskTabs &tabs)
{
    QTableWidget &table = tableOf(tabs);
    QVector<QStringList> rows{shownRow(table, -1)};
    auto *next = tabs.currentWidget()->findChild<QPushButton *>(QStringLiteral("m_pPageDownPB"));
    for (;;) {
        for (int row = 0; row < table.rowCount(); ++row)
            rows << shownRow(table, row);
        const QTableWidgetItem *first = table.item(0, 0);
        next->click(); // fills the table anew unless this was the last page
        if (table.item(0, 0) == first)
            return rows;
    }
}

} // namespace

void DeskListTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    KODMS::Services::NoProgress progress;
    KODMS::Services::SampleRequest request;
    request.flows = 400;
    const auto generated = KODMS::Services::SampleData::generate(request, progress);
    QVERIFY2(generated.ok, qPrintable(generated.text));
}

void DeskListTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_preferences = std::make_unique<Preferences>(m_dir->filePath(QStringLiteral("kodms.ini")));
}

void DeskListTest::theFileHoldsWhatThePagesShow_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<int>("desk");
    for (const char *role : {"admin", "show-company-name", "pre-process", "check-authority", ""}) {
        const QString name = *role ? QString::fromLatin1(role) : QStringLiteral("ordinary user");
        QTest::newRow(qPrintable(name + QStringLiteral(", job flows")))
            << QString::fromLatin1(role) << 0;
        QTest::newRow(qPrintable(name + QStringLiteral(", original files")))
            << QString::fromLatin1(role) << 1;
    }
}

void DeskListTest::theFileHoldsWhatThePagesShow()
{
    QFETCH(QString, role);
    QFETCH(int, desk);
    const auto tabs = tabsFor(role, desk);
    if (role == QLatin1String("show-company-name")) // until the first search it has the history
        KODMS::UI::DMS_UICommon::interface()->emitGobalSingal();
    const QVector<QStringList> file = exported(*tabs);
    QVERIFY(file.size() > 1);
    const bool isSwitching = desk == 1 && tableOf(*tabs).columnCount() == 18 &&
                             !role.contains(QStringLiteral("pre-process"));
    if (isSwitching) { // a turn of the page shows an ordinary user's files
        QCOMPARE(file.first(), shownRow(tableOf(*tabs), -1));
        for (int row = 0; row < tableOf(*tabs).rowCount(); ++row)
            QCOMPARE(file.at(row + 1), shownRow(tableOf(*tabs), row));
        return;
    }
    QCOMPARE(file, allPages(*tabs));
}

void DeskListTest::theFilterCounts()
{
    const auto tabs = tabsFor(QStringLiteral("admin"), 0);
    auto *jobName = tabs->findChild<QLineEdit *>(QStringLiteral("m_pJobFilterLE"));
    auto *status = tabs->findChild<QComboBox *>(QStringLiteral("m_pStatusFilterCMB"));
    const int all = exported(*tabs).size();
    QVERIFY(all > 400);
    QTest::keyClicks(jobName, tableOf(*tabs).item(0, 1)->text().left(3));
    const auto some = exported(*tabs);
    QVERIFY(some.size() > 1);
    QVERIFY(some.size() < all);
    QCOMPARE(some, allPages(*tabs));
    status->setCurrentIndex(4);
    QCOMPARE(exported(*tabs), allPages(*tabs));
    jobName->clear();
    QTest::keyClicks(jobName, QStringLiteral("no such job"));
    QCOMPARE(exported(*tabs).size(), 1);
}

void DeskListTest::movedAndHiddenColumns()
{
    const auto tabs = tabsFor(QStringLiteral("admin"), 0);
    QHeaderView *header = tableOf(*tabs).horizontalHeader();
    header->moveSection(header->visualIndex(17), 0);
    header->hideSection(9);
    const auto file = exported(*tabs);
    QCOMPARE(file.first().first(), QStringLiteral("批号"));
    QVERIFY(!file.first().contains(QStringLiteral("前处理人")));
    QCOMPARE(file, allPages(*tabs));
}

/// The one that searches last does not take the other one's place.
void DeskListTest::aRefreshOfBothDesksKeepsThemApart()
{
    const auto tabs = tabsFor(QStringLiteral("admin"), 0);
    for (int round = 0; round < 2; ++round) {
        KODMS::UI::DMS_UICommon::interface()->emitGobalSingal();
        tabs->setCurrentIndex(0);
        QCOMPARE(tabs->list()->search.view, ShownSearch::View::Flows);
        tabs->setCurrentIndex(1);
        QCOMPARE(tabs->list()->search.view, ShownSearch::View::OrigFiles);
    }
    auto *search = tabs->currentWidget()->findChild<QLineEdit *>(QStringLiteral("m_pFilterLE"));
    QTest::keyClicks(search, QStringLiteral("A"));
    QCOMPARE(exported(*tabs), allPages(*tabs));
    tabs->setCurrentIndex(0);
    QCOMPARE(exported(*tabs), allPages(*tabs));
}

/// The table then shows files below the titles of the history; the file does not, and
/// tells no customer's name.
void DeskListTest::afterARefreshTheHistoryHasTheFilesTitles()
{
    const auto tabs = tabsFor(QString(), 1);
    QVERIFY(exported(*tabs).first().contains(QStringLiteral("状态")));
    KODMS::UI::DMS_UICommon::interface()->emitGobalSingal(); // held back until the export is over
    QTRY_COMPARE(tabs->list()->search.view, ShownSearch::View::OrigFiles);
    const QStringList titles = exported(*tabs).first();
    QVERIFY(titles.contains(QStringLiteral("原料号名")));
    for (const QString &title : titles)
        QVERIFY(title != QStringLiteral("客户简称") && title != QStringLiteral("客户二级") &&
                title != QStringLiteral("客户三级"));
    QCOMPARE(exported(*tabs).size(), tableOf(*tabs).rowCount() + 1);
}

void DeskListTest::aKeyAsksWhereTo_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("picksCsv");
    QTest::addColumn<QString>("added");
    const auto row = [](const char *title, const char *suffix, bool picksCsv, const char *added) {
        QTest::newRow(title) << QString::fromLatin1(suffix) << picksCsv
                             << QString::fromLatin1(added);
    };
    row("a workbook unless said otherwise", "", false, ".xlsx");
    row("CSV by its name", ".csv", false, "");
    row("CSV by the kind of file that was picked", "", true, ".csv");
    row("the name in capitals counts more than the kind", ".XLSX", true, "");
    row("another suffix belongs to the name", ".2026", false, ".xlsx");
}

void DeskListTest::aKeyAsksWhereTo()
{
    QFETCH(QString, suffix);
    QFETCH(bool, picksCsv);
    QFETCH(QString, added);
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    NoticeLog notices;
    HandOverLog handOvers;
    MainWindow window(*m_preferences, notices, handOvers);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QString path = m_dir->filePath(QStringLiteral("清单")) + suffix;
    const QString proposed = exportTo(window, path, picksCsv);
    QVERIFY2(proposed.startsWith(QStringLiteral("料号流程-20")), qPrintable(proposed));
    window.activateWindow(); // again, after the dialog
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QVERIFY(!exportTo(window, QString()).isEmpty());
    QCOMPARE(m_folder, m_dir->path()); // where the last one went
    const QString written = path + added;
    const auto table = written.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive)
                           ? readSheet(written)
                           : readCsv(written);
    QCOMPARE(table.problem, QString());
    QVERIFY(table.rows.size() > 400);
}

void DeskListTest::anExistingFileIsAskedAbout_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("answer");
    QTest::newRow("Yes") << QMessageBox::Yes;
    QTest::newRow("No") << QMessageBox::No;
}

/// The dialog does not ask about the name that the suffix makes of the chosen one.
void DeskListTest::anExistingFileIsAskedAbout()
{
    QFETCH(QMessageBox::StandardButton, answer);
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    NoticeLog notices;
    HandOverLog handOvers;
    MainWindow window(*m_preferences, notices, handOvers);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QString path = m_dir->filePath(QStringLiteral("list"));
    QFile old(path + QStringLiteral(".xlsx"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    m_answer = answer;
    exportTo(window, path);
    QCOMPARE(m_said, QStringLiteral("list.xlsx 已存在，要替换吗？"));
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll() == "old", answer == QMessageBox::No);
}

void DeskListTest::whatFailsIsSaidInABox()
{
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    NoticeLog notices;
    HandOverLog handOvers;
    MainWindow window(*m_preferences, notices, handOvers);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const SmallFiles full(2000);
    if (!full.isInForce())
        QSKIP("files cannot be kept small here");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("list.export")));
    exportTo(window, m_dir->filePath(QStringLiteral("list.csv")));
    QVERIFY2(m_said.contains(QStringLiteral("list")), qPrintable(m_said));
    QVERIFY(!QFile::exists(m_dir->filePath(QStringLiteral("list.csv"))));
}

/// By the key, into the dialog, which is left with an empty path. Returns the name that
/// the dialog proposed.
QString DeskListTest::exportTo(MainWindow &window, const QString &path, bool picksCsv)
{
    QString proposed;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        QWidget *modal = QApplication::activeModalWidget();
        if (auto *box = qobject_cast<QMessageBox *>(modal)) {
            m_said = box->text();
            box->button(m_answer)->click();
        } else if (auto *dialog = qobject_cast<QFileDialog *>(modal);
                   dialog && proposed.isEmpty()) {
            auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
            proposed = name->text();
            m_folder = dialog->directory().path();
            if (path.isEmpty()) {
                dialog->reject();
                return;
            }
            if (picksCsv)
                dialog->selectNameFilter(dialog->nameFilters().last());
            name->setText(path);
            QTest::keyClick(name, Qt::Key_Return);
        }
    });
    watch.start(20);
    m_said.clear();
    QTest::keyClick(&window, Qt::Key_E, Qt::ControlModifier);
    return proposed;
}

KODMS_TEST_MAIN(DeskListTest, QApplication)
#include "DeskListTest.moc"
