// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/DeskTabs.h"
#include "apps/desk/Preferences.h"
#include "apps/desk/StatusChipDelegate.h"
#include "desks/download/DMS_Download_Widget.h"
#include "desks/export/DMS_Export_Widget.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/SignIn.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QHeaderView>
#include <QImage>
#include <QPainter>
#include <QPushButton>
#include <QScopeGuard>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::Host;
using KODMS::Services::SignIn;
using KODMS::Tests::SampleInstallation;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_Export_Widget;

/// Both desks in the host's window.
class DeskTabsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void cleanup() { SignIn::signOut(); }

    void bothDesksHaveTheirTab_data();
    void bothDesksHaveTheirTab();
    void theDesksRememberTheirColumnsApart();
    void aChangeOfRightsKeepsTheColumns();
    void aWebJobIsToldToTheJobFlowDesk();
    void statusChipsAreForTheHistoryToo();
    void aStatusChipIsForAStatusOnly_data();
    void aStatusChipIsForAStatusOnly();
    void aButtonThatDoesNothingLooksSo();
    void everyHeaderIsSeenWhole_data();
    void everyHeaderIsSeenWhole();

private:
    std::unique_ptr<DeskTabs> tabsFor(const QString &role)
    {
        if (!m_installation->signIn(role))
            qFatal("no account has the role %s", qPrintable(role));
        return std::make_unique<DeskTabs>(*m_preferences, SignIn::current().id);
    }

    QTemporaryDir m_dir;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<Preferences> m_preferences;
};

namespace {

template <typename Desk> QTableWidget &tableOf(const DeskTabs &tabs)
{
    const auto *desk = tabs.findChild<Desk *>();
    return *desk->template findChild<QTableWidget *>(QStringLiteral("m_pJobTableWidget"));
}

} // namespace

void DeskTabsTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    m_preferences =
        std::make_unique<Preferences>(Preferences::fileBeside(m_installation->configPath()));
}

void DeskTabsTest::bothDesksHaveTheirTab_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<int>("columns");
    QTest::newRow("administrator") << "admin" << 16;
    QTest::newRow("sees customers' names") << "show-company-name" << 16;
    QTest::newRow("pre-processor") << "pre-process" << 18;
    QTest::newRow("ordinary user") << "" << 18;
}

void DeskTabsTest::bothDesksHaveTheirTab()
{
    QFETCH(QString, role);
    const auto tabs = tabsFor(role);
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), QStringLiteral("料号流程"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("原始文件"));
    QVERIFY(qobject_cast<DMS_Export_Widget *>(tabs->widget(0)));
    QVERIFY(qobject_cast<DMS_Download_Widget *>(tabs->widget(1)));
    QCOMPARE(tabs->currentIndex(), 0);
    QTEST(tableOf<DMS_Download_Widget>(*tabs).columnCount(), "columns");
}

/// Their tables bear the same name.
void DeskTabsTest::theDesksRememberTheirColumnsApart()
{
    auto tabs = tabsFor(QStringLiteral("pre-process"));
    tableOf<DMS_Export_Widget>(*tabs).setColumnWidth(1, 201);
    tableOf<DMS_Download_Widget>(*tabs).setColumnWidth(1, 302);
    tableOf<DMS_Download_Widget>(*tabs).horizontalHeader()->moveSection(12, 0);
    tabs->saveColumns();
    tabs = tabsFor(QStringLiteral("pre-process"));
    QCOMPARE(tableOf<DMS_Export_Widget>(*tabs).columnWidth(1), 201);
    QCOMPARE(tableOf<DMS_Export_Widget>(*tabs).horizontalHeader()->visualIndex(12), 12);
    QCOMPARE(tableOf<DMS_Download_Widget>(*tabs).columnWidth(1), 302);
    QCOMPARE(tableOf<DMS_Download_Widget>(*tabs).horizontalHeader()->visualIndex(12), 0);
}

/// The table has another shape then, and what it hides stays hidden.
void DeskTabsTest::aChangeOfRightsKeepsTheColumns()
{
    QVERIFY(m_installation->signIn(QString()));
    const int user = SignIn::current().id;
    {
        DeskTabs history(*m_preferences, user);
        tableOf<DMS_Download_Widget>(history).setColumnWidth(9, 177);
        history.saveColumns();
    }
    QVERIFY(m_installation->signIn(QStringLiteral("admin")));
    const DeskTabs files(*m_preferences, user);
    const QTableWidget &table = tableOf<DMS_Download_Widget>(files);
    QCOMPARE(table.columnWidth(14), 177); // the pre-processor's name, in both
    for (const int column : {5, 6, 7, 9, 15})
        QVERIFY(table.isColumnHidden(column));
}

