// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/ServicesExport.h"

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QQueue>
#include <QVector>

/// A part of the library of the fakes, but for tests that compile it themselves.
#if defined(KODMS_PROBE_STATIC)
#define KODMS_PROBE_API
#else
#define KODMS_PROBE_API KODMS_SERVICES_API
#endif

namespace KODMS::Fakes {

/// A message box as it came up.
struct SeenBox {
    QString title;
    QString text;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton; ///< NoButton: none was named
    QMessageBox::Icon icon;
    QPointer<QWidget> parent;
};

/// Answers every message box that comes up while the probe lives, whether it
/// was opened by exec(), open() or one of the static functions, and remembers
/// it. GUI thread; one at a time.
class KODMS_PROBE_API MessageBoxProbe : public QObject {
public:
    MessageBoxProbe();
    ~MessageBoxProbe() override;

    /// The button to press on the next box, after those already said. Without
    /// an answer the only button is pressed, or a box of several is dismissed.
    void answer(QMessageBox::StandardButton button) { m_answers.enqueue(button); }

    const QVector<SeenBox> &boxes() const { return m_boxes; }

    QStringList texts() const;

    int count() const { return m_boxes.size(); }

    void forget() { m_boxes.clear(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void press(QMessageBox *box);

    QQueue<QMessageBox::StandardButton> m_answers;
    QVector<SeenBox> m_boxes;
};

} // namespace KODMS::Fakes
