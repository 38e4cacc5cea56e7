// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/search/SearchCases.h"

#include "bench/search/BenchDatabase.h"

#include <algorithm>
#include <functional>

namespace KODMS::Bench {

namespace {

using Record = DataLib::Model::DB_Search;
using Services::Actor;
using Services::Role;

Record test(const char *field, const QString &value, bool fuzzy)
{
    Record record;
    record.fieldName = field;
    record.value = value.toStdString();
    record.fuzzy = fuzzy ? 1 : 0;
    return record;
}

/// As the desks do: the last condition once more, carrying the order.
void addOrder(List &list, const char *field)
{
    Record order = list.back();
    order.sortEnabled = 1;
    order.sortField = field;
    order.sortDirection = 1;
    list.push_back(order);
}

/// `first` is the field in which the two desks differ.
void addUserBracket(List &list, const char *first, int userId)
{
    const char *fields[] = {first, "Flow_CreateUserId", "OFAssign_ExecutorId",
                            "PCAssign_ExecutorId"};
    for (int i = 0; i < 4; ++i) {
        Record record = test(fields[i], QString::number(userId), false);
        record.openBracket = i == 0 ? 1 : 0;
        record.closeBracket = i == 3 ? 2 : 0;
        record.orWithPrevious = i == 0 ? 0 : 1;
        list.push_back(record);
    }
}

void addStatusBracket(List &list)
{
    const int pairs[][2] = {{0, 0}, {1, 0}, {1, 1}, {1, 2}, {2, 0}, {2, 1}};
    for (int i = 0; i < 6; ++i) {
        Record status = test("Flow_FlowStatus", QString::number(pairs[i][0]), false);
        status.openBracket = i == 0 ? 1 : 0;
        status.orWithPrevious = i == 0 ? 0 : 1;
        list.push_back(status);
        Record flag = test("Flow_CheckFlag", QString::number(pairs[i][1]), false);
        flag.closeBracket = i == 5 ? 2 : 0;
        list.push_back(flag);
    }
}

Actor administrator()
{
    Actor actor;
    actor.userId = 1;
    actor.roles.insert(Role::Admin);
    return actor;
}

QStringList parts(const QStringList &texts, int length, int from)
{
    QStringList list;
    for (const QString &text : texts) {
        const int start = qMin(from, qMax(0, text.size() - length));
        list << text.mid(start, length);
    }
    return list;
}

SearchCase makeCase(const QString &name, const QStringList &terms,
                    const std::function<List(const QString &)> &listOf, bool isFlowView = true)
{
    SearchCase made;
    made.name = name;
    made.isFlowView = isFlowView;
    made.actor = administrator();
    for (const QString &term : terms) {
        List list = listOf(term);
        addOrder(list, isFlowView ? "Flow_CreateTime" : "FlowTable_CreateTime");
        made.lists.push_back(list);
    }
    return made;
}

List allOfOrigDesk(const QString &text)
{
    List list;
    for (const char *field : {"OrigName", "KoName", "KoCode", "FileTips", "SuperiorCo1",
                              "SuperiorCo2", "PreUser_RealName"}) {
        Record record = test(field, text, true);
        record.orWithPrevious = list.empty() ? 0 : 1;
        list.push_back(record);
    }
    Record serial = test("JobSerialNumber", QString::number(text.toInt()), false);
    serial.numericValue = 1;
    serial.orWithPrevious = 1;
    list.push_back(serial);
    return list;
}

QStringList numbers(int from, int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << QString::number(from + i);
    return list;
}

QStringList chinese(int length, int count)
{
    // Signs that the sample's texts have, and others that they have not.
    const QString signs =
        QStringLiteral("深圳东莞广州惠主板电源控制显示转接驱动核心按键接口微信邮件官网下单"
                       "销售转交客户展会王李张刘陈杨黄赵周吴徐孙马朱胡郭何林罗高梁");
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << signs.mid(i % (signs.size() - length), length);
    return list;
}

/// Different parts of that many Chinese characters of these texts.
QStringList chineseParts(const QStringList &texts, int length, int most)
{
    const auto isChinese = [](QChar sign) { return sign.script() == QChar::Script_Han; };
    QStringList parts;
    for (const QString &text : texts) {
        for (int start = 0; start + length <= text.size() && parts.size() < most; ++start) {
            const QString part = text.mid(start, length);
            if (std::all_of(part.begin(), part.end(), isChinese) && !parts.contains(part))
                parts << part;
        }
    }
    return parts;
}

void addJobNameCases(std::vector<SearchCase> &cases, BenchDatabase &database, int terms)
{
    const auto byName = [](const QString &term) { return List{test("KoJobName", term, true)}; };
    const QStringList names =
        database.someTexts(QStringLiteral("jobs"), QStringLiteral("name"), terms);
    QStringList letters;
    for (int i = 0; i < terms; ++i)
        letters << QString(QChar((i < 26 ? 'a' : 'A') + i % 26));
    cases.push_back(makeCase(QStringLiteral("job name, 1 Latin character"), letters, byName));
    cases.push_back(makeCase(QStringLiteral("job name, 2 characters"), parts(names, 2, 0), byName));
    cases.push_back(makeCase(QStringLiteral("job name, 3 characters"), parts(names, 3, 2), byName));
    cases.push_back(makeCase(QStringLiteral("job name, 8 characters"), parts(names, 8, 1), byName));
}

/// Job names have no Chinese characters; the names that the files came with have.
void addChineseCases(std::vector<SearchCase> &cases, BenchDatabase &database, int terms)
{
    const auto byName = [](const QString &term) { return List{test("OrigName", term, true)}; };
    for (const int length : {1, 2}) {
        const QStringList parts =
            chineseParts(database.someTexts(QStringLiteral("job_compress"),
                                            QStringLiteral("orig_name"), 50 * terms),
                         length, terms);
        if (parts.isEmpty())
            continue;
        cases.push_back(makeCase(length == 1
                                     ? QStringLiteral("original name, 1 Chinese character")
                                     : QStringLiteral("original name, 2 Chinese characters"),
                                 parts, byName, false));
    }
}

void addFilterCases(std::vector<SearchCase> &cases, BenchDatabase &database, int terms)
{
    cases.push_back(
        makeCase(QStringLiteral("layer count"), numbers(1, terms), [](const QString &t) {
            return List{test("JobTable_LayerCount", QString::number(2 * t.toInt()), false)};
        }));
    cases.push_back(
        makeCase(QStringLiteral("batch number"), numbers(1, terms),
                 [](const QString &t) { return List{test("Flow_UploadBatchNum", t, true)}; }));
    const QStringList people =
        database.someTexts(QStringLiteral("users"), QStringLiteral("real_name"), 1) +
        chinese(1, terms - 1);
    cases.push_back(makeCase(QStringLiteral("pre-processor's name"), people, [](const QString &t) {
        return List{test("PreUserRealName_OFAssign_Executor", t, true)};
    }));
    cases.push_back(
        makeCase(QStringLiteral("status filter"), numbers(0, terms), [](const QString &t) {
            const int kind = t.toInt() % 3;
            return List{test("Flow_FlowStatus", QString::number(kind), true),
                        test("Flow_CheckFlag", QStringLiteral("0"), true)};
        }));
}

void addScopeCases(std::vector<SearchCase> &cases, BenchDatabase &database, int terms)
{
    const QStringList names =
        database.someTexts(QStringLiteral("jobs"), QStringLiteral("name"), terms);
    const int user = database.ordinaryUser();
    Actor ordinary;
    ordinary.userId = user;
    SearchCase scoped = makeCase(QStringLiteral("name + user scope + status bracket"),
                                 parts(names, 2, 0), [user](const QString &term) {
                                     List list{test("KoJobName", term, true)};
                                     addUserBracket(list, "JobTable_CreateUserId", user);
                                     addStatusBracket(list);
                                     return list;
                                 });
    scoped.actor = ordinary;
    cases.push_back(scoped);
    SearchCase history = makeCase(QStringLiteral("order history of a user"), parts(names, 2, 0),
                                  [user](const QString &term) {
                                      List list{test("KoJobName", term, true),
                                                test("Flow_FlowStatus", QStringLiteral("2"), false),
                                                test("Flow_FlowStatus", QStringLiteral("3"), false),
                                                test("Flow_CheckFlag", QStringLiteral("2"), false)};
                                      list[1].openBracket = 1;
                                      list[2].orWithPrevious = 1;
                                      list[3].closeBracket = 2;
                                      addUserBracket(list, "Flow_LastOdbppImportUserId", user);
                                      return list;
                                  });
    history.actor = ordinary;
    cases.push_back(history);
}

/// What somebody without a view of all customers sends: the own files AND a name OR
/// any of the other fields; the service keeps the answer to the own files.
void addOwnFiles(std::vector<SearchCase> &cases, BenchDatabase &database, const QStringList &terms)
{
    const int user = database.ordinaryUser();
    SearchCase own = makeCase(
        QStringLiteral("\"全部\" of somebody's own files"), terms,
        [user](const QString &term) {
            List list = allOfOrigDesk(term);
            list.insert(list.begin(), test("PreUser_id", QString::number(user), false));
            return list;
        },
        false);
    own.actor = Actor();
    own.actor.userId = user;
    cases.push_back(own);
}

void addOrigCases(std::vector<SearchCase> &cases, BenchDatabase &database, int terms)
{
    const QStringList names =
        database.someTexts(QStringLiteral("job_compress"), QStringLiteral("orig_name"), terms);
    cases.push_back(makeCase(
        QStringLiteral("original files, no filter"), {QString()},
        [](const QString &t) { return List{test("OrigName", t, true)}; }, false));
    QStringList mixed = parts(names, 3, 1);
    for (int i = 0; i < mixed.size(); i += 2)
        mixed[i] = chinese(2, terms).at(i);
    cases.push_back(makeCase(QStringLiteral("\"全部\" of the original-file desk"), mixed,
                             allOfOrigDesk, false));
    cases.push_back(makeCase(
        QStringLiteral("original name"), mixed,
        [](const QString &t) { return List{test("OrigName", t, true)}; }, false));
    cases.push_back(makeCase(
        QStringLiteral("customer code"),
        database.someTexts(QStringLiteral("customers"), QStringLiteral("code"), terms),
        [](const QString &t) { return List{test("KoCode", t, true)}; }, false));
    cases.push_back(makeCase(
        QStringLiteral("executor"), chinese(1, terms),
        [](const QString &t) { return List{test("PreUser_RealName", t, true)}; }, false));
    cases.push_back(makeCase(
        QStringLiteral("serial number"), numbers(1, terms),
        [](const QString &t) { return List{test("JobSerialNumber", t, false)}; }, false));
    cases.push_back(makeCase(
        QStringLiteral("remark of the source"), chinese(2, terms),
        [](const QString &t) { return List{test("FileTips", t, true)}; }, false));
    cases.push_back(makeCase(
        QStringLiteral("customer short name"), chinese(2, terms),
        [](const QString &t) { return List{test("KoName", t, true)}; }, false));
    addOwnFiles(cases, database, mixed);
}

} // namespace

std::vector<SearchCase> searchCases(BenchDatabase &database, int terms)
{
    std::vector<SearchCase> cases;
    cases.push_back(makeCase(QStringLiteral("no filter"), {QString()},
                             [](const QString &t) { return List{test("KoJobName", t, true)}; }));
    addJobNameCases(cases, database, terms);
    addChineseCases(cases, database, terms);
    addScopeCases(cases, database, terms);
    addOrigCases(cases, database, terms);
    addFilterCases(cases, database, terms);
    SearchCase late = makeCase(QStringLiteral("page 10,000 with a filter"), numbers(0, 10),
                               [](const QString &t) { return List{test("KoJobName", t, true)}; });
    late.pageStart = 30 * qMin(9999, database.flows() / 100);
    cases.push_back(late);
    SearchCase after = makeCase(
        QStringLiteral("job name, 3 characters, after a change of a flow"),
        parts(database.someTexts(QStringLiteral("jobs"), QStringLiteral("name"), terms), 3, 2),
        [](const QString &t) { return List{test("KoJobName", t, true)}; });
    after.isAfterChange = true;
    cases.push_back(after);
    return cases;
}

} // namespace KODMS::Bench
