// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/fakes/FakeServices.h"

#include "foundation/ui/DMS_UICommon.h"

namespace KODMS::Fakes {

namespace {

bool isQuestionOnly(const QString &name)
{
    return name.startsWith(QLatin1String("DMS_UICommon::has")) ||
           name == QLatin1String("DMS_StdCommon::getCurrentUser") ||
           name == QLatin1String("Common::getConfig");
}

} // namespace

FakeServices &FakeServices::instance()
{
    static FakeServices services;
    return services;
}

void FakeServices::reset()
{
    *this = FakeServices();
}

QVector<Call> FakeServices::calls(const char *name) const
{
    QVector<Call> found;
    for (const Call &call : m_calls)
        if (call.name == QLatin1String(name))
            found.append(call);
    return found;
}

QVector<Call> FakeServices::operations() const
{
    QVector<Call> found;
    for (const Call &call : m_calls)
        if (!isQuestionOnly(call.name))
            found.append(call);
    return found;
}

QStringList FakeServices::operationLines() const
{
    QStringList lines;
    const QVector<Call> all = operations();
    for (const Call &call : all)
        lines << printable(call);
    return lines;
}

Reply<int> &FakeServices::result(const char *name)
{
    const QString key = QString::fromLatin1(name);
    const bool isFileStore = key.startsWith(QLatin1String("Common::"));
    return m_results.try_emplace(key, Reply<int>(isFileStore ? 0 : 1)).first->second;
}

void FakeServices::setUser(int id)
{
    user.id = id;
}

void FakeServices::raiseRefreshExportJobTable()
{
    Q_EMIT UI::DMS_UICommon::interface()->refreshExportJobTable();
}

void FakeServices::raiseRefreshOrigFileTable()
{
    Q_EMIT UI::DMS_UICommon::interface()->refreshOrigFileTable();
}

void FakeServices::raiseServiceNotice(int level, const QString &text)
{
    Q_EMIT UI::DMS_UICommon::interface()->serviceNotice(level, text);
}

} // namespace KODMS::Fakes
