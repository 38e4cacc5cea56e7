// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/StyleSheets.h"
#include "desks/modifyfile/DMS_ModifyFile_Widget.h"
#include "tests/desks/DeskTest.h"
#include "tests/desks/LayoutLines.h"
#include "tests/desks/Receivers.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>

using namespace KODMS::Tests;
using KODMS::UI::DMS_ModifyFile_Widget;

/// How the window for another original file is built, and what it offers.
class ModifyFileWidgetFaceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void itIsAWindowOfItsOwn();
    void itHasNeitherTitleNorSizeOfItsOwn();
    void captions();
    void styleSheets();
    void nothingElseIsStyled();
    void theLayoutEndsWithTheBox();
    void rowsStandInTheBox();
    void theBoxIsDrawnAtTheBottom();
    void theFieldsAreEmptyAndFree();
    void everyButtonReachesItsSlotOnce_data();
    void everyButtonReachesItsSlotOnce();
    void theMethodTable();
    void buildingAsksNobody();
    void itDiesWithTheDesk();
};

namespace {

QStringList layoutNames(const DMS_ModifyFile_Widget &window)
{
    QStringList names;
    const auto layouts = window.findChildren<QLayout *>();
    for (const QLayout *layout : layouts)
        names << layout->objectName();
    names.sort();
    return names;
}

QString access(QMetaMethod::Access access)
{
    return access == QMetaMethod::Public ? QStringLiteral("public") : QStringLiteral("private");
}

} // namespace

void ModifyFileWidgetFaceTest::itIsAWindowOfItsOwn()
{
    QWidget desk;
    auto *window = new DMS_ModifyFile_Widget(&desk);
    QCOMPARE(window->parentWidget(), &desk);
    QVERIFY(window->isWindow());
    QCOMPARE(window->windowFlags() & Qt::WindowType_Mask, Qt::Window);
    QVERIFY(!window->isVisible());
    QCOMPARE(DMS_ModifyFile_Widget(nullptr).parentWidget(), nullptr);
}

void ModifyFileWidgetFaceTest::itHasNeitherTitleNorSizeOfItsOwn()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QVERIFY(window.windowTitle().isEmpty());
    QVERIFY(!window.testAttribute(Qt::WA_Resized));
    QCOMPARE(window.minimumSize(), QWidget().minimumSize());
    QVERIFY(!window.testAttribute(Qt::WA_DeleteOnClose));
}

void ModifyFileWidgetFaceTest::captions()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QCOMPARE(control<QGroupBox>(window, "m_pGroupBox")->title(), QStringLiteral("导入"));
    QCOMPARE(control<QPushButton>(window, "m_pOpenFilePB")->text(), QStringLiteral("选择文件"));
    QCOMPARE(control<QPushButton>(window, "m_pOpenDirPB")->text(), QStringLiteral("选择文件夹"));
    QCOMPARE(control<QLabel>(window, "m_pNameLabel")->text(), QStringLiteral("文件名："));
    QCOMPARE(control<QPushButton>(window, "m_pSingleImportPB")->text(), QStringLiteral("导入"));
}

void ModifyFileWidgetFaceTest::styleSheets()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QCOMPARE(control(window, "m_pGroupBox")->styleSheet(), KODMS::UI::GroupBoxStyle);
    QCOMPARE(control(window, "m_pOpenFilePB")->styleSheet(), KODMS::UI::PushButtonGrayStyle);
    QCOMPARE(control(window, "m_pOpenDirPB")->styleSheet(), KODMS::UI::PushButtonGrayStyle);
    QCOMPARE(control(window, "m_pSingleImportPB")->styleSheet(), KODMS::UI::PushButtonBlueStyle);
}

void ModifyFileWidgetFaceTest::nothingElseIsStyled()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QVERIFY(window.styleSheet().isEmpty());
    for (const char *name : {"m_pPathLE", "m_pNameLabel", "m_pNameLE"})
        QVERIFY2(control(window, name)->styleSheet().isEmpty(), name);
    const auto children = window.findChildren<QWidget *>();
    QCOMPARE(children.size(), 7);
    for (const QWidget *child : children)
        QVERIFY(child->isEnabled());
}

/// Its second addition takes the box from before the spacer and puts it behind.
void ModifyFileWidgetFaceTest::theLayoutEndsWithTheBox()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QCOMPARE(layoutLines(window.layout()).join(QLatin1Char('\n')),
             QStringLiteral("QVBoxLayout m_pMainLayout\n"
                            " spacer 1x2 Minimum Expanding\n"
                            " m_pGroupBox"));
    QCOMPARE(control(window, "m_pGroupBox")->parentWidget(), static_cast<const QWidget *>(&window));
    QCOMPARE(layoutNames(window),
             QStringList({QStringLiteral("m_pGroupLayout"), QStringLiteral("m_pImportLayout"),
                          QStringLiteral("m_pMainLayout"), QStringLiteral("m_pNameLayout"),
                          QStringLiteral("m_pPathLayout")}));
}

