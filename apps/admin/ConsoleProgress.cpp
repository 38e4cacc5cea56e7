// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/ConsoleProgress.h"

#include "apps/console/Interrupt.h"
#include "apps/console/Terminal.h"

#include <QLocale>

namespace KODMS::Admin {

using Console::Interrupt;
using Console::Terminal;

static constexpr qint64 ShowEveryMs = 200;

ConsoleProgress::ConsoleProgress(const QString &what, Unit unit)
    : m_what(what), m_unit(unit), m_isTerminal(Terminal::isErrorShown())
{
}

ConsoleProgress::~ConsoleProgress()
{
    if (m_isTerminal && m_sinceShown.isValid())
        Terminal::showForNow(QString());
}

void ConsoleProgress::setUnit(Services::Progress::Unit unit)
{
    m_unit = unit == Services::Progress::Unit::Bytes ? Unit::Bytes : Unit::Items;
    m_done = 0;
}

void ConsoleProgress::setTotal(qint64 total)
{
    m_total = total;
    m_toldTenths = 0;
}

void ConsoleProgress::advance(qint64 done)
{
    m_done += done;
    if (!m_isTerminal) {
        tellTenth();
        return;
    }
    if (m_sinceShown.isValid() && m_sinceShown.elapsed() < ShowEveryMs)
        return;
    m_sinceShown.start();
    show();
}

bool ConsoleProgress::isCancelled() const
{
    return Interrupt::wasAskedFor();
}

void ConsoleProgress::show() const
{
    QString line = QStringLiteral("%1: %2").arg(m_what, amount(m_done));
    if (m_total > 0)
        line += QStringLiteral(" of %1 (%2 %)").arg(amount(m_total)).arg(percent());
    Terminal::showForNow(line);
}

int ConsoleProgress::percent() const
{
    return static_cast<int>(qMin<qint64>(100, 100 * m_done / m_total));
}

void ConsoleProgress::tellTenth()
{
    if (m_total <= 0 || percent() / 10 <= m_toldTenths)
        return;
    m_toldTenths = percent() / 10;
    const QString line =
        QStringLiteral("%1: %2 % of %3").arg(m_what).arg(percent()).arg(amount(m_total));
    Terminal::writeError(line);
}

QString ConsoleProgress::amount(qint64 value) const
{
    const QLocale plain = QLocale::c();
    return m_unit == Unit::Bytes ? plain.formattedDataSize(value) : plain.toString(value);
}

} // namespace KODMS::Admin
