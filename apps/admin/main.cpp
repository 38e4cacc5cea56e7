// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/admin/AdminTool.h"
#include "apps/admin/Interrupt.h"

#include <QCoreApplication>
#include <QTextCodec>
#include <QTranslator>

#include <sys/stat.h>

#include <clocale>

/// Names of files and customers are UTF-8 here, whatever the locale of the shell says; a
/// bare container has none at all.
static void readAndWriteUtf8()
{
    if (QTextCodec::codecForLocale()->name() == "UTF-8")
        return;
    std::setlocale(LC_CTYPE, "C.UTF-8");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

/// Databases, backups and the files of customers are made for their owner only.
static void keepOthersOut()
{
    umask(umask(0) | S_IRWXG | S_IRWXO);
}

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kodms-admin"));
    QCoreApplication::setApplicationVersion(QStringLiteral(KODMS_VERSION));
    readAndWriteUtf8();
    keepOthersOut();
    QTranslator english;
    if (english.load(QStringLiteral(":/i18n/kodms_en.qm")))
        QCoreApplication::installTranslator(&english);
    KODMS::Admin::Interrupt::watch();
    return KODMS::Admin::AdminTool().run(QCoreApplication::arguments());
}
