// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/ConditionLines.h"
#include "tests/desks/DeskTest.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>

using namespace KODMS::Tests;
using KODMS::Fakes::ConditionList;

/// The condition list that the job-flow desk sends, record by record and field
/// by field, for filters, status items and rights.
class ExportWidgetConditionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();

    void anAdministratorWithoutFilters_data();
    void anAdministratorWithoutFilters();
    void oneFilterAlone_data();
    void oneFilterAlone();
    void allFiltersTogether();
    void theMatchFollowsTheFilterBefore_data();
    void theMatchFollowsTheFilterBefore();
    void everyStatusItem_data();
    void everyStatusItem();
    void aStatusItemBehindAFilter();
    void anOrdinaryUserWithoutFilters_data();
    void anOrdinaryUserWithoutFilters();
    void anOrdinaryUserWithFilters();
    void anOrdinaryUserWithTheStatusFilter();
    void theUserIsFetchedForEachOfHisConditions();
    void rightsAreAskedAtEachSearch();
    void textsGoOutAsTheyAreTyped_data();
    void textsGoOutAsTheyAreTyped();
    void blanksCountAsText();
    void theCountListIsTheSameWithoutAPage();
};

namespace {

/// ( job or flow created by the user, or assigned to him )
ConditionList userBracket(const char *id)
{
    return {Expected("JobTable_CreateUserId", id).open(),
            Expected("Flow_CreateUserId", id).orJoin(),
            Expected("OFAssign_ExecutorId", id).orJoin(),
            Expected("PCAssign_ExecutorId", id).orJoin().close()};
}

/// ( the six status pairs that an ordinary user works on )
ConditionList statusBracket()
{
    return {Expected("Flow_FlowStatus", "0").open(),   Expected("Flow_CheckFlag", "0"),
            Expected("Flow_FlowStatus", "1").orJoin(), Expected("Flow_CheckFlag", "0"),
            Expected("Flow_FlowStatus", "1").orJoin(), Expected("Flow_CheckFlag", "1"),
            Expected("Flow_FlowStatus", "1").orJoin(), Expected("Flow_CheckFlag", "2"),
            Expected("Flow_FlowStatus", "2").orJoin(), Expected("Flow_CheckFlag", "0"),
            Expected("Flow_FlowStatus", "2").orJoin(), Expected("Flow_CheckFlag", "1").close()};
}

/// The record of the order repeats the one before it.
Expected order(Expected last)
{
    return last.sorted("Flow_CreateTime").page("0");
}

ConditionList joined(std::initializer_list<ConditionList> parts)
{
    ConditionList all;
    for (const ConditionList &part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

void type(const KODMS::UI::DMS_Export_Widget &desk, const char *edit, const QString &text)
{
    QTest::keyClicks(control(desk, edit), text);
}

/// A hidden edit cannot be typed into: its text is set and the desk searches again.
void set(const KODMS::UI::DMS_Export_Widget &desk, const char *edit, const QString &text)
{
    control<QLineEdit>(desk, edit)->setText(text);
    QTest::mouseClick(control(desk, "m_pRefreshPB"), Qt::LeftButton);
}

void choose(const KODMS::UI::DMS_Export_Widget &desk, int statusIndex)
{
    control<QComboBox>(desk, "m_pStatusFilterCMB")->setCurrentIndex(statusIndex);
}

} // namespace

void ExportWidgetConditionsTest::init()
{
    FakeServices::instance().reset();
    FakeServices::instance().setUser(42);
}

void ExportWidgetConditionsTest::anAdministratorWithoutFilters_data()
{
    QTest::addColumn<QVector<Right>>("rights");
    QTest::newRow("administrator") << QVector<Right>({Right::Admin});
    QTest::newRow("test administrator") << QVector<Right>({Right::TestAdmin});
    QTest::newRow("both") << QVector<Right>({Right::Admin, Right::TestAdmin});
}

void ExportWidgetConditionsTest::anAdministratorWithoutFilters()
{
    QFETCH(QVector<Right>, rights);
    for (const Right right : rights)
        FakeServices::instance().grant(right);
    const auto desk = makeDesk();
    QCOMPARE(allFields(conditions()), allFields({Expected("KoJobName", "").fuzzy(),
                                                 order(Expected("KoJobName", "").fuzzy())}));
}

void ExportWidgetConditionsTest::oneFilterAlone_data()
{
    QTest::addColumn<QByteArray>("edit");
    QTest::addColumn<QByteArray>("field");
    QTest::addColumn<int>("fuzzy");
    QTest::newRow("job name contains")
        << QByteArray("m_pJobFilterLE") << QByteArray("KoJobName") << 1;
    QTest::newRow("layer count equals")
        << QByteArray("m_pLayerFilterLE") << QByteArray("JobTable_LayerCount") << 0;
    QTest::newRow("feature count equals")
        << QByteArray("m_pFeatureFilterLE") << QByteArray("JobTable_FeatureCount") << 0;
    QTest::newRow("pre-processor contains")
        << QByteArray("m_pPrerFilterLE") << QByteArray("PreUserRealName_OFAssign_Executor") << 1;
    QTest::newRow("batch contains")
        << QByteArray("m_pCheckerFilterLE") << QByteArray("Flow_UploadBatchNum") << 1;
}

/// The order's record is fuzzy again whatever the filter was: the status filter
/// that stands between them is.
void ExportWidgetConditionsTest::oneFilterAlone()
{
    QFETCH(QByteArray, edit);
    QFETCH(QByteArray, field);
    QFETCH(int, fuzzy);
    const auto desk = makeDesk({Right::Admin});
    set(*desk, edit.constData(), QStringLiteral("12"));
    QCOMPARE(allFields(conditions()),
             allFields({Expected(field.constData(), "12").fuzzy(fuzzy),
                        order(Expected(field.constData(), "12").fuzzy())}));
}

void ExportWidgetConditionsTest::allFiltersTogether()
{
    const auto desk = makeDesk({Right::Admin});
    set(*desk, "m_pLayerFilterLE", QStringLiteral("8"));
    set(*desk, "m_pFeatureFilterLE", QStringLiteral("999"));
    type(*desk, "m_pCheckerFilterLE", QStringLiteral("2026"));
    type(*desk, "m_pJobFilterLE", QStringLiteral("AB"));
    type(*desk, "m_pPrerFilterLE", QStringLiteral("Li"));
    choose(*desk, 6);
    QCOMPARE(allFields(conditions()),
             allFields({Expected("KoJobName", "AB").fuzzy(), Expected("JobTable_LayerCount", "8"),
                        Expected("JobTable_FeatureCount", "999"),
                        Expected("PreUserRealName_OFAssign_Executor", "Li").fuzzy(),
                        Expected("Flow_UploadBatchNum", "2026").fuzzy(),
                        Expected("Flow_FlowStatus", "2").fuzzy(),
                        Expected("Flow_CheckFlag", "0").fuzzy(),
                        order(Expected("Flow_CheckFlag", "0").fuzzy())}));
}

void ExportWidgetConditionsTest::theMatchFollowsTheFilterBefore_data()
{
    QTest::addColumn<QByteArray>("edit");
    QTest::addColumn<QByteArray>("field");
    QTest::newRow("pre-processor behind a layer count")
        << QByteArray("m_pPrerFilterLE") << QByteArray("PreUserRealName_OFAssign_Executor");
    QTest::newRow("batch behind a layer count")
        << QByteArray("m_pCheckerFilterLE") << QByteArray("Flow_UploadBatchNum");
}

void ExportWidgetConditionsTest::theMatchFollowsTheFilterBefore()
{
    QFETCH(QByteArray, edit);
    QFETCH(QByteArray, field);
    const auto desk = makeDesk({Right::Admin});
    set(*desk, "m_pLayerFilterLE", QStringLiteral("8"));
    set(*desk, edit.constData(), QStringLiteral("x"));
    QCOMPARE(allFields(conditions()), allFields({Expected("JobTable_LayerCount", "8"),
                                                 Expected(field.constData(), "x").fuzzy(),
                                                 order(Expected(field.constData(), "x").fuzzy())}));
}

void ExportWidgetConditionsTest::everyStatusItem_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QByteArray>("status"); // empty: not asked for
    QTest::addColumn<QByteArray>("flag");
    QTest::newRow("awaiting pre-processing")
        << 1 << QStringLiteral("待前处理") << QByteArray("0") << QByteArray("0");
    QTest::newRow("awaiting review")
        << 2 << QStringLiteral("前处理未审核") << QByteArray("1") << QByteArray("0");
    QTest::newRow("failed, whatever the flow status")
        << 3 << QStringLiteral("审核未通过") << QByteArray() << QByteArray("1");
    QTest::newRow("passed, whatever the flow status")
        << 4 << QStringLiteral("审核通过") << QByteArray() << QByteArray("2");
    QTest::newRow("finished asks for a flag that no flow shows")
        << 5 << QStringLiteral("完成") << QByteArray() << QByteArray("3");
    QTest::newRow("at the robot") << 6 << QStringLiteral("机器人处理中") << QByteArray("2")
                                  << QByteArray("0");
}

void ExportWidgetConditionsTest::everyStatusItem()
{
    QFETCH(int, index);
    QFETCH(QByteArray, status);
    QFETCH(QByteArray, flag);
    const auto desk = makeDesk({Right::Admin});
    QTEST(control<QComboBox>(*desk, "m_pStatusFilterCMB")->itemText(index), "item");
    choose(*desk, index);
    QCOMPARE(searches(), 2);
    ConditionList expected;
    if (!status.isEmpty())
        expected.push_back(Expected("Flow_FlowStatus", status.constData()).fuzzy());
    expected.push_back(Expected("Flow_CheckFlag", flag.constData()).fuzzy());
    expected.push_back(order(Expected("Flow_CheckFlag", flag.constData()).fuzzy()));
    QCOMPARE(allFields(conditions()), allFields(expected));

    choose(*desk, 0);
    QCOMPARE(allFields(conditions()), allFields({Expected("KoJobName", "").fuzzy(),
                                                 order(Expected("KoJobName", "").fuzzy())}));
}

void ExportWidgetConditionsTest::aStatusItemBehindAFilter()
{
    const auto desk = makeDesk({Right::Admin});
    set(*desk, "m_pFeatureFilterLE", QStringLiteral("7"));
    choose(*desk, 3);
    QCOMPARE(allFields(conditions()), allFields({Expected("JobTable_FeatureCount", "7"),
                                                 Expected("Flow_CheckFlag", "1").fuzzy(),
                                                 order(Expected("Flow_CheckFlag", "1").fuzzy())}));
}

void ExportWidgetConditionsTest::anOrdinaryUserWithoutFilters_data()
{
    QTest::addColumn<QVector<Right>>("rights");
    QTest::newRow("no right") << QVector<Right>();
    QTest::newRow("check authority") << QVector<Right>({Right::CheckAuthority});
    QTest::newRow("every right but the two that see everything")
        << QVector<Right>({Right::PreProcess, Right::PreCheckAssign, Right::CheckAuthority,
                           Right::OrigFileUpdate, Right::OrigFileAssign, Right::ShowCompanyName});
}

void ExportWidgetConditionsTest::anOrdinaryUserWithoutFilters()
{
    QFETCH(QVector<Right>, rights);
    for (const Right right : rights)
        FakeServices::instance().grant(right);
    const auto desk = makeDesk();
    QCOMPARE(allFields(conditions()),
             allFields(joined({userBracket("42"),
                               statusBracket(),
                               {order(Expected("Flow_CheckFlag", "1").close())}})));
}

void ExportWidgetConditionsTest::anOrdinaryUserWithFilters()
{
    const auto desk = makeDesk();
    set(*desk, "m_pLayerFilterLE", QStringLiteral("8"));
    type(*desk, "m_pJobFilterLE", QStringLiteral("A"));
    QCOMPARE(allFields(conditions()),
             allFields(
                 joined({{Expected("KoJobName", "A").fuzzy(), Expected("JobTable_LayerCount", "8")},
                         userBracket("42"),
                         statusBracket(),
                         {order(Expected("Flow_CheckFlag", "1").close())}})));
}

/// Whoever may update original files has the status filter without seeing every flow.
void ExportWidgetConditionsTest::anOrdinaryUserWithTheStatusFilter()
{
    const auto desk = makeDesk({Right::OrigFileUpdate});
    choose(*desk, 2);
    QCOMPARE(allFields(conditions()),
             allFields(joined({userBracket("42"),
                               {Expected("Flow_FlowStatus", "1").fuzzy(),
                                Expected("Flow_CheckFlag", "0").fuzzy()},
                               statusBracket(),
                               {order(Expected("Flow_CheckFlag", "1").close())}})));
}

void ExportWidgetConditionsTest::theUserIsFetchedForEachOfHisConditions()
{
    const auto desk = makeDesk();
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 4);
    FakeServices::instance().setUser(7);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(FakeServices::instance().count("DMS_StdCommon::getCurrentUser"), 8);
    QCOMPARE(conditions().front().value, std::string("7"));
}

