// SPDX-License-Identifier: Apache-2.0
#include "failingcalls.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <exception>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int notArmed = -1;
constexpr unsigned timeLimit = 60;        // seconds, on a machine that does other things as well
constexpr rlimit processorLimit = {2, 4}; // seconds of the processor
constexpr std::size_t answerBytes = 512;
std::atomic<int> allocationsLeft = notArmed;
std::atomic<int> fileCallsLeft = notArmed;
std::atomic<bool> oneFailed = false;
int fileError = EIO;
bool failsForGood = false;

/// Counts a call and says whether it fails: the last one of `left`, and later ones if the failure
/// is for good.
bool fails(std::atomic<int>& left)
{
    if (left.load(std::memory_order_relaxed) <= 0)
        return false;
    if (!(failsForGood && left == 1) && left.fetch_sub(1) != 1)
        return false;
    oneFailed = true;
    return true;
}

bool allocationFails()
{
    if (!fails(allocationsLeft))
        return false;
    errno = ENOMEM;
    return true;
}

bool fileCallFails()
{
    if (!fails(fileCallsLeft))
        return false;
    errno = fileError;
    return true;
}

/// The function of the C library that one of this file hides.
template<typename Function>
Function* hidden(Function*, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define HIDDEN(function) static const auto original = hidden(&(function), #function)

// Libraries must find these functions before those of the C library.
#pragma GCC visibility push(default)
extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the names of the C library
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t size) { return allocationFails() ? nullptr : __libc_malloc(size); }

void* calloc(std::size_t count, std::size_t size)
{
    return allocationFails() ? nullptr : __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    return allocationFails() ? nullptr : __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    return allocationFails() ? nullptr : __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    *block = allocationFails() ? nullptr : __libc_memalign(alignment, size);
    return *block ? 0 : ENOMEM;
}

int open64(const char* path, int flags, ...)
{
    HIDDEN(open64);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return fileCallFails() ? -1 : original(path, flags, mode);
}

int open(const char* path, int flags, ...)
{
    HIDDEN(open);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return fileCallFails() ? -1 : original(path, flags, mode);
}

#define FAILING_CALL(Result, function, parameters, arguments)                                      \
    Result function parameters                                                                     \
    {                                                                                              \
        HIDDEN(function);                                                                          \
        return fileCallFails() ? Result(-1) : original arguments;                                  \
    }

FAILING_CALL(ssize_t, read, (int file, void* bytes, std::size_t count), (file, bytes, count))
FAILING_CALL(ssize_t, write, (int file, const void* bytes, std::size_t count), (file, bytes, count))
FAILING_CALL(off64_t, lseek64, (int file, off64_t offset, int from) noexcept, (file, offset, from))
FAILING_CALL(off_t, lseek, (int file, off_t offset, int from) noexcept, (file, offset, from))
FAILING_CALL(int, fsync, (int file), (file))
FAILING_CALL(int, fdatasync, (int file), (file))
FAILING_CALL(int, ftruncate64, (int file, off64_t length) noexcept, (file, length))
FAILING_CALL(int, ftruncate, (int file, off_t length) noexcept, (file, length))
FAILING_CALL(int, link, (const char* from, const char* to) noexcept, (from, to))
FAILING_CALL(int, unlink, (const char* path) noexcept, (path))
FAILING_CALL(int, rename, (const char* from, const char* to) noexcept, (from, to))
FAILING_CALL(int, renameat2,
             (int a, const char* from, int b, const char* to, unsigned flags) noexcept,
             (a, from, b, to, flags))
FAILING_CALL(int, linkat, (int a, const char* from, int b, const char* to, int flags) noexcept,
             (a, from, b, to, flags))
FAILING_CALL(int, fstat64, (int file, struct stat64* state) noexcept, (file, state))
FAILING_CALL(int, stat, (const char* path, struct stat* state) noexcept, (path, state))
FAILING_CALL(int, stat64, (const char* path, struct stat64* state) noexcept, (path, state))
FAILING_CALL(int, lstat64, (const char* path, struct stat64* state) noexcept, (path, state))
FAILING_CALL(int, statx,
             (int folder, const char* path, int flags, unsigned mask, struct statx* state) noexcept,
             (folder, path, flags, mask, state))

} // extern "C"
#pragma GCC visibility pop

namespace {

int openDescriptors()
{
    int count = 0;
    DIR* const folder = opendir("/proc/self/fd");
    while (folder && readdir(folder))
        ++count;
    if (folder)
        closedir(folder);
    return count;
}

/// What `operation` says, or why it did not come to its end.
std::string attempt(const std::function<std::string()>& operation)
{
    try {
        return operation();
    } catch (const std::exception& exception) {
        FailingCalls::disarm();
        return std::string("lets an exception out: ") + exception.what();
    }
}

[[noreturn]] void runChild(int answers, const FailingCalls::Failure& failure,
                           const std::function<std::string()>& operation)
{
    for (const int signal : {SIGSEGV, SIGBUS, SIGABRT, SIGFPE, SIGILL, SIGALRM, SIGXCPU})
        std::signal(signal, SIG_DFL); // no stack traces of the test framework
    alarm(timeLimit);
    setrlimit(RLIMIT_CPU, &processorLimit);
    const bool isOfFiles = failure.kind == FailingCalls::Kind::File;
    fileError = failure.error;
    failsForGood = failure.forGood;
    const int descriptors = openDescriptors();
    (isOfFiles ? fileCallsLeft : allocationsLeft) = failure.call;
    std::string wrong = attempt(operation);
    FailingCalls::disarm();
    // QFile::open loses the descriptor it was given when an allocation in it fails.
    if (wrong.empty() && isOfFiles && openDescriptors() != descriptors)
        wrong = "leaves a descriptor open";
    const std::string answer = (oneFailed ? 'y' : 'n') + wrong.substr(0, answerBytes - 1);
    // One write, which arrives as a whole because it is shorter than a pipe's buffer.
    _exit(write(answers, answer.data(), answer.size()) == ssize_t(answer.size()) ? 0 : 2);
}

} // namespace

void FailingCalls::disarm()
{
    allocationsLeft = notArmed;
    fileCallsLeft = notArmed;
}

bool FailingCalls::hasFailed() { return oneFailed; }

FailingCalls::Outcome FailingCalls::run(const Failure& failure,
                                        const std::function<std::string()>& operation)
{
    int pipes[2];
    if (pipe(pipes) != 0)
        return {false, "no pipe"};
    const pid_t child = fork();
    if (child == 0)
        runChild(pipes[1], failure, operation);
    close(pipes[1]);
    Outcome outcome;
    std::array<char, answerBytes> answer = {};
    const ssize_t count = read(pipes[0], answer.data(), answer.size());
    close(pipes[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) {
        outcome.failed = true;
        outcome.wrong = std::string("ends the program: ") + strsignal(WTERMSIG(status));
    } else if (count < 1) {
        outcome.wrong = "ends the program";
    } else {
        outcome.failed = answer[0] == 'y';
        outcome.wrong.assign(answer.data() + 1, std::size_t(count - 1));
    }
    return outcome;
}
