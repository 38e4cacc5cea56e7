// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/TableFile.h"

#include "services/tables/XlsxFile.h"
#include "services/tables/XlsxProof.h"
#include "tests/support/TestMain.h"
#include "tests/tables/support/SmallFiles.h"
#include "tests/tables/support/TableReaders.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace KODMS::Services;
using namespace KODMS::Tests;

Q_DECLARE_METATYPE(TableFile::Format)

/// Both formats, read back by another reader; and what stays when writing fails.
class TableFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { m_dir = std::make_unique<QTemporaryDir>(); }

    void whatIsWrittenIsRead_data() { formats(); }

    void whatIsWrittenIsRead();

    void emptyCellsKeepTheirPlace_data() { formats(); }

    void emptyCellsKeepTheirPlace();
    void numbersAreNumbersInASheet();
    void aSheetKeepsItsTitlesInSight();
    void rowsOfASheetWaitBesideIt();

    void givenUpItLeavesNothing_data() { formats(); }

    void givenUpItLeavesNothing();
    void aFullDiskLeavesWhatStoodThere_data();
    void aFullDiskLeavesWhatStoodThere();
    void remainsOfKilledWritersGo();
    void impossiblePlacesAreRefused_data();
    void impossiblePlacesAreRefused();
    void aDamagedBookIsNoticed_data();
    void aDamagedBookIsNoticed();

