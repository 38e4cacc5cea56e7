// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/FaultHouse.h"

#include "services/notices/Progress.h"
#include "tests/archive/SampleArchives.h"
#include "tests/faults/FaultyFileStore.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/PlainConnection.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>

#include <filesystem>

namespace KODMS::Tests {

using namespace Services;

namespace {

namespace fs = std::filesystem;

fs::path native(const QString &path)
{
    return fs::path(path.toStdString());
}

void emptyFolder(const fs::path &folder)
{
    for (const auto &entry : fs::directory_iterator(folder))
        fs::remove_all(entry.path());
}

/// GUIDs and hashes are counted as they come up; times all look alike.
QString withoutChance(const QString &text, QHash<QString, QString> &guids)
{
    static const QRegularExpression chance(
        QStringLiteral("[0-9a-f]{64}|[0-9a-f]{32}|\\d{4}-\\d\\d-\\d\\dT[0-9:.]+Z"));
    QString result;
    int end = 0;
    for (auto found = chance.globalMatch(text); found.hasNext();) {
        const auto match = found.next();
        result += text.mid(end, match.capturedStart() - end);
        end = match.capturedEnd();
        if (match.captured().contains(QLatin1Char('T'))) {
            result += QLatin1String("<time>");
            continue;
        }
        QString &name = guids[match.captured()];
        if (name.isEmpty())
            name = QStringLiteral("<guid %1>").arg(guids.size());
        result += name;
    }
    return result + text.mid(end);
}

QString rowText(const QSqlRecord &row)
{
    QStringList cells;
    for (int i = 0; i < row.count(); ++i)
        if (!row.fieldName(i).endsWith(QLatin1String("_version")))
            cells << (row.isNull(i) ? QStringLiteral("null") : row.value(i).toString());
    return cells.join(QLatin1Char('|'));
}

} // namespace

FaultHouse::FaultHouse(const std::function<void(FaultHouse &)> &prepare)
    : m_keptRecords(TestDatabase::Begin::Absent)
{
    takeIn();
    m_actor = m_home.runtime().records().actor();
    prepare(*this);
    m_home.stop();
    fs::copy(native(m_home.path(QString())), native(m_copy.path()), fs::copy_options::recursive);
    m_keptRecords.copyFrom(m_home.place());
    m_keptRecords.freeze();
}

FaultHouse::~FaultHouse()
{
    close();
}

void FaultHouse::takeIn()
{
    auto configuration = Configuration::load(m_home.iniPath()).value;
    configuration.robot.host.clear(); // no robot takes part
    if (!configuration.save())
        qFatal("the configuration cannot be written");
    m_home.start();
    m_home.actAsAdmin();
    IntakeRequest request;
    request.path = ownFile(QStringLiteral("sent.tgz"), tgzOf({{QStringLiteral("a.gbr"), "G04"}}));
    request.customerCode = QStringLiteral("A1B");
    const auto taken = Intake::take(request);
    if (!taken)
        qFatal("%s", qPrintable(taken.text()));
    m_job = taken.value;
}

void FaultHouse::putBack()
{
    close();
    emptyFolder(native(m_home.path(QString())));
    fs::copy(native(m_copy.path()), native(m_home.path(QString())), fs::copy_options::recursive);
    m_home.place().copyFrom(m_keptRecords);
}

void FaultHouse::open()
{
    const auto runtime = Runtime::open(m_home.iniPath(), FaultyFileStore::create);
    if (!runtime)
        qFatal("%s", qPrintable(runtime.text()));
    Runtime::setCurrent(runtime.value);
    m_home.database().run(TestDatabase::hurry());
    m_home.runtime().setActor(m_actor);
}

void FaultHouse::close()
{
    Runtime::setCurrent(nullptr);
}

void FaultHouse::actAs(const QString &login, const RoleSet &roles)
{
    m_home.actAs(login, roles);
    m_actor = m_home.runtime().records().actor();
}

void FaultHouse::run(const QString &statement)
{
    m_home.database().run(statement);
}

QString FaultHouse::rows(const QString &statement) const
{
    QStringList lines;
    QHash<QString, QString> guids;
    const PlainConnection connection(m_home.place().settings());
    QSqlQuery query(connection.database());
    if (!query.exec(statement))
        qFatal("%s", qPrintable(query.lastError().text()));
    while (query.next())
        lines << withoutChance(rowText(query.record()), guids);
    return lines.join(QLatin1Char('\n'));
}

QString FaultHouse::records() const
{
    QStringList tables;
    for (const char *table : {"users", "user_roles", "customers", "jobs", "orig_files", "job_flows",
                              "job_compress", "import_contents", "orders", "questions",
                              "question_pictures", "orig_file_assign", "pre_check_assign"})
        tables << QLatin1String(table) + QLatin1Char('\n') +
                      rows(QStringLiteral("SELECT * FROM %1 ORDER BY 1").arg(QLatin1String(table)));
    return tables.join(QLatin1Char('\n'));
}

QStringList FaultHouse::deeds() const
{
    return rows(QStringLiteral("SELECT user_id, action, record_kind, record_id FROM events "
                               "WHERE refused = 0 ORDER BY id"))
        .split(QLatin1Char('\n'));
}

CheckReport FaultHouse::check(bool repairs)
{
    RoleSet admin;
    admin.insert(Role::Admin);
    Actor checker;
    checker.roles = admin;
    m_home.runtime().setActor(checker);
    NoProgress progress;
    CheckOptions options;
    options.repair = repairs;
    auto report = StoreCheck::check(options, &progress);
    if (!report)
        qFatal("%s", qPrintable(report.text()));
    m_home.runtime().setActor(m_actor);
    return report.value;
}

QStringList FaultHouse::temporaryFiles() const
{
    QStringList found = TestInstallation::entries(m_home.path(QStringLiteral("staging")));
    const QDir downloads(m_home.path(QStringLiteral("download")));
    for (const QString &name :
         downloads.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot))
        if (name.startsWith(QLatin1Char('.')))
            found << name;
    return found;
}

QString FaultHouse::ownFile(const QString &name, const QByteArray &bytes) const
{
    const QString path = m_own.filePath(name);
    if (!QFileInfo::exists(path) && !writeFile(path, bytes))
        qFatal("%s cannot be written", qPrintable(path));
    return path;
}

QString FaultHouse::ownFolder(const QString &name) const
{
    const QString path = m_own.filePath(name);
    if (!QFileInfo::exists(path))
        writeJob(m_own.path(), boardFiles(name));
    return path;
}

} // namespace KODMS::Tests
