// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/StartFailureWindow.h"

#include "apps/desk/Icons.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QDir>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

QLabel *makeText(const QString &text, const char *objectName, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    label->setFixedWidth(460); // the window is then as high as the text needs
    return label;
}

} // namespace

StartFailureWindow::StartFailureWindow(const QString &reason, const QString &configPath)
{
    setObjectName(QStringLiteral("startFailureWindow"));
    setWindowTitle(tr("KODMS 无法启动"));
    const QString where = tr("配置文件：%1").arg(QDir::toNativeSeparators(configPath));
    auto *icon = new QLabel(this);
    icon->setPixmap(Icons::notice(2).pixmap(48, 48));
    icon->setAlignment(Qt::AlignTop);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(12);
    texts->addWidget(makeText(tr("KODMS 无法启动"), "title", this));
    texts->addWidget(makeText(reason, "reason", this));
    texts->addWidget(makeText(tr("没有改动任何数据。按上面的说明处理后重新启动；"
                                 "需要帮助时，请复制这些内容交给管理员。"),
                              "advice", this));
    texts->addWidget(makeText(where, "note", this));
    auto *body = new QHBoxLayout;
    body->setSpacing(18);
    body->addWidget(icon, 0, Qt::AlignTop);
    body->addLayout(texts, 1);
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *copy = buttons->addButton(tr("复制"), QDialogButtonBox::ActionRole);
    QPushButton *quit = buttons->addButton(tr("退出"), QDialogButtonBox::RejectRole);
    quit->setDefault(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 24, 16);
    column->setSpacing(18);
    column->addLayout(body);
    column->addStretch();
    column->addWidget(buttons);
    quit->setFocus();
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(copy, &QPushButton::clicked, this, [reason, where] {
        QGuiApplication::clipboard()->setText(reason + QLatin1Char('\n') + where);
    });
}

} // namespace KODMS::Host
