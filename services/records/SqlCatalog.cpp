// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/SqlCatalog.h"

#include "services/records/SqlError.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace KODMS::Services {

namespace {

const QLatin1String commonFolder("common");
const QLatin1String suffix(".sql");

QString readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw SqlError(SqlError::Kind::Other, path, file.errorString());
    return QString::fromUtf8(file.readAll());
}

QStringList sqlFiles(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name);
}

/// The text without whole-line comments; a statement's text goes into error
/// messages and to the engine, where the licence lines would be noise.
QString withoutComments(const QString &text)
{
    QStringList kept;
    const QStringList lines = text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (!line.trimmed().startsWith(QLatin1String("--")))
            kept << line;
    }
    return kept.join(QLatin1Char('\n'));
}

} // namespace

SqlCatalog::SqlCatalog(const QString &engineFolder, const QString &root)
    : m_root(root), m_engine(engineFolder), m_statements(scriptsOf({}))
{
    for (QString &statement : m_statements) {
        statement = withoutComments(statement).trimmed();
        if (statement.endsWith(QLatin1Char(';')))
            statement.chop(1);
    }
}

QString SqlCatalog::defaultRoot()
{
    return QStringLiteral(":/kodms/sql");
}

QStringList SqlCatalog::engineFolders(const QString &root)
{
    QStringList folders = QDir(root).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    folders.removeAll(commonFolder);
    return folders;
}

QMap<QString, QString> SqlCatalog::scriptsOf(const QString &subfolder) const
{
    QMap<QString, QString> scripts;
    for (const QString &layer : {QString(commonFolder), m_engine}) {
        const QString folder = m_root + QLatin1Char('/') + layer + QLatin1Char('/') + subfolder;
        const QStringList files = sqlFiles(folder);
        for (const QString &file : files)
            scripts[file.chopped(suffix.size())] = readText(folder + QLatin1Char('/') + file);
    }
    return scripts;
}

QStringList SqlCatalog::script(const QString &folder) const
{
    QStringList all;
    const QMap<QString, QString> scripts = scriptsOf(folder);
    for (const QString &text : scripts)
        all << split(text);
    return all;
}

QStringList SqlCatalog::missingNames() const
{
    QStringList missing;
    const QStringList engines = engineFolders(m_root);
    for (const QString &engine : engines) {
        const QStringList files = sqlFiles(m_root + QLatin1Char('/') + engine);
        for (const QString &file : files) {
            const QString name = file.chopped(suffix.size());
            if (!m_statements.contains(name) && !missing.contains(name))
                missing << name;
        }
    }
    return missing;
}

const QString &SqlCatalog::statement(const QString &name) const
{
    const auto found = m_statements.constFind(name);
    if (found == m_statements.constEnd())
        throw SqlError(SqlError::Kind::Other, name, QStringLiteral("no statement of that name"));
    return *found;
}

QStringList SqlCatalog::installStatements() const
{
    return script(QStringLiteral("schema"));
}

QStringList SqlCatalog::deferrableStatements() const
{
    static const QRegularExpression form(QStringLiteral("^CREATE (INDEX|TRIGGER) "));
    return installStatements().filter(form);
}

QStringList SqlCatalog::upgradeStatements(int version) const
{
    return script(QStringLiteral("version/%1").arg(version));
}

int SqlCatalog::latestVersion() const
{
    int latest = 1;
    const QStringList layers = QStringList(commonFolder) + engineFolders(m_root);
    for (const QString &layer : layers) {
        const QDir folder(m_root + QLatin1Char('/') + layer + QLatin1String("/version"));
        const QStringList steps = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &step : steps)
            latest = std::max(latest, step.toInt());
    }
    return latest;
}

QStringList SqlCatalog::split(const QString &script)
{
    QStringList statements;
    QStringList lines = withoutComments(script).split(QLatin1Char('\n'));
    lines << QString();
    QString present;
    bool ended = false;
    bool isInBody = false; // of a function, between two "$$"
    for (const QString &line : qAsConst(lines)) {
        if (line.count(QLatin1String("$$")) % 2 == 1)
            isInBody = !isInBody;
        if (line.trimmed().isEmpty() && ended && !isInBody) {
            present = present.trimmed();
            present.chop(1);
            statements << present;
            present.clear();
            ended = false;
            continue;
        }
        present += line + QLatin1Char('\n');
        ended = line.trimmed().endsWith(QLatin1Char(';'));
    }
    if (!present.trimmed().isEmpty())
        throw SqlError(SqlError::Kind::Other, present,
                       QStringLiteral("a statement of a script has no end"));
    return statements;
}

} // namespace KODMS::Services
