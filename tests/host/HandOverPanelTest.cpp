// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/HandOverPanel.h"
#include "apps/desk/HandOverLog.h"
#include "tests/host/OpenedFolders.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace KODMS::Host;
using KODMS::Tests::OpenedFolders;

/// With clicks and keys.
class HandOverPanelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theFolderOpens_data();
    void theFolderOpens();
    void onlyARowWithAPathCanBeOpened();
    void severalRowsOpenNothing();
    void aFolderThatIsGoneIsSaid();
    void aHostileNameInTheMessageStaysText();
    void anUnwillingSystemIsSaid();
    void copiesAllOrTheSelection();
    void keysOpenAndCopy();
    void namesAreShortenedInTheMiddle();

private:
    QTableView &table() { return *m_panel->findChild<QTableView *>(QStringLiteral("handOvers")); }

    QPushButton &button(const char *name)
    {
        return *m_panel->findChild<QPushButton *>(QLatin1String(name));
    }

    QAction &action(const char *name)
    {
        return *m_panel->findChild<QAction *>(QLatin1String(name));
    }

    void clickRow(int row)
    {
        const QRect cell = table().visualRect(table().model()->index(row, 2));
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }

    void doubleClickRow(int row)
    {
        const QPoint cell = table().visualRect(table().model()->index(row, 2)).center();
        QTest::mouseClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, cell);
        QTest::mouseDClick(table().viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    }

    /// Answers the message that comes up during `action`, and gives its text.
    static QString messageDuring(const std::function<void()> &action);

    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<OpenedFolders> m_opened;
    std::unique_ptr<HandOverLog> m_log;
    std::unique_ptr<QMainWindow> m_window;
    HandOverPanel *m_panel = nullptr;
    QString m_folder;
};

void HandOverPanelTest::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    m_opened = std::make_unique<OpenedFolders>();
    m_log = std::make_unique<HandOverLog>();
    m_window = std::make_unique<QMainWindow>();
    m_panel = new HandOverPanel(*m_log, m_window.get());
    m_window->addDockWidget(Qt::BottomDockWidgetArea, m_panel);
    m_window->resize(1000, 600);
    m_window->show();
    m_folder = m_dir->filePath(QStringLiteral("料号 web000001"));
    QVERIFY(QDir().mkpath(m_folder));
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void HandOverPanelTest::cleanup()
{
    m_window.reset();
    m_log.reset();
    m_opened.reset();
}

QString HandOverPanelTest::messageDuring(const std::function<void()> &action)
{
    QString text;
    QTimer::singleShot(0, qApp, [&text] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return;
        if (box->textFormat() == Qt::PlainText)
            text = box->text();
        QTest::keyClick(box->button(QMessageBox::Ok), Qt::Key_Space);
    });
    action();
    return text;
}

void HandOverPanelTest::theFolderOpens_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way : {"button", "double click", "context menu", "return key", "enter key"})
        QTest::newRow(way) << way;
}

void HandOverPanelTest::theFolderOpens()
{
    QFETCH(QString, way);
    m_log->addImport(m_folder + QStringLiteral("/job.tgz|p=1"), QStringLiteral("web000001"));
    m_log->addExport(QStringLiteral("other"), 7);
    if (way == QStringLiteral("double click")) {
        doubleClickRow(1);
    } else {
        clickRow(1);
        if (way == QStringLiteral("button"))
            QTest::mouseClick(&button("openHandOver"), Qt::LeftButton);
        else if (way == QStringLiteral("context menu"))
            action("openHandOverFolder").trigger();
        else
            QTest::keyClick(&table(), way.startsWith(QStringLiteral("return")) ? Qt::Key_Return
                                                                               : Qt::Key_Enter);
    }
    QCOMPARE(m_opened->folders, QStringList{m_folder});
    QCOMPARE(table().contextMenuPolicy(), Qt::ActionsContextMenu);
    QVERIFY(table().actions().contains(&action("openHandOverFolder")));
}

