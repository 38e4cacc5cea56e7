// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0

// Stands in for the system's Explorer: writes the command line that it was started with, to the
// letter and as UTF-16, beside itself, and ends.
#include <string>

#include <windows.h>

int main()
{
    wchar_t self[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, self, MAX_PATH);
    const std::wstring own = self;
    const std::wstring written = own.substr(0, own.rfind(L'\\') + 1) + L"commandline";
    const std::wstring part = written + L".part";
    const HANDLE file = ::CreateFileW(part.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    const std::wstring line = ::GetCommandLineW();
    DWORD count = 0;
    ::WriteFile(file, line.data(), static_cast<DWORD>(line.size() * sizeof(wchar_t)), &count,
                nullptr);
    ::CloseHandle(file);
    return ::MoveFileExW(part.c_str(), written.c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
