// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0

// The other program of FileHolder: PATH and what others may do meanwhile. Says "held" and holds the
// file, or folder, until its standard input ends.
#include <QCoreApplication>
#include <QDir>

#include <cstdio>

#include <windows.h>

namespace {

DWORD shareMode(const QString &shares)
{
    if (shares == QLatin1String("reading"))
        return FILE_SHARE_READ;
    return shares == QLatin1String("nothing") ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE;
}

void say(const char *text)
{
    std::puts(text);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString path =
        QStringLiteral("\\\\?\\") + QDir::toNativeSeparators(QDir::cleanPath(arguments.value(1)));
    const HANDLE held =
        ::CreateFileW(path.toStdWString().c_str(), GENERIC_READ, shareMode(arguments.value(2)),
                      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (held == INVALID_HANDLE_VALUE) {
        say("refused");
        return 1;
    }
    say("held");
    while (std::getchar() != EOF) {
    }
    ::CloseHandle(held);
    return 0;
}
