// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/records/conditions/ConditionReader.h"

#include "services/notices/NoticeHub.h"

#include <QTextCodec>

#include <utility>

namespace KODMS::Services {

namespace {

/// The engines' parsers stop at about a hundred open brackets of any kind.
constexpr int deepestNesting = 24;

/// A decimal whole number, perhaps written with a sign or a zero fraction.
bool readNumber(const QString &text, qint64 *number)
{
    QString digits = text.trimmed();
    const int point = digits.indexOf(QLatin1Char('.'));
    if (point > 0) {
        for (int i = point + 1; i < digits.size(); ++i) {
            if (digits.at(i) != QLatin1Char('0'))
                return false;
        }
        digits.truncate(point);
    }
    for (int i = 0; i < digits.size(); ++i) {
        const bool isSign = i == 0 && digits.size() > 1 &&
                            (digits.at(0) == QLatin1Char('-') || digits.at(0) == QLatin1Char('+'));
        const ushort unit = digits.at(i).unicode();
        if (!isSign && (unit < '0' || unit > '9'))
            return false;
    }
    bool ok = false;
    *number = digits.toLongLong(&ok);
    return ok;
}

/// A field of few values: the test is one of them, or none.
Condition amongFew(const ViewField *field, const QString &part)
{
    std::vector<Condition> values;
    for (int number = 0; number <= field->largest; ++number) {
        if (QString::number(number).contains(part))
            values.push_back(Condition::equalNumber(field, number));
    }
    return Condition::any(std::move(values));
}

Condition contains(const ViewField *field, const QString &part)
{
    if (part.isEmpty())
        return Condition::everything();
    if (field->largest >= 0)
        return amongFew(field, part);
    return Condition::test(field, Condition::Match::Contains, part);
}

Condition equals(const ViewField *field, qint64 number)
{
    const bool isPossible = field->largest < 0 || (number >= 0 && number <= field->largest);
    return isPossible ? Condition::equalNumber(field, number) : Condition::nothing();
}

/// False for bytes that are no UTF-8, as those of half a surrogate pair are, and for a text
/// with NUL: no record holds such a text, and the engines would each make another one of it.
bool readText(const std::string &bytes, QString *text)
{
    QTextCodec::ConverterState state;
    *text = QTextCodec::codecForName("UTF-8")->toUnicode(bytes.data(),
                                                         static_cast<int>(bytes.size()), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 && !text->contains(QChar(0));
}

bool readCount(const std::string &text, qint64 *count)
{
    return readNumber(QString::fromStdString(text), count) && *count >= 0;
}

} // namespace

ConditionReader::ConditionReader(const SearchView &view) : m_view(view) {}

bool ConditionReader::fail(const QString &problem)
{
    m_problem = problem;
    return false;
}

bool ConditionReader::read(const std::vector<Record> &list)
{
    m_request = {};
    m_problem.clear();
    m_open.clear();
    m_open.emplace_back();
    const Record *before = nullptr;
    for (const Record &record : list) {
        if (!readOrder(record) || !readPage(record))
            return false;
        const bool isRepeated =
            record.sortEnabled == 1 && before != nullptr && repeats(record, *before);
        if (!isRepeated && !readCondition(record))
            return false;
        before = &record;
    }
    if (m_open.size() != 1)
        return fail(QStringLiteral("a bracket is not closed"));
    m_request.where = fold(m_open.front());
    if (m_request.where.depth > deepestNesting)
        return fail(QStringLiteral("brackets are nested too deeply"));
    return true;
}

bool ConditionReader::repeats(const Record &record, const Record &before)
{
    return record.fieldName == before.fieldName && record.value == before.value &&
           record.orWithPrevious == before.orWithPrevious &&
           record.openBracket == before.openBracket && record.closeBracket == before.closeBracket;
}

bool ConditionReader::readOrder(const Record &record)
{
    if (record.sortEnabled != 1)
        return true;
    const ViewField *field = m_view.field(record.sortField);
    if (field == nullptr)
        return fail(QStringLiteral("unknown field to sort by: ") +
                    QString::fromStdString(record.sortField));
    if (m_request.orderBy != nullptr) // the first order counts
        return true;
    m_request.orderBy = field;
    m_request.isDescending = record.sortDirection == 1;
    return true;
}

bool ConditionReader::readPage(const Record &record)
{
    if (record.pageEnabled != 1)
        return true;
    SearchRequest::Page page;
    if (!readCount(record.pageStart, &page.offset) || !readCount(record.pageSize, &page.size))
        return fail(QStringLiteral("the page window is not a pair of numbers"));
    m_request.page = page;
    return true;
}

bool ConditionReader::readCondition(const Record &record)
{
    const bool opens = record.openBracket == 1;
    const bool closes = record.closeBracket == 2;
    if ((!opens && record.openBracket != 0) || (!closes && record.closeBracket != 0))
        return fail(QStringLiteral("unknown bracket"));
    const bool carriesOnlyOrderOrPage = record.fieldName.empty() && !opens && !closes &&
                                        (record.sortEnabled == 1 || record.pageEnabled == 1);
    if (carriesOnlyOrderOrPage)
        return true;
    Condition condition;
    if (!readField(record, &condition))
        return false;
    const bool isOr = record.orWithPrevious == 1;
    if (opens) {
        m_open.emplace_back();
        m_open.back().orBefore = isOr;
        add(m_open.back(), false, std::move(condition));
    } else {
        add(m_open.back(), isOr, std::move(condition));
    }
    return !closes || close();
}

bool ConditionReader::readField(const Record &record, Condition *condition)
{
    const ViewField *field = m_view.field(record.fieldName);
    if (field == nullptr)
        return fail(QStringLiteral("unknown field: ") + QString::fromStdString(record.fieldName));
    QString value;
    if (!readText(record.value, &value)) {
        qCWarning(lcRecords) << "search:" << field->name << "is compared with NUL or no UTF-8";
        *condition = Condition::nothing();
        return true;
    }
    if (record.fuzzy == 1) {
        *condition = contains(field, value);
        return true;
    }
    if (field->kind == ViewField::Kind::Text && record.numericValue != 1) {
        *condition = Condition::test(field, Condition::Match::EqualText, value);
        return true;
    }
    qint64 number = 0;
    *condition = readNumber(value, &number) ? equals(field, number) : Condition::nothing();
    return true;
}

bool ConditionReader::close()
{
    if (m_open.size() < 2)
        return fail(QStringLiteral("a bracket is closed that was not opened"));
    Group group = std::move(m_open.back());
    m_open.pop_back();
    Condition condition = fold(group);
    if (condition.depth > deepestNesting)
        return fail(QStringLiteral("brackets are nested too deeply"));
    add(m_open.back(), group.orBefore, std::move(condition));
    return true;
}

void ConditionReader::add(Group &group, bool orBefore, Condition condition)
{
    if (group.alternatives.empty() || orBefore)
        group.alternatives.emplace_back();
    group.alternatives.back().push_back(std::move(condition));
}

Condition ConditionReader::fold(Group &group)
{
    if (group.alternatives.empty())
        return Condition::everything();
    std::vector<Condition> any;
    for (std::vector<Condition> &all : group.alternatives)
        any.push_back(Condition::all(std::move(all)));
    return Condition::any(std::move(any));
}

} // namespace KODMS::Services
