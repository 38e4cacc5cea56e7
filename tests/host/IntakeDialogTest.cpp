// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/IntakeDialog.h"
#include "apps/desk/DropZone.h"
#include "apps/desk/HandOverLog.h"
#include "apps/desk/MainWindow.h"
#include "apps/desk/NoticeLog.h"
#include "apps/desk/Preferences.h"
#include "foundation/ui/DMS_UICommon.h"
#include "services/api/Customers.h"
#include "tests/archive/RawZip.h"
#include "tests/archive/SampleArchives.h"
#include "tests/host/SampleInstallation.h"
#include "tests/support/TestMain.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QCompleter>
#include <QDir>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace KODMS::Host;
using namespace KODMS::Tests;
using KODMS::Services::Customers;
using KODMS::UI::DMS_UICommon;

/// Signed in as the file keeper, on a sample installation without jobs.
class IntakeDialogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void aDroppedZipBecomesAJobByKeys();
    void aDroppedFolderBecomesAJob();
    void aKnownCustomerNeedsNoName();
    void theListOfCustomersHelps();
    void theOriginalNameComesFromTheFile_data();
    void theOriginalNameComesFromTheFile();
    void aTypedOriginalNameStays();
    void whatIsMissingIsAskedFor();
    void theCodeTakesThreeLettersOrDigits();
    void dropsThatCannotBeTaken_data();
    void dropsThatCannotBeTaken();
    void hostileArchivesAreRefused_data();
    void hostileArchivesAreRefused();
    void aFileThatVanishedIsTold();
    void desksRefreshOnce();
    void theNextIntakeKeepsTheCustomer();
    void tabOrderFollowsTheForm();
    void droppingOnTheMainWindowOpensTheDialog();

private:
    template <typename Widget> Widget &child(const char *name)
    {
        return *m_dialog->findChild<Widget *>(QLatin1String(name));
    }

    QString zipFile(const QString &name, const QVector<RawZipEntry> &entries = {{"a.gbr", "G04"}});
    static void drop(QWidget &target, const QList<QUrl> &urls);

    void dropFile(const QString &path)
    {
        drop(child<DropZone>("dropZone"), {QUrl::fromLocalFile(path)});
    }

    QString error() { return child<QLabel>("error").text(); }

    QString jobName() { return child<QLabel>("receiptJobName").text(); }

    void type(const char *field, const QString &text)
    {
        QTest::keyClicks(&child<QLineEdit>(field), text);
    }

    void pressTake() { child<QPushButton>("primary").click(); }

    QTemporaryDir m_files;
    std::unique_ptr<SampleInstallation> m_installation;
    std::unique_ptr<IntakeDialog> m_dialog;
};

void IntakeDialogTest::initTestCase()
{
    m_installation = std::make_unique<SampleInstallation>();
    QVERIFY2(m_installation->problem().isEmpty(), qPrintable(m_installation->problem()));
    QVERIFY(m_installation->signIn(QStringLiteral("orig-file-update")));
}

void IntakeDialogTest::init()
{
    m_dialog = std::make_unique<IntakeDialog>();
    m_dialog->show();
    m_dialog->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
}

void IntakeDialogTest::cleanup()
{
    m_dialog.reset();
}

QString IntakeDialogTest::zipFile(const QString &name, const QVector<RawZipEntry> &entries)
{
    const QString path = m_files.filePath(name);
    return writeFile(path, rawZip(entries)) ? path : QString();
}

