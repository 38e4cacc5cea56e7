// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QApplication>
#include <QEvent>
#include <QFileDialog>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <optional>
#include <utility>

namespace KODMS::Tests {

/// A file dialog as it came up.
struct SeenFileDialog {
    QString title;
    QString folder;
    QStringList filters;
    QFileDialog::FileMode fileMode;
    QFileDialog::ViewMode viewMode;
    QFileDialog::Options options;
    QPointer<QWidget> parent;
    bool isModal;
};

/// Answers the file dialogs that come up while the probe lives: chooses the file or
/// folder that was said, or closes the dialog. GUI thread; one at a time.
class FileDialogProbe : public QObject {
public:
    FileDialogProbe() { qApp->installEventFilter(this); }

    ~FileDialogProbe() override { qApp->removeEventFilter(this); }

    /// What to choose in the dialogs from now on; nothing: they are dismissed.
    void choose(const QStringList &paths) { m_paths = paths; }

    void choose(const QString &path) { choose(QStringList{path}); }

    /// What to do instead while the next dialog waits.
    void whileOpen(std::function<void()> deed) { m_deed = std::move(deed); }

    int count() const { return m_count; }

    /// The last one; there has to be one.
    const SeenFileDialog &seen() const { return *m_seen; }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *dialog =
            event->type() == QEvent::Show ? qobject_cast<QFileDialog *>(watched) : nullptr;
        if (dialog) {
            ++m_count;
            m_seen = SeenFileDialog{dialog->windowTitle(),  dialog->directory().absolutePath(),
                                    dialog->nameFilters(),  dialog->fileMode(),
                                    dialog->viewMode(),     dialog->options(),
                                    dialog->parentWidget(), dialog->isModal()};
            QTimer::singleShot(0, dialog, [this, dialog] { answer(dialog); });
        }
        return false;
    }

private:
    void answer(QFileDialog *dialog)
    {
        QDialog *plain = dialog; // accept() is open to everybody only there
        if (m_deed) {
            std::exchange(m_deed, nullptr)();
        } else if (m_paths.isEmpty()) {
            plain->reject();
        } else {
            for (const QString &path : qAsConst(m_paths))
                dialog->selectFile(path);
            plain->accept();
        }
    }

    QStringList m_paths;
    std::function<void()> m_deed;
    int m_count = 0;
    std::optional<SeenFileDialog> m_seen;
};

} // namespace KODMS::Tests