void ExportWidgetConditionsTest::rightsAreAskedAtEachSearch()
{
    const auto desk = makeDesk();
    QCOMPARE(conditions().size(), size_t(17));
    FakeServices::instance().grant(Right::TestAdmin);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(conditions().size(), size_t(2));
}

void ExportWidgetConditionsTest::textsGoOutAsTheyAreTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quote") << "O'Neil; DROP TABLE";
    QTest::newRow("percent, underscore, backslash") << "100%_\\";
    QTest::newRow("bar") << "a|r";
    QTest::newRow("chinese") << QStringLiteral("张伟");
    QTest::newRow("beyond the basic plane") << QStringLiteral("😀");
    QTest::newRow("NUL in the middle") << QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    QTest::newRow("a megabyte") << QString(1 << 20, QLatin1Char('x'));
}

void ExportWidgetConditionsTest::textsGoOutAsTheyAreTyped()
{
    QFETCH(QString, text);
    const auto desk = makeDesk({Right::Admin});
    auto *edit = control<QLineEdit>(*desk, "m_pJobFilterLE");
    edit->setMaxLength(text.size());
    edit->setText(text);
    QTest::mouseClick(control(*desk, "m_pRefreshPB"), Qt::LeftButton);
    QCOMPARE(QString::fromStdString(conditions().front().value), text);
}

void ExportWidgetConditionsTest::blanksCountAsText()
{
    const auto desk = makeDesk({Right::Admin});
    type(*desk, "m_pJobFilterLE", QStringLiteral(" "));
    QCOMPARE(conditions().front().value, std::string(" "));
}

void ExportWidgetConditionsTest::theCountListIsTheSameWithoutAPage()
{
    const auto desk = makeDesk();
    auto expected = conditions();
    QCOMPARE(expected.back().pageEnabled, 1);
    expected.back().pageEnabled = 0;
    expected.back().pageStart.clear();
    expected.back().pageSize.clear();
    QCOMPARE(allFields(countConditions()), allFields(expected));
}

KODMS_TEST_MAIN(ExportWidgetConditionsTest, QApplication)
#include "ExportWidgetConditionsTest.moc"
