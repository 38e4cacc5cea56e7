// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/records/bll/QuestionRecords.h"

#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTextEdit;

namespace KODMS::Services {

class MessageLine;
class PictureStrip;

/// Shows a question with its history, and takes an answer. Knows nothing of how it is
/// read or stored.
class AnswerForm final : public QWidget {
    Q_OBJECT

public:
    explicit AnswerForm(QWidget *parent);

    /// The answer being written stays, and a state that was chosen for it.
    void showQuestion(const QuestionPage &page);
    /// There is no question to show.
    void showNothing();
    void clearAnswer();
    void say(const QString &text, bool isError);
    void setWorking(bool isWorking);

    PictureStrip &pictures() { return *m_strip; }

    QString answer() const;
    int checkFlag() const;
    /// True when something is written or chosen that is not stored.
    bool hasDraft() const;

Q_SIGNALS:
    void pictureOpened(int index);
    void submitted();
    void closeRequested();

private:
    void buildParts();
    void buildColumn();
    QHBoxLayout *buildHeader();
    QHBoxLayout *buildButtons();
    void showState(int checkFlag);
    void showHistory(const QuestionPage &page);
    void updateParts();

    QLabel *m_target;
    QLabel *m_state;
    QLabel *m_title;
    QTextEdit *m_history;
    PictureStrip *m_strip;
    QPlainTextEdit *m_answer;
    QComboBox *m_choice;
    MessageLine *m_message;
    QPushButton *m_submit = nullptr;
    QPushButton *m_close = nullptr;
    int m_shownFlag = -1;    ///< none
    bool m_showsEnd = false; ///< there is more than the question itself
    bool m_isWorking = false;
};

} // namespace KODMS::Services
