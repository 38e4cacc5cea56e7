// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

namespace KODMS::Services {

/// The SQL that the records use, by name. One statement a file: NAME.sql in
/// common/ serves every engine, one of the same name in an engine's folder goes
/// before it. schema/ holds the fresh installation, version/N/ the step that
/// brings a database of version N-1 to N.
class SqlCatalog {
public:
    /// Reads the engine's statements below `root`.
    explicit SqlCatalog(const QString &engineFolder, const QString &root = defaultRoot());

    static QString defaultRoot();

    /// Folders of all engines below `root`.
    static QStringList engineFolders(const QString &root = defaultRoot());

    /// Names that another engine has and this one lacks: empty in a whole build.
    QStringList missingNames() const;

    /// The statement's text. Throws SqlError when there is none of that name.
    const QString &statement(const QString &name) const;

    QStringList names() const { return m_statements.keys(); }

    /// Statements of the fresh installation, in order.
    QStringList installStatements() const;

    /// Those of them that make indexes and triggers, which a large load can do without.
    QStringList deferrableStatements() const;

    /// Statements of another script folder, in order, for example "sample/begin".
    QStringList script(const QString &folder) const;

    /// Statements of the step to `version`, in order; empty when there is none.
    QStringList upgradeStatements(int version) const;

    /// The schema's version that this program knows, the same for every engine: a step
    /// may have nothing to do for one of them.
    int latestVersion() const;

    /// The statements of a script: each ends with ";" at the end of a line that
    /// is followed by an empty line or by nothing, outside of a function's body "$$ $$".
    static QStringList split(const QString &script);

private:
    QMap<QString, QString> scriptsOf(const QString &subfolder) const;

    QString m_root;
    QString m_engine;
    QMap<QString, QString> m_statements;
};

} // namespace KODMS::Services
