// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/archive/SampleArchives.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"
#include "tests/ui/BoxAnswers.h"
#include "tests/ui/ImportWindowCase.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QTimer>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// What is chosen in the import window, by dialog or drop: shown, or refused.
class ImportChoiceTest : public ImportWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void showsWhatWillBeImported();
    void choosesWithADialog_data();
    void choosesWithADialog();
    void refusesWithFileAndLine();
    void whatIsRefusedIsNoChoice();
    void refusesDropsOfNoUse_data();
    void refusesDropsOfNoUse();
};

void ImportChoiceTest::init()
{
    m_home = std::make_unique<ImportHome>();
    m_home->actAsExecutor();
}

void ImportChoiceTest::cleanup()
{
    delete m_window;
    m_home.reset();
}

void ImportChoiceTest::showsWhatWillBeImported()
{
    open();
    drop(m_home->boardArchive());
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
    QCOMPARE(text("importSteps"), QStringLiteral("pcb"));
    QCOMPARE(text("importLayers"), QStringLiteral("6（矩阵 12 行）"));
    QCOMPARE(text("importLayerTypes"),
             QStringLiteral("COMPONENT 1，DOCUMENT 1，DRILL 1，MIXED 1，POWER_GROUND 1，SIGNAL 4，"
                            "SILK_SCREEN 1，SOLDER_MASK 2"));
    QCOMPARE(text("importFeatures"), QStringLiteral("550"));
    QVERIFY(text("importSize").contains(QStringLiteral("个文件")));
    QVERIFY(button("importJob")->isEnabled());
    QCOMPARE(m_home->flowValue(QStringLiteral("flow_status")), QStringLiteral("0"));
    drop(m_home->boardFolder(QStringLiteral("folder")));
    QCOMPARE(text("importJobName"), QStringLiteral("folder"));
}

void ImportChoiceTest::choosesWithADialog_data()
{
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QByteArray>("pressed");
    QTest::newRow("a file") << false << QByteArray("chooseImportFile");
    QTest::newRow("a folder") << true << QByteArray("chooseImportFolder");
}

void ImportChoiceTest::choosesWithADialog()
{
    QFETCH(bool, isFolder);
    QFETCH(QByteArray, pressed);
    open();
    const QString path = isFolder ? m_home->boardFolder() : m_home->boardArchive();
    QTimer::singleShot(0, qApp, [path] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->selectFile(path);
        QMetaObject::invokeMethod(dialog, "accept");
    });
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    click(pressed.constData());
    QCOMPARE(text("importJobName"), QStringLiteral("board"));
}

void ImportChoiceTest::refusesWithFileAndLine()
{
    open();
    const QString path = m_home->house.path(QStringLiteral("bad.tgz"));
    QVERIFY(writeFile(path, tgzOf(smallJob("P 1 1 0 P 0 0\nP 1 one 0 P 0 0\n"))));
    drop(m_home->boardArchive());
    drop(path);
    QCOMPARE(text("importMessage"),
             QStringLiteral("job/steps/pcb/layers/l1/features 第 2 行：不是数值：one"));
    QVERIFY(text("importJobName").isEmpty());
    QVERIFY(!button("importJob")->isEnabled());
    QCOMPARE(text("importPath"), QStringLiteral("bad.tgz"));
}

/// Nor does what was chosen before remain one: there is nothing to lose.
void ImportChoiceTest::whatIsRefusedIsNoChoice()
{
    open();
    BoxAnswers boxes;
    const QString path = m_home->house.path(QStringLiteral("bad.tgz"));
    QVERIFY(writeFile(path, "a text"));
    drop(m_home->boardArchive());
    drop(path);
    m_window->setFlowGuid(info(QStringLiteral("another"), QStringLiteral("A1B000002")));
    QVERIFY(boxes.texts.isEmpty());
    QVERIFY(text("importTarget").contains(QLatin1String("A1B000002")));
}

void ImportChoiceTest::refusesDropsOfNoUse_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::addColumn<QString>("said");
    const QString onlyOne = QStringLiteral("一次只能导入一个文件或文件夹");
    const QString onlyHere = QStringLiteral("只能导入本机上的文件或文件夹");
    const QUrl folder = QUrl::fromLocalFile(QDir::tempPath());
    QTest::newRow("two that are there") << QList<QUrl>{folder, folder} << onlyOne;
    QTest::newRow("a page") << QList<QUrl>{QUrl(QStringLiteral("https://example.invalid/x.tgz"))}
                            << onlyHere;
    QTest::newRow("a file that is not there")
        << QList<QUrl>{QUrl(QStringLiteral("file:///nothing"))} << onlyHere;
}

void ImportChoiceTest::refusesDropsOfNoUse()
{
    QFETCH(QList<QUrl>, urls);
    QFETCH(QString, said);
    open();
    drop(urls);
    QCOMPARE(text("importMessage"), said);
    QVERIFY(!button("importJob")->isEnabled());
}

KODMS_TEST_MAIN(ImportChoiceTest, QApplication)
#include "ImportChoiceTest.moc"
