// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/e2e/life/CustomerFiles.h"

#include "tests/archive/RawTar.h"
#include "tests/archive/SampleArchives.h"

#include <QDir>
#include <QFileInfo>

namespace KODMS::Tests {

namespace {

QByteArray layerRow(int row, const QByteArray &type, const QByteArray &name)
{
    return "LAYER {\n ROW=" + QByteArray::number(row) + "\n CONTEXT=BOARD\n TYPE=" + type +
           "\n NAME=" + name + "\n}\n";
}

void write(const QString &path, const QByteArray &bytes)
{
    if (!QDir().mkpath(QFileInfo(path).path()) || !writeFile(path, bytes))
        qFatal("%s cannot be written", qPrintable(path));
}

} // namespace

CustomerFiles::Files CustomerFiles::drawings()
{
    const QByteArray flash = "G04 drawn by the customer*\nD10*\nX0Y0D03*\nM02*\n";
    return {{QStringLiteral("顶层线路.gbr"), flash},
            {QStringLiteral("底层线路.gbr"), flash + "\n"},
            {QStringLiteral("钻孔/通孔.drl"), "M48\nT1C0.30\n%\nT1\nX010Y010\nM30\n"},
            {QStringLiteral("工艺要求.txt"), "4 layers, 1.6 mm, ENIG\n"}};
}

QString CustomerFiles::folder(const QString &name, const Files &files) const
{
    const QString folder = m_dir.filePath(name);
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        write(folder + QLatin1Char('/') + file.key(), file.value());
    return folder;
}

QString CustomerFiles::archive(const QString &name, const Files &files) const
{
    QVector<RawTarEntry> entries;
    for (auto file = files.cbegin(); file != files.cend(); ++file)
        entries.append({file.key().toUtf8(), file.value()});
    const QString path = m_dir.filePath(name);
    write(path, gzipped(rawTar(entries)));
    return path;
}

QString CustomerFiles::preparedJob(const QString &name, int signalLayers) const
{
    Files files{{name + QStringLiteral("/steps/panel/profile"), "UNITS=MM\n"}};
    QByteArray matrix = "STEP {\n COL=1\n NAME=PCB\n}\nSTEP {\n COL=2\n NAME=PANEL\n}\n";
    for (int layer = 1; layer <= signalLayers; ++layer) {
        const QByteArray title = "L" + QByteArray::number(layer);
        matrix += layerRow(layer, "SIGNAL", title);
        files.insert(name + QStringLiteral("/steps/pcb/layers/") +
                         QString::fromLatin1(title.toLower()) + QStringLiteral("/features"),
                     "$0 r10\nP 1 1 0 P 0 0\nL 1 1 2 2 0 P 0\nP 2 2 0 P 0 0\n");
    }
    matrix += layerRow(signalLayers + 1, "SOLDER_MASK", "TSM");
    matrix += layerRow(signalLayers + 2, "DRILL", "D1");
    files.insert(name + QStringLiteral("/matrix/matrix"), matrix);
    return archive(name + QStringLiteral(".tgz"), files);
}

CustomerFiles::Files CustomerFiles::filesIn(const QString &folder)
{
    Files files = treeOf(folder);
    for (auto file = files.begin(); file != files.end();)
        file = file.value() == "/" ? files.erase(file) : file + 1;
    return files;
}

} // namespace KODMS::Tests
