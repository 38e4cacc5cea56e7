// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/api/support/CopyHouse.h"

#include "services/api/SampleData.h"
#include "services/filestore/FileStore.h"
#include "services/records/copy/CopiedTable.h"
#include "services/session/Runtime.h"

#include <QDirIterator>
#include <QFileInfo>

namespace KODMS::Tests {

using namespace Services;

QString CopyHouse::make()
{
    Outcome outcome = InstallationSetup::init(source(), Installation::login(),
                                              QStringLiteral("管理员"), Installation::password());
    if (outcome)
        outcome = ServiceRuntime::instance().start(source());
    if (!outcome)
        return outcome.text;
    SignIn::actAsOperator();
    NoProgress progress;
    SampleRequest request;
    request.flows = 30;
    request.withFiles = 10;
    outcome = SampleData::generate(request, progress);
    Database &database = Runtime::current()->records().database();
    database.run(QStringLiteral("INSERT INTO sign_in_failures VALUES ('who', 2, 'now')"));
    database.run(QStringLiteral("UPDATE job_flows SET tips = '板厚 ''1.6''; - i1;' WHERE id = 3"));
    ServiceRuntime::instance().stop();
    m_before = dump(source());
    return outcome.text;
}

void CopyHouse::renewTarget()
{
    m_work = std::make_unique<QTemporaryDir>();
    Configuration fresh = Configuration::defaultsFor(target());
    m_server.reset();
    if (TestDatabase::isServer()) {
        m_server = std::make_unique<TestDatabase>();
        m_server->setIn(fresh);
    }
    const Outcome saved = fresh.save();
    if (!saved)
        qFatal("%s", qPrintable(saved.text));
}

DatabaseSettings CopyHouse::databaseOf(const QString &ini)
{
    return Configuration::load(ini).value.database;
}

QStringList CopyHouse::dump(const QString &ini)
{
    Database database(databaseOf(ini));
    QStringList lines;
    for (const CopiedTable &table : CopiedTable::all()) {
        SqlQuery rows =
            database.prepare(QStringLiteral("SELECT * FROM ") + QLatin1String(table.name));
        rows.exec();
        QStringList columns;
        SqlQuery names = database.query("select_columns");
        names.bind(":table", QLatin1String(table.name)).exec();
        while (names.next())
            columns << names.text("name");
        while (rows.next()) {
            QStringList values{QLatin1String(table.name)};
            for (const QString &column : qAsConst(columns)) {
                const QByteArray name = column.toLatin1();
                values << (rows.isNull(name.constData()) ? QStringLiteral("NULL")
                                                         : rows.text(name.constData()));
            }
            lines << values.join(QLatin1Char('|'));
        }
        if (table.key != CopiedTable::Key::Counted)
            continue;
        SqlQuery counter = database.query("select_counter");
        counter.bind(":table", QLatin1String(table.name)).exec().next();
        lines << QLatin1String(table.name) + QStringLiteral(" counter ") + counter.text("counter");
    }
    lines.sort();
    return lines;
}

QStringList CopyHouse::filesOf(const QString &ini)
{
    const auto store = FileStore::create(Configuration::load(ini).value.fileStore);
    QStringList lines;
    const auto files = store.value->list();
    for (const StoredFileInfo &file : files.value)
        lines << file.name + QLatin1Char(' ') + QString::fromLatin1(file.sha256);
    lines.sort();
    return lines;
}

QStringList CopyHouse::bodies(const QString &ini)
{
    QStringList paths;
    QDirIterator files(QFileInfo(ini).path(), QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        if (files.next().contains(QStringLiteral("/files/")))
            paths << files.filePath();
    }
    paths.sort();
    return paths;
}

Result<CopySummary> CopyHouse::copy() const
{
    NoProgress progress;
    return InstallationCopy::copy(source(), target(), progress);
}

QString CopyHouse::startOfTarget() const
{
    const Outcome started = ServiceRuntime::instance().start(target());
    ServiceRuntime::instance().stop();
    return started ? QStringLiteral("it started") : started.text;
}

} // namespace KODMS::Tests
