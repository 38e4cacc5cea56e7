// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/desks/DeskTest.h"
#include "tests/desks/LayoutLines.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QLabel>
#include <QRegularExpression>
#include <QStyle>

using namespace KODMS::Tests;

/// What the job-flow desk is built of, and for whom.
class ExportWidgetLayoutTest : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { FakeServices::instance().reset(); }

    void theLayoutTree_data();
    void theLayoutTree();
    void controlsAreCreatedInOrder_data();
    void controlsAreCreatedInOrder();
    void roleBoundControls_data();
    void roleBoundControls();
    void someControlsAreNeverVisible_data();
    void someControlsAreNeverVisible();
    void thePageBarStandsOverTheJobTable();
    void theSpareLayoutIsOwnedAndEmpty();
    void spacesAreTheStylesOwn();
    void everyMemberHasItsNameOnce();
    void theParentIsTheHosts();
};

namespace {

const QVector<Right> AllRights = {
    Right::Admin,          Right::PreProcess,     Right::PreCheckAssign, Right::TestAdmin,
    Right::CheckAuthority, Right::OrigFileUpdate, Right::OrigFileAssign, Right::ShowCompanyName};

/// One row for each combination of the rights that shape the desk, and one for
/// all the other rights together.
void addRightRows()
{
    QTest::addColumn<QVector<Right>>("rights");
    const QVector<Right> shaping = {Right::Admin, Right::CheckAuthority, Right::OrigFileUpdate};
    for (int mask = 0; mask < 8; ++mask) {
        QVector<Right> rights;
        QStringList names;
        for (int bit = 0; bit < shaping.size(); ++bit) {
            if (!(mask & (1 << bit)))
                continue;
            rights << shaping.at(bit);
            names << rightName(shaping.at(bit));
        }
        QTest::newRow(qPrintable(names.isEmpty() ? QStringLiteral("no right at all")
                                                 : names.join(QStringLiteral(" + "))))
            << rights;
    }
    QTest::newRow("all but the three that shape the desk")
        << QVector<Right>({Right::PreProcess, Right::PreCheckAssign, Right::TestAdmin,
                           Right::OrigFileAssign, Right::ShowCompanyName});
    QTest::newRow("every right") << AllRights;
}

std::unique_ptr<KODMS::UI::DMS_Export_Widget> deskWith(const QVector<Right> &rights)
{
    for (const Right right : rights)
        FakeServices::instance().grant(right);
    return makeDesk();
}

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

/// The job group box of everybody, from the top down to the review row.
constexpr char JobBox[] = "QVBoxLayout m_pJobLayout\n"
                          " QHBoxLayout m_pTopLayout\n"
                          "  QVBoxLayout m_pFilterLayout\n"
                          "   QHBoxLayout m_pFilterRow1Layout\n"
                          "    m_pFilterLE\n"
                          "    m_pFilterCMB\n"
                          "    m_pJobFilterLabel\n"
                          "    m_pJobFilterLE\n"
                          "    m_pLayerFilterLabel\n"
                          "    m_pLayerFilterLE\n"
                          "    m_pFeatureFilterLabel\n"
                          "    m_pFeatureFilterLE\n"
                          "   QHBoxLayout m_pFilterRow2Layout\n"
                          "    m_pPrerFilterLabel\n"
                          "    m_pPrerFilterLE\n"
                          "    m_pCheckerFilterLabel\n"
                          "    m_pCheckerFilterLE\n"
                          "    m_pStatusFilterCMB\n"
                          "  spacer 3x1 Expanding Minimum\n"
                          "  QVBoxLayout m_pActionLayout\n"
                          "   QHBoxLayout m_pAssignLayout\n"
                          "    m_pAssignerCMB\n"
                          "    m_pAssignPB\n"
                          "   QHBoxLayout m_pImportLayout\n"
                          "    spacer 3x1 Expanding Minimum\n"
                          "    m_pImputPB\n"
                          " m_pJobTableWidget\n"
                          " m_TurnPage\n"
                          " QHBoxLayout m_pReviewLayout\n"
                          "  spacer 5x1 Expanding Minimum\n";

bool isReviewer(const QVector<Right> &rights)
{
    return rights.contains(Right::Admin) || rights.contains(Right::CheckAuthority);
}

bool mayUpdateFiles(const QVector<Right> &rights)
{
    return rights.contains(Right::Admin) || rights.contains(Right::OrigFileUpdate);
}

} // namespace

void ExportWidgetLayoutTest::theLayoutTree_data()
{
    addRightRows();
}

