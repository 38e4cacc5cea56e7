// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/records/support/SearchOracle.h"

#include <QRegularExpression>

#include <algorithm>

namespace KODMS::Tests {

namespace {

bool isNumberField(const QString &field)
{
    static const QStringList numbers{QStringLiteral("Flow_Id"),
                                     QStringLiteral("Flow_OdbppUploaded"),
                                     QStringLiteral("JobTable_LayerCount"),
                                     QStringLiteral("JobTable_FeatureCount"),
                                     QStringLiteral("JobTable_CreateUserId"),
                                     QStringLiteral("Flow_FlowStatus"),
                                     QStringLiteral("Flow_CheckFlag"),
                                     QStringLiteral("Flow_WebFlag"),
                                     QStringLiteral("Flow_UploadBatchNum"),
                                     QStringLiteral("Flow_CreateUserId"),
                                     QStringLiteral("Flow_LastOdbppImportUserId"),
                                     QStringLiteral("OFAssign_ExecutorId"),
                                     QStringLiteral("PCAssign_ExecutorId"),
                                     QStringLiteral("OrigFile_Id"),
                                     QStringLiteral("JobSerialNumber"),
                                     QStringLiteral("PreUser_id")};
    return numbers.contains(field);
}

QByteArray folded(const QString &text)
{
    QByteArray bytes = text.toUtf8();
    for (char &c : bytes) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return bytes;
}

bool testNumber(const QVariant &stored, const QString &wanted)
{
    static const QRegularExpression form(QStringLiteral("^\\s*([+-]?[0-9]+)(\\.0*)?\\s*$"));
    const auto match = form.match(wanted);
    bool ok = false;
    const qlonglong number = match.captured(1).toLongLong(&ok);
    if (!match.hasMatch() || !ok)
        return false;
    if (stored.type() != QVariant::String)
        return stored.toLongLong() == number;
    static const QRegularExpression digits(QStringLiteral("^[0-9]{1,18}$"));
    return digits.match(stored.toString()).hasMatch() && stored.toString().toLongLong() == number;
}

bool test(const SearchOracle::Row &row, const SearchOracle::Record &record)
{
    const QString field = QString::fromStdString(record.fieldName);
    const QVariant stored = row.value(field);
    const QString wanted = QString::fromStdString(record.value);
    if (wanted.contains(QChar(0)) || wanted.toStdString() != record.value) // NUL, or no UTF-8
        return false;
    if (record.fuzzy == 1)
        return wanted.isEmpty() ||
               (!stored.isNull() && folded(stored.toString()).contains(folded(wanted)));
    if (stored.isNull())
        return false;
    if (record.numericValue == 1 || isNumberField(field))
        return testNumber(stored, wanted);
    return stored.toString() == wanted;
}

/// Text order is the order of the UTF-8 bytes; nothing comes before everything.
int compare(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return static_cast<int>(b.isNull()) - static_cast<int>(a.isNull());
    if (a.type() == QVariant::String) {
        const QByteArray left = a.toString().toUtf8();
        const QByteArray right = b.toString().toUtf8();
        return left < right ? -1 : (right < left ? 1 : 0);
    }
    const qlonglong left = a.toLongLong();
    const qlonglong right = b.toLongLong();
    return left < right ? -1 : (right < left ? 1 : 0);
}

} // namespace

/// Evaluates a list for one row, from left to right.
class SearchOracle::Reading {
public:
    Reading(const List &list, const Row &row) : m_list(list), m_row(row) {}

    bool result() { return m_list.empty() || alternatives(); }

private:
    bool opens() const { return m_list[m_next].openBracket == 1 && !m_hasOpened; }

    bool alternatives()
    {
        bool any = together();
        while (goesOn(1)) {
            const bool other = together();
            any = any || other;
        }
        return any;
    }

    bool together()
    {
        bool all = one();
        while (goesOn(0)) {
            const bool other = one();
            all = all && other;
        }
        return all;
    }

    bool goesOn(int join) const
    {
        return !m_hasClosed && m_next < m_list.size() && m_list[m_next].orWithPrevious == join;
    }

    bool one()
    {
        if (opens()) {
            m_hasOpened = true;
            const bool inside = alternatives();
            m_hasClosed = false;
            return inside;
        }
        m_hasOpened = false;
        const Record &record = m_list[m_next++];
        m_hasClosed = record.closeBracket == 2;
        return test(m_row, record);
    }

