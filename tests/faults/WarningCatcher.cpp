// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/faults/WarningCatcher.h"

#include <QtGlobal>

#include <mutex>

namespace KODMS::Tests {

namespace {

std::mutex mutex;
QStringList caught;
QtMessageHandler before = nullptr;

void handle(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    // What the platform without a screen says of every window, and what is of use only to
    // who reads one run: the test library takes no more than 2,000 messages.
    if (type == QtDebugMsg || type == QtInfoMsg ||
        text.startsWith(QLatin1String("This plugin does not support ")))
        return;
    const QLatin1String category(context.category);
    if (type == QtWarningMsg && category.startsWith(QLatin1String("kodms."))) {
        const std::lock_guard<std::mutex> guard(mutex);
        caught << text;
        return;
    }
    before(type, context, text);
}

} // namespace

WarningCatcher::WarningCatcher()
{
    caught.clear();
    before = qInstallMessageHandler(handle);
}

WarningCatcher::~WarningCatcher()
{
    qInstallMessageHandler(before);
}

QStringList WarningCatcher::texts() const
{
    const std::lock_guard<std::mutex> guard(mutex);
    return caught;
}

} // namespace KODMS::Tests