void ExportWidgetLayoutTest::theLayoutTree()
{
    QFETCH(QVector<Right>, rights);
    const auto desk = deskWith(rights);

    QStringList bottom = lines("QHBoxLayout m_pBottomLayout\n"
                               " spacer 5x1 Expanding Minimum\n");
    if (!mayUpdateFiles(rights))
        bottom << QStringLiteral(" m_pDownloadPB");
    bottom << QStringLiteral(" m_pRefreshPB") << QStringLiteral(" m_pExportPB");
    QCOMPARE(layoutLines(control<QLayout>(*desk, "m_pBottomLayout")), bottom);

    QStringList whole = lines("QVBoxLayout\n"
                              " m_pJobGroupBox\n"
                              " m_pQuestionGroupBox\n");
    for (const QString &line : qAsConst(bottom))
        whole << QLatin1Char(' ') + line;
    QCOMPARE(layoutLines(desk->layout()), whole);

    QStringList job = lines(JobBox);
    if (isReviewer(rights))
        job << lines("  m_pSendRobotPB\n"
                     "  m_pJobUnpassPB\n"
                     "  m_pJobPassPB\n"
                     "  m_pCreateQuestionPB\n");
    QCOMPARE(layoutLines(control(*desk, "m_pJobGroupBox")->layout()), job);

    QCOMPARE(layoutLines(control(*desk, "m_pQuestionGroupBox")->layout()),
             lines("QVBoxLayout m_pQuestionLayout\n"
                   " m_pQuestionTableWidget\n"
                   " QHBoxLayout m_pQuestionButtonLayout\n"
                   "  spacer 5x1 Expanding Minimum\n"
                   "  m_pResolveQuestionPB\n"
                   "  m_pViewQuestionPB\n"));
}

void ExportWidgetLayoutTest::controlsAreCreatedInOrder_data()
{
    addRightRows();
}

/// The order in which controls were made is the order in which focus passes them.
void ExportWidgetLayoutTest::controlsAreCreatedInOrder()
{
    QFETCH(QVector<Right>, rights);
    const auto desk = deskWith(rights);
    QStringList expected = lines("m_pJobGroupBox\nm_pFilterLE\nm_pFilterCMB\nm_pJobFilterLabel\n"
                                 "m_pJobFilterLE\nm_pLayerFilterLabel\nm_pLayerFilterLE\n"
                                 "m_pFeatureFilterLabel\nm_pFeatureFilterLE\n"
                                 "m_pPrerFilterLabel\nm_pPrerFilterLE\nm_pCheckerFilterLabel\n"
                                 "m_pCheckerFilterLE\nm_pStatusFilterCMB\nm_pAssignerCMB\n"
                                 "m_pAssignPB\nm_pImputPB\nm_pJobTableWidget\nm_TurnPage\n"
                                 "m_pFirstPagePB\nm_pPageUpPB\nm_pGotoPageLE\nm_pTotalLabel\n"
                                 "m_pPageDownPB\nm_pLastPagePB\n");
    if (isReviewer(rights))
        expected << lines("m_pJobPassPB\nm_pJobUnpassPB\nm_pCreateQuestionPB\nm_pSendRobotPB");
    expected << lines(
        "m_pQuestionGroupBox\nm_pQuestionTableWidget\nm_pResolveQuestionPB\nm_pViewQuestionPB");
    if (!mayUpdateFiles(rights))
        expected << QStringLiteral("m_pDownloadPB");
    expected << lines("m_pRefreshPB\nm_pExportPB");

    QStringList chain;
    for (const QWidget *next = desk->nextInFocusChain(); next != desk.get();
         next = next->nextInFocusChain())
        if (next->objectName().startsWith(QLatin1String("m_")))
            chain << next->objectName();
    QCOMPARE(chain, expected);
}

void ExportWidgetLayoutTest::roleBoundControls_data()
{
    addRightRows();
}

void ExportWidgetLayoutTest::roleBoundControls()
{
    QFETCH(QVector<Right>, rights);
    const auto desk = deskWith(rights);
    const char *const reviewControls[] = {"m_pJobPassPB", "m_pJobUnpassPB", "m_pCreateQuestionPB",
                                          "m_pSendRobotPB"};
    for (const char *name : reviewControls) {
        QCOMPARE(control(*desk, name) != nullptr, isReviewer(rights));
        if (isReviewer(rights))
            QVERIFY2(control(*desk, name)->isVisible(), name);
    }
    QCOMPARE(control(*desk, "m_pStatusFilterCMB")->isVisible(), mayUpdateFiles(rights));
    QCOMPARE(control(*desk, "m_pDownloadPB") != nullptr, !mayUpdateFiles(rights));
    if (!mayUpdateFiles(rights))
        QVERIFY(control(*desk, "m_pDownloadPB")->isVisible());
}

void ExportWidgetLayoutTest::someControlsAreNeverVisible_data()
{
    addRightRows();
}

void ExportWidgetLayoutTest::someControlsAreNeverVisible()
{
    QFETCH(QVector<Right>, rights);
    const auto desk = deskWith(rights);
    const char *const hidden[] = {
        "m_pExportPB",      "m_pFilterLE",           "m_pFilterCMB",      "m_pLayerFilterLabel",
        "m_pLayerFilterLE", "m_pFeatureFilterLabel", "m_pFeatureFilterLE"};
    for (const char *name : hidden) {
        QVERIFY2(control(*desk, name), name);
        QVERIFY2(!control(*desk, name)->isVisible(), name);
    }
    desk->hide();
    desk->show();
    for (const char *name : hidden)
        QVERIFY2(!control(*desk, name)->isVisible(), name);
}

