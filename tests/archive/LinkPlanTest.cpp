// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "services/archive/LinkPlan.h"
#include "tests/support/ProcessorTime.h"
#include "tests/support/TestMain.h"

#include <QTest>

using KODMS::Services::LinkPlan;

/// Which file each link of an archive becomes a copy of.
class LinkPlanTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void linksLeadToTheFileInTheEnd()
    {
        LinkPlan plan;
        plan.addLink(QStringLiteral("a"), QStringLiteral("b"));
        plan.addLink(QStringLiteral("b"), QStringLiteral("file"));
        plan.addLink(QStringLiteral("c"), QStringLiteral("a"));
        plan.addFile(QStringLiteral("file"));
        QCOMPARE(sources(plan), QStringList({QStringLiteral("a = file"), QStringLiteral("b = file"),
                                             QStringLiteral("c = file")}));
    }

    void refused_data()
    {
        QTest::addColumn<QStringList>("targets"); // of a, b, c
        const QString a = QStringLiteral("a");
        const QString b = QStringLiteral("b");
        QTest::newRow("to nothing") << QStringList({QStringLiteral("nothing")});
        QTest::newRow("to itself") << QStringList({a});
        QTest::newRow("in a circle") << QStringList({b, a});
        QTest::newRow("into a circle") << QStringList({b, QStringLiteral("c"), b});
    }

    void refused()
    {
        QFETCH(QStringList, targets);
        LinkPlan plan;
        plan.addFile(QStringLiteral("file"));
        for (int i = 0; i < targets.size(); ++i)
            plan.addLink(QString(QLatin1Char(char('a' + i))), targets.at(i));
        QVERIFY(!plan.copies());
    }

    void whatComesLaterCounts()
    {
        LinkPlan plan;
        plan.addFile(QStringLiteral("old"));
        plan.addFile(QStringLiteral("other"));
        plan.addLink(QStringLiteral("old"), QStringLiteral("other"));
        plan.addLink(QStringLiteral("link"), QStringLiteral("old"));
        QCOMPARE(sources(plan),
                 QStringList({QStringLiteral("link = other"), QStringLiteral("old = other")}));
        plan.addFile(QStringLiteral("old"));
        QCOMPARE(sources(plan), QStringList(QStringLiteral("link = old")));
    }

    void aFileThatBecameALinkIsNoneInACircle()
    {
        LinkPlan plan;
        plan.addFile(QStringLiteral("a"));
        plan.addLink(QStringLiteral("a"), QStringLiteral("b"));
        plan.addLink(QStringLiteral("b"), QStringLiteral("a"));
        QVERIFY(!plan.copies());
    }

    /// As many links as an archive may have, each to the next: a megabyte when packed.
    void aLongChainIsFollowedOnce()
    {
        const int length = 200000;
        LinkPlan plan;
        for (int i = 0; i < length; ++i)
            plan.addLink(QString::number(i), QString::number(i + 1));
        plan.addFile(QString::number(length));
        const double start = KODMS::Tests::processorTime();
        const auto copies = plan.copies();
        const double seconds = KODMS::Tests::processorTime() - start;
        QVERIFY(copies);
        QCOMPARE(copies.value.size(), length);
        QVERIFY2(seconds < 10, qPrintable(QString::number(seconds)));
    }

private:
    static QStringList sources(const LinkPlan &plan)
    {
        QStringList lines;
        for (const LinkPlan::Copy &copy : plan.copies().value)
            lines << copy.to + QStringLiteral(" = ") + copy.from;
        lines.sort();
        return lines;
    }
};

KODMS_TEST_MAIN(LinkPlanTest, QCoreApplication)
#include "LinkPlanTest.moc"
