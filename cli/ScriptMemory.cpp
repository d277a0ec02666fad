// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ScriptMemory.h"

#include "Command.h"

#include <csignal>
#include <exception>
#include <new>
#include <sys/resource.h>
#include <unistd.h>

namespace {

/// The script engine ends a program that gets no memory by writing to this address.
const quintptr engineFailureAddress = 0xbbadbeef;

/// Neither takes memory nor returns.
[[noreturn]] void endOutOfMemory()
{
    const char message[] = "vireo: the script needs more memory than there is\n";
    // Nobody is left to be told that this failed.
    if (::write(STDERR_FILENO, message, sizeof message - 1) < 0)
        _exit(ExitFailed);
    _exit(ExitFailed);
}

extern "C" void handleBadAccess(int signal, siginfo_t* info, void*)
{
    if (reinterpret_cast<quintptr>(info->si_addr) == engineFailureAddress)
        endOutOfMemory();
    // Anything else is what it always was.
    std::signal(signal, SIG_DFL);
}

void handleTermination()
{
    try {
        if (std::current_exception())
            throw;
    } catch (const std::bad_alloc&) {
        endOutOfMemory();
    } catch (...) {
    }
    std::abort();
}

} // namespace

void limitScriptMemory()
{
    // The sanitizers reserve address space without end, and have a handler of their own.
#ifndef __SANITIZE_ADDRESS__
    rlimit limit;
    const rlim_t installed
        = static_cast<rlim_t>(sysconf(_SC_PHYS_PAGES)) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    if (getrlimit(RLIMIT_AS, &limit) == 0 && limit.rlim_cur > installed) {
        limit.rlim_cur = installed;
        setrlimit(RLIMIT_AS, &limit);
    }
    struct sigaction action = {};
    action.sa_sigaction = handleBadAccess;
    action.sa_flags = SA_SIGINFO;
    sigaction(SIGSEGV, &action, nullptr);
    std::set_terminate(handleTermination);
#endif
}
