// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/transfer/Material.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <cstdio>
#include <random>
#include <stdexcept>

namespace KODMS::Bench {

namespace {

constexpr qint64 MiB = 1 << 20;

/// Lines of a photoplotter: the beam goes on a little each time.
class PlotLines {
public:
    explicit PlotLines(unsigned seed) : m_random(seed) {}

    QByteArray next(qint64 size)
    {
        QByteArray text;
        text.reserve(static_cast<int>(size) + LineLength);
        while (text.size() < size) {
            m_x = (m_x + m_random() % Step) % Width;
            m_y = (m_y + m_random() % Step) % Width;
            char line[LineLength];
            const int length = std::snprintf(line, sizeof line, "X%07uY%07uD0%u*\n",
                                             static_cast<unsigned>(m_x), static_cast<unsigned>(m_y),
                                             static_cast<unsigned>(m_random() % 3 + 1));
            text.append(line, length);
        }
        text.truncate(static_cast<int>(size));
        return text;
    }

    unsigned below(unsigned limit) { return static_cast<unsigned>(m_random() % limit); }

private:
    static constexpr int LineLength = 48;
    static constexpr unsigned Step = 1000;
    static constexpr unsigned Width = 2000000;

    std::minstd_rand m_random;
    std::uint_fast32_t m_x = 100000;
    std::uint_fast32_t m_y = 100000;
};

void write(const QString &path, PlotLines &lines, qint64 size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write " + path.toStdString());
    for (qint64 left = size; left > 0; left -= MiB)
        if (file.write(lines.next(qMin(left, MiB))) < 0)
            throw std::runtime_error("cannot write " + path.toStdString());
}

} // namespace

void shell(const QString &folder, const QString &command)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QStringLiteral("sh"), {QStringLiteral("-ec"), command});
    process.waitForFinished(-1);
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        throw std::runtime_error("failed: " + command.toStdString());
}

Material::Material(const QString &folder, const Sizes &sizes) : m_dir(folder), m_sizes(sizes)
{
    m_dir.mkpath(QStringLiteral("."));
}

/// What is there already was made by an earlier run: it appears only when whole.
QString Material::make(const QString &name, const QString &command) const
{
    const QString path = m_dir.filePath(name);
    if (!QFileInfo::exists(path)) {
        shell(m_dir.path(), command.arg(name + QStringLiteral(".part")));
        shell(m_dir.path(), QStringLiteral("mv %1.part %1").arg(name));
    }
    return path;
}

QString Material::bigTgz() const
{
    const QString name = QStringLiteral("big-%1.tgz").arg(m_sizes.bigMiB);
    if (!m_dir.exists(name)) {
        PlotLines lines(1);
        write(m_dir.filePath(QStringLiteral("big.txt")), lines, m_sizes.bigMiB * MiB);
        make(name, QStringLiteral("tar -c big.txt | gzip -6 > %1; rm big.txt"));
    }
    return m_dir.filePath(name);
}

QString Material::manyFolder() const
{
    const QString name = QStringLiteral("many-%1").arg(m_sizes.files);
    if (!m_dir.exists(name)) {
        PlotLines lines(2);
        for (int i = 0; i < m_sizes.files; ++i) {
            const QString folder =
                QStringLiteral("%1.part/step%2/layer%3").arg(name).arg(i / 1000).arg(i / 100 % 10);
            m_dir.mkpath(folder);
            write(m_dir.filePath(
                      QStringLiteral("%1/f%2").arg(folder).arg(i, 6, 10, QLatin1Char('0'))),
                  lines, 200 + lines.below(12000));
        }
        shell(m_dir.path(), QStringLiteral("mv %1.part %1").arg(name));
    }
    return name;
}

QString Material::manyTgz() const
{
    const QString folder = manyFolder();
    return make(folder + QStringLiteral(".tgz"), QStringLiteral("tar -cz %1 > %2").arg(folder));
}

QString Material::manyZip() const
{
    const QString folder = manyFolder();
    return make(folder + QStringLiteral(".zip"), QStringLiteral("zip -qr - %1 > %2").arg(folder));
}

QString Material::textFolder() const
{
    const QString name = QStringLiteral("texts-%1").arg(m_sizes.bigMiB);
    constexpr int EachMiB = 16;
    if (!m_dir.exists(name)) {
        PlotLines lines(3);
        m_dir.mkpath(name + QStringLiteral(".part"));
        for (int i = 0; i * EachMiB < m_sizes.bigMiB; ++i)
            write(m_dir.filePath(QStringLiteral("%1.part/layer%2").arg(name).arg(i)), lines,
                  qMin(EachMiB, m_sizes.bigMiB - i * EachMiB) * MiB);
        shell(m_dir.path(), QStringLiteral("mv %1.part %1").arg(name));
    }
    return m_dir.filePath(name);
}

QString Material::hugeFile() const
{
    return plotFile(QStringLiteral("huge-%1"), 4, m_sizes.hugeMiB);
}

QString Material::serverFile() const
{
    return plotFile(QStringLiteral("server-%1"), 5, m_sizes.serverMiB);
}

QString Material::plotFile(const QString &name, unsigned seed, qint64 mebibytes) const
{
    const QString file = name.arg(mebibytes);
    if (!m_dir.exists(file)) {
        PlotLines lines(seed);
        write(m_dir.filePath(file + QStringLiteral(".part")), lines, mebibytes * MiB);
        shell(m_dir.path(), QStringLiteral("mv %1.part %1").arg(file));
    }
    return m_dir.filePath(file);
}

} // namespace KODMS::Bench
