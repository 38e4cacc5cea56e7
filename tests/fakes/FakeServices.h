// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "foundation/common/KODMS_Config.h"
#include "foundation/common/ServicesExport.h"
#include "foundation/model/Kodms_User.h"
#include "foundation/model/Odbpp_Flow_View.h"
#include "foundation/model/Odbpp_JobFlow.h"
#include "foundation/model/Odbpp_Orders.h"
#include "foundation/model/Odbpp_OrigFile_View.h"
#include "foundation/model/Odbpp_Questions.h"
#include "foundation/model/User_View.h"
#include "tests/fakes/Call.h"
#include "tests/fakes/Reply.h"

#include <QPointer>
#include <QVector>
#include <QWidget>

#include <map>
#include <set>
#include <vector>

namespace KODMS::Fakes {

/// The rights that the hub is asked for.
enum class Right {
    Admin,
    PreProcess,
    PreCheckAssign,
    TestAdmin,
    CheckAuthority,
    OrigFileUpdate,
    OrigFileAssign,
    ShowCompanyName
};

/// What a list query answers.
template <typename Record> struct Rows {
    std::vector<Record> rows;
    bool ok = true;
};

/// What a paged query answers; `total` counts the rows of all pages.
template <typename Record> struct Page {
    std::vector<Record> rows;
    int total = 0;
    bool ok = true;
};

/// A window of another library that somebody has made.
struct SecondaryWindow {
    QString className;
    int mode = 0; ///< import window: its mode; question window: 1 = view mode
    int id = 0;   ///< question window: the id it was made for
    QPointer<QWidget> window;
    QPointer<QWidget> parent;
};

/// The service library of the tests: records every call of the contract in
/// order and answers as the test says. One per process; GUI thread.
class KODMS_SERVICES_API FakeServices {
public:
    static FakeServices &instance();

    /// Forgets all calls and goes back to the first answers: everything succeeds
    /// and finds nothing, nobody is signed in, no rights, an empty configuration.
    void reset();

    const QVector<Call> &calls() const { return m_calls; }

    /// The calls of one operation, in order: "Odbpp_JobFlowBll::UpdateTips".
    QVector<Call> calls(const char *name) const;

    int count(const char *name) const { return calls(name).size(); }

    /// All calls but the questions for rights, user and configuration.
    QVector<Call> operations() const;

    /// The same, one printable line each.
    QStringList operationLines() const;

    void forgetCalls() { m_calls.clear(); }

    /// Notes one call; for the fakes themselves.
    template <typename... Arguments> Call record(const char *name, const Arguments &...arguments)
    {
        Call call{QString::fromLatin1(name), {argument(arguments)...}};
        m_calls.append(call);
        return call;
    }

    /// Notes one call of an operation that only returns bool or int, and answers it.
    template <typename... Arguments> int answer(const char *name, const Arguments &...arguments)
    {
        const Call call = record(name, arguments...);
        return result(name).take(call);
    }

    /// The answer of an operation that only returns bool or int, by its name.
    /// Unless told otherwise it succeeds: 1, and 0 for the file store.
    Reply<int> &result(const char *name);

    void grant(Right right) { rights.insert(right); }

    void setUser(int id);

    /// Raises the hub's refresh signals, as another window would.
    void raiseRefreshExportJobTable();
    void raiseRefreshOrigFileTable();
    void raiseServiceNotice(int level, const QString &text);

    std::set<Right> rights;
    DataLib::Model::Kodms_User user;
    KODMS_Config config;
    bool hubRaisesSignals = true; ///< emitGobalSingal() raises both refresh signals

    Reply<Page<DataLib::Model::Odbpp_Flow_View>> flowPages;
    Reply<Page<DataLib::Model::Odbpp_OrigFile_View>> origFilePages;
    Reply<Rows<DataLib::Model::Odbpp_JobFlow>> jobFlows;
    Reply<DataLib::Model::Odbpp_JobFlow> flowByGuid;
    Reply<Rows<DataLib::Model::Odbpp_Questions>> questions;
    Reply<DataLib::Model::Odbpp_Orders> orders;
    Reply<Rows<DataLib::Model::User_View>> users;
    Reply<std::string> guids;
    Reply<std::string> packedNames; ///< what FoldersCompressSave2MongoDb stored
    Reply<std::string> robotParameters;

    QVector<SecondaryWindow> windows;

private:
    FakeServices() = default;

    QVector<Call> m_calls;
    std::map<QString, Reply<int>> m_results;
};

} // namespace KODMS::Fakes
