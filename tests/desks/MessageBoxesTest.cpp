// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/MessageBoxes.h"
#include "tests/fakes/MessageBoxProbe.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <QTranslator>

#include <memory>

using namespace KODMS::UI;
using KODMS::Fakes::MessageBoxProbe;

/// The boxes in which a desk speaks.
class MessageBoxesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aNoticeHasOneButton();
    void theTitleIsTranslatedAsTheDesksOwn();
    void aNoticeTakesATextOfTheProgram();
    void aNoticeMayHaveATitleOfItsOwn();
    void aQuestionTakesATextOfTheProgram();
    void onlyYesIsConsent_data();
    void onlyYesIsConsent();
    void aQuestionHasNoDefault_data();
    void aQuestionHasNoDefault();
    void noBoxIsLeftBehind();
    void aBoxGoesWithItsDesk();
    void aDeskThatIsGoneAsksNobody();

private:
    static constexpr char Text[] = "确认?";
};

void MessageBoxesTest::aNoticeHasOneButton()
{
    QWidget desk;
    const MessageBoxProbe probe;
    inform(&desk, Text);
    QCOMPARE(probe.count(), 1);
    const auto box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.text, QStringLiteral("确认?"));
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.defaultButton, QMessageBox::Ok);
    QCOMPARE(box.parent.data(), &desk);
}

namespace {

/// Knows what a plain widget calls "Information", and nothing else.
class OneWord : public QTranslator {
public:
    OneWord() { QCoreApplication::installTranslator(this); }

    ~OneWord() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }

    QString translate(const char *context, const char *text, const char *, int) const override
    {
        const bool isMeant = qstrcmp(context, "QWidget") == 0 && qstrcmp(text, "Information") == 0;
        return isMeant ? QStringLiteral("Hinweis") : QString();
    }
};

} // namespace

void MessageBoxesTest::theTitleIsTranslatedAsTheDesksOwn()
{
    const OneWord translator;
    QWidget desk;
    QDialog other;
    const MessageBoxProbe probe;
    inform(&desk, Text);
    confirm(&desk, Text, QMessageBox::Yes | QMessageBox::Cancel);
    inform(&other, Text);
    QCOMPARE(probe.boxes().at(0).title, QStringLiteral("Hinweis"));
    QCOMPARE(probe.boxes().at(1).title, QStringLiteral("Hinweis"));
    QCOMPARE(probe.boxes().at(2).title, QStringLiteral("Information"));
}

void MessageBoxesTest::aNoticeTakesATextOfTheProgram()
{
    QWidget desk;
    const MessageBoxProbe probe;
    inform(&desk, QStringLiteral("名称：%1").arg(7));
    QCOMPARE(probe.texts(), QStringList({QStringLiteral("名称：7")}));
}

void MessageBoxesTest::aNoticeMayHaveATitleOfItsOwn()
{
    QWidget desk;
    const MessageBoxProbe probe;
    inform(&desk, QStringLiteral("修改文件"), QStringLiteral("完成"));
    QCOMPARE(probe.count(), 1);
    QCOMPARE(probe.boxes().first().title, QStringLiteral("修改文件"));
    QCOMPARE(probe.boxes().first().text, QStringLiteral("完成"));
    QCOMPARE(probe.boxes().first().buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    inform(nullptr, QStringLiteral("修改文件"), QStringLiteral("完成"));
    QCOMPARE(probe.count(), 1);
}

void MessageBoxesTest::aQuestionTakesATextOfTheProgram()
{
    QWidget desk;
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    QVERIFY(
        confirm(&desk, QStringLiteral("删除%1?").arg(7), QMessageBox::Yes | QMessageBox::Cancel));
    QCOMPARE(probe.boxes().first().title, QStringLiteral("Information"));
    QCOMPARE(probe.texts(), QStringList({QStringLiteral("删除7?")}));
    QVERIFY(!confirm(nullptr, QStringLiteral("删除?"), QMessageBox::Yes | QMessageBox::Cancel));
}

void MessageBoxesTest::onlyYesIsConsent_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("consent");
    QTest::newRow("Yes") << int(QMessageBox::Yes) << true;
    QTest::newRow("No") << int(QMessageBox::No) << false;
    QTest::newRow("Cancel") << int(QMessageBox::Cancel) << false;
    QTest::newRow("dismissed") << int(QMessageBox::NoButton) << false;
}

void MessageBoxesTest::onlyYesIsConsent()
{
    QFETCH(int, answer);
    QFETCH(bool, consent);
    QWidget desk;
    MessageBoxProbe probe;
    probe.answer(QMessageBox::StandardButton(answer));
    QCOMPARE(confirm(&desk, Text, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel),
             consent);
}

void MessageBoxesTest::aQuestionHasNoDefault_data()
{
    QTest::addColumn<int>("buttons");
    QTest::newRow("Yes and Cancel") << int(QMessageBox::Yes | QMessageBox::Cancel);
    QTest::newRow("Yes and No") << int(QMessageBox::Yes | QMessageBox::No);
}

void MessageBoxesTest::aQuestionHasNoDefault()
{
    QFETCH(int, buttons);
    QWidget desk;
    const MessageBoxProbe probe;
    confirm(&desk, Text, QMessageBox::StandardButtons(buttons));
    const auto box = probe.boxes().first();
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(buttons));
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
    QCOMPARE(box.title, QStringLiteral("Information"));
    QCOMPARE(box.icon, QMessageBox::Information);
}

void MessageBoxesTest::noBoxIsLeftBehind()
{
    QWidget desk;
    const MessageBoxProbe probe;
    inform(&desk, Text);
    confirm(&desk, Text, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(probe.count(), 2);
    QVERIFY(desk.findChildren<QMessageBox *>().isEmpty());
}

/// Even one whose Yes has been pressed is no consent of a desk that is gone.
void MessageBoxesTest::aBoxGoesWithItsDesk()
{
    auto desk = std::make_unique<QWidget>();
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    QTimer::singleShot(0, [&desk] { desk.reset(); });
    QVERIFY(!confirm(desk.get(), Text, QMessageBox::Yes | QMessageBox::No));
    QVERIFY(!desk);
    QVERIFY(!probe.boxes().first().parent);
}

void MessageBoxesTest::aDeskThatIsGoneAsksNobody()
{
    const MessageBoxProbe probe;
    inform(nullptr, Text);
    QVERIFY(!confirm(nullptr, Text, QMessageBox::Yes | QMessageBox::No));
    QCOMPARE(probe.count(), 0);
}

KODMS_TEST_MAIN(MessageBoxesTest, QApplication)
#include "MessageBoxesTest.moc"
