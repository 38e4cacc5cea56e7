// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/desks/DownloadWorld.h"

namespace KODMS::Tests {

// The lines of a download's story, for jobs of tgzRows(): "flow3" of "guid3".

inline const QString Tgz = QStringLiteral("tgz");
inline const QString Zip = QStringLiteral("zip");
inline const QString Ask = QStringLiteral("box(\"确认下载这些job?\")");
inline const QString Complete = QStringLiteral("box(\"Download complete!\")");
inline const QString Failed = QStringLiteral("box(\"下载失败或文件已下载!\")");
inline const QString FetchOperation =
    QStringLiteral("DMS_StdCommon::getFilesFrommogodbUuidTypeOriginName");

inline QString lookUp(int number)
{
    return QStringLiteral("Odbpp_JobFlowBll::select({FlowGUID: guid%1}, {})").arg(number);
}

inline QString fetched(int number, const QString &type)
{
    return QStringLiteral("%1(\"flow%2\", \"file%2\", \"%3\")")
        .arg(FetchOperation)
        .arg(number)
        .arg(type);
}

inline QString unpacked(int number, const QString &suffix, const QString &type)
{
    return QStringLiteral("DMS_Function::ExtractorFileFromcompressFile(\"ROOT/flow%1.%2\", "
                          "\"%3\", \"ROOT/flow%1/\")")
        .arg(number)
        .arg(suffix, type);
}

inline QString parametersOf(int number)
{
    return QStringLiteral("DBS_API::getWebRobotParaByJobName(\"flow%1\")").arg(number);
}

inline QString folderHandedOver(int number)
{
    return QStringLiteral("DMS_UICommon::inputNewJob(\"flow%1\", \"ROOT/flow%1\")").arg(number);
}

inline QString opened(const QString &path)
{
    return QStringLiteral("started(\"explorer.exe\", \"/select , \"%1\"\")").arg(path);
}

/// The whole life of a tgz job without a job file and without robot parameters.
inline QStringList wholeRow(int number)
{
    return {lookUp(number), fetched(number, Tgz), unpacked(number, Tgz, Tgz), parametersOf(number),
            folderHandedOver(number)};
}

inline QStringList failedRow(int number)
{
    return {lookUp(number), fetched(number, Tgz), unpacked(number, Tgz, Tgz), Failed};
}

/// Selects the rows one by one, presses the button and agrees.
inline void downloadRows(DownloadWorld &world, const OperationDesk &window,
                         const QVector<int> &rows)
{
    for (const int row : rows)
        window.select(row);
    window.setCurrent(rows.first());
    world.agree();
    window.download();
}

inline QVector<JobRow> tgzRows(int count)
{
    QVector<JobRow> rows;
    for (int number = 1; number <= count; ++number)
        rows << jobRow(number, Tgz);
    return rows;
}

} // namespace KODMS::Tests
