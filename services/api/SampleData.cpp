// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/api/SampleData.h"

#include "services/api/internal/AdminChange.h"
#include "services/api/internal/SampleArchive.h"
#include "services/notices/NoticeHub.h"
#include "services/records/sample/SampleRecords.h"
#include "services/session/Runtime.h"

#include <QCoreApplication>
#include <QTemporaryDir>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("SampleData", text);
}

bool holdsRealWork(Runtime &runtime)
{
    if (runtime.configuration().isSample)
        return false;
    SqlQuery query = runtime.records().database().query("count_flows");
    query.exec().next();
    return query.int64("total") > 0;
}

/// Puts the generated files into the store, and takes them out again when the
/// records do not follow.
class PuttingFiles {
public:
    explicit PuttingFiles(FileStore &store) : m_store(store) {}

    ~PuttingFiles()
    {
        for (const QString &name : qAsConst(m_names))
            static_cast<void>(m_store.remove(name)); // what is left, `check` names and removes
    }

    PuttingFiles(const PuttingFiles &) = delete;
    PuttingFiles &operator=(const PuttingFiles &) = delete;

    Outcome put(const SampleFile &file)
    {
        const QString path = m_dir.filePath(file.storedName);
        const Outcome written = SampleArchive::write(path, file.baseName);
        if (!written)
            return written;
        NoProgress progress;
        const Outcome stored = m_store.put(path, file.storedName, progress);
        QFile::remove(path);
        if (stored)
            m_names << file.storedName;
        return stored;
    }

    void keep() { m_names.clear(); }

private:
    FileStore &m_store;
    QTemporaryDir m_dir;
    QStringList m_names;
};

Outcome refusal(const SampleRequest &request, Runtime &runtime)
{
    if (request.flows < 1 || request.flows > SampleData::mostFlows)
        return Outcome::failure(tr("示例流程数应为 1 到 %1").arg(SampleData::mostFlows));
    if (request.withFiles > SampleData::mostFlowsWithFiles)
        return Outcome::failure(
            tr("带文件的示例最多 %1 个流程").arg(SampleData::mostFlowsWithFiles));
    if (holdsRealWork(runtime))
        return Outcome::failure(tr("此处已有真实数据，不能加入示例数据"));
    return Outcome::success();
}

Outcome generateIn(Runtime &runtime, const SampleRequest &request, Progress &progress)
{
    for (const Outcome &refused :
         {AdminChange::mayAct("sample.generate", QString()), refusal(request, runtime)}) {
        if (!refused)
            return refused;
    }
    PuttingFiles files(runtime.fileStore());
    SampleRecords records(runtime.records().database(), request.withFiles,
                          [&files](const SampleFile &file) { return files.put(file); });
    try {
        const Outcome outcome = records.write(request.flows, request.seed, progress);
        if (outcome)
            files.keep();
        return outcome;
    } catch (const SqlError &error) {
        if (error.kind() == SqlError::Kind::Unsure) // files that nobody needs, `check` finds
            files.keep();
        throw;
    }
}

} // namespace

Outcome SampleData::generate(const SampleRequest &request, Progress &progress)
{
    Runtime *runtime = Runtime::current();
    if (runtime == nullptr)
        return Outcome::failure(tr("服务未运行"));
    try {
        return generateIn(*runtime, request, progress);
    } catch (const SqlError &error) {
        qCWarning(lcRecords).noquote() << "sample" << error.logText();
        return Outcome::failure(error.userText());
    }
}

} // namespace KODMS::Services
