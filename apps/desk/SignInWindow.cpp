// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/SignInWindow.h"

#include "apps/desk/Icons.h"
#include "apps/desk/SampleBanner.h"
#include "services/api/ServiceRuntime.h"
#include "services/api/SignIn.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace KODMS::Host {

namespace {

QLabel *makeLabel(const QString &text, const char *objectName, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(objectName));
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QLabel *makeLogo(QWidget *parent)
{
    auto *logo = new QLabel(parent);
    logo->setPixmap(Icons::application().pixmap(48, 48));
    logo->setAlignment(Qt::AlignCenter);
    return logo;
}

QString sampleNote()
{
    const auto &runtime = Services::ServiceRuntime::instance();
    const QDir folder = QFileInfo(runtime.configPath()).dir();
    return SignInWindow::tr("演示账号和密码见文件：\n%1")
        .arg(QDir::toNativeSeparators(folder.filePath(QStringLiteral("accounts.txt"))));
}

} // namespace

SignInWindow::SignInWindow(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("signInWindow"));
    setWindowTitle(tr("登录 - KODMS"));
    buildFields();
    buildLayout();
    connect(m_login, &QLineEdit::returnPressed, this, &SignInWindow::loginEntered);
    connect(m_password, &QLineEdit::returnPressed, this, &SignInWindow::submit);
    connect(m_signIn, &QPushButton::clicked, this, &SignInWindow::submit);
}

void SignInWindow::buildFields()
{
    m_login = new QLineEdit(this);
    m_login->setObjectName(QStringLiteral("login"));
    m_login->setPlaceholderText(tr("登录名"));
    m_login->setAccessibleName(tr("登录名"));
    m_login->setMaxLength(64);
    m_password = new QLineEdit(this);
    m_password->setObjectName(QStringLiteral("password"));
    m_password->setPlaceholderText(tr("密码"));
    m_password->setAccessibleName(tr("密码"));
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setMaxLength(1024);
    m_error = makeLabel(QString(), "error", this);
    m_error->setMinimumHeight(m_error->fontMetrics().height() * 2);
    m_error->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_signIn = new QPushButton(tr("登录"), this);
    m_signIn->setObjectName(QStringLiteral("primary"));
}

QWidget *SignInWindow::makeCard()
{
    auto *card = new QFrame(this);
    card->setObjectName(QStringLiteral("card"));
    card->setFixedWidth(380);
    auto *column = new QVBoxLayout(card);
    column->setContentsMargins(32, 28, 32, 24);
    column->setSpacing(12);
    column->addWidget(makeLogo(card));
    auto *title = makeLabel(tr("KODMS 料号管理"), "title", card);
    title->setAlignment(Qt::AlignCenter);
    column->addWidget(title);
    column->addSpacing(8);
    column->addWidget(m_login);
    column->addWidget(m_password);
    column->addWidget(m_signIn);
    column->addWidget(m_error);
    return card;
}

void SignInWindow::buildLayout()
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 12);
    outer->setSpacing(12);
    outer->addWidget(new SampleBanner(this));
    outer->addStretch();
    outer->addWidget(makeCard(), 0, Qt::AlignHCenter);
    const auto &runtime = Services::ServiceRuntime::instance();
    if (runtime.isSample()) {
        auto *note = makeLabel(sampleNote(), "note", this);
        note->setAlignment(Qt::AlignCenter);
        note->setTextInteractionFlags(Qt::TextSelectableByMouse);
        note->setFocusPolicy(Qt::NoFocus);
        outer->addWidget(note);
    }
    outer->addStretch();
    auto *database = makeLabel(tr("数据库：%1").arg(runtime.databaseText()), "note", this);
    database->setAlignment(Qt::AlignCenter);
    outer->addWidget(database);
    resize(560, 480);
}

void SignInWindow::prepare(const QString &login)
{
    m_login->setText(login);
    m_password->clear();
    showError(QString());
    (login.isEmpty() ? m_login : m_password)->setFocus();
}

void SignInWindow::expectSomebodyElse()
{
    m_login->setFocus();
    m_login->selectAll();
}

void SignInWindow::loginEntered()
{
    if (m_password->text().isEmpty())
        m_password->setFocus();
    else
        submit();
}

void SignInWindow::submit()
{
    const QString login = m_login->text().trimmed();
    if (login.isEmpty() || m_password->text().isEmpty()) {
        showError(tr("请输入登录名和密码"));
        (login.isEmpty() ? m_login : m_password)->setFocus();
        return;
    }
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const Services::Outcome outcome = Services::SignIn::signIn(login, m_password->text());
    QGuiApplication::restoreOverrideCursor();
    m_password->clear();
    if (!outcome) {
        showError(outcome.text);
        m_password->setFocus();
        return;
    }
    showError(QString());
    Q_EMIT signedIn();
}

void SignInWindow::showError(const QString &text)
{
    m_error->setText(text);
    m_error->setAccessibleName(text);
}

} // namespace KODMS::Host
