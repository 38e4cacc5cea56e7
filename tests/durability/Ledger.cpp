// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/durability/Ledger.h"

namespace KODMS::Tests {

using namespace Services;

namespace {

const QString remarkSql = QStringLiteral("SELECT tips FROM job_flows WHERE guid = '%1'");
const QString verdictSql =
    QStringLiteral("SELECT CAST(check_flag AS TEXT) FROM job_flows WHERE guid = '%1'");
const QString assignSql =
    QStringLiteral("SELECT CAST(a.executor_id AS TEXT) FROM pre_check_assign a "
                   "JOIN job_flows f ON f.id = a.flow_id WHERE f.guid = '%1'");

} // namespace

Ledger::Values *Ledger::valuesOf(const QString &step)
{
    if (step == QLatin1String("remark"))
        return &m_remarks;
    if (step == QLatin1String("verdict"))
        return &m_verdicts;
    return step == QLatin1String("assign") ? &m_assignments : nullptr;
}

void Ledger::read(const QStringList &lines)
{
    for (const QString &line : lines) {
        const QStringList words = line.split(QLatin1Char(' '));
        Values *values = valuesOf(words.value(1));
        if (words.at(0) == QLatin1String("try") && values)
            (*values)[words.value(2)].tried = words.value(3);
        else if (words.at(0) == QLatin1String("ok"))
            acknowledge(words.mid(1));
    }
}

void Ledger::acknowledge(const QStringList &words)
{
    ++m_acknowledged;
    if (Values *values = valuesOf(words.at(0)))
        (*values)[words.value(1)].known = words.value(2);
    else if (words.at(0) == QLatin1String("put"))
        m_puts.insert(words.value(1), words.value(2));
    else
        m_intakes.insert(words.value(1), words.value(2) + QLatin1Char(' ') + words.value(3));
}

QStringList Ledger::differences(TestInstallation &home)
{
    QStringList found = compare(m_remarks, home, remarkSql, QStringLiteral("remark"));
    found += compare(m_verdicts, home, verdictSql, QStringLiteral("verdict"));
    found += compare(m_assignments, home, assignSql, QStringLiteral("assignment"));
    found += compareFiles(home);
    settleTried(home);
    return found;
}

QStringList Ledger::compare(const Values &values, TestInstallation &home, const QString &sql,
                            const QString &what)
{
    QStringList found;
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const QString there = home.value(sql.arg(value.key())).toString();
        // Nothing acknowledged yet: what was there before is right too.
        if (!value->known.isEmpty() && !value->allows(there))
            found << QStringLiteral("%1 of %2 is %3, not %4 or %5")
                         .arg(what, value.key(), there, value->known, value->tried);
    }
    return found;
}

QStringList Ledger::compareFiles(TestInstallation &home)
{
    QStringList found;
    for (auto put = m_puts.cbegin(); put != m_puts.cend(); ++put) {
        const auto info = home.store().find(put.key());
        if (!info || QString::fromLatin1(info.value.sha256) != put.value())
            found << QStringLiteral("the stored file %1 is not there").arg(put.key());
    }
    for (auto intake = m_intakes.cbegin(); intake != m_intakes.cend(); ++intake) {
        const QString recorded =
            home.value(QStringLiteral("SELECT o.stored_name FROM job_flows f JOIN orig_files o "
                                      "ON o.id = f.orig_file_id WHERE f.job_name = '%1'")
                           .arg(intake.key()))
                .toString();
        const QString digest = intake.value().section(QLatin1Char(' '), 1, 1);
        const auto info = home.store().find(recorded);
        const bool isSame =
            digest == QLatin1String("any") || QString::fromLatin1(info.value.sha256) == digest;
        if (recorded != intake.value().section(QLatin1Char(' '), 0, 0) || !info || !isSame)
            found << QStringLiteral("the job %1 is not there").arg(intake.key());
    }
    return found;
}

/// Whether the last step was done is known now.
void Ledger::settleTried(TestInstallation &home)
{
    const auto settle = [&home](Values &values, const QString &sql) {
        for (auto value = values.begin(); value != values.end(); ++value) {
            value->known = home.value(sql.arg(value.key())).toString();
            value->tried.clear();
        }
    };
    settle(m_remarks, remarkSql);
    settle(m_verdicts, verdictSql);
    settle(m_assignments, assignSql);
}

} // namespace KODMS::Tests
