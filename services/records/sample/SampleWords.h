// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

namespace KODMS::Services::SampleWords {

// The words that sample records are made of.
const QStringList &surnames();
const QStringList &givenNames();
const QStringList &cities();
const QStringList &trades();
const QStringList &companyForms();
const QStringList &boardNames();
const QStringList &remarks();
const QStringList &sources();
const QStringList &questionTitles();
const QStringList &questionTexts();

/// The end of the name of a folder that holds the layers of a board.
QString gerberMark();

} // namespace KODMS::Services::SampleWords
