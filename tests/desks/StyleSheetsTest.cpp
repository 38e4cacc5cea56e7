// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "desks/common/StyleSheets.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QTest>

using namespace KODMS::UI;

class StyleSheetsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everySheetIsExactlyThisText_data();
    void everySheetIsExactlyThisText();
    void sheetsInUseAreUnderstood_data();
    void sheetsInUseAreUnderstood();
};

namespace {

/// The sheets are written down here as they read; in the stored text a tab
/// stands after every opening brace and after every semicolon but the one that
/// ends a rule.
QString withTabs(const char *readable)
{
    QString text = QString::fromUtf8(readable);
    text.replace(QLatin1String("{ "), QLatin1String("{\t"));
    text.replace(QLatin1String("; "), QLatin1String(";\t"));
    return text;
}

} // namespace

void StyleSheetsTest::everySheetIsExactlyThisText_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::addColumn<QString>("expected");
    QTest::newRow("blue button")
        << PushButtonBlueStyle
        << withTabs("QPushButton{ background-color: #277ae7; font-size:15px; color: #ebebeb;}"
                    "QPushButton:hover{ background-color: #2693e5;}");
    QTest::newRow("grey button")
        << PushButtonGrayStyle
        << withTabs("QPushButton{ background-color: #7f7d7e; font-size:15px; color: #ebebeb;}"
                    "QPushButton:hover{ background-color: #989697;}");
    QTest::newRow("dark widget")
        << WidgetDarkStyle
        << withTabs("QWidget{ background-color: #4b4b4b; font-size:13px; color: white;};");
    QTest::newRow("group box") << GroupBoxStyle
                               << withTabs("QGroupBox{ background-color: qlineargradient( x1 : 0, "
                                           "y1 : 0 , x2 : 0, y2 : 1, stop : 0 "
                                           "#277ae7, stop 1 : #ffffff); border: 2px solid #277ae7; "
                                           "border-radius: 5px; margin-top: "
                                           "20px;}QGroupBox::title{ subcontrol-origin : margin; "
                                           "subcontrol-position: top center; "
                                           "padding: 10px 15px; background: qlineargradient( x1 : "
                                           "0, y1 : 0 , x2 : 0, y2 : 1, stop : "
                                           "0 #277ae7, stop 1 : #ffffff);}");
    QTest::newRow("widget with a grid")
        << WidgetGridStyle
        << withTabs("QWidget{ background-color: #474747; gridline-color: rgb(194, 197, 225); "
                    "font-size:17px; "
                    "color: white;};");
    QTest::newRow("table")
        << TableWidgetStyle
        << withTabs(
               "QTableWidget{ font-size : 15px; font-family : \"Microsoft YaHei\"; color : "
               "#eff4ff; "
               "background : #444444; alternate-background-color : "
               "#525252;}QTableWidget::item::selected{ "
               "color:#dcdcdc; background : #141414;}QTableWidget::item::selected:hover{ "
               "color:#dcdcdc; "
               "background : #242424;}QTableWidget::item:hover{ color:#dcdcdc; background : "
               "#5b5b5b}"
               "QScrollBar::handle::vertical{ background : rgba(255, 255, 255, 20%); border : 0px "
               "solid "
               "grey; border-radius : 3px; width: 8px;}QScrollBar::vertical{ border-width : 1px; "
               "border-style : solid; border-color : rgba(255, 255, 255, 10%); width: 8px; margin "
               ": 0px "
               "0px 0px 0px ; border-radius : 3px;}QScrollBar::add-page:vertical, "
               "QScrollBar::sub-page:vertical{ "
               "background:rgba(255,255,255,10%);}QHeaderView::section{ "
               "background : #5e5e5e; text-align : center; padding : 3px; margin : 0px; "
               "color:#dcdcdc; "
               "border : 1px solid #242424; border-left-width : 0;}QTableCornerButton::section{ "
               "background : #5e5e5e;}");
    QTest::newRow("tab bar")
        << TabBarStyle
        << withTabs(
               "QTabBar::tab-bar{ left:20px;}QTabBar::tab{ background:qlineargradient(x1: 0,y1: "
               "0,x2: "
               "0,y2: 1, stop:0 #242424, stop: 0.4 #242424, stop: 0.5 #252525, stop : 1.0 "
               "#5b5b5b); "
               "border:2px solid #c4c4c3; min-width:50px; padding:2px;}QTabBar::tab:selected,"
               "QTabBar::tab:hover{ background:qlineargradient(x1: 0,y1: 0,x2: 0,y2: 1, stop:0 "
               "#5b5b5b, "
               "stop: 0.4 #5b5b5b, stop: 0.5 #5b5b5b, stop : 1.0 #5b5b5b);}QTabBar::tab:selected{ "
               "border-color:#9b9b9b; border-bottom-color:#c2c7cb;}QTabBar::tab:!selected{ "
               "margin-top:2px; }");
}

void StyleSheetsTest::everySheetIsExactlyThisText()
{
    QFETCH(QString, sheet);
    QTEST(sheet, "expected");
}

void StyleSheetsTest::sheetsInUseAreUnderstood_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("blue button") << PushButtonBlueStyle;
    QTest::newRow("grey button") << PushButtonGrayStyle;
    QTest::newRow("table") << TableWidgetStyle;
    QTest::newRow("tab bar") << TabBarStyle;
}

/// Qt warns of a sheet that it cannot read, and an unannounced warning fails the test.
void StyleSheetsTest::sheetsInUseAreUnderstood()
{
    QFETCH(QString, sheet);
    QWidget widget;
    widget.setStyleSheet(sheet);
    widget.ensurePolished();
    QCOMPARE(widget.styleSheet(), sheet);
}

KODMS_TEST_MAIN(StyleSheetsTest, QApplication)
#include "StyleSheetsTest.moc"