    const List &m_list;
    const Row &m_row;
    std::size_t m_next = 0;
    bool m_hasOpened = false;
    bool m_hasClosed = false;
};

SearchOracle::SearchOracle(View view, Services::Database &database) : m_view(view)
{
    const bool isFlow = view == View::Flow;
    m_fields = isFlow ? QStringList{QStringLiteral("Flow_Id"),
                                    QStringLiteral("KoJobName"),
                                    QStringLiteral("Flow_OrigJobName"),
                                    QStringLiteral("Flow_OrigUploadTime"),
                                    QStringLiteral("Flow_OdbppUploadTime"),
                                    QStringLiteral("Flow_OdbppUploaded"),
                                    QStringLiteral("JobTable_LayerCount"),
                                    QStringLiteral("JobTable_FeatureCount"),
                                    QStringLiteral("JobTable_CreateUserId"),
                                    QStringLiteral("Flow_FlowStatus"),
                                    QStringLiteral("Flow_CheckFlag"),
                                    QStringLiteral("Flow_FlowGUID"),
                                    QStringLiteral("PreUserRealName_OFAssign_Executor"),
                                    QStringLiteral("PreCheckUserRealName_PCAssign_Executor"),
                                    QStringLiteral("Flow_Tips"),
                                    QStringLiteral("Flow_FileUuid"),
                                    QStringLiteral("Flow_WebFlag"),
                                    QStringLiteral("Order_Suffix"),
                                    QStringLiteral("OrigFile_Suffix"),
                                    QStringLiteral("Flow_UploadBatchNum"),
                                    QStringLiteral("Flow_CreateTime"),
                                    QStringLiteral("Flow_CreateUserId"),
                                    QStringLiteral("Flow_LastOdbppImportUserId"),
                                    QStringLiteral("OFAssign_ExecutorId"),
                                    QStringLiteral("PCAssign_ExecutorId")}
                      : QStringList{QStringLiteral("OrigFile_Id"),
                                    QStringLiteral("OrigName"),
                                    QStringLiteral("KoName"),
                                    QStringLiteral("KoCode"),
                                    QStringLiteral("FileType"),
                                    QStringLiteral("JobSerialNumber"),
                                    QStringLiteral("FileUuid"),
                                    QStringLiteral("FileDescription"),
                                    QStringLiteral("FileTips"),
                                    QStringLiteral("Flow_FlowGUID"),
                                    QStringLiteral("SuperiorCo1"),
                                    QStringLiteral("SuperiorCo2"),
                                    QStringLiteral("UpdateTime"),
                                    QStringLiteral("CreateTime"),
                                    QStringLiteral("PreUser_RealName"),
                                    QStringLiteral("PreUser_id"),
                                    QStringLiteral("FlowTable_CreateTime")};
    Services::SqlQuery query =
        database.prepare(QStringLiteral("SELECT * FROM ") +
                         (isFlow ? QLatin1String("flow_view") : QLatin1String("orig_file_view")));
    query.exec();
    while (query.next()) {
        Row row;
        for (const QString &field : qAsConst(m_fields)) {
            const QByteArray name = field.toLatin1();
            if (query.isNull(name.constData()))
                row[field] = QVariant();
            else if (isNumberField(field))
                row[field] = query.int64(name.constData());
            else
                row[field] = query.text(name.constData());
        }
        m_rows << row;
    }
}

int SearchOracle::idOf(const Row &row) const
{
    return row.value(m_fields.first()).toInt();
}

SearchOracle::List SearchOracle::withoutRepetition(const List &list)
{
    List kept;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Record &record = list[i];
        const bool isRepetition = i > 0 && record.sortEnabled == 1 &&
                                  list[i - 1].fieldName == record.fieldName &&
                                  list[i - 1].value == record.value &&
                                  list[i - 1].orWithPrevious == record.orWithPrevious &&
                                  list[i - 1].openBracket == record.openBracket &&
                                  list[i - 1].closeBracket == record.closeBracket;
        if (!isRepetition)
            kept.push_back(record);
    }
    return kept;
}

bool SearchOracle::isInScope(const Row &row, const Services::Actor &actor) const
{
    using Services::Role;
    if (actor.roles.has(Role::Admin) || actor.roles.has(Role::TestAdmin))
        return true;
    const auto isMine = [&](const char *field) {
        const QVariant stored = row.value(QLatin1String(field));
        return !stored.isNull() && stored.toInt() == actor.userId;
    };
    if (m_view == View::OrigFile)
        return actor.roles.has(Role::ShowCompanyName) || isMine("PreUser_id");
    return isMine("Flow_CreateUserId") || isMine("Flow_LastOdbppImportUserId") ||
           isMine("JobTable_CreateUserId") || isMine("OFAssign_ExecutorId") ||
           isMine("PCAssign_ExecutorId");
}

QVector<int> SearchOracle::matching(const List &list, const Services::Actor &actor) const
{
    const List applied = withoutRepetition(list);
    QVector<int> places;
    for (int i = 0; i < m_rows.size(); ++i) {
        if (isInScope(m_rows.at(i), actor) && Reading(applied, m_rows.at(i)).result())
            places << i;
    }
    return places;
}

void SearchOracle::sort(QVector<int> &places, const List &list) const
{
    QString field = m_fields.first();
    bool isDescending = false;
    for (const Record &record : list) {
        if (record.sortEnabled == 1) {
            field = QString::fromStdString(record.sortField);
            isDescending = record.sortDirection == 1;
            break;
        }
    }
    std::sort(places.begin(), places.end(), [&](int a, int b) {
        const Row &left = m_rows.at(isDescending ? b : a);
        const Row &right = m_rows.at(isDescending ? a : b);
        const int order = compare(left.value(field), right.value(field));
        return order != 0 ? order < 0 : idOf(left) < idOf(right);
    });
}

SearchOracle::Answer SearchOracle::ask(const List &conditions, const List &countConditions,
                                       const Services::Actor &actor) const
{
    QVector<int> places = matching(conditions, actor);
    sort(places, conditions);
    for (const Record &record : conditions) {
        if (record.pageEnabled == 1) {
            const int start = QString::fromStdString(record.pageStart).toInt();
            const int size = QString::fromStdString(record.pageSize).toInt();
            places = places.mid(start, size);
            break;
        }
    }
    Answer answer;
    for (const int place : qAsConst(places))
        answer.ids << idOf(m_rows.at(place));
    answer.count = matching(countConditions, actor).size();
    return answer;
}

} // namespace KODMS::Tests
