// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/ui/questions/QuestionFiling.h"

#include "services/disk/StagedFile.h"
#include "services/records/Guid.h"
#include "services/session/Runtime.h"
#include "services/session/TakeBack.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace KODMS::Services {

namespace {

QString tr(const char *text)
{
    return QCoreApplication::translate("QuestionFiling", text);
}

Outcome writeWhole(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly) && file.write(bytes) == bytes.size() &&
        file.flush())
        return Outcome::success();
    return Outcome::failure(tr("无法写入 %1：%2").arg(path, file.errorString()));
}

} // namespace

QuestionFiling::QuestionFiling(Runtime &runtime, int flowId, const QString &title,
                               const QString &description)
    : m_runtime(&runtime)
{
    m_question.flowId = flowId;
    m_question.userId = runtime.records().actor().userId;
    m_question.title = title;
    m_question.description = description;
}

QuestionFiling::~QuestionFiling()
{
    if (!m_isRecorded)
        takeBack();
}

/// The services may have been stopped meanwhile, and the store with them: then the next
/// check finds what stayed behind.
void QuestionFiling::takeBack()
{
    if (Runtime::current() != m_runtime)
        return;
    for (const QuestionPicture &picture : qAsConst(m_question.pictures))
        takeBackUnrecorded(*m_runtime, picture.storedName);
}

Outcome QuestionFiling::store(const QVector<PictureFile> &pictures, Progress &progress)
{
    for (const PictureFile &picture : pictures)
        if (Outcome stored = storeOne(picture, progress); !stored)
            return stored;
    return Outcome::success();
}

Outcome QuestionFiling::storeOne(const PictureFile &picture, Progress &progress)
{
    const QString name = newGuid() + QLatin1Char('.') + picture.suffix;
    const StagedFile file(QDir(m_runtime->configuration().paths.staging).filePath(name));
    Outcome stored = writeWhole(file.path(), picture.bytes);
    if (stored)
        stored = m_runtime->fileStore().put(file.path(), name, progress);
    if (stored)
        m_question.pictures.append({name, picture.fileName});
    return stored;
}

Result<int> QuestionFiling::record()
{
    Result<int> recorded = QuestionChanges::raise(m_question);
    m_isRecorded = recorded.outcome.ok;
    return recorded;
}

} // namespace KODMS::Services
