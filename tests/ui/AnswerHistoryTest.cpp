// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/TestMain.h"
#include "tests/ui/QuestionWindowCase.h"

#include <QApplication>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextEdit>

using namespace KODMS::Tests;
using KODMS::UI::DMS_JobCheck_Widget;

/// What a question's window tells of all that was said and done about it.
class AnswerHistoryTest : public QuestionWindowCase {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theHistoryGrows();
    void aStateAloneKeepsTheAnswer();
    void markupIsText();
    void aLongDescriptionBeginsAtItsTop();
    void theNewestIsInSight();
    void aQuestionAloneIsReadFromItsBeginning();

private:
    void view(int questionId) const;

    void write(const QString &answer) const
    {
        part<QPlainTextEdit>("questionAnswerEdit")->setPlainText(answer);
    }

    QString title() const { return label("questionTitle"); }

    /// The history without its times.
    QString history() const
    {
        static const QRegularExpression time(QStringLiteral("\\d{4}-\\d\\d-\\d\\d [0-9:]{8}　"));
        return part<QTextEdit>("questionHistory")->toPlainText().remove(time);
    }

    QScrollBar &bar() const { return *part<QTextEdit>("questionHistory")->verticalScrollBar(); }
};

namespace {

const QString ManyLines = QStringLiteral("line\n").repeated(100);

} // namespace

void AnswerHistoryTest::init()
{
    m_home = std::make_unique<QuestionHome>();
    const int question = m_home->raise(QStringLiteral("孔径"));
    m_window = new DMS_JobCheck_Widget(question, true, nullptr);
    view(question);
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void AnswerHistoryTest::cleanup()
{
    delete m_window;
    m_home.reset();
}

/// As the desk does.
void AnswerHistoryTest::view(int questionId) const
{
    m_window->m_id = questionId;
    m_window->getQuestionData();
    m_window->show();
}

void AnswerHistoryTest::theHistoryGrows()
{
    for (const char *text : {"one", "two"}) {
        write(QString::fromUtf8(text));
        click("questionSubmit");
    }
    QCOMPARE(history(), QStringLiteral("EXECUTOR　提出\nabout 孔径\n\nEXECUTOR　回复\none\n\n"
                                       "EXECUTOR　回复\ntwo"));
}

void AnswerHistoryTest::aStateAloneKeepsTheAnswer()
{
    write(QStringLiteral("x"));
    click("questionSubmit");
    part<QComboBox>("questionStateChoice")->setCurrentIndex(3);
    click("questionSubmit");
    QCOMPARE(value("SELECT answer || check_flag FROM questions"), QStringLiteral("x3"));
    QVERIFY2(history().endsWith(QStringLiteral("EXECUTOR　回复\nx\n\nEXECUTOR　状态改为 完成")),
             qPrintable(history()));
}

void AnswerHistoryTest::markupIsText()
{
    const QString text = QStringLiteral("<img src='x'><b>a</b> & b");
    const int id = m_home->raise(text);
    write(QString());
    view(id);
    QCOMPARE(title(), text);
    QCOMPARE(part<QLabel>("questionTitle")->textFormat(), Qt::PlainText);
    write(text);
    click("questionSubmit");
    QVERIFY(history().endsWith(text));
    QVERIFY(history().contains(QStringLiteral("about ") + text));
}

/// Whoever opens a long question reads it from its beginning.
void AnswerHistoryTest::aLongDescriptionBeginsAtItsTop()
{
    const int id = m_home->raise(QStringLiteral("孔径"), 0, ManyLines);
    delete m_window;
    m_window = new DMS_JobCheck_Widget(id, true, nullptr);
    m_window->resize(640, 420);
    view(id);
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QTRY_VERIFY(bar().maximum() > 0);
    QCOMPARE(bar().value(), 0);
    m_window->resize(640, 400);
    QCoreApplication::processEvents();
    QCOMPARE(bar().value(), 0);
}

void AnswerHistoryTest::theNewestIsInSight()
{
    for (const QString &text : {ManyLines, QStringLiteral("the newest")}) {
        write(text);
        click("questionSubmit");
        QTRY_VERIFY(bar().maximum() > 0);
        QTRY_COMPARE(bar().value(), bar().maximum());
    }
    m_window->resize(640, 420); // less room for it
    QTRY_COMPARE(bar().value(), bar().maximum());
}

void AnswerHistoryTest::aQuestionAloneIsReadFromItsBeginning()
{
    view(m_home->raise(QStringLiteral("t"), 0, ManyLines));
    QTRY_VERIFY(bar().maximum() > 0);
    QCOMPARE(bar().value(), 0);
}

KODMS_TEST_MAIN(AnswerHistoryTest, QApplication)
#include "AnswerHistoryTest.moc"
