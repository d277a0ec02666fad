// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "moduleprobe.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// How long loading a module may take, in milliseconds.
const int timeLimit = 5000;

const int survived = 100;
const int thrown = 101;

/// Where the child writes what was thrown.
int reportPipe = -1;

QString text(const char* source)
{
    return QCoreApplication::translate("DzPluginMgr", source);
}

[[noreturn]] void reportThrown(const char* what)
{
    const ssize_t written = write(reportPipe, what, std::strlen(what));
    (void)written;
    _exit(thrown);
}

/// Where what nobody could catch ends up.
[[noreturn]] void reportTermination()
{
    try {
        if (const std::exception_ptr problem = std::current_exception())
            std::rethrow_exception(problem);
    } catch (const std::exception& problem) {
        reportThrown(problem.what());
    } catch (...) {
    }
    reportThrown("");
}

/// Never returns or throws: the caller's stack is a copy of the program's.
[[noreturn]] void loadInChild(const QByteArray& path) noexcept
{
    // A crash shall leave no core file, and no report of a tool that watches this program.
    const rlimit none = { 0, 0 };
    setrlimit(RLIMIT_CORE, &none);
    for (int number : { SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT })
        signal(number, SIG_DFL);
    // What the module prints is printed when it is really loaded.
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    std::set_terminate(reportTermination);
    // The declaration promises that it does not throw, but static objects of modules may: through a
    // pointer the compiler does not rely on it.
    void* (*volatile load)(const char*, int) = dlopen;
    try {
        load(path.constData(), RTLD_NOW | RTLD_LOCAL);
    } catch (...) {
        reportTermination();
    }
    _exit(survived);
}

/// Waits until the child's end of the pipe closes; false when that takes too long.
bool readReport(int pipe, QByteArray* report)
{
    char piece[256];
    for (;;) {
        pollfd source = { pipe, POLLIN, 0 };
        const int ready = poll(&source, 1, timeLimit);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0)
            return false;
        const ssize_t size = read(pipe, piece, sizeof piece);
        if (size < 0 && errno == EINTR)
            continue;
        if (size <= 0)
            return true;
        report->append(piece, static_cast<int>(size));
    }
}

int waitFor(pid_t child)
{
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {}
    return status;
}

QString failureOf(int status, const QByteArray& report)
{
    if (WIFSIGNALED(status))
        return text("it crashes while it is loaded (%1)")
            .arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status))));
    if (WEXITSTATUS(status) == survived)
        return QString();
    if (WEXITSTATUS(status) != thrown)
        return text("it ends the program while it is loaded");
    if (report.isEmpty())
        return text("it throws while it is loaded");
    return text("it throws while it is loaded: %1").arg(QString::fromUtf8(report).simplified());
}

} // namespace

QString moduleLoadFailure(const QString& path)
{
    const QByteArray file = QFile::encodeName(path);
    int ends[2];
    if (pipe(ends) != 0)
        return QString();
    const pid_t child = fork();
    if (child == 0) {
        close(ends[0]);
        reportPipe = ends[1];
        loadInChild(file);
    }
    close(ends[1]);
    QByteArray report;
    const bool inTime = child < 0 || readReport(ends[0], &report);
    close(ends[0]);
    if (child < 0)
        return QString();
    if (!inTime)
        kill(child, SIGKILL);
    const int status = waitFor(child);
    return inTime ? failureOf(status, report) : text("it does not finish loading");
}

#else

QString moduleLoadFailure(const QString&)
{
    return QString();
}

#endif
