// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/IntakeForm.h"

#include "apps/desk/DropZone.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QCompleter>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QStandardItemModel>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

constexpr int CodeLength = 3;

/// The name without the suffix of an archive; a folder's name as it is.
QString originalNameOf(const QString &path)
{
    const QFileInfo info(path);
    if (info.isDir())
        return info.fileName();
    QString name = info.completeBaseName();
    if (name.endsWith(QLatin1String(".tar"), Qt::CaseInsensitive))
        name.chop(4);
    return name;
}

} // namespace

IntakeForm::IntakeForm(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("intakeForm"));
    loadCustomers();
    m_drop = new DropZone(this); // first: Tab goes through the fields as they were made
    buildCode();
    buildFields();
    buildLayout();
    setFocusProxy(m_drop);
    connect(m_drop, &DropZone::pathChanged, this, &IntakeForm::pathChosen);
    connect(m_drop, &DropZone::refused, this, &IntakeForm::showError);
    connect(m_code, &QLineEdit::textChanged, this, &IntakeForm::codeEdited);
    connect(m_origName, &QLineEdit::textEdited, this, [this] { m_origNameIsOurs = false; });
}

void IntakeForm::loadCustomers()
{
    const auto known = Services::Customers::known();
    for (const Services::CustomerName &customer : known.value)
        m_customers.insert(customer.code.toUpper(), customer);
}

QStandardItemModel *IntakeForm::makeCodeModel()
{
    auto *model = new QStandardItemModel(m_code);
    for (const Services::CustomerName &customer : qAsConst(m_customers)) {
        auto *item = new QStandardItem(customer.code + QStringLiteral("  ") + customer.name);
        item->setData(customer.code, Qt::UserRole);
        model->appendRow(item);
    }
    return model;
}

void IntakeForm::buildCode()
{
    m_code = makeEdit("customerCode", tr("三位字母或数字"), CodeLength);
    m_code->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[A-Za-z0-9]{0,3}")), m_code));
    auto *completer = new QCompleter(makeCodeModel(), m_code);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setCompletionRole(Qt::UserRole); // the list shows the names too
    completer->popup()->setMinimumWidth(260);
    m_code->setCompleter(completer);
}

void IntakeForm::buildFields()
{
    m_customerName = makeEdit("customerName", tr("新客户的名称"), 100);
    m_customerName->setEnabled(false);
    m_origName = makeEdit("origName", tr("默认取文件名"), 200);
    m_description = makeEdit("description", tr("可不填"), 500);
    m_tips = makeEdit("tips", tr("可不填"), 500);
    m_paid = new QCheckBox(tr("订单已付款"), this);
    m_paid->setObjectName(QStringLiteral("paid"));
    m_paid->setToolTip(tr("只有网站料号（客户代码 web）在付款前不能下载"));
    m_error = new QLabel(this);
    m_error->setObjectName(QStringLiteral("error"));
    m_error->setTextFormat(Qt::PlainText);
    m_error->setWordWrap(true);
    m_error->setMinimumHeight(m_error->fontMetrics().height() * 2);
    m_error->setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

QLineEdit *IntakeForm::makeEdit(const char *objectName, const QString &hint, int maxLength)
{
    auto *edit = new QLineEdit(this);
    edit->setObjectName(QLatin1String(objectName));
    edit->setPlaceholderText(hint);
    edit->setMaxLength(maxLength);
    return edit;
}

void IntakeForm::buildLayout()
{
    auto *form = new QFormLayout;
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    form->setHorizontalSpacing(12);
    form->setVerticalSpacing(10);
    form->addRow(tr("客户代码(&C)"), m_code);
    form->addRow(tr("客户名称(&N)"), m_customerName);
    form->addRow(tr("原始料名(&O)"), m_origName);
    form->addRow(tr("文件说明(&D)"), m_description);
    form->addRow(tr("来源备注(&R)"), m_tips);
    form->addRow(QString(), m_paid);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(14);
    column->addWidget(m_drop);
    column->addLayout(form);
    column->addWidget(m_error);
}

void IntakeForm::choosePath(const QString &path)
{
    m_drop->setPath(path);
}

void IntakeForm::pathChosen(const QString &path)
{
    showError(QString());
    if (!path.isEmpty() && (m_origNameIsOurs || m_origName->text().isEmpty())) {
        m_origName->setText(originalNameOf(path));
        m_origNameIsOurs = true;
    }
    if (m_code->text().isEmpty())
        m_code->setFocus();
}

void IntakeForm::codeEdited(const QString &text)
{
    const bool complete = text.size() == CodeLength;
    const auto known = m_customers.constFind(text.toUpper());
    const bool isNew = complete && known == m_customers.constEnd();
    if (!isNew)
        m_customerName->setText(complete ? known.value().name : QString());
    else if (!m_customerName->isEnabled())
        m_customerName->clear();
    m_customerName->setEnabled(isNew);
    showError(QString());
    // The list opens after this; a whole code needs none.
    if (complete)
        QMetaObject::invokeMethod(m_code->completer()->popup(), &QWidget::hide,
                                  Qt::QueuedConnection);
}

bool IntakeForm::complain(QWidget *field, const QString &text)
{
    showError(text);
    field->setFocus();
    return false;
}

bool IntakeForm::validate()
{
    const QString path = m_drop->path();
    if (path.isEmpty())
        return complain(m_drop, tr("请先选择客户的压缩包或文件夹"));
    if (!QFileInfo::exists(path))
        return complain(m_drop, tr("所选的文件或文件夹已不存在"));
    if (m_code->text().size() != CodeLength)
        return complain(m_code, tr("客户代码是三位字母或数字"));
    if (m_customerName->isEnabled() && m_customerName->text().trimmed().isEmpty())
        return complain(m_customerName, tr("这是新客户，请填写客户名称"));
    if (m_origName->text().trimmed().isEmpty())
        return complain(m_origName, tr("请填写原始料名"));
    showError(QString());
    return true;
}

Services::IntakeRequest IntakeForm::request() const
{
    Services::IntakeRequest request;
    request.path = m_drop->path();
    request.customerCode = m_code->text();
    if (m_customerName->isEnabled())
        request.customerName = m_customerName->text().trimmed();
    request.origName = m_origName->text().trimmed();
    request.description = m_description->text().trimmed();
    request.tips = m_tips->text().trimmed();
    request.paid = m_paid->isChecked();
    return request;
}

void IntakeForm::prepareNext()
{
    const QString code = m_code->text();
    loadCustomers();
    m_code->clear();
    m_code->setText(code);
    m_drop->setPath(QString());
    for (QLineEdit *edit : {m_origName, m_description, m_tips})
        edit->clear();
    m_origNameIsOurs = true;
    m_paid->setChecked(false);
    showError(QString());
}

void IntakeForm::showError(const QString &text)
{
    m_error->setText(text);
}

} // namespace KODMS::Host
