// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0

// Another program that pastes: writes the clipboard's text, as the system holds it, into the file
// that it is given. A number says where it failed.
#include <cwchar>

#include <windows.h>

namespace {

bool openedClipboard()
{
    constexpr int tries = 100;
    constexpr DWORD pauseMs = 50;
    for (int i = 0; i < tries; ++i) { // one program at a time has it
        if (::OpenClipboard(nullptr))
            return true;
        ::Sleep(pauseMs);
    }
    return false;
}

} // namespace

int wmain(int argc, wchar_t **argv)
{
    if (argc != 2 || !openedClipboard())
        return 1;
    const HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
    const auto *text = data ? static_cast<const wchar_t *>(::GlobalLock(data)) : nullptr;
    if (!text)
        return 2;
    const HANDLE file = ::CreateFileW(argv[1], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD count = 0;
    const auto size = static_cast<DWORD>(std::wcslen(text) * sizeof(wchar_t));
    const bool written = ::WriteFile(file, text, size, &count, nullptr) && count == size;
    ::CloseHandle(file);
    ::GlobalUnlock(data);
    ::CloseClipboard();
    return written ? 0 : 3;
}
