// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/ui/Import_Info.h"
#include "services/imports/ReadJob.h"
#include "services/records/bll/ImportChanges.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QScrollArea;

namespace KODMS::Services {

class ImportDropArea;

/// What the import window shows: which job it is for, what was chosen, what is in it
/// or why it cannot be read. Knows nothing of how a job is read or stored.
class ImportForm final : public QWidget {
    Q_OBJECT

public:
    ImportForm(ImportKind kind, QWidget *parent);

    void showTarget(const UI::Import_Info &info);
    void showNothing();
    void showJob(const ReadJob &read);
    void showRefusal(const QString &path, const QString &why);
    /// A word under everything else; what is chosen stays.
    void showMessage(const QString &text, bool isError);
    /// The same of something that the person at the screen gave up: neither good nor bad.
    void showAbandoned(const QString &text);
    void setWorking(bool isWorking);

Q_SIGNALS:
    void pathChosen(const QString &path);
    void importRequested();
    void closeRequested();

protected:
    // A drop anywhere in the window is meant for the one place.
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct Detail {
        QString title;
        QString text;
        const char *name; ///< of the label
    };

    void buildLayout();
    QWidget *buildButtons();
    void showDetails(const QVector<Detail> &details);
    void say(const QString &text, const QVariant &isError);

    ImportKind m_kind;
    QLabel *m_target;
    ImportDropArea *m_drop;
    QScrollArea *m_scroll;
    QLabel *m_message;
    QPushButton *m_import;
    QPushButton *m_close;
    bool m_hasJob = false;
};

} // namespace KODMS::Services
