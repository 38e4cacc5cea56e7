// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/OdbJobReader.h"
#include "services/odbpp/sample/SampleFeatures.h"
#include "tests/odbpp/support/JobFiles.h"
#include "tests/support/TestMain.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <archive.h>
#include <archive_entry.h>
#include <ctime>
#include <malloc.h>

using namespace KODMS::Services;
using namespace KODMS::Tests;

/// A job of a gibibyte, in every form: exact, and within 64 MiB of memory.
class LargeJobTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void staysSmall_data();
    void staysSmall();

private:
    QByteArray features() const { return m_features; }

    void writeFolder(bool compress);
    void writeArchive(const QString &path, bool zip) const;
    QString layerPath(int layer) const;
    QByteArray matrix() const;

    static qint64 memoryKiB(const char *field);

    static constexpr int Layers = 40;
    static constexpr int FeaturesPerLayer = 560000;
    static constexpr qint64 AllowedKiB = 64 * 1024;

    QTemporaryDir m_dir;
    QByteArray m_features; ///< of every layer
};

void LargeJobTest::initTestCase()
{
    m_features = SampleFeatures(7).text(FeaturesPerLayer);
    const qint64 size = qint64{m_features.size()} * Layers;
    QVERIFY2(size > (qint64{1} << 30), qPrintable(QString::number(size)));
    writeFolder(false);
    writeFolder(true);
    writeArchive(m_dir.filePath(QStringLiteral("job.tgz")), false);
    writeArchive(m_dir.filePath(QStringLiteral("job.zip")), true);
    m_features.clear();
    malloc_trim(0);
}

QByteArray LargeJobTest::matrix() const
{
    QByteArray text = "STEP {\nCOL=1\nNAME=pcb\n}\n";
    for (int i = 0; i < Layers; ++i)
        text += "LAYER {\nROW=" + QByteArray::number(i + 1) + "\nTYPE=SIGNAL\nNAME=l" +
                QByteArray::number(i) + "\n}\n";
    return text;
}

QString LargeJobTest::layerPath(int layer) const
{
    return QStringLiteral("job/steps/pcb/layers/l%1/features").arg(layer);
}

void LargeJobTest::writeFolder(bool compress)
{
    const QString folder = m_dir.filePath(compress ? QStringLiteral("Z") : QStringLiteral("plain"));
    writeJob(folder, {{QStringLiteral("job/matrix/matrix"), matrix()}});
    const QByteArray content = compress ? compressed(m_features) : m_features;
    for (int i = 0; i < Layers; ++i)
        writeJob(folder, {{layerPath(i) + (compress ? QStringLiteral(".Z") : QString()), content}});
}

void LargeJobTest::writeArchive(const QString &path, bool zip) const
{
    archive *writer = archive_write_new();
    if (zip) {
        archive_write_set_format_zip(writer);
        archive_write_set_options(writer, "zip:compression-level=1");
    } else {
        archive_write_set_format_ustar(writer);
        archive_write_add_filter_gzip(writer);
        archive_write_set_options(writer, "gzip:compression-level=1");
    }
    QCOMPARE(archive_write_open_filename(writer, QFile::encodeName(path).constData()), ARCHIVE_OK);
    const auto put = [&](const QByteArray &name, const QByteArray &content) {
        archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, name.constData());
        archive_entry_set_filetype(entry, AE_IFREG);
        archive_entry_set_perm(entry, 0644);
        archive_entry_set_size(entry, content.size());
        archive_write_header(writer, entry);
        archive_write_data(writer, content.constData(), static_cast<std::size_t>(content.size()));
        archive_entry_free(entry);
    };
    put("job/matrix/matrix", matrix());
    for (int i = 0; i < Layers; ++i)
        put(layerPath(i).toUtf8(), m_features);
    QCOMPARE(archive_write_close(writer), ARCHIVE_OK);
    archive_write_free(writer);
}

qint64 LargeJobTest::memoryKiB(const char *field)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : file.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(static_cast<int>(qstrlen(field)))
                .simplified()
                .split(' ')
                .first()
                .toLongLong();
    return -1;
}

void LargeJobTest::staysSmall_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("folder") << QStringLiteral("plain/job");
    QTest::newRow("folder of .Z files") << QStringLiteral("Z/job");
    QTest::newRow("tgz") << QStringLiteral("job.tgz");
    QTest::newRow("zip") << QStringLiteral("job.zip");
}

void LargeJobTest::staysSmall()
{
    QFETCH(QString, name);
    QFile peak(QStringLiteral("/proc/self/clear_refs")); // 5: forget the largest size so far
    QVERIFY(peak.open(QIODevice::WriteOnly) && peak.write("5") == 1);
    peak.close();
    const qint64 before = memoryKiB("VmRSS:");
    QElapsedTimer wall;
    wall.start();
    const std::clock_t cpu = std::clock();
    NoProgress progress;
    const auto job = readOdbJob(m_dir.filePath(name), LimitSettings(), progress);
    const double cpuSeconds = static_cast<double>(std::clock() - cpu) / CLOCKS_PER_SEC;
    const qint64 grown = memoryKiB("VmHWM:") - before;
    QVERIFY2(job.outcome.ok, qPrintable(job.text()));
    QCOMPARE(job.value.featureCount, qint64{Layers} * FeaturesPerLayer);
    qInfo("%s: %.1f s, %.1f s of processor time, %.1f MiB above idle", qPrintable(name),
          static_cast<double>(wall.elapsed()) / 1000, cpuSeconds,
          static_cast<double>(grown) / 1024);
    QVERIFY(grown < AllowedKiB);
}

KODMS_TEST_MAIN(LargeJobTest, QCoreApplication)
#include "LargeJobTest.moc"
