// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ModuleParts.h"

#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

[[noreturn]] void hang()
{
    for (;;)
        pause();
}

/// Descriptors that a program may have open.
const int mostDescriptors = 256;

void closeAll()
{
    for (int descriptor = 0; descriptor < mostDescriptors; ++descriptor)
        close(descriptor);
}

/// Writes now and then to whatever a program may read from.
[[noreturn]] void drip()
{
    // Whoever started the tests may have left a pipe open that nobody reads.
    std::signal(SIGPIPE, SIG_IGN);
    for (;;) {
        for (int descriptor = 3; descriptor < mostDescriptors; ++descriptor) {
            // Nothing but pipes: the test's own files are none of its business.
            struct stat status;
            if (fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode)
                && write(descriptor, "x", 1) < 0)
                continue;
        }
        usleep(50000);
    }
}

/// Leaves a process behind that keeps all descriptors open.
void leaveProcess()
{
    if (fork() == 0) {
        sleep(3);
        _exit(0);
    }
}

/// Does at `place` what VIREO_TEST_MODULE_ACT says, "place:deed".
void act(const std::string& place)
{
    const char* const wanted = std::getenv("VIREO_TEST_MODULE_ACT");
    if (!wanted || std::string(wanted).compare(0, place.size() + 1, place + ':') != 0)
        return;
    const std::string deed = std::string(wanted).substr(place.size() + 1);
    if (deed == "hang")
        hang();
    if (deed == "crash")
        std::raise(SIGSEGV);
    if (deed == "stop")
        std::raise(SIGSTOP);
    if (deed.compare(0, 5, "exit ") == 0)
        _exit(std::stoi(deed.substr(5)));
    if (deed == "close and hang") {
        closeAll();
        hang();
    }
    if (deed == "close")
        closeAll();
    if (deed == "drip")
        drip();
    if (deed == "leave a process")
        leaveProcess();
    if (deed == "throw much")
        throw std::runtime_error(std::string(1000000, 'm'));
}

/// Leaves a byte for each time that the module is loaded.
void count()
{
    const char* const log = std::getenv("VIREO_TEST_MODULE_LOG");
    const int file = log ? open(log, O_WRONLY | O_APPEND) : -1;
    if (file < 0)
        return;
    if (write(file, "x", 1) != 1)
        _exit(1);
    close(file);
}

struct Start {
    Start()
    {
        count();
        act("start");
    }
} start;

bool wants(const char* act)
{
    const char* const wanted = std::getenv("VIREO_TEST_MODULE_ACT");
    return wanted && std::string(wanted) == act;
}

} // namespace

MODULE_EXPORT DzVersion getSDKVersion()
{
    act("version");
    return DZ_SDK_VERSION;
}

MODULE_EXPORT DzPlugin* getPluginDefinition()
{
    act("definition");
    if (wants("wild pointer"))
        return reinterpret_cast<DzPlugin*>(std::uintptr_t(0x1230));
    if (wants("no object")) {
        static std::uintptr_t words[64] = { 8, 16, 24 };
        return reinterpret_cast<DzPlugin*>(words);
    }
    static DzPlugin plugin("Odd");
    if (wants("wild factory"))
        plugin.addClassFactory(reinterpret_cast<DzClassFactory*>(std::uintptr_t(0x1230)));
    return &plugin;
}