void DeskTabsTest::aWebJobIsToldToTheJobFlowDesk()
{
    const auto tabs = tabsFor(QStringLiteral("admin"));
    auto *files = tabs->findChild<DMS_Download_Widget *>();
    auto *flows = tabs->findChild<DMS_Export_Widget *>();
    QVERIFY(disconnect(files, &DMS_Download_Widget::newWebItemNameGetted, flows,
                       &DMS_Export_Widget::on_parent_newWebItemNameGetted));
    QVERIFY(!disconnect(files, &DMS_Download_Widget::newWebItemNameGetted, flows, nullptr));
}

void DeskTabsTest::statusChipsAreForTheHistoryToo()
{
    const auto tabs = tabsFor(QStringLiteral("pre-process"));
    tabs->setHighContrastStatus(true);
    QVERIFY(tableOf<DMS_Download_Widget>(*tabs).itemDelegateForColumn(6));
    tabs->setHighContrastStatus(false);
    QVERIFY(!tableOf<DMS_Download_Widget>(*tabs).itemDelegateForColumn(6));
    const auto files = tabsFor(QStringLiteral("admin"));
    files->setHighContrastStatus(true);
    for (int column = 0; column < 16; ++column)
        QVERIFY(!tableOf<DMS_Download_Widget>(*files).itemDelegateForColumn(column));
}

void DeskTabsTest::aStatusChipIsForAStatusOnly_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isStatus");
    QTest::newRow("a status") << QStringLiteral("前处理通过") << true;
    QTest::newRow("an unknown status") << QStringLiteral("未知") << true;
    QTest::newRow("the id of a file") << QStringLiteral("2931") << false;
    QTest::newRow("nothing") << QString() << false;
}

/// An ordinary user's history table shows rows of files after a refresh, with an id there.
void DeskTabsTest::aStatusChipIsForAStatusOnly()
{
    QFETCH(QString, text);
    QStandardItemModel model(1, 1);
    model.setItem(0, 0, new QStandardItem(text));
    const auto painted = [&model](const QStyledItemDelegate &delegate) {
        QImage image(160, 30, QImage::Format_RGB32);
        image.fill(Qt::gray);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        delegate.paint(&painter, option, model.index(0, 0));
        return image;
    };
    const bool isChip = painted(StatusChipDelegate()) != painted(QStyledItemDelegate());
    QTEST(isChip, "isStatus");
}

void DeskTabsTest::aButtonThatDoesNothingLooksSo()
{
    const auto tabs = tabsFor(QStringLiteral("test-admin")); // sees files, and changes none
    tabs->setCurrentIndex(1);
    tabs->show();
    const auto ground = [&tabs](const char *name, bool isEnabled) {
        auto *button = tabs->currentWidget()->findChild<QPushButton *>(QLatin1String(name));
        if (button->isEnabled() != isEnabled)
            qFatal("%s is not what it should be", name);
        const QImage image = button->grab().toImage();
        return image.pixelColor(4, image.height() / 2);
    };
    const QColor enabled = ground("m_pRefreshPB", true);
    QCOMPARE(ground("m_pOpenFolderPB", true), enabled);
    QVERIFY(ground("DelFile", false) != enabled);
    QVERIFY(ground("m_pUpdateFilePB", false) != enabled);
}

void DeskTabsTest::everyHeaderIsSeenWhole_data()
{
    QTest::addColumn<QString>("role");
    QTest::addColumn<int>("points");
    for (const int points : {0, 13}) {
        for (const char *role : {"admin", "pre-process", ""})
            QTest::newRow(qPrintable(QStringLiteral("%1, %2").arg(
                *role ? QString::fromLatin1(role) : QStringLiteral("ordinary user"),
                points ? QStringLiteral("larger letters") : QStringLiteral("usual letters"))))
                << QString::fromLatin1(role) << points;
    }
}

/// Whatever scale, letters and style come to.
void DeskTabsTest::everyHeaderIsSeenWhole()
{
    QFETCH(QString, role);
    QFETCH(int, points);
    const QFont before = QApplication::font();
    const auto restore = qScopeGuard([&before] { QApplication::setFont(before); });
    if (points > 0)
        QApplication::setFont(QFont(before.family(), points));
    m_preferences = std::make_unique<Preferences>(m_dir.filePath(QString::number(points) + role));
    const auto tabs = tabsFor(role);
    const auto tables = tabs->findChildren<QTableWidget *>();
    QVERIFY(!tables.isEmpty());
    for (const QTableWidget *table : tables) {
        const QHeaderView &header = *table->horizontalHeader();
        for (int column = 0; column < table->columnCount(); ++column) {
            const int needed = header.sectionSizeHint(column);
            if (table->isColumnHidden(column) ||
                header.sectionResizeMode(column) != QHeaderView::Interactive)
                continue;
            QVERIFY2(table->columnWidth(column) >= needed,
                     qPrintable(QStringLiteral("%1: %2 < %3")
                                    .arg(table->horizontalHeaderItem(column)->text())
                                    .arg(table->columnWidth(column))
                                    .arg(needed)));
        }
    }
}

KODMS_TEST_MAIN(DeskTabsTest, QApplication)
#include "DeskTabsTest.moc"
