// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/MenuProbe.h"
#include "tests/e2e/DownloadUser.h"
#include "tests/e2e/FileRecords.h"
#include "tests/e2e/SampleHouse.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QTableWidget>

#include <memory>

using namespace KODMS::Tests;

/// Copying from the original-file desk by mouse, compared with what stands in the
/// database.
class DownloadDeskCopyTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { m_house = std::make_unique<SampleHouse>(200); }

    void cleanupTestCase() { m_house.reset(); }

    void everythingOfAPage_data();
    void everythingOfAPage();
    void theCurrentRow();
    void theCurrentColumn();
    void theSelectedCells();
    void aSearchedAndTurnedPage();
    void theHistoryOffersNoMenu();

private:
    QStringList lines(const QString &columns, const QString &where = QString()) const
    {
        return m_house->records().texts(fileRecords(columns, where));
    }

    std::unique_ptr<SampleHouse> m_house;
};

namespace {

constexpr int Page = 30;

// The cells as the desk shows them; times are local, eight hours ahead.
const QString Name = QStringLiteral("CASE k.code WHEN 'web' THEN substr(o.stored_name, 1, "
                                    "length(o.stored_name) - 4) ELSE c.orig_name END");
const QString Type = QStringLiteral("CASE o.file_type WHEN '' THEN 'file' ELSE o.file_type END");
const QString SerialText = QStringLiteral("printf('%06d', c.serial_number)");

QString localTime(const char *column)
{
    return QStringLiteral("strftime('%Y-%m-%d %H:%M:%S', %1, '+8 hours')")
        .arg(QLatin1String(column));
}

QString tabbed(const QStringList &columns)
{
    QStringList guarded;
    for (const QString &column : columns)
        guarded << QStringLiteral("coalesce(") + column + QStringLiteral(", '')");
    return guarded.join(QStringLiteral(" || char(9) || "));
}

/// The visible columns of a user, as one text a file.
QString visibleColumns(bool customers)
{
    QStringList columns{Name};
    if (customers)
        columns << QStringLiteral("k.short_name");
    columns << QStringLiteral("k.code") << Type << SerialText << QStringLiteral("c.tips");
    if (customers)
        columns << QStringLiteral("k.superior_1") << QStringLiteral("k.superior_2");
    columns << localTime("c.update_time") << localTime("c.create_time")
            << QStringLiteral("u.real_name");
    return tabbed(columns);
}

QString asLines(const QStringList &lines)
{
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

/// A right click on a cell, then a click on the menu's action.
void copyBy(const DownloadUser &user, int row, int column, const QString &action)
{
    auto *table = user.table();
    const QPoint cell = table->visualItemRect(table->item(row, column)).center();
    QTest::mouseClick(table->viewport(), Qt::RightButton, {}, cell);
    const MenuProbe probe(clickAction(action));
    QContextMenuEvent request(QContextMenuEvent::Mouse, cell, table->viewport()->mapToGlobal(cell));
    QApplication::sendEvent(table->viewport(), &request);
    QVERIFY(probe.hasOpened());
}

QString clipboard()
{
    return QApplication::clipboard()->text();
}

} // namespace

void DownloadDeskCopyTest::everythingOfAPage_data()
{
    QTest::addColumn<QString>("login");
    QTest::addColumn<bool>("customers");
    QTest::newRow("administrator") << "admin" << true;
    QTest::newRow("test administrator") << "testadmin" << false;
}

void DownloadDeskCopyTest::everythingOfAPage()
{
    QFETCH(QString, login);
    QFETCH(bool, customers);
    m_house->signIn(login);
    const DownloadUser user;
    copyBy(user, 3, 0, QStringLiteral("复制所有"));
    QCOMPARE(clipboard(), asLines(lines(visibleColumns(customers)).mid(0, Page)));
}

void DownloadDeskCopyTest::theCurrentRow()
{
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser user;
    copyBy(user, 4, 2, QStringLiteral("复制当前行"));
    QCOMPARE(clipboard(), lines(visibleColumns(true)).at(4) + QLatin1Char('\t'));
}

void DownloadDeskCopyTest::theCurrentColumn()
{
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser user;
    copyBy(user, 0, DownloadUser::Serial, QStringLiteral("复制当前列"));
    QCOMPARE(clipboard(), asLines(lines(SerialText).mid(0, Page)));
}

/// Ctrl and clicks, then the menu; the right click lands on a selected cell.
void DownloadDeskCopyTest::theSelectedCells()
{
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser user;
    auto *table = user.table();
    const auto centre = [table](int row, int column) {
        return table->visualItemRect(table->item(row, column)).center();
    };
    user.clickCell(2, 2);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::ControlModifier, centre(2, 4));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::ControlModifier, centre(5, 4));
    copyBy(user, 5, 4, QStringLiteral("Copy"));
    const QStringList both = lines(tabbed({QStringLiteral("k.code"), SerialText}));
    const QStringList serials = lines(SerialText);
    QCOMPARE(clipboard(), QLatin1Char('\n') + both.at(2) + QLatin1Char('\n') + serials.at(5) +
                              QLatin1Char('\n'));
}

void DownloadDeskCopyTest::aSearchedAndTurnedPage()
{
    m_house->signIn(QStringLiteral("admin"));
    const DownloadUser user;
    user.choose(4);
    user.commit("m_pFilterLE", QStringLiteral("单"));
    user.click("m_pPageDownPB");
    copyBy(user, 0, 0, QStringLiteral("复制所有"));
    const QStringList found = lines(visibleColumns(true), QStringLiteral("c.tips LIKE '%单%'"));
    QVERIFY(found.size() > Page);
    QCOMPARE(clipboard(), asLines(found.mid(Page, Page)));
}

void DownloadDeskCopyTest::theHistoryOffersNoMenu()
{
    m_house->signIn(QStringLiteral("prepare"));
    const DownloadUser user;
    QVERIFY(user.table()->rowCount() > 0);
    const MenuProbe probe;
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(5, 5));
    QApplication::sendEvent(user.table()->viewport(), &request);
    QCoreApplication::processEvents();
    QVERIFY(!probe.hasOpened());
}

KODMS_TEST_MAIN(DownloadDeskCopyTest, QApplication)
#include "DownloadDeskCopyTest.moc"
