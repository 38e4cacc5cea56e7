// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/api/Customers.h"
#include "services/api/Intake.h"

#include <QMap>
#include <QWidget>

class QCheckBox;
class QFormLayout;
class QLabel;
class QLineEdit;
class QStandardItemModel;

namespace KODMS::Host {

class DropZone;

/// The fields of an intake, and whether they are complete.
class IntakeForm : public QWidget {
    Q_OBJECT

public:
    explicit IntakeForm(QWidget *parent = nullptr);

    void choosePath(const QString &path);

    /// Says under the fields what is missing, and moves the focus there.
    bool validate();

    Services::IntakeRequest request() const;

    /// Empties the job's fields for the next one; the customer stays.
    void prepareNext();

    void showError(const QString &text);

private Q_SLOTS:
    void pathChosen(const QString &path);
    void codeEdited(const QString &text);

private:
    void loadCustomers();
    QStandardItemModel *makeCodeModel();
    void buildCode();
    void buildFields();
    void buildLayout();
    QLineEdit *makeEdit(const char *objectName, const QString &hint, int maxLength);
    bool complain(QWidget *field, const QString &text);

    DropZone *m_drop = nullptr;
    QLineEdit *m_code = nullptr;
    QLineEdit *m_customerName = nullptr;
    QLineEdit *m_origName = nullptr;
    QLineEdit *m_description = nullptr;
    QLineEdit *m_tips = nullptr;
    QCheckBox *m_paid = nullptr;
    QLabel *m_error = nullptr;
    QMap<QString, Services::CustomerName> m_customers; ///< by code in capitals
    bool m_origNameIsOurs = true;                      ///< taken from the file, not typed
};

} // namespace KODMS::Host
