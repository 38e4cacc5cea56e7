// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "services/notices/Outcome.h"

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

namespace KODMS::Admin {

/// What was typed for one command.
class Invocation {
public:
    explicit Invocation(const QCommandLineParser &parser) : m_parser(parser) {}

    QString argument(int index) const { return m_parser.positionalArguments().value(index); }

    bool has(const QString &option) const { return m_parser.isSet(option); }

    QString value(const QString &option) const { return m_parser.value(option); }

    QStringList values(const QString &option) const { return m_parser.values(option); }

    /// A whole number from `least` to `most`; the text of a failure names the option.
    Services::Result<qint64> number(const QString &option, qint64 least, qint64 most) const;

    QString configPath() const { return value(QStringLiteral("config")); }

    QString passwordFile() const { return value(QStringLiteral("password-file")); }

private:
    const QCommandLineParser &m_parser;
};

} // namespace KODMS::Admin
