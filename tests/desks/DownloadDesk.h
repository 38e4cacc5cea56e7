// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "desks/download/DMS_Download_Widget.h"
#include "tests/desks/DeskTest.h"

namespace KODMS::Tests {

/// The user whom these desks are built for.
constexpr int DownloadUser = 42;

/// The fields of an original file that tests tell apart; everything else is empty.
DataLib::Model::Odbpp_OrigFile_View someFile(int id);

/// The original-file view answers as a database of `total` files would, with ids
/// from 1 on, in order: the page that the condition list asks for.
void answerWithFiles(int total);

/// An original-file desk for a user with these rights, shown in a window of its own.
std::unique_ptr<UI::DMS_Download_Widget> makeDownloadDesk(const QVector<Right> &rights = {});

/// How many times the original-file view has been asked.
int fileSearches();

/// The two condition lists of search number `index`; -1 is the last one.
Fakes::ConditionList fileConditions(int index = -1);
Fakes::ConditionList fileCountConditions(int index = -1);

/// The rights by name, joined; "no right" for none.
QString rightNames(const QVector<Right> &rights);

/// Every combination of the given rights, none of them first.
QVector<QVector<Right>> combinations(const QVector<Right> &rights);

/// The rights that show original files instead of the order history.
bool seesOrigFiles(const QVector<Right> &rights);

} // namespace KODMS::Tests
