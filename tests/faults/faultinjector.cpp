// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// The C library's names are taken as they are here, large file variants included.
#undef _FILE_OFFSET_BITS
#undef _FORTIFY_SOURCE

#include "faultinjector.h"

#include <QFile>

#include <bitset>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

using Faults::Kind;

// Plain data: the replaced functions run before main() and after it, too.
static bool armed = false;
static char root[4096];
static int faultStep = 0;
static Kind faultKind = Kind::None;
static int faultError = 0;
static int steps = 0;
static const char *names[4096];
static std::bitset<4096> opened;
static bool unnamedFilesAreRefused = false;

void Faults::arm(const QString &directory, int step, Kind kind, int error)
{
    const QByteArray path = QFile::encodeName(directory);
    std::strncpy(root, path.constData(), sizeof root - 1);
    faultStep = step;
    faultKind = kind;
    faultError = error;
    steps = 0;
    opened.reset();
    armed = true;
}

void Faults::refuseUnnamedFiles(bool on)
{
    unnamedFilesAreRefused = on;
}

QStringList Faults::disarm()
{
    armed = false;
    QStringList passed;
    for (int i = 0; i < steps; ++i)
        passed.append(QString::fromLatin1(names[i]));
    return passed;
}

static bool isBelow(const char *path)
{
    return armed && path && std::strncmp(path, root, std::strlen(root)) == 0;
}

static bool isOpened(int descriptor)
{
    return armed && descriptor >= 0 && descriptor < int(opened.size())
        && opened[std::size_t(descriptor)];
}

static void setOpened(int descriptor, bool on)
{
    if (descriptor >= 0 && descriptor < int(opened.size()))
        opened[std::size_t(descriptor)] = on;
}

[[noreturn]] static void die()
{
    ::kill(::getpid(), SIGKILL);
    for (;;)
        ::pause();
}

static bool fails(const char *name, bool makesData)
{
    if (steps < 4096)
        names[steps] = name;
    ++steps;
    const bool isHere = steps == faultStep;
    if (isHere && faultKind == Kind::KillBefore)
        die();
    const bool refused = (isHere && (faultKind == Kind::Fail || faultKind == Kind::FailOn))
        || (steps > faultStep && makesData && faultKind == Kind::FailOn);
    if (refused)
        errno = faultError;
    return refused;
}

static void dieIfDone()
{
    if (steps == faultStep && (faultKind == Kind::KillAfter || faultKind == Kind::KillAmidst))
        die();
}

template<typename Function>
static Function next(const char *name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
}

// A step that gives an int: refused, or done by the real function.
template<typename Call>
static int step(bool counts, const char *name, bool makesData, const Call &call)
{
    if (!counts)
        return call();
    if (fails(name, makesData))
        return -1;
    const int result = call();
    dieIfDone();
    return result;
}

template<typename Call>
static int openStep(const char *path, int flags, const char *name, const Call &call)
{
    if (isBelow(path) && (flags & O_TMPFILE) == O_TMPFILE && unnamedFilesAreRefused) {
        errno = EOPNOTSUPP;
        return -1;
    }
    // A file that is only read is none of our business.
    const bool counts = isBelow(path) && (flags & (O_WRONLY | O_RDWR | O_CREAT)) != 0;
    const int descriptor = step(counts, name, true, call);
    if (armed)
        setOpened(descriptor, counts);
    return descriptor;
}

static mode_t modeOf(int flags, va_list arguments)
{
    const bool makesFile = (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
    return makesFile ? mode_t(va_arg(arguments, int)) : 0;
}

template<typename Size, typename Call>
static ssize_t writeStep(int descriptor, Size size, const char *name, const Call &call)
{
    if (!isOpened(descriptor))
        return call(size);
    if (fails(name, true))
        return -1;
    const bool halves = steps == faultStep
        && (faultKind == Kind::KillAmidst || faultKind == Kind::Shorten) && size > 1;
    const ssize_t written = call(halves ? size / 2 : size);
    dieIfDone();
    return written;
}

// The declarations of the C library name no visibility, so the build's default would hide these.
#pragma GCC visibility push(default)
extern "C" {

int open(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    static const auto real = next<int (*)(const char *, int, mode_t)>("open");
    return openStep(path, flags, "open", [&] { return real(path, flags, mode); });
}

int open64(const char *path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    static const auto real = next<int (*)(const char *, int, mode_t)>("open64");
    return openStep(path, flags, "open", [&] { return real(path, flags, mode); });
}

ssize_t write(int descriptor, const void *data, size_t size)
{
    static const auto real = next<ssize_t (*)(int, const void *, size_t)>("write");
    return writeStep(descriptor, size, "write",
                     [&](size_t part) { return real(descriptor, data, part); });
}

int close(int descriptor)
{
    static const auto real = next<int (*)(int)>("close");
    const bool counts = isOpened(descriptor);
    setOpened(descriptor, false);
    return step(counts, "close", false, [&] { return real(descriptor); });
}

int fsync(int descriptor)
{
    static const auto real = next<int (*)(int)>("fsync");
    return step(isOpened(descriptor), "fsync", true, [&] { return real(descriptor); });
}

int fdatasync(int descriptor)
{
    static const auto real = next<int (*)(int)>("fdatasync");
    return step(isOpened(descriptor), "fdatasync", true, [&] { return real(descriptor); });
}

int fchmod(int descriptor, mode_t mode)
{
    static const auto real = next<int (*)(int, mode_t)>("fchmod");
    return step(isOpened(descriptor), "fchmod", false, [&] { return real(descriptor, mode); });
}

int chmod(const char *path, mode_t mode)
{
    static const auto real = next<int (*)(const char *, mode_t)>("chmod");
    return step(isBelow(path), "chmod", false, [&] { return real(path, mode); });
}

int rename(const char *from, const char *to)
{
    static const auto real = next<int (*)(const char *, const char *)>("rename");
    return step(isBelow(to), "rename", true, [&] { return real(from, to); });
}

int renameat2(int fromDirectory, const char *from, int toDirectory, const char *to,
              unsigned int flags)
{
    static const auto real =
        next<int (*)(int, const char *, int, const char *, unsigned int)>("renameat2");
    return step(isBelow(to), "renameat2", true,
                [&] { return real(fromDirectory, from, toDirectory, to, flags); });
}

int link(const char *from, const char *to)
{
    static const auto real = next<int (*)(const char *, const char *)>("link");
    return step(isBelow(to), "link", true, [&] { return real(from, to); });
}

int linkat(int fromDirectory, const char *from, int toDirectory, const char *to, int flags)
{
    static const auto real = next<int (*)(int, const char *, int, const char *, int)>("linkat");
    return step(isBelow(to), "linkat", true,
                [&] { return real(fromDirectory, from, toDirectory, to, flags); });
}

int unlink(const char *path)
{
    static const auto real = next<int (*)(const char *)>("unlink");
    return step(isBelow(path), "unlink", false, [&] { return real(path); });
}

} // extern "C"
#pragma GCC visibility pop
