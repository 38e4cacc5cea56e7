// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/ui/questions/PictureFile.h"
#include "services/ui/questions/PictureInput.h"

#include <QVector>
#include <QWidget>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace KODMS::Services {

class MessageLine;
class PictureStrip;

/// The form in which a question is written. Knows nothing of how it is stored.
class RaiseForm final : public QWidget {
    Q_OBJECT

public:
    explicit RaiseForm(QWidget *parent);

    /// The job that the question is on; empty: there is none, and nothing can be sent.
    void showTarget(const QString &jobName);
    void showPictures(const QVector<PictureFile> &pictures);
    void clear();
    void say(const QString &text, bool isError);
    void setWorking(bool isWorking);

    QString title() const;
    QString description() const;

Q_SIGNALS:
    void picturesBrought(const KODMS::Services::BroughtPictures &pictures);
    void pictureOpened(int index);
    void pictureRemoved(int index);
    void submitted();
    void closeRequested();

private:
    void buildFields();
    QHBoxLayout *buildPictureRow();
    QHBoxLayout *buildButtons();
    void buildColumn();
    void choosePictures();
    void updateButtons();

    QLabel *m_target;
    QLineEdit *m_title;
    QPlainTextEdit *m_description;
    PictureStrip *m_strip;
    MessageLine *m_message;
    PictureInput *m_input = nullptr;
    QPushButton *m_add = nullptr;
    QPushButton *m_paste = nullptr;
    QPushButton *m_remove = nullptr;
    QPushButton *m_submit = nullptr;
    QPushButton *m_close = nullptr;
    bool m_hasTarget = false;
    bool m_isWorking = false;
};

} // namespace KODMS::Services
