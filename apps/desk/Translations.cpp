// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/desk/Translations.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace KODMS::Host {

namespace {

void installFrom(QApplication &app, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(&app);
    if (translator->load(name, folder))
        QCoreApplication::installTranslator(translator);
    else
        delete translator;
}

} // namespace

void Translations::install(QApplication &app, const QString &language)
{
    if (language == QLatin1String("en")) {
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        installFrom(app, QStringLiteral("kodms_en"), QStringLiteral(":/i18n"));
        return;
    }
    QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
    installFrom(app, QStringLiteral("qtbase_zh_CN"),
                QLibraryInfo::location(QLibraryInfo::TranslationsPath));
}

} // namespace KODMS::Host