void HandOverPanelTest::onlyARowWithAPathCanBeOpened()
{
    QVERIFY(!button("openHandOver").isEnabled());
    QVERIFY(!button("copyHandOvers").isEnabled());
    m_log->addInput(QStringLiteral("web000001"), m_folder);
    m_log->addExport(QStringLiteral("other"), 7);
    QVERIFY(!button("openHandOver").isEnabled()); // nothing is selected
    clickRow(0);
    QVERIFY(!button("openHandOver").isEnabled());
    QVERIFY(!action("openHandOverFolder").isEnabled());
    doubleClickRow(0);
    clickRow(1);
    QVERIFY(button("openHandOver").isEnabled());
    QVERIFY(action("openHandOverFolder").isEnabled());
    m_log->clear();
    QVERIFY(!button("openHandOver").isEnabled());
    QVERIFY(m_opened->folders.isEmpty());
}

void HandOverPanelTest::severalRowsOpenNothing()
{
    m_log->addInput(QStringLiteral("a"), m_folder);
    m_log->addInput(QStringLiteral("b"), m_folder);
    table().selectAll();
    QVERIFY(!button("openHandOver").isEnabled());
}

void HandOverPanelTest::aFolderThatIsGoneIsSaid()
{
    m_log->addInput(QStringLiteral("web000001"), m_folder);
    QVERIFY(QDir().rmdir(m_folder));
    clickRow(0);
    const QString text =
        messageDuring([this] { QTest::mouseClick(&button("openHandOver"), Qt::LeftButton); });
    QVERIFY2(text.contains(QStringLiteral("已不存在")), qPrintable(text));
    QVERIFY(text.contains(QDir::toNativeSeparators(m_folder)));
    QVERIFY(m_opened->folders.isEmpty());
}

void HandOverPanelTest::aHostileNameInTheMessageStaysText()
{
    m_log->addInput(QStringLiteral("x"), m_folder + QStringLiteral("/<b>a</b>\nall is well"));
    clickRow(0);
    const QString text = messageDuring([this] { m_panel->openFolder(); });
    QCOMPARE(text.count(QLatin1Char('\n')), 1);
    QVERIFY2(text.endsWith(QStringLiteral("?all is well")), qPrintable(text));
}

void HandOverPanelTest::anUnwillingSystemIsSaid()
{
    m_opened.reset(); // nobody handles folders here any more
    m_log->addInput(QStringLiteral("web000001"), m_folder);
    clickRow(0);
    const QString text = messageDuring([this] { m_panel->openFolder(); });
    QVERIFY2(text.contains(QStringLiteral("无法打开")), qPrintable(text));
}

void HandOverPanelTest::copiesAllOrTheSelection()
{
    m_log->addInput(QStringLiteral("first"), m_folder + QStringLiteral("|p=1"));
    m_log->addExport(QStringLiteral("second"), 7);
    QTest::mouseClick(&button("copyHandOvers"), Qt::LeftButton);
    const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first().contains(QStringLiteral("\t导出\tsecond\t\t")));
    QVERIFY(lines.last().endsWith(QDir::toNativeSeparators(m_folder) + QStringLiteral("\tp=1")));
    clickRow(1);
    action("copyHandOverRows").trigger();
    QCOMPARE(QApplication::clipboard()->text(), lines.last());
}

void HandOverPanelTest::keysOpenAndCopy()
{
    m_log->addInput(QStringLiteral("a"), m_folder);
    m_log->addExport(QStringLiteral("b"), 7);
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    clickRow(0);
    QTest::keyClick(&table(), Qt::Key_Return); // has no folder
    QTest::keyClick(&table(), Qt::Key_Down);
    QTest::keyClick(&table(), Qt::Key_Return);
    QCOMPARE(m_opened->folders, QStringList{m_folder});
    QTest::keyClick(&table(), Qt::Key_C, Qt::ControlModifier);
    QVERIFY(QApplication::clipboard()->text().contains(QStringLiteral("\t读入\ta\t")));
}

void HandOverPanelTest::namesAreShortenedInTheMiddle()
{
    QCOMPARE(table().textElideMode(), Qt::ElideMiddle);
    QVERIFY(!table().wordWrap());
    m_log->addInput(QString(400, QLatin1Char('n')), QString(2000, QLatin1Char('p')));
    QVERIFY(table().rowHeight(0) < 60);
    QVERIFY(m_window->width() <= 1000);
}

KODMS_TEST_MAIN(HandOverPanelTest, QApplication)
#include "HandOverPanelTest.moc"