void ExportWidgetLayoutTest::thePageBarStandsOverTheJobTable()
{
    answerWithFlows(61);
    const auto desk = makeDesk({Right::Admin});
    const auto *bar = control(*desk, "m_TurnPage");
    QCOMPARE(bar->parentWidget(), control(*desk, "m_pJobGroupBox"));
    QVERIFY(bar->isVisible());
    QCOMPARE(control<QLabel>(*desk, "m_pTotalLabel")->text(), QStringLiteral("/ 3"));
    QCOMPARE(jobTable(*desk)->rowCount(), 30);
}

void ExportWidgetLayoutTest::theSpareLayoutIsOwnedAndEmpty()
{
    const auto desk = makeDesk();
    const auto *spare = control<QLayout>(*desk, "m_pSpareLayout");
    QVERIFY(spare);
    QCOMPARE(spare->count(), 0);
    QCOMPARE(spare->parent(), desk.get());
    QVERIFY(desk->layout() != spare);
}

/// No layout has margins, gaps, stretches or alignments of its own.
void ExportWidgetLayoutTest::spacesAreTheStylesOwn()
{
    const auto desk = makeDesk({Right::CheckAuthority});
    const auto layouts = desk->findChildren<QBoxLayout *>();
    QVERIFY(layouts.size() > 10);
    for (const QBoxLayout *layout : layouts) {
        if (layout->objectName() == QLatin1String("m_pSpareLayout"))
            continue; // in no place of the desk
        const QWidget *owner = layout->parentWidget();
        if (owner != desk.get() && !owner->objectName().startsWith(QLatin1String("m_")))
            continue; // inside a control of Qt
        const bool isOutermost = owner->layout() == layout;
        const int margin =
            isOutermost ? owner->style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, owner)
                        : 0;
        QCOMPARE(layout->contentsMargins(), QMargins(margin, margin, margin, margin));
        QCOMPARE(layout->spacing(),
                 desk->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, owner));
        for (int index = 0; index < layout->count(); ++index) {
            QCOMPARE(layout->stretch(index), 0);
            QCOMPARE(layout->itemAt(index)->alignment(), Qt::Alignment());
        }
    }
}

void ExportWidgetLayoutTest::everyMemberHasItsNameOnce()
{
    const auto desk = makeDesk({Right::CheckAuthority});
    QStringList names;
    const auto all = desk->findChildren<QObject *>(QRegularExpression(QStringLiteral("^m_")));
    for (const QObject *object : all)
        names << object->objectName();
    names.sort();
    QStringList expected = lines(
        "m_pFilterLE\nm_pFilterCMB\nm_pJobFilterLabel\nm_pJobFilterLE\nm_pLayerFilterLabel\n"
        "m_pLayerFilterLE\nm_pFeatureFilterLabel\nm_pFeatureFilterLE\nm_pFilterRow1Layout\n"
        "m_pPrerFilterLabel\nm_pPrerFilterLE\nm_pCheckerFilterLabel\nm_pCheckerFilterLE\n"
        "m_pStatusFilterCMB\nm_pFilterRow2Layout\nm_pFilterLayout\nm_pSpareLayout\n"
        "m_pAssignerCMB\nm_pAssignPB\nm_pAssignLayout\nm_pImputPB\nm_pImportLayout\n"
        "m_pActionLayout\nm_pTopLayout\nm_pJobGroupBox\nm_pJobTableWidget\nm_pJobPassPB\n"
        "m_pJobUnpassPB\nm_pRefreshPB\nm_pSendRobotPB\nm_pReviewLayout\nm_pJobLayout\n"
        "m_pQuestionGroupBox\nm_pQuestionTableWidget\nm_pCreateQuestionPB\nm_pViewQuestionPB\n"
        "m_pResolveQuestionPB\nm_pQuestionButtonLayout\nm_pQuestionLayout\nm_pDownloadPB\n"
        "m_pExportPB\nm_pBottomLayout\nm_TurnPage\n"
        // the page bar's own
        "m_pFirstPagePB\nm_pPageUpPB\nm_pGotoPageLE\nm_pTotalLabel\nm_pPageDownPB\n"
        "m_pLastPagePB");
    expected.sort();
    QCOMPARE(names, expected);
}

void ExportWidgetLayoutTest::theParentIsTheHosts()
{
    QWidget host;
    auto *desk = new KODMS::UI::DMS_Export_Widget(&host);
    QCOMPARE(desk->parentWidget(), &host);
    QVERIFY(!desk->isWindow());
}

KODMS_TEST_MAIN(ExportWidgetLayoutTest, QApplication)
#include "ExportWidgetLayoutTest.moc"
