// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "foundation/common/DMS_Function.h"

#include "services/archive/Unpacker.h"
#include "services/common/StoreFailure.h"
#include "services/session/Runtime.h"
#include "services/tasks/TaskRunner.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <limits>

namespace KODMS::DMS_Function {

using namespace Services;

namespace {

constexpr int Failed = -1;

QString tr(const char *text)
{
    return QCoreApplication::translate("DMS_Function", text);
}

int reported(const QString &archive, const Outcome &failure)
{
    reportFileFailure(lcArchive(), "unpack", archive.toStdString(), failure);
    return Failed;
}

} // namespace

/// The type is a hint that nothing needs: content does not lie, suffixes do.
int ExtractorFileFromcompressFile(std::wstring archivePath, std::wstring /*archiveType*/,
                                  std::wstring targetFolder)
{
    const QString archive = QString::fromStdWString(archivePath);
    const QString target = QString::fromStdWString(targetFolder);
    if (target.isEmpty())
        return reported(archive, Outcome::failure(tr("没有指定解压的目标文件夹")));
    if (!QFileInfo::exists(archive)) {
        // Whoever should have brought it has said why; a notice of ours would cover that one.
        qCInfo(lcArchive) << "unpack: there is no" << archive;
        return Failed;
    }
    const Runtime *runtime = Runtime::current();
    const LimitSettings limits = runtime ? runtime->configuration().limits : LimitSettings();
    qint64 files = 0;
    const Outcome unpacked = TaskRunner::instance().run(
        tr("解压 %1").arg(QFileInfo(archive).fileName()), [&](Progress &progress) {
            const auto result = unpackArchive(archive, target, limits, progress);
            files = result.value;
            return result.outcome;
        });
    if (!unpacked)
        return reported(archive, unpacked);
    return static_cast<int>(qMin(files, qint64{std::numeric_limits<int>::max()}));
}

} // namespace KODMS::DMS_Function
