// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::UI {

// The look that all widgets share. Tabs and blanks are the original layout of
// these texts; hosts compare and replace them as whole strings.

inline const QString PushButtonBlueStyle =
    QStringLiteral("QPushButton{\tbackground-color: #277ae7;\tfont-size:15px;\tcolor: #ebebeb;}"
                   "QPushButton:hover{\tbackground-color: #2693e5;}");

inline const QString PushButtonGrayStyle =
    QStringLiteral("QPushButton{\tbackground-color: #7f7d7e;\tfont-size:15px;\tcolor: #ebebeb;}"
                   "QPushButton:hover{\tbackground-color: #989697;}");

inline const QString WidgetDarkStyle =
    QStringLiteral("QWidget{\tbackground-color: #4b4b4b;\tfont-size:13px;\tcolor: white;};");

inline const QString GroupBoxStyle = QStringLiteral(
    "QGroupBox{\tbackground-color: qlineargradient( x1 : 0, y1 : 0 , x2 : 0, y2 : 1,"
    " stop : 0 #277ae7, stop 1 : #ffffff);\tborder: 2px solid #277ae7;\tborder-radius: 5px;"
    "\tmargin-top: 20px;}"
    "QGroupBox::title{\tsubcontrol-origin : margin;\tsubcontrol-position: top center;"
    "\tpadding: 10px 15px;\tbackground: qlineargradient( x1 : 0, y1 : 0 , x2 : 0, y2 : 1,"
    " stop : 0 #277ae7, stop 1 : #ffffff);}");

inline const QString WidgetGridStyle =
    QStringLiteral("QWidget{\tbackground-color: #474747;\tgridline-color: rgb(194, 197, 225);"
                   "\tfont-size:17px;\tcolor: white;};");

inline const QString TableWidgetStyle = QStringLiteral(
    "QTableWidget{\tfont-size : 15px;\tfont-family : \"Microsoft YaHei\";\tcolor : #eff4ff;"
    "\tbackground : #444444;\talternate-background-color : #525252;}"
    "QTableWidget::item::selected{\tcolor:#dcdcdc;\tbackground : #141414;}"
    "QTableWidget::item::selected:hover{\tcolor:#dcdcdc;\tbackground : #242424;}"
    "QTableWidget::item:hover{\tcolor:#dcdcdc;\tbackground : #5b5b5b}"
    "QScrollBar::handle::vertical{\tbackground : rgba(255, 255, 255, 20%);"
    "\tborder : 0px solid grey;\tborder-radius : 3px;\twidth: 8px;}"
    "QScrollBar::vertical{\tborder-width : 1px;\tborder-style : solid;"
    "\tborder-color : rgba(255, 255, 255, 10%);\twidth: 8px;\tmargin : 0px 0px 0px 0px ;"
    "\tborder-radius : 3px;}"
    "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical"
    "{\tbackground:rgba(255,255,255,10%);}"
    "QHeaderView::section{\tbackground : #5e5e5e;\ttext-align : center;\tpadding : 3px;"
    "\tmargin : 0px;\tcolor:#dcdcdc;\tborder : 1px solid #242424;\tborder-left-width : 0;}"
    "QTableCornerButton::section{\tbackground : #5e5e5e;}");

inline const QString TabBarStyle = QStringLiteral(
    "QTabBar::tab-bar{\tleft:20px;}"
    "QTabBar::tab{\tbackground:qlineargradient(x1: 0,y1: 0,x2: 0,y2: 1, stop:0 #242424,"
    " stop: 0.4 #242424, stop: 0.5 #252525, stop : 1.0 #5b5b5b);\tborder:2px solid #c4c4c3;"
    "\tmin-width:50px;\tpadding:2px;}"
    "QTabBar::tab:selected,QTabBar::tab:hover{\tbackground:qlineargradient(x1: 0,y1: 0,x2: 0,"
    "y2: 1, stop:0 #5b5b5b, stop: 0.4 #5b5b5b, stop: 0.5 #5b5b5b, stop : 1.0 #5b5b5b);}"
    "QTabBar::tab:selected{\tborder-color:#9b9b9b;\tborder-bottom-color:#c2c7cb;}"
    "QTabBar::tab:!selected{\tmargin-top:2px;\t}");

} // namespace KODMS::UI
