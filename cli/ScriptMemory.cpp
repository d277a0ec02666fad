// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ScriptMemory.h"

// The sanitizers reserve address space without end, and have handlers of their own.
#if defined(__SANITIZE_ADDRESS__)
#define VIREO_SANITIZED
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VIREO_SANITIZED
#endif
#endif

#ifdef VIREO_SANITIZED

void guardAgainstScript()
{
}

#else

#include "Command.h"
#include "dzmemory.h"

#include <QtGlobal>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

const char* const outOfMemory = "vireo: the script needs more memory than there is\n";
const char* const crashed
    = "vireo: the script ended in a crash of the script engine; what it did so far stays done\n";
const char* const nestedTooDeeply
    = "vireo: the script engine ran out of stack: a regular expression, a text or a call is nested "
      "too deeply; what the script did so far stays done\n";

/// The script engine ends a program that gets no memory by writing to this address.
const quintptr engineFailureAddress = 0xbbadbeef;

/// What the script engine reserves of addresses, all at once, for its machine code.
const size_t engineCodeSize = size_t(2) << 30;
/// What it gets instead where a limit forbids that: far more than any but a huge script fills.
const size_t smallCodeSize = size_t(64) << 20;
/// Where it gets that: so far from everything else that nothing comes to lie behind it, where the
/// engine takes memory for its own that it has not.
const quintptr smallCodeAddress = Q_UINT64_C(0x500000000000);

bool isBehindEngineCode(quintptr address)
{
    return address >= smallCodeAddress + smallCodeSize
        && address < smallCodeAddress + engineCodeSize;
}

/// How far from the stack's end an access is still taken for one that the stack had no room for.
const quintptr stackMargin = 1 << 20;

/// The lowest address that the main thread's stack may reach.
quintptr stackEnd = 0;

[[noreturn]] void endWith(const char* message)
{
    if (write(STDERR_FILENO, message, std::strlen(message)) < 0)
        _exit(ExitFailed); // nobody is left to be told
    _exit(ExitFailed);
}

/// Neither takes memory nor returns.
extern "C" void handleCrash(int signal, siginfo_t* info, void*)
{
    const auto address = reinterpret_cast<quintptr>(info->si_addr);
    const bool isAccess = signal == SIGSEGV || signal == SIGBUS;
    if (isAccess && (address == engineFailureAddress || isBehindEngineCode(address)))
        dzEndOutOfMemory();
    if (isAccess && address + stackMargin >= stackEnd && address < stackEnd + stackMargin)
        endWith(nestedTooDeeply);
    endWith(crashed);
}

/// Handles crashes on a stack of their own: the program's may be what has run out.
void catchCrashes()
{
    static char stack[64 * 1024];
    stack_t own = {};
    own.ss_sp = stack;
    own.ss_size = sizeof stack;
    sigaltstack(&own, nullptr);
    rlimit limit;
    if (getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY)
        stackEnd = reinterpret_cast<quintptr>(&limit) - limit.rlim_cur;
    struct sigaction action = {};
    action.sa_sigaction = handleCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_RESETHAND;
    for (int signal : { SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT })
        sigaction(signal, &action, nullptr);
}

/// Addresses that the program has in use, in bytes.
rlim_t usedAddresses()
{
    unsigned long pages = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%lu", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

void limitMemory()
{
    const rlim_t installed
        = static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    // The system and what else runs keep an eighth, and enough for a shell on a small machine.
    const rlim_t room = std::min(std::max(installed / 8, rlim_t(256) << 20), installed / 2);
    // What is only reserved takes no memory.
    const rlim_t most = usedAddresses() + engineCodeSize + installed - room;
    rlimit limit;
    if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur > most) {
        limit.rlim_cur = most;
        setrlimit(RLIMIT_AS, &limit);
    }
}

} // namespace

#if defined(__linux__) && defined(__x86_64__)

/// Stands before the C library's. The script engine knows no smaller reservation than its own, and
/// without one it ends the program before the first line of a script has run.
extern "C" __attribute__((visibility("default"))) void* mmap(
    void* address, size_t size, int protection, int flags, int file, off_t offset) noexcept
{
    long result = syscall(SYS_mmap, address, size, protection, flags, file, offset);
    if (result == -1 && size == engineCodeSize && (protection & PROT_EXEC))
        result = syscall(SYS_mmap, smallCodeAddress, smallCodeSize, protection,
            flags | MAP_FIXED_NOREPLACE, file, offset);
    return reinterpret_cast<void*>(result);
}

#endif

void guardAgainstScript()
{
    dzReportOutOfMemory(outOfMemory);
    catchCrashes();
    limitMemory();
}

#endif
