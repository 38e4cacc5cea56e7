// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/ProgramSetup.h"

#include "apps/console/Interrupt.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <langinfo.h>
#include <sys/stat.h>

#include <clocale>

namespace KODMS::Console {

namespace {

/// Names of files and customers are UTF-8 here, whatever the locale of the shell says; a
/// bare container has none at all.
void readAndWriteUtf8()
{
    // Qt and the C library may be of different minds about a shell that says nothing.
    if (qstrcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        std::setlocale(LC_CTYPE, "C.UTF-8");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

/// Databases, backups and the files of customers are made for their owner only.
void keepOthersOut()
{
    umask(umask(0) | S_IRWXG | S_IRWXO);
}

} // namespace

ProgramSetup::ProgramSetup()
{
    readAndWriteUtf8();
    keepOthersOut();
    if (m_english.load(QStringLiteral(":/i18n/kodms_en.qm")))
        QCoreApplication::installTranslator(&m_english);
    Interrupt::watch();
}

} // namespace KODMS::Console