/// With Shift held, which offers to move: whatever is taken is copied all the same.
void IntakeDialogTest::drop(QWidget &target, const QList<QUrl> &urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint place = target.rect().center();
    const Qt::DropActions offered = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(place, offered, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&target, &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);
    QDropEvent event(place, offered, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&target, &event);
    QVERIFY(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
}

void IntakeDialogTest::aDroppedZipBecomesAJobByKeys()
{
    dropFile(zipFile(QStringLiteral("电源板 V2.zip")));
    QVERIFY(child<QLineEdit>("customerCode").hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("A1B"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("Huaxin"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY2(error().isEmpty(), qPrintable(error()));
    QCOMPARE(jobName(), QStringLiteral("A1B000001"));
    QVERIFY(!child<QPushButton>("primary").isVisible());
    child<QPushButton>("copyJobName").click();
    QCOMPARE(QApplication::clipboard()->text(), QStringLiteral("A1B000001"));
    const auto customers = Customers::known();
    QCOMPARE(customers.value.size(), 1);
    QCOMPARE(customers.value.first().name, QStringLiteral("Huaxin"));
}

void IntakeDialogTest::aDroppedFolderBecomesAJob()
{
    const QString folder = m_files.filePath(QStringLiteral("gerber"));
    QVERIFY(QDir().mkpath(folder));
    QVERIFY(writeFile(folder + QStringLiteral("/top.gbr"), "G04"));
    dropFile(folder);
    type("customerCode", QStringLiteral("F01"));
    type("customerName", QStringLiteral("Folder Co"));
    QCOMPARE(child<QLineEdit>("origName").text(), QStringLiteral("gerber"));
    pressTake();
    QVERIFY2(error().isEmpty(), qPrintable(error()));
    QCOMPARE(jobName(), QStringLiteral("F01000001"));
}

void IntakeDialogTest::aKnownCustomerNeedsNoName()
{
    dropFile(zipFile(QStringLiteral("second.zip")));
    type("customerCode", QStringLiteral("a1b")); // in any case of letters
    QCOMPARE(child<QLineEdit>("customerName").text(), QStringLiteral("Huaxin"));
    QVERIFY(!child<QLineEdit>("customerName").isEnabled());
    QTRY_VERIFY(!child<QLineEdit>("customerCode").completer()->popup()->isVisible());
    pressTake();
    QCOMPARE(jobName(), QStringLiteral("A1B000002"));
}

void IntakeDialogTest::theListOfCustomersHelps()
{
    child<QLineEdit>("customerCode").setFocus();
    type("customerCode", QStringLiteral("a"));
    QAbstractItemView *list = child<QLineEdit>("customerCode").completer()->popup();
    QVERIFY(list->isVisible());
    QCOMPARE(list->model()->rowCount(), 1);
    QCOMPARE(list->model()->index(0, 0).data().toString(), QStringLiteral("A1B  Huaxin"));
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
    QCOMPARE(child<QLineEdit>("customerCode").text(), QStringLiteral("A1B"));
    QCOMPARE(child<QLineEdit>("customerName").text(), QStringLiteral("Huaxin"));
    QVERIFY(child<QPushButton>("primary").isVisible());
}

void IntakeDialogTest::theOriginalNameComesFromTheFile_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("name");
    QTest::newRow("zip") << "board.zip"
                         << "board";
    QTest::newRow("two suffixes") << "board.tar.gz"
                                  << "board";
    QTest::newRow("dots in the name") << "HX.6L.v2.tgz"
                                      << "HX.6L.v2";
    QTest::newRow("no suffix") << "board"
                               << "board";
}

void IntakeDialogTest::theOriginalNameComesFromTheFile()
{
    QFETCH(QString, file);
    dropFile(zipFile(file));
    QTEST(child<QLineEdit>("origName").text(), "name");
}

void IntakeDialogTest::aTypedOriginalNameStays()
{
    type("origName", QStringLiteral("mine"));
    dropFile(zipFile(QStringLiteral("other.zip")));
    QCOMPARE(child<QLineEdit>("origName").text(), QStringLiteral("mine"));
}

void IntakeDialogTest::whatIsMissingIsAskedFor()
{
    pressTake();
    QVERIFY(error().contains(QStringLiteral("压缩包")));
    QVERIFY(child<QPushButton>("chooseFile").hasFocus());
    dropFile(zipFile(QStringLiteral("board.zip")));
    QVERIFY(error().isEmpty());
    type("customerCode", QStringLiteral("Z9"));
    pressTake();
    QVERIFY(error().contains(QStringLiteral("三位")));
    QVERIFY(child<QLineEdit>("customerCode").hasFocus());
    type("customerCode", QStringLiteral("9"));
    pressTake();
    QVERIFY(error().contains(QStringLiteral("客户名称")));
    QVERIFY(child<QLineEdit>("customerName").hasFocus());
    type("customerName", QStringLiteral("Z"));
    child<QLineEdit>("origName").clear();
    pressTake();
    QVERIFY(error().contains(QStringLiteral("原始料名")));
    QVERIFY(jobName().isEmpty());
}

void IntakeDialogTest::theCodeTakesThreeLettersOrDigits()
{
    type("customerCode", QStringLiteral("a-"));
    child<QLineEdit>("customerCode").insert(QStringLiteral("客"));
    type("customerCode", QStringLiteral("1 b9x"));
    QCOMPARE(child<QLineEdit>("customerCode").text(), QStringLiteral("a1b"));
}

void IntakeDialogTest::dropsThatCannotBeTaken_data()
{
    QTest::addColumn<QStringList>("urls");
    const QString here = QUrl::fromLocalFile(m_files.path()).toString();
    QTest::newRow("two at once") << QStringList{here, here};
    QTest::newRow("from the web") << QStringList{QStringLiteral("https://127.0.0.1/board.zip")};
    QTest::newRow("not there") << QStringList{here + QStringLiteral("/gone.zip")};
}

void IntakeDialogTest::dropsThatCannotBeTaken()
{
    QFETCH(QStringList, urls);
    drop(child<DropZone>("dropZone"), QUrl::fromStringList(urls));
    QVERIFY(!error().isEmpty());
    QVERIFY(child<DropZone>("dropZone").path().isEmpty());
}

void IntakeDialogTest::hostileArchivesAreRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("isWarnedAbout"); // in the log; else it is information there
    QTest::newRow("an entry that climbs out") << rawZip({{"../evil.gbr", "x"}}) << true;
    QTest::newRow("an absolute entry") << rawZip({{"/etc/evil", "x"}}) << true;
    RawZipEntry link{"link", "/etc/passwd"};
    link.unixMode = 0120777;
    QTest::newRow("a link to outside") << rawZip({link}) << true;
    QTest::newRow("cut in the middle") << rawZip({{"a", QByteArray(5000, 'a')}}).left(2000) << true;
    QTest::newRow("no archive at all") << QByteArray("MZ this is a program") << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void IntakeDialogTest::hostileArchivesAreRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, isWarnedAbout);
    const QString path = m_files.filePath(QStringLiteral("hostile.zip"));
    QVERIFY(writeFile(path, content));
    dropFile(path);
    type("customerCode", QStringLiteral("EVL"));
    type("customerName", QStringLiteral("Evil"));
    const QSignalSpy notices(DMS_UICommon::interface(), &DMS_UICommon::serviceNotice);
    const QSignalSpy refreshed(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    if (isWarnedAbout)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("intake")));
    pressTake();
    QVERIFY(!error().isEmpty());
    QVERIFY(jobName().isEmpty());
    QVERIFY(child<QPushButton>("primary").isVisible());
    QCOMPARE(notices.size(), 1);
    QCOMPARE(refreshed.size(), 0);
    const auto customers = Customers::known();
    for (const auto &customer : customers.value)
        QVERIFY(customer.code != QStringLiteral("EVL"));
    const QDir store(m_installation->folder() + QStringLiteral("/staging"));
    QVERIFY(store.entryList(QDir::Files).isEmpty());
}

