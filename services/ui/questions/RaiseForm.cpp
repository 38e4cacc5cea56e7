// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/RaiseForm.h"

#include "services/records/bll/QuestionChanges.h"
#include "services/ui/questions/PictureStrip.h"
#include "services/ui/questions/QuestionParts.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace KODMS::Services {

RaiseForm::RaiseForm(QWidget *parent)
    : QWidget(parent), m_target(plainLabel("questionTarget", this)), m_title(new QLineEdit(this)),
      m_description(new QPlainTextEdit(this)), m_strip(new PictureStrip(this)),
      m_message(new MessageLine(this))
{
    buildFields();
    buildColumn();
    m_input = new PictureInput(*this, {m_title, m_description, m_strip});
    connect(m_input, &PictureInput::brought, this, &RaiseForm::picturesBrought);
    connect(m_strip, &PictureStrip::openRequested, this, &RaiseForm::pictureOpened);
    connect(m_strip, &PictureStrip::removeRequested, this, &RaiseForm::pictureRemoved);
    connect(m_strip, &PictureStrip::currentRowChanged, this, &RaiseForm::updateButtons);
    for (const int key : {int{Qt::Key_Return}, int{Qt::Key_Enter}})
        connect(new QShortcut(QKeySequence(Qt::CTRL + key), this), &QShortcut::activated, m_submit,
                &QPushButton::click);
    setFocusProxy(m_title);
    updateButtons();
}

void RaiseForm::buildFields()
{
    m_title->setObjectName(QStringLiteral("questionTitleEdit"));
    m_title->setMaxLength(QuestionChanges::LongestTitle);
    m_title->setAccessibleName(tr("标题"));
    m_description->setObjectName(QStringLiteral("questionDescriptionEdit"));
    m_description->setTabChangesFocus(true);
    m_description->setAccessibleName(tr("描述"));
}

void RaiseForm::buildColumn()
{
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(16, 14, 16, 14);
    column->setSpacing(8);
    column->addWidget(m_target);
    column->addLayout(fieldLabel(tr("标题(&T)"), tr("一句话说明问题"), m_title));
    column->addWidget(m_title);
    column->addLayout(fieldLabel(tr("描述(&D)"), tr("哪一层、什么位置、应当怎样；可直接粘贴截图"),
                                 m_description));
    column->addWidget(m_description, 1);
    column->addLayout(buildPictureRow());
    column->addWidget(m_strip);
    column->addWidget(m_message);
    column->addLayout(buildButtons());
    // The tools follow the pictures that they work on, the line below them last.
    const QVector<QWidget *> order{m_title, m_description, m_strip,  m_add,
                                   m_paste, m_remove,      m_submit, m_close};
    for (int i = 1; i < order.size(); ++i)
        setTabOrder(order.at(i - 1), order.at(i));
}

QHBoxLayout *RaiseForm::buildPictureRow()
{
    m_add = namedButton("questionAddPicture", tr("添加图片(&A)…"), this);
    m_paste = namedButton("questionPastePicture", tr("粘贴图片(&V)"), this);
    m_remove = namedButton("questionRemovePicture", tr("移除(&R)"), this);
    QHBoxLayout *row = fieldLabel(tr("图片(&P)"), tr("拖到这里，或粘贴"), m_strip);
    for (QPushButton *button : {m_add, m_paste, m_remove})
        row->addWidget(button);
    connect(m_add, &QPushButton::clicked, this, &RaiseForm::choosePictures);
    connect(m_paste, &QPushButton::clicked, this, [this] {
        if (!m_input->paste())
            say(tr("剪贴板中没有图片"), true);
    });
    connect(m_remove, &QPushButton::clicked, this,
            [this] { Q_EMIT pictureRemoved(m_strip->currentRow()); });
    return row;
}

QHBoxLayout *RaiseForm::buildButtons()
{
    m_submit = namedButton("questionSubmit", tr("创建问题(&S)"), this);
    m_submit->setToolTip(QStringLiteral("Ctrl+Enter"));
    m_close = namedButton("questionClose", tr("关闭(&C)"), this);
    auto *row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(m_submit);
    row->addWidget(m_close);
    connect(m_submit, &QPushButton::clicked, this, &RaiseForm::submitted);
    connect(m_close, &QPushButton::clicked, this, &RaiseForm::closeRequested);
    return row;
}

void RaiseForm::choosePictures()
{
    BroughtPictures chosen;
    chosen.paths = QFileDialog::getOpenFileNames(
        this, tr("选择图片"), QString(),
        tr("图片 (*.png *.jpg *.jpeg *.bmp *.gif *.webp);;所有文件 (*)"));
    if (!chosen.isEmpty())
        Q_EMIT picturesBrought(chosen);
}

void RaiseForm::showTarget(const QString &jobName)
{
    m_hasTarget = !jobName.isEmpty();
    m_target->setText(m_hasTarget ? tr("料号：%1").arg(jobName) : tr("没有可以提问的料号"));
    updateButtons();
}

void RaiseForm::showPictures(const QVector<PictureFile> &pictures)
{
    const int row = m_strip->currentRow();
    m_strip->clear();
    for (const PictureFile &picture : pictures)
        m_strip->add(picture.thumbnail, picture.fileName);
    m_strip->setCurrentRow(qMin(qMax(row, 0), m_strip->count() - 1));
    updateButtons();
}

void RaiseForm::clear()
{
    m_title->clear();
    m_description->clear();
    showPictures({});
    say(QString(), false);
}

void RaiseForm::say(const QString &text, bool isError)
{
    m_message->say(text, isError);
}

void RaiseForm::setWorking(bool isWorking)
{
    m_isWorking = isWorking;
    updateButtons();
}

void RaiseForm::updateButtons()
{
    const bool isOpen = m_hasTarget && !m_isWorking;
    for (QWidget *part : {static_cast<QWidget *>(m_title), static_cast<QWidget *>(m_description),
                          static_cast<QWidget *>(m_strip), static_cast<QWidget *>(m_add),
                          static_cast<QWidget *>(m_paste), static_cast<QWidget *>(m_submit)})
        part->setEnabled(isOpen);
    m_remove->setEnabled(isOpen && m_strip->currentRow() >= 0);
    m_close->setEnabled(!m_isWorking);
}

QString RaiseForm::title() const
{
    return m_title->text();
}

QString RaiseForm::description() const
{
    return m_description->toPlainText();
}

} // namespace KODMS::Services
