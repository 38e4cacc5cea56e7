// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/odbpp/MatrixReader.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>

namespace KODMS::Services {

namespace {

/// Far beyond any board: what is larger was made to fill the memory.
constexpr int MostRecords = 4000;
constexpr std::size_t LongestWord = 64;

QString tr(const char *text)
{
    return QCoreApplication::translate("OdbJob", text);
}

std::string_view trimmed(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Keys and words, which are written in capitals.
QString wordOf(std::string_view text)
{
    return QString::fromLatin1(text.data(), static_cast<int>(std::min(text.size(), LongestWord)))
        .toUpper();
}

} // namespace

bool MatrixReader::line(std::string_view text)
{
    if (text.empty() || text.front() == '#')
        return true;
    if (text == "}")
        return endBlock();
    if (text.back() == '{')
        return beginBlock(trimmed(text.substr(0, text.size() - 1)));
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos)
        return refuse(tr("无法识别：%1").arg(odbQuoted(text)),
                      QStringLiteral("neither a record nor a setting: ") + odbQuoted(text));
    return setting(trimmed(text.substr(0, equals)), trimmed(text.substr(equals + 1)));
}

bool MatrixReader::beginBlock(std::string_view name)
{
    if (m_block != Block::None)
        return refuse(tr("上一条记录没有结束"), QStringLiteral("a record inside a record"));
    if (m_steps.size() + m_layers.size() >= MostRecords)
        return refuse(tr("记录超过 %1 条").arg(MostRecords),
                      QStringLiteral("more than %1 records").arg(MostRecords));
    const QString word = wordOf(name);
    m_name.clear();
    m_layer = {};
    if (word == QLatin1String("STEP"))
        m_block = Block::Step;
    else if (word == QLatin1String("LAYER"))
        m_block = Block::Layer;
    else
        m_block = Block::Other;
    return true;
}

bool MatrixReader::setting(std::string_view key, std::string_view value)
{
    const QString word = wordOf(key);
    const bool isRecord = m_block == Block::Step || m_block == Block::Layer;
    if (isRecord && word == QLatin1String("NAME"))
        return readName(value);
    return m_block != Block::Layer || layerSetting(key, value);
}

bool MatrixReader::layerSetting(std::string_view key, std::string_view value)
{
    const QString word = wordOf(key);
    if (word == QLatin1String("ROW"))
        return readRow(value);
    if (word == QLatin1String("CONTEXT"))
        m_layer.context = wordOf(value);
    else if (word == QLatin1String("TYPE"))
        m_layer.type = wordOf(value);
    else if (word == QLatin1String("POLARITY"))
        m_layer.polarity = wordOf(value);
    return true;
}

bool MatrixReader::readName(std::string_view value)
{
    m_name = odbName(value);
    return !m_name.isEmpty() || refuse(tr("名称无效：%1").arg(odbQuoted(value)),
                                       QStringLiteral("no name: ") + odbQuoted(value));
}

bool MatrixReader::readRow(std::string_view value)
{
    const auto *last = value.data() + value.size();
    const auto [end, error] = std::from_chars(value.data(), last, m_layer.row);
    if (error == std::errc() && end == last && m_layer.row >= 0)
        return true;
    return refuse(tr("行号无效：%1").arg(odbQuoted(value)),
                  QStringLiteral("no row number: ") + odbQuoted(value));
}

bool MatrixReader::endBlock()
{
    const Block ended = m_block;
    m_block = Block::None;
    switch (ended) {
    case Block::None:
        return refuse(tr("多余的 }"), QStringLiteral("} without a record"));
    case Block::Step:
        return endStep();
    case Block::Layer:
        return endLayer();
    case Block::Other:
        break;
    }
    return true;
}

bool MatrixReader::endStep()
{
    if (m_name.isEmpty())
        return refuse(tr("步骤没有名称"), QStringLiteral("a step without a name"));
    const QString key = odbKey(m_name);
    if (m_stepKeys.contains(key))
        return refuse(tr("步骤重复：%1").arg(m_name), QStringLiteral("two steps ") + m_name);
    m_stepKeys.insert(key);
    m_steps << m_name;
    return true;
}

bool MatrixReader::endLayer()
{
    m_layer.name = m_name;
    if (m_name.isEmpty())
        return refuse(tr("层没有名称"), QStringLiteral("a layer without a name"));
    if (m_layer.type.isEmpty())
        return refuse(tr("层 %1 没有类型").arg(m_name), QStringLiteral("a layer without a type"));
    if (m_layer.context.isEmpty())
        m_layer.context = QStringLiteral("BOARD");
    if (m_layer.context != QLatin1String("BOARD") && m_layer.context != QLatin1String("MISC"))
        return refuse(tr("层 %1 的 CONTEXT 无效：%2").arg(m_name, m_layer.context),
                      QStringLiteral("no such context: ") + m_layer.context);
    if (m_layer.polarity.isEmpty())
        m_layer.polarity = QStringLiteral("POSITIVE");
    if (m_layer.polarity != QLatin1String("POSITIVE") &&
        m_layer.polarity != QLatin1String("NEGATIVE"))
        return refuse(tr("层 %1 的极性无效：%2").arg(m_name, m_layer.polarity),
                      QStringLiteral("no such polarity: ") + m_layer.polarity);
    const QString key = odbKey(m_name);
    if (m_layerKeys.contains(key))
        return refuse(tr("层重复：%1").arg(m_name), QStringLiteral("two layers ") + m_name);
    m_layerKeys.insert(key);
    m_layers << m_layer;
    return true;
}

bool MatrixReader::end()
{
    if (m_block != Block::None)
        return refuse(tr("文件不完整，缺少 }"), QStringLiteral("ends within a record"));
    if (m_steps.isEmpty())
        return refuse(tr("没有步骤"), QStringLiteral("no step"));
    if (m_layers.isEmpty())
        return refuse(tr("没有层"), QStringLiteral("no layer"));
    std::stable_sort(m_layers.begin(), m_layers.end(),
                     [](const OdbLayer &a, const OdbLayer &b) { return a.row < b.row; });
    return true;
}

} // namespace KODMS::Services
