// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "moduleprobe.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include "dzclassfactory.h"
#include "dzplugin.h"
#include "moduleentry.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <fcntl.h>
#include <new>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzPluginMgr", source);
}

/// What the child says, in memory that both processes see. A module may close any descriptor, write
/// to all of them and exit with any code: none of that changes what stands here.
struct Report {
    volatile ModuleStage stage;
    quint64 password; ///< what `finished` becomes; no module hits it by accident
    volatile quint64 finished;
    char refusal[2048]; ///< UTF-8, empty when nothing speaks against the module
};

/// The memory of a report, for a scope.
class SharedReport
{
public:
    SharedReport()
    {
        void* const memory = mmap(
            nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            return;
        m_report = new (memory) Report {};
        // Zero is what the memory holds anyway.
        m_report->password = QRandomGenerator::global()->generate64() | 1;
    }
    ~SharedReport()
    {
        if (m_report)
            munmap(m_report, sizeof(Report));
    }

    Report* get() const { return m_report; }

private:
    Q_DISABLE_COPY(SharedReport)

    Report* m_report = nullptr;
};

// The child ---------------------------------------------------------------------------------

/// The child's report, for where it can be handed to nobody.
Report* childReport = nullptr;

[[noreturn]] void finish(const QString& refusal)
{
    const QByteArray message = refusal.toUtf8();
    const size_t size
        = std::min(static_cast<size_t>(message.size()), sizeof childReport->refusal - 1);
    std::memcpy(childReport->refusal, message.constData(), size);
    childReport->finished = childReport->password;
    _exit(0);
}

[[noreturn]] void finishThrown(const char* what)
{
    const bool isLoading = childReport->stage == ModuleStage::Loading;
    const QString message = moduleMessage(what);
    const QString refusal = isLoading ? text("it throws while it is loaded") : text("it throws");
    finish(message.isEmpty() ? refusal : refusal + QStringLiteral(": ") + message);
}

/// Where what nobody could catch ends up.
[[noreturn]] void finishTerminated()
{
    try {
        if (const std::exception_ptr problem = std::current_exception())
            std::rethrow_exception(problem);
    } catch (const std::exception& problem) {
        finishThrown(problem.what());
    } catch (...) {
    }
    finishThrown("");
}

/// Reads all that the program is going to read of a definition.
void readDefinition(const DzPlugin* definition)
{
    // The object's own class first: what is no object at all has none.
    QString words = QLatin1String(definition->metaObject()->className());
    words += definition->getName() + definition->getAuthor() + definition->getDescription();
    for (int i = 0; i < definition->getNumClassFactories(); ++i) {
        const DzClassFactory* factory = definition->getClassFactory(i);
        words = factory->className() + factory->getGuid().toString();
    }
}

/// Never returns or throws: the caller's stack is a copy of the program's.
[[noreturn]] void tryOut(const QByteArray& path) noexcept
{
    // A crash shall leave no core file, and no report of a tool that watches this program.
    const rlimit none = { 0, 0 };
    setrlimit(RLIMIT_CORE, &none);
    for (int number : { SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT })
        signal(number, SIG_DFL);
    // What the module prints is printed when it is really loaded, and what it reads is there then.
    const int nowhere = open("/dev/null", O_RDWR);
    for (int descriptor : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO })
        dup2(nowhere, descriptor);
    std::set_terminate(finishTerminated);
    // The declaration promises that it does not throw, but static objects of modules may: through a
    // pointer the compiler does not rely on it.
    void* (*volatile load)(const char*, int) = dlopen;
    try {
        void* const module = load(path.constData(), RTLD_NOW | RTLD_LOCAL);
        if (!module)
            finish(QString());
        const ModuleEntry entry = enterModule(
            [module](const char* symbol) {
                return reinterpret_cast<QFunctionPointer>(dlsym(module, symbol));
            },
            [](ModuleStage stage) { childReport->stage = stage; });
        if (entry.refusal.isEmpty()) {
            childReport->stage = ModuleStage::Reading;
            readDefinition(entry.definition);
        }
        finish(entry.refusal);
    } catch (...) {
        finishTerminated();
    }
}

// The program -------------------------------------------------------------------------------

/// Waits until the child ends; false when it did not within `timeLimit` milliseconds.
bool waitFor(pid_t child, int timeLimit, int* status)
{
    QElapsedTimer timer;
    timer.start();
    // Asked again and again, since nothing that a child holds tells of its end for sure: a module
    // may close it, or hand it on to a process of its own.
    const useconds_t longestPause = 5000;
    for (useconds_t pause = 100;; pause = std::min(pause * 2, longestPause)) {
        const pid_t ended = waitpid(child, status, WNOHANG);
        if (ended == child || (ended < 0 && errno != EINTR))
            return true;
        if (timer.elapsed() >= timeLimit)
            return false;
        usleep(pause);
    }
}

void endNow(pid_t child)
{
    kill(child, SIGKILL);
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {}
}

const char* entryPointOf(ModuleStage stage)
{
    return stage == ModuleStage::Version ? "getSDKVersion" : "getPluginDefinition";
}

/// A refusal for a module that took its process along at `stage`.
QString refusalAt(ModuleStage stage, const char* loading, const char* entering, const char* reading)
{
    switch (stage) {
    case ModuleStage::Loading:
        return text(loading);
    case ModuleStage::Reading:
        return text(reading);
    default:
        return text(entering).arg(QLatin1String(entryPointOf(stage)));
    }
}

QString refusalOfEnd(const Report& report, int status)
{
    if (report.finished == report.password)
        return QString::fromUtf8(report.refusal);
    if (!WIFSIGNALED(status))
        return refusalAt(report.stage,
            QT_TRANSLATE_NOOP("DzPluginMgr", "it ends the program while it is loaded"),
            QT_TRANSLATE_NOOP("DzPluginMgr", "its \"%1\" ends the program"),
            QT_TRANSLATE_NOOP("DzPluginMgr", "its definition ends the program when it is read"));
    return refusalAt(report.stage,
               QT_TRANSLATE_NOOP("DzPluginMgr", "it crashes while it is loaded"),
               QT_TRANSLATE_NOOP("DzPluginMgr", "its \"%1\" crashes"),
               QT_TRANSLATE_NOOP("DzPluginMgr", "its definition cannot be read"))
        + QStringLiteral(" (%1)").arg(QString::fromLocal8Bit(strsignal(WTERMSIG(status))));
}

QString refusalOfNoEnd(const Report& report)
{
    return refusalAt(report.stage, QT_TRANSLATE_NOOP("DzPluginMgr", "it does not finish loading"),
        QT_TRANSLATE_NOOP("DzPluginMgr", "its \"%1\" does not return"),
        QT_TRANSLATE_NOOP("DzPluginMgr", "reading its definition does not end"));
}

} // namespace

QString moduleFailure(const QString& path, int timeLimit)
{
    const QByteArray file = QFile::encodeName(path);
    const SharedReport report;
    if (!report.get())
        return QString();
    const pid_t child = fork();
    if (child < 0)
        return QString();
    if (child == 0) {
        childReport = report.get();
        tryOut(file);
    }
    int status = 0;
    if (waitFor(child, timeLimit, &status))
        return refusalOfEnd(*report.get(), status);
    endNow(child);
    return refusalOfNoEnd(*report.get());
}

#else

QString moduleFailure(const QString&, int)
{
    return QString();
}

#endif