void ModifyFileWidgetFaceTest::rowsStandInTheBox()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QCOMPARE(layoutLines(control(window, "m_pGroupBox")->layout()).join(QLatin1Char('\n')),
             QStringLiteral("QVBoxLayout m_pGroupLayout\n"
                            " QHBoxLayout m_pPathLayout\n"
                            "  m_pOpenFilePB\n"
                            "  m_pOpenDirPB\n"
                            "  m_pPathLE\n"
                            " QHBoxLayout m_pNameLayout\n"
                            "  m_pNameLabel\n"
                            "  m_pNameLE\n"
                            " QHBoxLayout m_pImportLayout\n"
                            "  spacer 2x1 Expanding Minimum\n"
                            "  m_pSingleImportPB"));
    for (const char *name : {"m_pOpenFilePB", "m_pOpenDirPB", "m_pPathLE", "m_pNameLabel",
                             "m_pNameLE", "m_pSingleImportPB"})
        QCOMPARE(control(window, name)->parentWidget(), control(window, "m_pGroupBox"));
}

void ModifyFileWidgetFaceTest::theBoxIsDrawnAtTheBottom()
{
    DMS_ModifyFile_Widget window(nullptr);
    window.resize(600, 700);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QRect box = control(window, "m_pGroupBox")->geometry();
    const int bottomMargin = window.layout()->contentsMargins().bottom();
    QCOMPARE(box.bottom(), window.height() - bottomMargin - 1);
    QVERIFY(box.top() > window.height() / 2);
    const QRect button = control(window, "m_pSingleImportPB")->geometry();
    QVERIFY(button.left() > box.width() / 2);
}

void ModifyFileWidgetFaceTest::theFieldsAreEmptyAndFree()
{
    const DMS_ModifyFile_Widget window(nullptr);
    for (const char *name : {"m_pPathLE", "m_pNameLE"}) {
        const auto *edit = control<QLineEdit>(window, name);
        QVERIFY(edit->text().isEmpty());
        QVERIFY(edit->placeholderText().isEmpty());
        QVERIFY(!edit->isReadOnly());
    }
}

void ModifyFileWidgetFaceTest::everyButtonReachesItsSlotOnce_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QByteArray>("slot");
    QTest::newRow("file") << QByteArray("m_pOpenFilePB")
                          << QByteArray("on_m_pOpenFilePB_clicked()");
    QTest::newRow("folder") << QByteArray("m_pOpenDirPB")
                            << QByteArray("on_m_pOpenDirPB_clicked()");
    QTest::newRow("import") << QByteArray("m_pSingleImportPB")
                            << QByteArray("on_m_pSingleImportPB_clicked()");
}

void ModifyFileWidgetFaceTest::everyButtonReachesItsSlotOnce()
{
    QFETCH(QByteArray, button);
    QFETCH(QByteArray, slot);
    const DMS_ModifyFile_Widget window(nullptr);
    auto *sender = control<QPushButton>(window, button.constData());
    QCOMPARE(Receivers::of(sender, "clicked()"), 1);
    QVERIFY(disconnect(sender, SIGNAL(clicked()), &window, asSlot(slot).constData()));
    QCOMPARE(Receivers::of(sender, "clicked()"), 0);
}

void ModifyFileWidgetFaceTest::theMethodTable()
{
    const QMetaObject &meta = DMS_ModifyFile_Widget::staticMetaObject;
    QStringList methods;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index) {
        const QMetaMethod method = meta.method(index);
        QCOMPARE(method.methodType(), QMetaMethod::Slot);
        QCOMPARE(method.typeName(), "void");
        methods << access(method.access()) + QLatin1Char(' ') +
                       QString::fromLatin1(method.methodSignature());
    }
    QCOMPARE(methods.join(QLatin1Char('\n')),
             QStringLiteral("public on_m_pOpenFilePB_clicked()\n"
                            "public on_m_pOpenDirPB_clicked()\n"
                            "public on_m_pSingleImportPB_clicked()\n"
                            "private execCAMRobot()"));
    QCOMPARE(meta.className(), "KODMS::UI::DMS_ModifyFile_Widget");
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
}

void ModifyFileWidgetFaceTest::buildingAsksNobody()
{
    const DMS_ModifyFile_Widget window(nullptr);
    QVERIFY(FakeServices::instance().calls().isEmpty());
}

void ModifyFileWidgetFaceTest::itDiesWithTheDesk()
{
    auto desk = std::make_unique<QWidget>();
    const QPointer<DMS_ModifyFile_Widget> window = new DMS_ModifyFile_Widget(desk.get());
    window->show();
    desk.reset();
    QVERIFY(!window);
}

KODMS_TEST_MAIN(ModifyFileWidgetFaceTest, QApplication)
#include "ModifyFileWidgetFaceTest.moc"
