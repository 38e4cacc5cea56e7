// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/robot/ResultFolder.h"

#include <QDir>
#include <QFile>
#include <QVector>

namespace KODMS::Robot {

using Services::Outcome;
using Services::Result;

namespace {

struct File {
    const char *path;
    QByteArray content;
};

QByteArray infoOf(const QString &jobName, const char *outcome)
{
    return "JOB_NAME=" + jobName.toUtf8() +
           "\nODB_VERSION_MAJOR=7\nODB_VERSION_MINOR=0\nODB_SOURCE=kodms-robot\nROBOT_OUTCOME=" +
           outcome + "\n";
}

QByteArray matrixLayer(int row, const char *type, const char *name)
{
    return "LAYER {\n    ROW=" + QByteArray::number(row) + "\n    CONTEXT=BOARD\n    TYPE=" + type +
           "\n    NAME=" + name + "\n    POLARITY=POSITIVE\n}\n";
}

QByteArray matrix()
{
    return "STEP {\n    COL=1\n    NAME=PCB\n}\n" + matrixLayer(1, "SIGNAL", "TOP") +
           matrixLayer(2, "SIGNAL", "BOTTOM");
}

QByteArray features()
{
    return QByteArrayLiteral("UNITS=MM\n$0 r300\nP 10 10 0 P 0 0\nP 20 10 0 P 0 0\n"
                             "L 10 10 20 10 0 P 0\n");
}

QByteArray profile()
{
    return QByteArrayLiteral("UNITS=MM\nS P 0\nOB 0 0 I\nOS 0 40\nOS 60 40\nOS 60 0\nOS 0 0\n"
                             "OE\nSE\n");
}

Outcome writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (QDir().mkpath(QFileInfo(path).path()) && file.open(QIODevice::WriteOnly) &&
        file.write(content) == content.size() && file.flush())
        return Outcome::success();
    return Outcome::failure(
        QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

Result<QString> writeAll(const QString &parent, const QString &jobName, const QVector<File> &files)
{
    const QString folder = QDir(parent).filePath(ResultFolder::entityName(jobName));
    for (const File &file : files) {
        const QString path = folder + QLatin1Char('/') + QLatin1String(file.path);
        if (Outcome written = writeFile(path, file.content); !written)
            return written;
    }
    return folder;
}

bool isAllowed(QChar letter)
{
    return (letter >= QLatin1Char('a') && letter <= QLatin1Char('z')) ||
           (letter >= QLatin1Char('0') && letter <= QLatin1Char('9')) ||
           QLatin1String("-_+.").contains(letter);
}

} // namespace

Result<QString> ResultFolder::writeJob(const QString &parent, const QString &jobName)
{
    return writeAll(parent, jobName,
                    {{"misc/info", infoOf(jobName, "done")},
                     {"matrix/matrix", matrix()},
                     {"steps/pcb/profile", profile()},
                     {"steps/pcb/layers/top/features", features()},
                     {"steps/pcb/layers/bottom/features", features()}});
}

Result<QString> ResultFolder::writeFailure(const QString &parent, const QString &jobName)
{
    return writeAll(
        parent, jobName,
        {{"misc/info", infoOf(jobName, "failed")},
         {"user/robot_report.txt", "The robot could not process " + jobName.toUtf8() +
                                       ". Fail this result; the job can then be sent again.\n"}});
}

QString ResultFolder::entityName(const QString &jobName)
{
    constexpr int longest = 64;
    QString name = jobName.toLower().left(longest);
    for (QChar &letter : name) {
        if (!isAllowed(letter))
            letter = QLatin1Char('_');
    }
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')))
        name.prepend(QLatin1String("job"));
    return name;
}

} // namespace KODMS::Robot
