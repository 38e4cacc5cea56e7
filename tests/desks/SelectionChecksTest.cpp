// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/OperationDesk.h"
#include "tests/desks/PrivateMember.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>

using namespace KODMS::Tests;
using KODMS::UI::Desk;
using KODMS::UI::DMS_Download_Widget;
using KODMS::UI::DMS_Export_Widget;

namespace KODMS::Tests {

template <typename Widget> struct LegalCheck {
    using Type = bool (Widget::*)();
};

template <typename Widget> struct TypeCheck {
    using Type = bool (Widget::*)(const QString &);
};

template <typename Widget> struct JobFileName {
    using Type = QString Widget::*;
};

template struct OpenMember<LegalCheck<DMS_Export_Widget>, &DMS_Export_Widget::checkSelectIsLeagal>;
template struct OpenMember<LegalCheck<DMS_Download_Widget>,
                           &DMS_Download_Widget::checkSelectIsLeagal>;
template struct OpenMember<TypeCheck<DMS_Export_Widget>, &DMS_Export_Widget::checkInsertJobType>;
template struct OpenMember<TypeCheck<DMS_Download_Widget>,
                           &DMS_Download_Widget::checkInsertJobType>;
template struct OpenMember<JobFileName<DMS_Export_Widget>, &DMS_Export_Widget::m_JobFileName>;
template struct OpenMember<JobFileName<DMS_Download_Widget>, &DMS_Download_Widget::m_JobFileName>;

} // namespace KODMS::Tests

/// What may be downloaded together, and which folders hold a job file.
class SelectionChecksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void whatMayBeDownloadedTogether_data();
    void whatMayBeDownloadedTogether();

    void clickedRowsStandForTheFirstOnes_data() { addDeskRows(); }

    void clickedRowsStandForTheFirstOnes();

    void aBlockStandsForTheRowOfItsPlace_data() { addDeskRows(); }

    void aBlockStandsForTheRowOfItsPlace();

    void equalNamesAreOneJob_data() { addDeskRows(); }

    void equalNamesAreOneJob();
    void moreBlocksThanRows();
    void whatIsAJobFile_data();
    void whatIsAJobFile();

    void aFolderThatIsNotThereHoldsNoJobFile_data() { addDeskRows(); }

    void aFolderThatIsNotThereHoldsNoJobFile();
};

namespace {

bool isLegal(const OperationDesk &window)
{
    if (auto *desk = window.jobFlow())
        return (desk->*privateMember<LegalCheck<DMS_Export_Widget>>)();
    return (window.origFile()->*privateMember<LegalCheck<DMS_Download_Widget>>)();
}

bool hasJobFile(const OperationDesk &window, const QString &folder)
{
    if (auto *desk = window.jobFlow())
        return (desk->*privateMember<TypeCheck<DMS_Export_Widget>>)(folder);
    return (window.origFile()->*privateMember<TypeCheck<DMS_Download_Widget>>)(folder);
}

QString &jobFileName(const OperationDesk &window)
{
    if (auto *desk = window.jobFlow())
        return desk->*privateMember<JobFileName<DMS_Export_Widget>>;
    return window.origFile()->*privateMember<JobFileName<DMS_Download_Widget>>;
}

QVector<JobRow> rowsOf(const QStringList &types)
{
    QVector<JobRow> rows;
    for (const QString &type : types)
        rows << jobRow(rows.size() + 1, type);
    return rows;
}

} // namespace

void SelectionChecksTest::whatMayBeDownloadedTogether_data()
{
    QTest::addColumn<QString>("types");
    QTest::addColumn<bool>("jobFlow");
    QTest::addColumn<bool>("origFile");
    const auto row = [](const char *types, bool jobFlow, bool origFile) {
        QTest::newRow(types) << QString::fromLatin1(types) << jobFlow << origFile;
    };
    row("", true, true);
    row("tgz", true, true);
    row("zip", true, true);
    row("tgz tgz tgz tgz", true, true);
    row("zip zip", false, false);
    row("zip rar 7z", false, false);
    row("tgz zip", false, false);
    row("zip tgz", false, false);
    row("tgz tgz zip", false, false);
    row("TGZ", true, true);
    row("TGZ tgz", true, false);
    row("TGZ Tgz", true, false);
    row("tar", true, true);
    row("tar tgz", false, false);
    row("tar tar", false, false);
    row("tgz2 tgz", false, false);
}

void SelectionChecksTest::whatMayBeDownloadedTogether()
{
    QFETCH(QString, types);
    QFETCH(bool, jobFlow);
    QFETCH(bool, origFile);
    const QStringList list = types.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        const OperationDesk window(desk, rowsOf(list));
        for (int row = 0; row < list.size(); ++row)
            window.select(row);
        const KODMS::Fakes::MessageBoxProbe probe;
        QCOMPARE(isLegal(window), desk == Desk::JobFlow ? jobFlow : origFile);
        QCOMPARE(probe.count(), 0);
    }
}

