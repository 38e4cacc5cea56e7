// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FileHolder.h"

namespace KODMS::Tests {

namespace {

constexpr int PatienceMs = 60'000;

QString shared(FileHolder::Shares shares)
{
    switch (shares) {
    case FileHolder::Shares::Nothing:
        return QStringLiteral("nothing");
    case FileHolder::Shares::Reading:
        return QStringLiteral("reading");
    case FileHolder::Shares::ReadingAndWriting:
        break;
    }
    return QStringLiteral("reading-and-writing");
}

} // namespace

FileHolder::FileHolder(const QString &path, Shares shares)
{
    m_process.start(QStringLiteral(KODMS_FILE_HOLDER), {path, shared(shares)});
    QByteArray said;
    while (!said.contains('\n') && m_process.waitForReadyRead(PatienceMs))
        said += m_process.readAllStandardOutput();
    m_isHolding = said.startsWith("held");
}

FileHolder::~FileHolder()
{
    release();
}

void FileHolder::release()
{
    m_isHolding = false;
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(PatienceMs)) {
        m_process.kill();
        m_process.waitForFinished(PatienceMs);
    }
}

} // namespace KODMS::Tests
