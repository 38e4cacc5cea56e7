// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/AnswerForm.h"

#include "services/records/TimeText.h"
#include "services/ui/questions/PictureStrip.h"
#include "services/ui/questions/QuestionParts.h"
#include "services/ui/questions/QuestionState.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QTextEdit>
#include <QVBoxLayout>

namespace KODMS::Services {

namespace {

constexpr int NoState = -1;
constexpr int AnswerHeight = 84;

QTextCharFormat plainFormat()
{
    QTextCharFormat format;
    format.setForeground(QColor(0x1e, 0x1e, 0x1e));
    return format;
}

QTextCharFormat stateFormat(const QuestionState &state)
{
    QTextCharFormat format = plainFormat();
    format.setFontWeight(QFont::Bold);
    if (state.colour)
        format.setForeground(QColor(*state.colour));
    return format;
}

QTextCharFormat headFormat()
{
    QTextCharFormat format;
    format.setForeground(QColor(0x4f, 0x5d, 0x70));
    return format;
}

} // namespace

AnswerForm::AnswerForm(QWidget *parent)
    : QWidget(parent), m_target(plainLabel("questionTarget", this)),
      m_state(plainLabel("questionState", this)), m_title(plainLabel("questionTitle", this)),
      m_history(new QTextEdit(this)), m_strip(new PictureStrip(this)),
      m_answer(new QPlainTextEdit(this)), m_choice(new QComboBox(this)),
      m_message(new MessageLine(this))
{
    buildParts();
    buildColumn();
    connect(m_strip, &PictureStrip::openRequested, this, &AnswerForm::pictureOpened);
    for (const int key : {int{Qt::Key_Return}, int{Qt::Key_Enter}})
        connect(new QShortcut(QKeySequence(Qt::CTRL + key), this), &QShortcut::activated, m_submit,
                &QPushButton::click);
    setFocusProxy(m_answer);
    showNothing();
}

void AnswerForm::buildParts()
{
    m_state->setWordWrap(false);
    m_state->setAccessibleDescription(tr("状态"));
    m_history->setObjectName(QStringLiteral("questionHistory"));
    m_history->setReadOnly(true);
    m_history->setTabChangesFocus(true);
    m_history->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_history->setAccessibleName(tr("描述与历史"));
    // The newest stands last, and stays in sight when other parts need the room.
    auto *bar = m_history->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar] {
        if (m_showsEnd)
            bar->setValue(bar->maximum());
    });
    m_answer->setObjectName(QStringLiteral("questionAnswerEdit"));
    m_answer->setTabChangesFocus(true);
    m_answer->setFixedHeight(AnswerHeight);
    m_answer->setAccessibleName(tr("回复"));
    m_choice->setObjectName(QStringLiteral("questionStateChoice"));
    m_choice->setAccessibleName(tr("提交后的状态"));
    m_choice->setItemDelegate(new QStyledItemDelegate(m_choice)); // one that heeds the colours
    for (int flag = 0; flag < QuestionStates; ++flag) {
        const QuestionState state = questionState(flag);
        m_choice->addItem(state.text);
        if (state.colour)
            m_choice->setItemData(flag, QColor(*state.colour), Qt::ForegroundRole);
    }
}

QHBoxLayout *AnswerForm::buildHeader()
{
    auto *row = new QHBoxLayout;
    row->addWidget(m_target, 1);
    row->addWidget(m_state);
    return row;
}

void AnswerForm::buildColumn()
{
    m_title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(8);
    column->addLayout(buildHeader());
    column->addWidget(m_title);
    column->addWidget(m_history, 1);
    column->addWidget(m_strip);
    column->addLayout(fieldLabel(tr("回复(&A)"), QString(), m_answer));
    column->addWidget(m_answer);
    column->addWidget(m_message);
    column->addLayout(buildButtons());
}

QHBoxLayout *AnswerForm::buildButtons()
{
    auto *label = new QLabel(tr("状态(&T)"), this);
    label->setBuddy(m_choice);
    m_submit = namedButton("questionSubmit", tr("提交回复(&S)"), this);
    m_submit->setToolTip(QStringLiteral("Ctrl+Enter"));
    m_close = namedButton("questionClose", tr("关闭(&C)"), this);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_choice);
    row->addStretch();
    row->addWidget(m_submit);
    row->addWidget(m_close);
    connect(m_submit, &QPushButton::clicked, this, &AnswerForm::submitted);
    connect(m_close, &QPushButton::clicked, this, &AnswerForm::closeRequested);
    return row;
}