private:
    static void formats()
    {
        QTest::addColumn<TableFile::Format>("format");
        QTest::newRow("CSV") << TableFile::Format::Csv;
        QTest::newRow("XLSX") << TableFile::Format::Xlsx;
    }

    static ReadTable read(const QString &path, TableFile::Format format)
    {
        return format == TableFile::Format::Csv ? readCsv(path) : readSheet(path);
    }

    static QVector<TableColumn> columns()
    {
        return {{QStringLiteral("料号名称"), 20, false}, {QStringLiteral("批号"), 0, true}};
    }

    static Outcome write(const QString &path, TableFile::Format format,
                         const QVector<QStringList> &rows)
    {
        const auto file = TableFile::create(path, format, columns());
        if (!file)
            return file.outcome;
        for (const QStringList &row : rows) {
            if (Outcome added = file.value->addRow(row); !added)
                return added;
        }
        return file.value->publish();
    }

    QString path(const char *name) const { return m_dir->filePath(QString::fromUtf8(name)); }

    QStringList files() const
    {
        return QDir(m_dir->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_dir;
};

namespace {

/// What this process has open that bears no name any more.
QSet<QString> unnamedFiles()
{
    QSet<QString> unnamed;
    const QDir handles(QStringLiteral("/proc/self/fd"));
    const QStringList numbers = handles.entryList(QDir::Files | QDir::System);
    for (const QString &number : numbers) {
        const QString target = QFile::symLinkTarget(handles.filePath(number));
        if (target.endsWith(QStringLiteral("(deleted)")))
            unnamed << target;
    }
    return unnamed;
}

} // namespace

void TableFileTest::whatIsWrittenIsRead()
{
    QFETCH(TableFile::Format, format);
    QVector<QStringList> rows{{QStringLiteral("A1B000001"), QStringLiteral("x")},
                              {QStringLiteral(" 空格 "), QStringLiteral("🚀,\"quoted\"")},
                              {QStringLiteral("<b>&amp;</b>"), QStringLiteral("_x0041_")},
                              {QStringLiteral("two\nlines"), QStringLiteral("\tx").mid(1)}};
    for (int i = 0; i < 3000; ++i)
        rows << QStringList{QStringLiteral("row %1").arg(i), QStringLiteral("n%1").arg(i * 7)};
    const Outcome written = write(path("清单 1.list"), format, rows);
    QVERIFY2(written.ok, qPrintable(written.cause));
    QCOMPARE(files(), QStringList{QStringLiteral("清单 1.list")});
    ReadTable table = read(path("清单 1.list"), format);
    QCOMPARE(table.problem, QString());
    QCOMPARE(table.rows.takeFirst(),
             (QStringList{QStringLiteral("料号名称"), QStringLiteral("批号")}));
    QCOMPARE(table.rows, rows);
}

void TableFileTest::emptyCellsKeepTheirPlace()
{
    QFETCH(TableFile::Format, format);
    const QVector<QStringList> rows{{QString(), QStringLiteral("b")},
                                    {QStringLiteral("a"), QStringLiteral("b")}};
    QVERIFY(write(path("list"), format, rows).ok);
    QCOMPARE(read(path("list"), format).rows.mid(1), rows);
}

void TableFileTest::numbersAreNumbersInASheet()
{
    const QVector<QStringList> rows{{QStringLiteral("12"), QStringLiteral("12")},
                                    {QStringLiteral("x"), QStringLiteral("-3")},
                                    {QStringLiteral("x"), QStringLiteral("007")},
                                    {QStringLiteral("x"), QStringLiteral("9007199254740993")}};
    QVERIFY(write(path("list.xlsx"), TableFile::Format::Xlsx, rows).ok);
    const auto table = readSheet(path("list.xlsx"));
    QCOMPARE(table.rows.at(1), (QStringList{QStringLiteral("12"), QStringLiteral("#12")}));
    QCOMPARE(table.rows.at(2).at(1), QStringLiteral("#-3"));
    QCOMPARE(table.rows.at(3).at(1), QStringLiteral("007"));
    QCOMPARE(table.rows.at(4).at(1), QStringLiteral("9007199254740993"));
}

void TableFileTest::aSheetKeepsItsTitlesInSight()
{
    QVERIFY(write(path("list.xlsx"), TableFile::Format::Xlsx, {}).ok);
    const auto table = readSheet(path("list.xlsx"));
    QCOMPARE(table.frozenRows, 1);
    QCOMPARE(table.widths.keys(), QList<int>{0}); // the other column has the usual width
    QVERIFY(table.widths.value(0) >= 20 && table.widths.value(0) < 21);
}

/// Where there has to be room for them anyway, and not where the system keeps scraps.
void TableFileTest::rowsOfASheetWaitBesideIt()
{
#if defined(Q_OS_WIN)
    QSKIP("they wait among the temporary files here");
#endif
    const QSet<QString> before = unnamedFiles();
    const auto file = TableFile::create(path("list.xlsx"), TableFile::Format::Xlsx, columns());
    QVERIFY(file);
    const QSet<QString> waiting = unnamedFiles() - before;
    QCOMPARE(waiting.size(), 1);
    QVERIFY2(waiting.begin()->startsWith(QDir(m_dir->path()).canonicalPath()),
             qPrintable(*waiting.begin()));
}

void TableFileTest::givenUpItLeavesNothing()
{
    QFETCH(TableFile::Format, format);
    const auto handles = [] { return QDir(QStringLiteral("/proc/self/fd")).entryList().size(); };
    [[maybe_unused]] const int handlesBefore = handles();
    {
        const auto file = TableFile::create(path("list"), format, columns());
        QVERIFY(file);
        for (int i = 0; i < 2000; ++i)
            QVERIFY(file.value->addRow({QString::number(i), QStringLiteral("x")}));
        QVERIFY(!QFile::exists(path("list")));
    }
    QCOMPARE(files(), QStringList());
#if defined(Q_OS_LINUX) // which tells what is open
    QCOMPARE(handles(), handlesBefore);
#endif
}

void TableFileTest::aFullDiskLeavesWhatStoodThere_data()
{
    QTest::addColumn<TableFile::Format>("format");
    QTest::addColumn<int>("room");
    for (const int room : {0, 1, 1000, 4096, 20000, 60000}) {
        QTest::newRow(qPrintable(QStringLiteral("CSV, %1 bytes").arg(room)))
            << TableFile::Format::Csv << room;
        QTest::newRow(qPrintable(QStringLiteral("XLSX, %1 bytes").arg(room)))
            << TableFile::Format::Xlsx << room;
    }
}

void TableFileTest::aFullDiskLeavesWhatStoodThere()
{
    QFETCH(TableFile::Format, format);
    QFETCH(int, room);
    QVector<QStringList> rows;
    for (int i = 0; i < 4000; ++i)
        rows << QStringList{QStringLiteral("a name of some length %1").arg(i * 7919), QString()};
    QVERIFY(write(path("list"), format, {{QStringLiteral("old"), QString()}}).ok);
    const auto before = read(path("list"), format).rows;
    Outcome outcome;
    {
        const SmallFiles full(room);
        if (!full.isInForce())
            QSKIP("files cannot be kept small here");
        outcome = write(path("list"), format, rows);
    }
    QVERIFY2(!outcome.ok, "it claims to have written what there is no room for");
    QVERIFY(!outcome.text.isEmpty());
    QCOMPARE(files(), QStringList{QStringLiteral("list")});
    QCOMPARE(read(path("list"), format).rows, before);
    QVERIFY(write(path("list"), format, rows).ok);
    QCOMPARE(read(path("list"), format).rows.size(), rows.size() + 1);
}

void TableFileTest::remainsOfKilledWritersGo()
{
    QFile remain(path(".kodms-list-0123.part"));
    QVERIFY(remain.open(QIODevice::WriteOnly));
    remain.close();
    const auto other = TableFile::create(path("other"), TableFile::Format::Csv, columns());
    QVERIFY(other);
    QVERIFY(write(path("list"), TableFile::Format::Csv, {}).ok);
    QVERIFY(!QFile::exists(remain.fileName()));
    QVERIFY2(other.value->publish().ok, "somebody else's file in the making was taken away");
}

void TableFileTest::impossiblePlacesAreRefused_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("no such folder") << QStringLiteral("none/list.csv");
    QTest::newRow("a folder") << QStringLiteral(".");
    QTest::newRow("name too long") << QString(300, QLatin1Char('x'));
}

void TableFileTest::impossiblePlacesAreRefused()
{
    QFETCH(QString, place);
    const Outcome outcome = write(m_dir->filePath(place), TableFile::Format::Xlsx, {});
    QVERIFY(!outcome.ok);
    QVERIFY(!outcome.text.isEmpty());
    QCOMPARE(files(), QStringList());
}

void TableFileTest::aDamagedBookIsNoticed_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("cutTo");
    QTest::newRow("whole") << 501 << 100;
    QTest::newRow("a row is missing") << 502 << 100;
    QTest::newRow("half of it") << 501 << 50;
    QTest::newRow("without its end") << 501 << 99;
}

void TableFileTest::aDamagedBookIsNoticed()
{
    QFETCH(int, rows);
    QFETCH(int, cutTo);
    const QVector<QStringList> all(500, {QStringLiteral("a"), QStringLiteral("b")});
    QVERIFY(write(path("list.xlsx"), TableFile::Format::Xlsx, all).ok);
    QFile file(path("list.xlsx"));
    QVERIFY(file.resize(file.size() * cutTo / 100));
    QCOMPARE(proveSheet(path("list.xlsx"), rows).ok, rows == 501 && cutTo == 100);
}

KODMS_TEST_MAIN(TableFileTest, QCoreApplication)
#include "TableFileTest.moc"
