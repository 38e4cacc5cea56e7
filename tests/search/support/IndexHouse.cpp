// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/search/support/IndexHouse.h"

#include "services/records/Transaction.h"

#include <QRegularExpression>
#include <QTest>

namespace KODMS::Tests {

using namespace Services;

ColumnIndex::Options IndexHouse::options(int smallestTable)
{
    ColumnIndex::Options options;
    options.smallestTable = smallestTable;
    options.segmentRows = 32;
    return options;
}

IndexHouse::IndexHouse()
{
    addUser(2, QStringLiteral("张三"));
    addUser(3, QStringLiteral("Li Si"));
    Transaction together(database());
    for (int id = 1; id <= flows; ++id)
        addFlow(id, QStringLiteral("A1B%1").arg(id, 6, 10, QLatin1Char('0')));
    together.commit();
    renewIndex();
}

void IndexHouse::renewIndex(const ColumnIndex::Options &options)
{
    renewIndex(options, database().settings());
}

void IndexHouse::renewIndex(const ColumnIndex::Options &options, const DatabaseSettings &settings)
{
    m_index = std::make_unique<ColumnIndex>(settings, options);
    context().setViewIndex(m_index.get());
}

void IndexHouse::removeIndex()
{
    m_index.reset();
    context().setViewIndex(nullptr);
}

void IndexHouse::load()
{
    m_index->load();
    QVERIFY(isReady());
}

bool IndexHouse::isReady() const
{
    return m_index->status().state == IndexStatus::State::Ready;
}

int IndexHouse::jobs(const std::string &part)
{
    return searchFlows({condition("KoJobName", part, true)}) ? total : -1;
}

void IndexHouse::expectWarning(const QString &why)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^column index: ") + why));
}

} // namespace KODMS::Tests