void AnswerForm::showQuestion(const QuestionPage &page)
{
    const bool keepsChoice = m_shownFlag != NoState && m_choice->currentIndex() != m_shownFlag;
    m_shownFlag = page.checkFlag;
    if (!keepsChoice)
        m_choice->setCurrentIndex(page.checkFlag);
    m_target->setText(tr("料号：%1").arg(page.jobName));
    m_title->setText(page.title);
    m_title->setVisible(true);
    showState(page.checkFlag);
    showHistory(page);
    m_strip->clear();
    m_strip->setVisible(!page.pictures.isEmpty());
    updateParts();
}

void AnswerForm::showNothing()
{
    m_shownFlag = NoState;
    m_target->setText(tr("没有可以查看的问题"));
    m_title->setVisible(false);
    m_state->setVisible(false);
    m_history->clear();
    m_strip->clear();
    m_strip->setVisible(false);
    clearAnswer();
    updateParts();
}

void AnswerForm::showState(int checkFlag)
{
    const QuestionState state = questionState(checkFlag);
    m_state->setText(state.text);
    m_state->setStyleSheet(
        state.colour ? QStringLiteral("color: %1").arg(QColor(*state.colour).name()) : QString());
    m_state->setVisible(true);
}

/// Written run by run: what people typed is never taken for markup.
void AnswerForm::showHistory(const QuestionPage &page)
{
    m_history->clear();
    QTextCursor cursor(m_history->document());
    for (const QuestionEvent &event : page.history) {
        const bool isFirst = event.kind == QuestionEvent::Kind::Raised;
        if (!isFirst)
            cursor.insertText(QStringLiteral("\n\n"), plainFormat());
        cursor.insertText(QStringLiteral("%1　%2　")
                              .arg(shownTime(event.time),
                                   event.realName.isEmpty() ? tr("（未知）") : event.realName),
                          headFormat());
        if (event.kind == QuestionEvent::Kind::StateSet) {
            const QuestionState state = questionState(event.checkFlag);
            cursor.insertText(tr("状态改为") + QLatin1Char(' '), headFormat());
            cursor.insertText(state.text, stateFormat(state));
            continue;
        }
        cursor.insertText(isFirst ? tr("提出") : tr("回复"), headFormat());
        const QString text = isFirst ? page.description : event.text;
        if (!text.isEmpty())
            cursor.insertText(QLatin1Char('\n') + text, plainFormat());
    }
    m_showsEnd = page.history.size() > 1;
    // What is written moves the text's own cursor, which a window's first showing brings in sight.
    m_history->moveCursor(m_showsEnd ? QTextCursor::End : QTextCursor::Start);
    auto *bar = m_history->verticalScrollBar();
    bar->setValue(m_showsEnd ? bar->maximum() : 0);
}

void AnswerForm::clearAnswer()
{
    m_answer->clear();
    m_choice->setCurrentIndex(m_shownFlag);
    say(QString(), false);
}

void AnswerForm::say(const QString &text, bool isError)
{
    m_message->say(text, isError);
}

void AnswerForm::setWorking(bool isWorking)
{
    m_isWorking = isWorking;
    updateParts();
}

void AnswerForm::updateParts()
{
    const bool isOpen = m_shownFlag != NoState && !m_isWorking;
    m_answer->setEnabled(isOpen);
    m_choice->setEnabled(isOpen);
    m_submit->setEnabled(isOpen);
    m_close->setEnabled(!m_isWorking);
}

QString AnswerForm::answer() const
{
    return m_answer->toPlainText();
}

int AnswerForm::checkFlag() const
{
    return m_choice->currentIndex();
}

bool AnswerForm::hasDraft() const
{
    return m_shownFlag != NoState &&
           (!answer().trimmed().isEmpty() || m_choice->currentIndex() != m_shownFlag);
}

} // namespace KODMS::Services
