// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/LifeOfAJob.h"

#include "tests/e2e/ExportUser.h"
#include "tests/e2e/life/HostUser.h"
#include "tests/e2e/life/LifeHouse.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTableWidget>

namespace KODMS::Tests {

void LifeOfAJob::begin(const QString &name)
{
    m_name = name;
    m_flowGuid = record(QStringLiteral("f.guid"));
}

QString LifeOfAJob::record(const QString &expression) const
{
    return m_house.records().text(
        QStringLiteral("SELECT %1 FROM job_flows f JOIN jobs j ON j.name = f.job_name "
                       "JOIN job_compress c ON c.flow_id = f.id WHERE f.job_name = '%2'")
            .arg(expression, m_name));
}

QString LifeOfAJob::state() const
{
    return record(QStringLiteral("f.flow_status || ',' || f.check_flag"));
}

QString LifeOfAJob::storedName(File file) const
{
    const char *column = file == File::Original ? "orig_file_id"
                         : file == File::Import ? "last_import_file_id"
                                                : "result_file_id";
    return record(QStringLiteral("(SELECT o.stored_name FROM orig_files o WHERE o.id = f.%1)")
                      .arg(QLatin1String(column)));
}

QByteArray LifeOfAJob::storedBytes(File file) const
{
    // A stored file is a folder with its name, which holds nothing but the body.
    const QString root = QFileInfo(m_house.sample().configPath()).path();
    QDirIterator folders(root, {storedName(file)}, QDir::Dirs, QDirIterator::Subdirectories);
    if (!folders.hasNext())
        return {};
    QDirIterator bodies(folders.next(), QDir::Files);
    QFile body(bodies.hasNext() ? bodies.next() : QString());
    return body.open(QIODevice::ReadOnly) ? body.readAll() : QByteArray();
}

int LifeOfAJob::rowAt(const DeskUser &desk, int column) const
{
    return desk.rowOf(column, m_name);
}

QString LifeOfAJob::statusFor(const Services::NewUser &person) const
{
    const DeskUser desk = HostUser(m_house, person).jobFlows();
    return desk.column(ExportUser::Status).value(rowAt(desk, ExportUser::JobName));
}

QString LifeOfAJob::change(const QString &before, const QString &after)
{
    return before.isEmpty() ? after : before + QStringLiteral(" → ") + after;
}

void LifeOfAJob::did(const QString &who, const QString &action, const QString &content)
{
    m_deeds << who + QStringLiteral(": ") + action + QStringLiteral(": ") + content;
}

} // namespace KODMS::Tests
