// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace KODMS::Host {

/// Asks for login and password, and says plainly why a sign-in was refused.
class SignInWindow : public QWidget {
    Q_OBJECT

public:
    explicit SignInWindow(QWidget *parent = nullptr);

    /// Fills in the login of the last user and puts the cursor where typing starts.
    void prepare(const QString &login);
    /// The login name that stands there is most likely not the next one.
    void expectSomebodyElse();

Q_SIGNALS:
    void signedIn();

private Q_SLOTS:
    void submit();
    void loginEntered();

private:
    void buildFields();
    void buildLayout();
    QWidget *makeCard();
    void showError(const QString &text);

    QLineEdit *m_login = nullptr;
    QLineEdit *m_password = nullptr;
    QLabel *m_error = nullptr;
    QPushButton *m_signIn = nullptr;
};

} // namespace KODMS::Host
