// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "apps/console/ProgramSetup.h"

#include "apps/console/Interrupt.h"
#include "apps/console/SystemSetup.h"

#include <QCoreApplication>
#include <QTextCodec>

namespace KODMS::Console {

ProgramSetup::ProgramSetup()
{
    readAndWriteUtf8();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    keepOthersOut();
    if (m_english.load(QStringLiteral(":/i18n/kodms_en.qm")))
        QCoreApplication::installTranslator(&m_english);
    Interrupt::watch();
}

} // namespace KODMS::Console
