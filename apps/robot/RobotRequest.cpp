// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/RobotRequest.h"

#include "apps/robot/RequestScanner.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

namespace KODMS::Robot {

using Services::Outcome;
using Services::Result;

namespace {

struct Key {
    QString name;
    QJsonValue::Type type;
    const char *typeName;
};

Outcome wrong(const QString &why)
{
    return Outcome::failure(why);
}

/// Exactly these keys, each with a value of its type.
Outcome checkKeys(const QJsonObject &object, std::initializer_list<Key> keys)
{
    for (const Key &key : keys) {
        if (!object.contains(key.name))
            return wrong(QStringLiteral("\"%1\" is missing").arg(key.name));
        if (object[key.name].type() != key.type)
            return wrong(
                QStringLiteral("\"%1\" is not %2").arg(key.name, QLatin1String(key.typeName)));
    }
    if (object.size() != static_cast<int>(keys.size()))
        return wrong(QStringLiteral("there are keys that nobody knows"));
    return Outcome::success();
}

/// Nothing that is not text, and nothing that could pass for another text on the screen: control
/// and direction characters, what stands for half a character, line ends of any kind.
bool isPlainText(const QString &text)
{
    const QVector<uint> letters = text.toUcs4();
    return std::all_of(letters.begin(), letters.end(), [](uint letter) {
        const auto category = QChar::category(letter);
        return letter != QChar::ReplacementCharacter && QChar::isPrint(letter) &&
               category != QChar::Separator_Line && category != QChar::Separator_Paragraph;
    });
}

Outcome checkName(const QString &name)
{
    if (name.trimmed().isEmpty())
        return wrong(QStringLiteral("the job name is empty"));
    if (name.size() > RobotRequest::LongestName)
        return wrong(QStringLiteral("the job name is longer than %1 characters")
                         .arg(RobotRequest::LongestName));
    return isPlainText(name) ? Outcome::success()
                             : wrong(QStringLiteral("the job name is not plain text"));
}

Outcome checkObject(const QJsonObject &object)
{
    if (Outcome keys =
            checkKeys(object, {{QStringLiteral("module"), QJsonValue::String, "a text"},
                               {QStringLiteral("msgType"), QJsonValue::Double, "a number"},
                               {QStringLiteral("msgParams"), QJsonValue::Object, "an object"}});
        !keys)
        return keys;
    if (object[QStringLiteral("module")].toString() != QLatin1String("robot"))
        return wrong(QStringLiteral("\"module\" is not \"robot\""));
    if (object[QStringLiteral("msgType")] != QJsonValue(1))
        return wrong(QStringLiteral("\"msgType\" is not 1"));
    return checkKeys(object[QStringLiteral("msgParams")].toObject(),
                     {{QStringLiteral("fromWeb"), QJsonValue::Bool, "true or false"},
                      {QStringLiteral("jobname"), QJsonValue::String, "a text"}});
}

} // namespace

Result<RobotRequest> RobotRequest::read(const RequestScanner &scanned)
{
    constexpr int memberCount = 5;
    QJsonParseError error{};
    const QJsonObject object = QJsonDocument::fromJson(scanned.bytes(), &error).object();
    if (error.error != QJsonParseError::NoError)
        return wrong(QStringLiteral("not JSON: %1").arg(error.errorString()));
    if (Outcome keys = checkObject(object); !keys)
        return keys;
    if (scanned.members() != memberCount) // the parser keeps the last of several
        return wrong(QStringLiteral("a key is given twice"));
    const QJsonObject params = object[QStringLiteral("msgParams")].toObject();
    RobotRequest request;
    request.jobName = params[QStringLiteral("jobname")].toString();
    request.fromWeb = params[QStringLiteral("fromWeb")].toBool();
    if (Outcome name = checkName(request.jobName); !name)
        return name;
    if (request.fromWeb && !request.jobName.startsWith(QLatin1String("web"), Qt::CaseInsensitive))
        return wrong(QStringLiteral("\"fromWeb\" is true for a job that is not the web's"));
    return request;
}

} // namespace KODMS::Robot
