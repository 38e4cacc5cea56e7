// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

namespace KODMS::Services {

/// The look of the question windows: dark as the desks, with everything that is read or
/// typed on light ground, where the colours of the states can be told.
inline const QString QuestionStyle = QStringLiteral(
    "QWidget { background-color: #3d3d3d; color: #f0f0f0; font-size: 14px; }"
    "QLabel#questionTarget { color: #c8d6ea; }"
    "QLabel#questionTitle { font-size: 18px; font-weight: bold; }"
    "QLabel#questionState { background-color: #f5f5f5; color: #1e1e1e; font-weight: bold;"
    " border-radius: 9px; padding: 3px 12px; }"
    "QLabel#questionMessage { border-radius: 3px; padding: 7px 10px; background-color: #2f5137; }"
    "QLabel#questionMessage[isError=\"true\"] { background-color: #7a2e2e; }"
    "QLineEdit, QPlainTextEdit, QTextEdit, QListWidget, QComboBox, QAbstractItemView"
    " { background-color: #f5f5f5; color: #1e1e1e; border: 2px solid #8a8a8a; border-radius: 3px;"
    " selection-background-color: #bcd6fb; selection-color: #1e1e1e; }"
    "QLineEdit, QComboBox { padding: 4px 6px; }"
    "QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus, QListWidget:focus, QComboBox:focus"
    " { border-color: #5aa2ff; }"
    "QLineEdit:disabled, QPlainTextEdit:disabled, QListWidget:disabled, QComboBox:disabled"
    " { background-color: #b8b8b8; }"
    "QComboBox QAbstractItemView { border: none; }"
    "QComboBox::drop-down { border: none; width: 24px; }"
    "QComboBox::down-arrow { width: 0px; height: 0px; border-left: 5px solid #f5f5f5;"
    " border-right: 5px solid #f5f5f5; border-top: 6px solid #1e1e1e; }"
    "QComboBox::down-arrow:disabled { border-left-color: #b8b8b8; border-right-color: #b8b8b8;"
    " border-top-color: #6a6a6a; }"
    "QLabel#questionHint { color: #b6c1cf; }"
    "QScrollBar { background-color: #e2e2e2; border: none; }"
    "QScrollBar:vertical { width: 12px; } QScrollBar:horizontal { height: 12px; }"
    "QScrollBar::handle { background-color: #9a9a9a; border-radius: 4px; margin: 2px; }"
    "QScrollBar::handle:hover { background-color: #7a7a7a; }"
    "QScrollBar::handle:vertical { min-height: 28px; }"
    "QScrollBar::handle:horizontal { min-width: 28px; }"
    "QScrollBar::add-line, QScrollBar::sub-line { width: 0px; height: 0px; }"
    "QScrollBar::add-page, QScrollBar::sub-page { background: none; }"
    "QPushButton { background-color: #5f5f5f; border: 2px solid #5f5f5f; border-radius: 3px;"
    " padding: 5px 14px; }"
    "QPushButton:hover { background-color: #6e6e6e; }"
    "QPushButton:focus { border-color: #a9cdff; }"
    "QPushButton#questionSubmit { background-color: #1d66c9; border-color: #1d66c9; }"
    "QPushButton#questionSubmit:hover { background-color: #2275e0; }"
    "QPushButton#questionSubmit:focus { border-color: #a9cdff; }"
    "QPushButton:disabled, QPushButton#questionSubmit:disabled"
    " { background-color: #4a4a4a; border-color: #4a4a4a; color: #9a9a9a; }");

} // namespace KODMS::Services
