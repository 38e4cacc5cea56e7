// SPDX-FileCopyrightText: the KODMS desks authors
// SPDX-License-Identifier: Apache-2.0
// A disk with so many bytes left: stands before the C library (LD_PRELOAD) and counts what a
// program writes into files below KODMS_DISK_ROOT. Once KODMS_DISK_BUDGET is used up, writing,
// growing and creating fail as they do on a full disk. Counts from the start, or, when the
// program asks for it, from kodms_full_disk_arm().
#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::atomic<long long> remaining{-1}; // < 0: nothing is counted yet

long long numberFrom(const char *name)
{
    const char *text = std::getenv(name);
    return text ? std::strtoll(text, nullptr, 10) : 0;
}

bool isBelowRoot(const char *path)
{
    const char *root = std::getenv("KODMS_DISK_ROOT");
    return root && std::strncmp(path, root, std::strlen(root)) == 0;
}

bool isCounted(int handle)
{
    if (remaining.load() < 0)
        return false;
    char link[64];
    char path[4096];
    std::snprintf(link, sizeof link, "/proc/self/fd/%d", handle);
    const ssize_t length = ::readlink(link, path, sizeof path - 1);
    if (length <= 0)
        return false;
    path[length] = '\0';
    return isBelowRoot(path);
}

/// How much of `wanted` still fits; takes it.
std::size_t taken(std::size_t wanted)
{
    long long left = remaining.load();
    long long got = 0;
    do {
        got = std::min(left, static_cast<long long>(wanted));
    } while (!remaining.compare_exchange_weak(left, left - got));
    return static_cast<std::size_t>(got);
}

int full()
{
    errno = ENOSPC;
    return -1;
}

bool isFull()
{
    return remaining.load() == 0;
}

template <typename Function> Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

off_t sizeOf(int handle)
{
    struct stat info {};

    return ::fstat(handle, &info) == 0 ? info.st_size : 0;
}

int grow(int handle, off_t size)
{
    if (!isCounted(handle) || size <= sizeOf(handle))
        return 0;
    const auto more = static_cast<std::size_t>(size - sizeOf(handle));
    return taken(more) == more ? 0 : full();
}

template <typename Write> ssize_t limited(int handle, std::size_t size, const Write &write)
{
    if (size == 0 || !isCounted(handle))
        return write(size);
    const std::size_t room = taken(size);
    return room == 0 ? full() : write(room);
}

__attribute__((constructor)) void armAtStart()
{
    if (std::getenv("KODMS_DISK_FROM_START"))
        remaining = numberFrom("KODMS_DISK_BUDGET");
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED void kodms_full_disk_arm()
{
    remaining = numberFrom("KODMS_DISK_BUDGET");
}

EXPORTED ssize_t write(int handle, const void *data, size_t size)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t)>("write");
    return limited(handle, size, [&](size_t room) { return real(handle, data, room); });
}

EXPORTED ssize_t pwrite(int handle, const void *data, size_t size, off_t at)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t, off_t)>("pwrite");
    return limited(handle, size, [&](size_t room) { return real(handle, data, room, at); });
}

EXPORTED ssize_t pwrite64(int handle, const void *data, size_t size, off64_t at)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t, off64_t)>("pwrite64");
    return limited(handle, size, [&](size_t room) { return real(handle, data, room, at); });
}

EXPORTED ssize_t writev(int handle, const struct iovec *pieces, int count)
{
    static const auto real = next<ssize_t (*)(int, const struct iovec *, int)>("writev");
    std::size_t size = 0;
    for (int i = 0; i < count; ++i)
        size += pieces[i].iov_len;
    if (!isCounted(handle))
        return real(handle, pieces, count);
    return taken(size) == size ? real(handle, pieces, count) : full();
}

EXPORTED int ftruncate(int handle, off_t size)
{
    static const auto real = next<int (*)(int, off_t)>("ftruncate");
    return grow(handle, size) == 0 ? real(handle, size) : -1;
}

EXPORTED int ftruncate64(int handle, off64_t size)
{
    static const auto real = next<int (*)(int, off64_t)>("ftruncate64");
    return grow(handle, size) == 0 ? real(handle, size) : -1;
}

EXPORTED int fallocate(int handle, int mode, off_t at, off_t size)
{
    static const auto real = next<int (*)(int, int, off_t, off_t)>("fallocate");
    return grow(handle, at + size) == 0 ? real(handle, mode, at, size) : -1;
}

EXPORTED int fallocate64(int handle, int mode, off64_t at, off64_t size)
{
    static const auto real = next<int (*)(int, int, off64_t, off64_t)>("fallocate64");
    return grow(handle, at + size) == 0 ? real(handle, mode, at, size) : -1;
}

EXPORTED int posix_fallocate(int handle, off_t at, off_t size)
{
    static const auto real = next<int (*)(int, off_t, off_t)>("posix_fallocate");
    return grow(handle, at + size) == 0 ? real(handle, at, size) : ENOSPC;
}

EXPORTED int posix_fallocate64(int handle, off64_t at, off64_t size)
{
    static const auto real = next<int (*)(int, off64_t, off64_t)>("posix_fallocate64");
    return grow(handle, at + size) == 0 ? real(handle, at, size) : ENOSPC;
}

EXPORTED ssize_t copy_file_range(int from, off64_t *fromAt, int to, off64_t *toAt, size_t size,
                                 unsigned flags)
{
    static const auto real =
        next<ssize_t (*)(int, off64_t *, int, off64_t *, size_t, unsigned)>("copy_file_range");
    return limited(to, size,
                   [&](size_t room) { return real(from, fromAt, to, toAt, room, flags); });
}

EXPORTED int mkdir(const char *path, mode_t mode)
{
    static const auto real = next<int (*)(const char *, mode_t)>("mkdir");
    return isFull() && isBelowRoot(path) ? full() : real(path, mode);
}

EXPORTED int open(const char *path, int flags, ...)
{
    static const auto real = next<int (*)(const char *, int, ...)>("open");
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    const bool creates = (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;
    return isFull() && creates && isBelowRoot(path) ? full() : real(path, flags, mode);
}

EXPORTED int open64(const char *path, int flags, ...)
{
    static const auto real = next<int (*)(const char *, int, ...)>("open64");
    va_list rest;
    va_start(rest, flags);
    const auto mode = va_arg(rest, mode_t);
    va_end(rest);
    const bool creates = (flags & O_CREAT) != 0 && ::access(path, F_OK) != 0;
    return isFull() && creates && isBelowRoot(path) ? full() : real(path, flags, mode);
}
