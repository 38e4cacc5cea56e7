// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/fakes/MessageBoxProbe.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTest>

using namespace KODMS::Fakes;

class MessageBoxProbeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNoticeIsRecordedAndClosed();
    void aConfirmationGetsTheAnswerThatTheTestSaid();
    void aBoxOfSeveralButtonsWithoutAnAnswerIsDismissed();
    void aNamedDefaultButtonIsSeen();
    void aBoxThatWasOnlyOpenedIsAnsweredToo();
    void aButtonThatTheBoxDoesNotHaveIsReported();
};

void MessageBoxProbeTest::aNoticeIsRecordedAndClosed()
{
    MessageBoxProbe probe;
    QWidget parent;
    QMessageBox::warning(&parent, QStringLiteral("错误"), QStringLiteral("不可"), QMessageBox::Ok);
    QCOMPARE(probe.count(), 1);
    const SeenBox box = probe.boxes().first();
    QCOMPARE(box.title, QStringLiteral("错误"));
    QCOMPARE(box.text, QStringLiteral("不可"));
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.parent.data(), &parent);
}

void MessageBoxProbeTest::aConfirmationGetsTheAnswerThatTheTestSaid()
{
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    probe.answer(QMessageBox::Cancel);
    const auto ask = [] {
        return QMessageBox::information(nullptr, QStringLiteral("t"), QStringLiteral("确认?"),
                                        QMessageBox::Yes | QMessageBox::Cancel);
    };
    QCOMPARE(ask(), QMessageBox::Yes);
    QCOMPARE(ask(), QMessageBox::Cancel);
    QCOMPARE(probe.boxes().first().defaultButton, QMessageBox::NoButton);
    QCOMPARE(probe.texts(), QStringList({QStringLiteral("确认?"), QStringLiteral("确认?")}));
}

void MessageBoxProbeTest::aBoxOfSeveralButtonsWithoutAnAnswerIsDismissed()
{
    MessageBoxProbe probe;
    const auto answer = QMessageBox::question(nullptr, QString(), QStringLiteral("?"),
                                              QMessageBox::Yes | QMessageBox::No);
    QVERIFY(answer != QMessageBox::Yes);
    QCOMPARE(probe.boxes().first().icon, QMessageBox::Question);
}

void MessageBoxProbeTest::aNamedDefaultButtonIsSeen()
{
    MessageBoxProbe probe;
    QMessageBox::information(nullptr, QString(), QStringLiteral("?"),
                             QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    QCOMPARE(probe.boxes().first().defaultButton, QMessageBox::No);
}

void MessageBoxProbeTest::aBoxThatWasOnlyOpenedIsAnsweredToo()
{
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Ok);
    QMessageBox box(QMessageBox::Critical, QStringLiteral("t"), QStringLiteral("x"),
                    QMessageBox::Ok);
    box.open();
    QTRY_VERIFY(!box.isVisible());
    QCOMPARE(box.result(), int(QMessageBox::Ok));
    QCOMPARE(probe.boxes().first().icon, QMessageBox::Critical);
}

void MessageBoxProbeTest::aButtonThatTheBoxDoesNotHaveIsReported()
{
    MessageBoxProbe probe;
    probe.answer(QMessageBox::Yes);
    QTest::ignoreMessage(QtWarningMsg,
                         "The message box \"only OK\" does not have the button to be pressed");
    QMessageBox::information(nullptr, QString(), QStringLiteral("only OK"), QMessageBox::Ok);
}

KODMS_TEST_MAIN(MessageBoxProbeTest, QApplication)
#include "MessageBoxProbeTest.moc"
