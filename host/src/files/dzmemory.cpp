// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzmemory.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#ifdef __unix__
#include <unistd.h>
#endif

namespace {

const int exitFailed = 1;

std::atomic<const char*> lastLine { "out of memory\n" };

void handleTermination()
{
    try {
        if (const std::exception_ptr problem = std::current_exception())
            std::rethrow_exception(problem);
    } catch (const std::bad_alloc&) {
        dzEndOutOfMemory();
    } catch (...) {
    }
    std::abort();
}

} // namespace

void dzReportOutOfMemory(const char* message)
{
    lastLine = message;
    std::set_terminate(handleTermination);
}

void dzEndOutOfMemory()
{
#ifdef __unix__
    // Nobody is left to be told that this failed.
    if (write(STDERR_FILENO, lastLine, std::strlen(lastLine)) < 0)
        _exit(exitFailed);
#else
    std::fputs(lastLine, stderr);
#endif
    _Exit(exitFailed);
}