void IntakeDialogTest::aFileThatVanishedIsTold()
{
    const QString path = zipFile(QStringLiteral("vanishing.zip"));
    dropFile(path);
    type("customerCode", QStringLiteral("A1B"));
    QVERIFY(QFile::remove(path));
    pressTake();
    QVERIFY(error().contains(QStringLiteral("不存在")));
}

void IntakeDialogTest::desksRefreshOnce()
{
    QSignalSpy refreshed(DMS_UICommon::interface(), &DMS_UICommon::refreshExportJobTable);
    dropFile(zipFile(QStringLiteral("third.zip")));
    type("customerCode", QStringLiteral("A1B"));
    pressTake();
    QVERIFY(!jobName().isEmpty());
    QTRY_COMPARE(refreshed.size(), 1);
    QCoreApplication::processEvents();
    QCOMPARE(refreshed.size(), 1);
}

void IntakeDialogTest::theNextIntakeKeepsTheCustomer()
{
    dropFile(zipFile(QStringLiteral("one.zip")));
    type("customerCode", QStringLiteral("N01"));
    type("customerName", QStringLiteral("New One"));
    type("tips", QStringLiteral("urgent"));
    child<QCheckBox>("paid").setChecked(true);
    pressTake();
    QCOMPARE(jobName(), QStringLiteral("N01000001"));
    child<QPushButton>("takeNext").click();
    QVERIFY(child<QPushButton>("primary").isVisible());
    QVERIFY(child<DropZone>("dropZone").path().isEmpty());
    QVERIFY(child<QLineEdit>("tips").text().isEmpty());
    QVERIFY(!child<QCheckBox>("paid").isChecked());
    QCOMPARE(child<QLineEdit>("customerCode").text(), QStringLiteral("N01"));
    QCOMPARE(child<QLineEdit>("customerName").text(), QStringLiteral("New One"));
    QVERIFY(!child<QLineEdit>("customerName").isEnabled());
    dropFile(zipFile(QStringLiteral("two.zip")));
    QCOMPARE(child<QLineEdit>("origName").text(), QStringLiteral("two"));
    pressTake();
    QCOMPARE(jobName(), QStringLiteral("N01000002"));
}

void IntakeDialogTest::tabOrderFollowsTheForm()
{
    QStringList order;
    for (int i = 0; i < 8; ++i) {
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    const QStringList expected{QStringLiteral("chooseFile"),   QStringLiteral("chooseFolder"),
                               QStringLiteral("customerCode"), QStringLiteral("origName"),
                               QStringLiteral("description"),  QStringLiteral("tips"),
                               QStringLiteral("paid"),         QStringLiteral("primary")};
    QCOMPARE(order, expected);
}

void IntakeDialogTest::droppingOnTheMainWindowOpensTheDialog()
{
    m_dialog.reset();
    Preferences preferences(m_files.filePath(QStringLiteral("kodms-desk.ini")));
    NoticeLog notices;
    HandOverLog handOvers;
    MainWindow window(preferences, notices, handOvers);
    window.show();
    const QString path = zipFile(QStringLiteral("dropped.zip"));
    QString chosen;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&] {
        auto *dialog = qobject_cast<IntakeDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        chosen = dialog->findChild<DropZone *>()->path();
        dialog->reject();
    });
    watch.start(20);
    drop(window, {QUrl::fromLocalFile(path)});
    QTRY_COMPARE(chosen, path);
}

KODMS_TEST_MAIN(IntakeDialogTest, QApplication)
#include "IntakeDialogTest.moc"