void SelectionChecksTest::clickedRowsStandForTheFirstOnes()
{
    QFETCH(Desk, desk);
    const QString tgz = QStringLiteral("tgz");
    const QString zip = QStringLiteral("zip");
    const OperationDesk legal(desk, rowsOf({tgz, tgz, zip, tgz, zip}));
    legal.select(2);
    legal.select(4);
    QVERIFY(isLegal(legal));
    const OperationDesk refused(desk, rowsOf({zip, tgz, tgz, tgz, tgz}));
    refused.select(2);
    refused.select(4);
    QVERIFY(!isLegal(refused));
}

void SelectionChecksTest::aBlockStandsForTheRowOfItsPlace()
{
    QFETCH(Desk, desk);
    const QString tgz = QStringLiteral("tgz");
    const QString zip = QStringLiteral("zip");
    const OperationDesk first(desk, rowsOf({tgz, zip, zip, zip}));
    first.select(1, 3);
    QVERIFY(isLegal(first)); // one block: row 0, three times
    first.select(0);
    QVERIFY(!isLegal(first)); // a second block: row 1 too
}

void SelectionChecksTest::equalNamesAreOneJob()
{
    QFETCH(Desk, desk);
    QVector<JobRow> rows = rowsOf({QStringLiteral("zip"), QStringLiteral("rar")});
    rows[1].id = rows[0].id;
    rows[1].job = rows[0].job;
    const OperationDesk window(desk, rows);
    window.select(0);
    window.select(1);
    QVERIFY(isLegal(window));
}

void SelectionChecksTest::moreBlocksThanRows()
{
    const OperationDesk window(Desk::OrigFile, rowsOf({QStringLiteral("tgz")}));
    for (const int column : {0, 2, 4})
        window.table()->setRangeSelected({0, column, 0, column}, true);
    QCOMPARE(window.table()->selectedRanges().size(), 3);
    QVERIFY(isLegal(window));
}

void SelectionChecksTest::whatIsAJobFile_data()
{
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("remembered");
    const auto row = [](const char *name, const char *entries, bool found, const char *remembered) {
        QTest::newRow(name) << QString::fromLatin1(entries).split(QLatin1Char(' '),
                                                                  Qt::SkipEmptyParts)
                            << found << QString::fromLatin1(remembered);
    };
    row("an empty folder", "", false, "before");
    row("only folders", "a.tgz/ b.tar/", false, "before");
    row("a tgz", "a.tgz", true, "a.tgz");
    row("a tar", "a.tar", true, "a.tar");
    row("capital letters stay", "A.TGZ", true, "A.TGZ");
    row("in the middle of the name", "a.tar.gz", true, "a.tar.gz");
    row("a tgz in the middle of the name", "a.tgz.part", true, "a.tgz.part");
    row("without the dot", "atgz", false, "atgz");
    row("the last plain file", "c.txt a.zip b.rar", false, "c.txt");
    row("the first one of two", "b.tgz a.tar", true, "a.tar");
    row("the first one of two, whatever the case", "B.tgz a.tar", true, "a.tar");
    row("after other files", "z.tgz a.txt b/", true, "z.tgz");
    row("not one further down", "sub/a.tgz b.txt", false, "b.txt");
    row("hidden files are passed over", ".a.tgz b.txt", false, "b.txt");
}

void SelectionChecksTest::whatIsAJobFile()
{
    QFETCH(QStringList, entries);
    QFETCH(bool, found);
    QFETCH(QString, remembered);
    const QTemporaryDir folder;
    const QDir dir(folder.path());
    for (const QString &entry : entries) {
        QVERIFY(dir.mkpath(entry.section(QLatin1Char('/'), 0, -2) + QStringLiteral("/.")));
        QFile file(dir.filePath(entry));
        QVERIFY(entry.endsWith(QLatin1Char('/')) || file.open(QIODevice::WriteOnly));
    }
    for (const Desk desk : {Desk::JobFlow, Desk::OrigFile}) {
        const OperationDesk window(desk, {});
        jobFileName(window) = QStringLiteral("before");
        QCOMPARE(hasJobFile(window, folder.path()), found);
        QCOMPARE(jobFileName(window), remembered);
    }
}

void SelectionChecksTest::aFolderThatIsNotThereHoldsNoJobFile()
{
    QFETCH(Desk, desk);
    const QTemporaryDir folder;
    const OperationDesk window(desk, {});
    QVERIFY(!hasJobFile(window, folder.filePath(QStringLiteral("no"))));
    QCOMPARE(jobFileName(window), QString());
}

KODMS_TEST_MAIN(SelectionChecksTest, QApplication)
#include "SelectionChecksTest.moc"
