// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/tasks/TaskDialog.h"

#include "services/tasks/TaskProgress.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace KODMS::Services {

namespace {

constexpr int RefreshMs = 100;
constexpr int FirstRateMs = 300;
constexpr int RateWindowMs = 1000;
constexpr int BarSteps = 1000;
constexpr int LeastWidth = 420;
constexpr int MostTitleWidth = 560;

} // namespace

TaskDialog::TaskDialog(const QString &what, TaskProgress &progress, QWidget *parent)
    : QDialog(parent), m_progress(progress), m_amount(new QLabel(this)), m_rate(new QLabel(this)),
      m_bar(new QProgressBar(this)), m_cancel(new QPushButton(tr("取消"), this))
{
    setObjectName(QStringLiteral("taskDialog"));
    setWindowTitle(tr("请稍候"));
    setWindowModality(Qt::ApplicationModal);
    setAttribute(Qt::WA_QuitOnClose, false);
    setMinimumWidth(LeastWidth);
    QLabel *title = makeTitle(what);
    m_amount->setObjectName(QStringLiteral("taskAmount"));
    m_rate->setObjectName(QStringLiteral("taskRate"));
    m_cancel->setObjectName(QStringLiteral("taskCancel"));
    m_bar->setTextVisible(false);
    m_bar->setAccessibleName(title->accessibleName());

    auto *figures = new QHBoxLayout;
    figures->addWidget(m_amount);
    figures->addStretch();
    figures->addWidget(m_rate);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(title);
    layout->addWidget(m_bar);
    layout->addLayout(figures);
    layout->addLayout(buttons);

    connect(m_cancel, &QPushButton::clicked, this, &TaskDialog::reject);
    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &TaskDialog::showProgress);
    timer->start(RefreshMs);
    m_sinceMark.start();
    m_mark = m_progress.done();
    showProgress();
}

/// A customer's file name may be long and without a place to break the line.
QLabel *TaskDialog::makeTitle(const QString &what)
{
    const QString line = what.simplified();
    auto *title = new QLabel(this);
    title->setObjectName(QStringLiteral("taskTitle"));
    title->setTextFormat(Qt::PlainText);
    title->setText(title->fontMetrics().elidedText(line, Qt::ElideMiddle, MostTitleWidth));
    title->setAccessibleName(line);
    return title;
}

void TaskDialog::reject()
{
    m_progress.cancel();
    m_cancel->setEnabled(false);
    m_cancel->setText(tr("正在取消…"));
}

/// A box that was opened meanwhile would lie over it, and nobody could cancel.
void TaskDialog::stayOnTop()
{
    if (!isVisible() || QApplication::activeModalWidget() == this)
        return;
    hide();
    show();
}

void TaskDialog::showProgress()
{
    stayOnTop();
    const qint64 total = m_progress.total();
    const qint64 done = qMax(qint64{0}, m_progress.done());
    if (total > 0) {
        m_bar->setRange(0, BarSteps);
        m_bar->setValue(static_cast<int>(qMin(1.0, double(done) / double(total)) * BarSteps));
    } else {
        m_bar->setRange(0, 0);
    }
    m_amount->setText(amountText(done, total));
    const int window = m_rate->text().isEmpty() ? FirstRateMs : RateWindowMs;
    if (m_sinceMark.elapsed() >= window || done < m_mark)
        m_rate->setText(rateText(done));
}

QString TaskDialog::numberText(qint64 number) const
{
    const QLocale locale;
    return m_progress.unit() == Progress::Unit::Rows ? tr("%1 行").arg(locale.toString(number))
                                                     : locale.formattedDataSize(number);
}

QString TaskDialog::amountText(qint64 done, qint64 total) const
{
    return total > 0 ? tr("%1 / %2").arg(numberText(done), numberText(total)) : numberText(done);
}

QString TaskDialog::rateText(qint64 done)
{
    const qint64 elapsed = qMax(qint64{1}, m_sinceMark.restart());
    const qint64 perSecond = qMax(qint64{0}, done - m_mark) * 1000 / elapsed;
    m_mark = done;
    return tr("%1/秒").arg(numberText(perSecond));
}

} // namespace KODMS::Services
