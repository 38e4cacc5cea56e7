// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/JobScan.h"

#include "services/notices/OneLine.h"
#include "services/odbpp/FeatureReader.h"
#include "services/odbpp/MatrixReader.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

namespace KODMS::Services {

namespace {

/// Far beyond any job: what has more was made to fill the memory.
constexpr std::size_t MostLayerFiles = 20000;
constexpr int MostSteps = 20000;
constexpr std::size_t MostMatrices = 16;
constexpr int LongestPath = 400;

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

Outcome tooMany(const QString &path)
{
    return odbRefused(path, 0, {tr("层或步骤过多"), QStringLiteral("too many layers or steps")});
}

Outcome tooLong(const QString &path)
{
    return odbRefused(path, 0, {tr("路径过长"), QStringLiteral("a long path")});
}

/// The same folder in another spelling is the same root.
QString rootKey(const QString &root)
{
    return root.toCaseFolded();
}

bool isBelow(const QString &path, const QString &folder)
{
    return folder.isEmpty() || path == folder || path.startsWith(folder + QLatin1Char('/'));
}

} // namespace

struct JobScan::Matrix {
    QString path;
    QString root;
    MatrixReader reader;
    Outcome outcome;
};

struct JobScan::Layer {
    QString path;
    QString root;                          ///< its key
    QString step;                          ///< its key
    QString layer;                         ///< its key
    std::unique_ptr<FeatureReader> reader; ///< while the file is read
    qint64 count = 0;
    Outcome outcome;
};

JobScan::JobScan(const LimitSettings &limits) : m_limits(limits) {}

JobScan::~JobScan() = default;

Outcome JobScan::begin(const QString &path)
{
    ++m_files;
    if (Outcome noted = note(path); !noted)
        return noted;
    const auto place = JobPath::of(path);
    if (!place)
        return Outcome::success();
    return path.size() > LongestPath ? tooLong(path) : add(*place, path);
}

Outcome JobScan::note(const QString &path)
{
    if (path.size() > LongestPath)
        return Outcome::success();
    for (const StepPath &step : StepPath::allOf(path)) {
        QSet<QString> &seen = m_steps[rootKey(step.root)];
        const int before = seen.size();
        seen.insert(odbKey(step.step));
        m_stepCount += seen.size() - before;
        if (m_stepCount > MostSteps)
            return tooMany(path);
    }
    return Outcome::success();
}

Outcome JobScan::add(const JobPath &place, const QString &path)
{
    if (place.kind == JobPath::Kind::Matrix) {
        if (m_matrices.size() >= MostMatrices)
            return tooMany(path);
        m_matrices.push_back(std::make_unique<Matrix>());
        Matrix &matrix = *m_matrices.back();
        matrix.path = path;
        matrix.root = place.root;
        m_file = std::make_unique<JobFile>(path, m_limits, matrix.reader);
        m_outcome = &matrix.outcome;
        return Outcome::success();
    }
    if (m_layers.size() >= MostLayerFiles)
        return tooMany(path);
    m_layers.push_back(std::make_unique<Layer>());
    Layer &layer = *m_layers.back();
    layer.path = path;
    layer.root = rootKey(place.root);
    layer.step = odbKey(place.step);
    layer.layer = odbKey(place.layer);
    layer.reader = std::make_unique<FeatureReader>();
    m_byPath.insert(path, &layer);
    m_file = std::make_unique<JobFile>(path, m_limits, *layer.reader);
    m_outcome = &layer.outcome;
    return Outcome::success();
}

void JobScan::data(const char *bytes, qint64 size)
{
    m_bytes += size;
    if (m_file && m_outcome->ok)
        *m_outcome = m_file->add(bytes, size);
}

void JobScan::end()
{
    if (m_file && m_outcome->ok)
        *m_outcome = m_file->finish();
    m_file.reset();
    m_outcome = nullptr;
    if (m_layers.empty() || !m_layers.back()->reader)
        return;
    m_layers.back()->count = m_layers.back()->reader->count();
    m_layers.back()->reader.reset();
}

Outcome JobScan::copy(const QString &from, const QString &to)
{
    if (!wants(to)) {
        ++m_files;
        return note(to);
    }
    const Layer *source = m_byPath.value(from);
    if (Outcome begun = begin(to); !begun)
        return begun;
    const bool isLayer = !m_layers.empty() && m_layers.back()->path == to;
    m_file.reset();
    if (isLayer && source) {
        m_layers.back()->outcome = source->outcome;
        m_layers.back()->count = source->count;
        m_layers.back()->reader.reset();
        return Outcome::success();
    }
    *m_outcome = odbRefused(to, 0, {tr("是链接，不能读取"), QStringLiteral("a link")});
    end();
    return Outcome::success();
}

/// The job's folder: the one with a matrix in which the others are. A job may carry
/// other jobs inside, as what it was made from.
Result<QString> JobScan::chooseRoot() const
{
    if (m_matrices.empty())
        return Outcome::failure(tr("没有找到 matrix/matrix，不是 ODB++ 料号"),
                                QStringLiteral("no matrix/matrix"));
    const auto shortest =
        std::min_element(m_matrices.cbegin(), m_matrices.cend(), [](const auto &a, const auto &b) {
            return a->root.size() < b->root.size();
        });
    const QString root = (*shortest)->root;
    for (const auto &matrix : m_matrices) {
        if (!isBelow(rootKey(matrix->root), rootKey(root)))
            return Outcome::failure(tr("有多个料号：%1 和 %2").arg(root, matrix->root),
                                    QStringLiteral("two jobs: %1, %2").arg(root, matrix->root));
        if (matrix != *shortest && rootKey(matrix->root) == rootKey(root))
            return odbRefused(matrix->path, 0,
                              {tr("与 %1 重复").arg((*shortest)->path),
                               QStringLiteral("twice: ") + (*shortest)->path});
    }
    return root;
}

Outcome JobScan::requireSteps(const Matrix &matrix, const QString &root) const
{
    const QSet<QString> seen = m_steps.value(rootKey(root));
    for (const QString &step : matrix.reader.steps())
        if (!seen.contains(odbKey(step)))
            return odbRefused(
                matrix.path, 0,
                {tr("步骤 %1 没有文件").arg(step), QStringLiteral("no files of step ") + step});
    return Outcome::success();
}

Result<qint64> JobScan::sumOf(const Matrix &matrix, const QString &root) const
{
    QSet<QString> steps;
    QSet<QString> layers;
    for (const QString &step : matrix.reader.steps())
        steps.insert(odbKey(step));
    for (const OdbLayer &layer : matrix.reader.layers())
        layers.insert(odbKey(layer.name));
    QSet<QString> counted;
    qint64 sum = 0;
    for (const auto &layer : m_layers) {
        if (layer->root != rootKey(root) || !steps.contains(layer->step) ||
            !layers.contains(layer->layer))
            continue;
        if (!layer->outcome)
            return layer->outcome;
        const QString key = layer->step + QLatin1Char('/') + layer->layer;
        if (counted.contains(key))
            return odbRefused(layer->path, 0,
                              {tr("该层有两个 features 文件"), QStringLiteral("a second file")});
        counted.insert(key);
        sum += layer->count;
    }
    return sum;
}

Result<OdbJob> JobScan::finish(const QString &ownName) const
{
    const Result<QString> root = chooseRoot();
    if (!root)
        return root.outcome;
    const Matrix &matrix =
        **std::find_if(m_matrices.cbegin(), m_matrices.cend(),
                       [&](const auto &candidate) { return candidate->root == root.value; });
    if (!matrix.outcome)
        return matrix.outcome;
    if (Outcome complete = requireSteps(matrix, root.value); !complete)
        return complete;
    const Result<qint64> sum = sumOf(matrix, root.value);
    if (!sum)
        return sum.outcome;
    if (sum.value > std::numeric_limits<int>::max())
        return odbRefused(matrix.path, 0, {tr("特征过多"), QStringLiteral("too many features")});
    OdbJob job;
    // Folders and archives may be named with line breaks, or so that they read backwards.
    job.name = oneLine(root.value.isEmpty() ? ownName : root.value.section(QLatin1Char('/'), -1));
    job.steps = matrix.reader.steps();
    job.layers = matrix.reader.layers();
    job.featureCount = sum.value;
    job.files = m_files;
    job.bytes = m_bytes;
    return job;
}

} // namespace KODMS::Services
