// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/AboutBox.h"

#include "apps/desk/ElidedLabel.h"
#include "apps/desk/Icons.h"
#include "services/api/ComponentVersions.h"
#include "services/api/SearchIndex.h"
#include "services/api/ServiceRuntime.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

using Row = QPair<QString, QString>;

QVector<Row> rows()
{
    const auto &runtime = Services::ServiceRuntime::instance();
    QVector<Row> all{{AboutBox::tr("版本"), QCoreApplication::applicationVersion()},
                     {AboutBox::tr("数据库"), runtime.databaseText()},
                     {AboutBox::tr("数据库结构版本"), QString::number(runtime.schemaVersion())},
                     {AboutBox::tr("搜索索引"), Services::SearchIndex::state().text},
                     {AboutBox::tr("文件库"), runtime.fileStoreText()},
                     {AboutBox::tr("配置文件"), QDir::toNativeSeparators(runtime.configPath())}};
    const auto components = Services::componentVersions();
    for (const Services::ComponentVersion &one : components)
        all << Row(one.name, AboutBox::tr("%1（%2）").arg(one.version, one.licence));
    return all;
}

} // namespace

AboutBox::AboutBox(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("aboutBox"));
    setWindowTitle(tr("关于 KODMS"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *logo = new QLabel(this);
    logo->setPixmap(Icons::application().pixmap(48, 48));
    auto *title = new QLabel(tr("KODMS 料号管理"), this);
    title->setObjectName(QStringLiteral("title"));
    auto *head = new QHBoxLayout;
    head->setSpacing(14);
    head->addWidget(logo);
    head->addWidget(title, 1);
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(18);
    form->setVerticalSpacing(8);
    addRows(*form);
    auto *licence = new QLabel(tr("KODMS 按 Apache License 2.0 发布。"), this);
    licence->setObjectName(QStringLiteral("note"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton *copy = buttons->addButton(tr("复制"), QDialogButtonBox::ActionRole);
    copy->setObjectName(QStringLiteral("copyAbout"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 20, 24, 16);
    column->setSpacing(16);
    column->addLayout(head);
    column->addLayout(form);
    column->addWidget(licence);
    column->addWidget(buttons);
    buttons->button(QDialogButtonBox::Close)->setFocus();
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this,
            [] { QGuiApplication::clipboard()->setText(plainText()); });
}

void AboutBox::addRows(QFormLayout &form)
{
    const QVector<Row> all = rows();
    for (const Row &row : all) {
        auto *name = new QLabel(row.first, this);
        name->setObjectName(QStringLiteral("note"));
        auto *value = new ElidedLabel(this, row.second, Qt::ElideMiddle);
        value->setMinimumWidth(440);
        form.addRow(name, value);
    }
}

QString AboutBox::plainText()
{
    QStringList lines{tr("KODMS 料号管理")};
    const QVector<Row> all = rows();
    for (const Row &row : all)
        lines << row.first + QStringLiteral(": ") + row.second;
    return lines.join(QLatin1Char('\n'));
}

} // namespace KODMS::Host
