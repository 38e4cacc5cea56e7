// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/TableCopy.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace KODMS::UI;

/// What another program pastes that the desks have copied, character by character.
class ClipboardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase()
    {
        // The clipboard of the tests' own platform is nobody else's.
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("windows"));
    }

    void init()
    {
        m_table = std::make_unique<QTableWidget>(2, 3);
        fill(0, {QStringLiteral("A1B000001"), QStringLiteral("主板 \"甲\""), QString()});
        fill(1, {QStringLiteral("A1B000002"), QStringLiteral("4 层，沉金"),
                 QStringLiteral("𠮷野家")}); // the first is two units of UTF-16
    }

    void cellsAndRows()
    {
        m_table->selectAll();
        copyToClipboard(selectedCellsText(m_table.get()));
        const QString first = QStringLiteral("A1B000001\t主板 \"甲\"\t\r\n");
        const QString second = QStringLiteral("A1B000002\t4 层，沉金\t𠮷野家\r\n");
        QCOMPARE(pasted(), first + second);
        copyToClipboard(visibleCellsText(m_table.get()));
        QCOMPARE(pasted(), first + second);
    }

    void aColumn()
    {
        m_table->setCurrentCell(1, 1);
        copyToClipboard(currentColumnText(m_table.get()));
        QCOMPARE(pasted(), QStringLiteral("主板 \"甲\"\r\n4 层，沉金\r\n"));
    }

    void aRow()
    {
        m_table->setCurrentCell(1, 1);
        copyToClipboard(currentRowText(m_table.get()));
        QCOMPARE(pasted(), QStringLiteral("A1B000002\t4 层，沉金\t𠮷野家\t"));
    }

    /// As some programs write them into remarks.
    void lineEndsInACell()
    {
        m_table->setRowCount(1);
        fill(0, {QStringLiteral("one\ntwo"), QStringLiteral("three\r\nfour"), QStringLiteral("5")});
        copyToClipboard(visibleCellsText(m_table.get()));
        QCOMPARE(pasted(), QStringLiteral("one\r\ntwo\tthree\r\nfour\t5\r\n"));
    }

    void nothing()
    {
        copyToClipboard(QStringLiteral("before"));
        QCOMPARE(pasted(), QStringLiteral("before"));
        copyToClipboard(QStringLiteral("\n"));
        QCOMPARE(pasted(), QStringLiteral("\r\n"));
    }

    void manyRows()
    {
        constexpr int rows = 5000;
        m_table->setRowCount(rows);
        QString expected;
        for (int row = 0; row < rows; ++row) {
            const QString name = QStringLiteral("料号%1").arg(row);
            fill(row, {name, QStringLiteral("2"), QStringLiteral("3")});
            expected += name + QStringLiteral("\t2\t3\r\n");
        }
        copyToClipboard(visibleCellsText(m_table.get()));
        QVERIFY(pasted() == expected);
    }

    void whatAnotherProgramCopiedIsReadBack()
    {
        copyToClipboard(QStringLiteral("A1\t主板\n"));
        QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("A1\t主板\n"));
    }

private:
    void fill(int row, const QStringList &cells)
    {
        for (int column = 0; column < cells.size(); ++column)
            m_table->setItem(row, column, new QTableWidgetItem(cells.at(column)));
    }

    /// By a program of its own, which asks the system and not Qt. While it runs we answer it.
    static QString pasted()
    {
        const QTemporaryDir place;
        const QString written = place.filePath(QStringLiteral("pasted"));
        QProcess reader;
        reader.start(QStringLiteral(KODMS_CLIPBOARD_READER), {QDir::toNativeSeparators(written)});
        for (int i = 0; i < 3000 && reader.state() != QProcess::NotRunning; ++i)
            QTest::qWait(20);
        QFile file(written);
        if (reader.exitCode() != 0 || !file.open(QIODevice::ReadOnly))
            return QStringLiteral("nothing was pasted: %1").arg(reader.exitCode());
        const QByteArray bytes = file.readAll();
        return QString::fromUtf16(reinterpret_cast<const ushort *>(bytes.constData()),
                                  bytes.size() / int(sizeof(ushort)));
    }

    std::unique_ptr<QTableWidget> m_table;
};

KODMS_TEST_MAIN(ClipboardTest, QApplication)
#include "ClipboardTest.moc"
