// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tables/CellText.h"
#include "tests/support/TestMain.h"

#include <QTest>

using namespace KODMS::Services;

/// What becomes of hostile texts on their way into a file.
class CellTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aCsvField_data();
    void aCsvField();
    void aSheetCell_data();
    void aSheetCell();
    void aLongSheetCellIsCut_data();
    void aLongSheetCellIsCut();
};

namespace {

const QString bad(QChar::ReplacementCharacter);

} // namespace

void CellTextTest::aCsvField_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("field");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("plain") << QStringLiteral("控制板 V2.1") << QStringLiteral("控制板 V2.1");
    QTest::newRow("comma") << QStringLiteral("a,b") << QStringLiteral("\"a,b\"");
    QTest::newRow("quote") << QStringLiteral("5\" board") << QStringLiteral("\"5\"\" board\"");
    QTest::newRow("line feed") << QStringLiteral("a\nb") << QStringLiteral("\"a\nb\"");
    QTest::newRow("carriage return") << QStringLiteral("a\rb") << QStringLiteral("\"a\rb\"");
    QTest::newRow("formula =") << QStringLiteral("=1+1") << QStringLiteral("'=1+1");
    QTest::newRow("formula +") << QStringLiteral("+1") << QStringLiteral("'+1");
    QTest::newRow("formula -") << QStringLiteral("-1") << QStringLiteral("'-1");
    QTest::newRow("formula @") << QStringLiteral("@SUM(A1)") << QStringLiteral("'@SUM(A1)");
    QTest::newRow("formula behind a tab") << QStringLiteral("\t=1") << QStringLiteral("'\t=1");
    QTest::newRow("formula behind a return")
        << QStringLiteral("\r=1") << QStringLiteral("\"'\r=1\"");
    for (const char *wide : {"＝1", "＋1", "－1", "＠1"})
        QTest::addRow("formula in wide letters %s", wide)
            << QString::fromUtf8(wide) << QLatin1Char('\'') + QString::fromUtf8(wide);
    QTest::newRow("formula behind a line feed")
        << QStringLiteral("\n=1") << QStringLiteral("\"'\n=1\"");
    QTest::newRow("formula in quotes") << QStringLiteral("=HYPERLINK(\"x\",\"y\")")
                                       << QStringLiteral("\"'=HYPERLINK(\"\"x\"\",\"\"y\"\")\"");
    QTest::newRow("minus inside") << QStringLiteral("A-1") << QStringLiteral("A-1");
    QTest::newRow("NUL") << QString(QStringLiteral("a") + QChar(0) + QStringLiteral("b"))
                         << QString(QStringLiteral("a") + bad + QStringLiteral("b"));
    QTest::newRow("escape") << QStringLiteral("\x1b[2J") << QString(bad + QStringLiteral("[2J"));
    QTest::newRow("half a character")
        << QString(QChar(0xd83d)) + QStringLiteral("x") << QString(bad + QStringLiteral("x"));
    QTest::newRow("other half") << QString(QChar(0xde80)) << bad;
    QTest::newRow("emoji") << QStringLiteral("🚀") << QStringLiteral("🚀");
    QTest::newRow("no character") << QString(QChar(0xffff)) << bad;
}

void CellTextTest::aCsvField()
{
    QFETCH(QString, text);
    QTEST(csvField(text), "field");
}

void CellTextTest::aSheetCell_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cell");
    QTest::newRow("formula stays a text") << QStringLiteral("=1+1") << QStringLiteral("=1+1");
    QTest::newRow("line ends") << QStringLiteral("a\r\nb\rc") << QStringLiteral("a\nb\nc");
    QTest::newRow("looks escaped")
        << QStringLiteral("a_x0041_") << QStringLiteral("a_x005F_x0041_");
    QTest::newRow("escaped twice")
        << QStringLiteral("_x005F_x0041_") << QStringLiteral("_x005F_x005F_x005F_x0041_");
    QTest::newRow("plain underlines") << QStringLiteral("_x_y_xyz") << QStringLiteral("_x_y_xyz");
    QTest::newRow("control") << QStringLiteral("\x01") << bad;
}

void CellTextTest::aSheetCell()
{
    QFETCH(QString, text);
    bool isCut = true;
    QTEST(sheetCell(text, &isCut), "cell");
    QVERIFY(!isCut);
}

void CellTextTest::aLongSheetCellIsCut_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("length");
    QTest::addColumn<bool>("cut");
    const QString longest(32767, QLatin1Char('x'));
    QTest::newRow("longest") << longest << 32767 << false;
    QTest::newRow("one more") << longest + QLatin1Char('x') << 32767 << true;
    QTest::newRow("far more") << longest.repeated(30) << 32767 << true;
    QTest::newRow("a pair at the end")
        << longest.left(32766) + QStringLiteral("🚀") << 32766 << true;
}

void CellTextTest::aLongSheetCellIsCut()
{
    QFETCH(QString, text);
    bool isCut = false;
    const QString cell = sheetCell(text, &isCut);
    QTEST(cell.size(), "length");
    QTEST(isCut, "cut");
    QVERIFY(text.startsWith(cell));
}

KODMS_TEST_MAIN(CellTextTest, QCoreApplication)
#include "CellTextTest.moc"
