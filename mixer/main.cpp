// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "AutosaveStore.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "MainWindow.h"
#include "ProgramSettings.h"
#include "dzapp.h"
#include "dzfileformat.h"
#include "dzfilename.h"
#include "dzmemory.h"
#include "dzpluginmgr.h"

#include <QApplication>
#include <QIcon>
#include <QPointer>
#include <QTimer>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <new>
#include <string>
#include <vector>

namespace {

const char* const programVersion = "vireo-mixer " VIREO_VERSION;

enum ExitCode { ExitDone = 0, ExitFailed = 1, ExitWrongUse = 2 };

const char* const outOfMemory
    = "there is not enough memory for this; close other programs or take a smaller file";

/// An application in which running out of memory ends what was begun, and not the program with all
/// that is open in it.
class Application : public QApplication
{
public:
    using QApplication::QApplication;

    /// Runs `step`; false when memory ran out, which the user is told.
    template <typename Step>
    static bool guarded(const Step& step)
    {
        try {
            return step();
        } catch (const std::bad_alloc&) {
            tellOutOfMemory();
            return false;
        }
    }

    bool notify(QObject* receiver, QEvent* event) override
    {
        return guarded([&] { return QApplication::notify(receiver, event); });
    }

private:
    static void tellOutOfMemory()
    {
        try {
            dzApp->warning(QString::fromLatin1(outOfMemory));
        } catch (const std::bad_alloc&) {
            // Then not even for telling it.
        }
    }
};

struct Options {
    std::vector<std::string> files;
};

/// Reads the command line. True when the program is to go on; otherwise `exitCode` is set.
bool readCommandLine(int argc, char** argv, Options* options, int* exitCode)
{
    CLI::App program("Designs LuxRender materials: a window to build networks of bricks in.");
    program.name("vireo-mixer");
    program.set_version_flag("--version", programVersion);
    const QString scenes
        = DzFileFormats::getSuffixText({ DzFileKind::scene() }, DzFileFormats::Reading);
    program.add_option("FILE", options->files,
        "Networks (.sskn) and scenes (" + scenes.toStdString() + ") to open");
    try {
        program.parse(argc, argv);
        return true;
    } catch (const CLI::Success& success) {
        *exitCode = program.exit(success); // help and version, on standard output
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "vireo-mixer: %s; see vireo-mixer --help\n", error.what());
        *exitCode = ExitWrongUse;
    }
    return false;
}

/// Qt ends the program without a word to the point when there is nothing to draw on.
bool hasDisplay()
{
    return qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY")
        || qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
}

int run(int argc, char** argv, const Options& options)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    Application application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("vireo-mixer"));
    // File names are UTF-8; others stay usable.
    dzUseByteFileNames();
    QApplication::setApplicationDisplayName(QStringLiteral("Vireo Shader Mixer"));
    QApplication::setApplicationVersion(QStringLiteral(VIREO_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/vireo/icon.png")));
    QGuiApplication::setDesktopFileName(QStringLiteral("vireo-mixer"));

    DzApp host;
    host.getPluginMgr()->loadPlugins(
        DzPluginMgr::getPluginFolders("VIREO_PLUGIN_PATH", QStringLiteral("vireo/plugins")));
    ProgramSettings settings;
    AutosaveStore store;
    MainWindow window(&settings, &store);
    host.setMessageHandler([&window](DzApp::MessageType type, const QString& message) {
        if (type != DzApp::WarningMessage)
            return;
        std::fprintf(stderr, "vireo-mixer: warning: %s\n", message.toUtf8().constData());
        window.showWarning(message);
    });
    window.show();
    QStringList paths;
    for (const std::string& file : options.files)
        paths.append(QString::fromLocal8Bit(file.c_str()));
    Application::guarded([&] {
        window.openFiles(paths);
        return true;
    });
    if (!window.getDocument())
        window.getDocuments()->createNew();
    // With the window on screen, so that one sees what is being asked.
    QTimer::singleShot(0, &window, [&window] { window.offerRestore(); });
    const int result = QApplication::exec();
    host.setMessageHandler(DzApp::MessageHandler());
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    int exitCode = ExitDone;
    if (!readCommandLine(argc, argv, &options, &exitCode))
        return exitCode;
    if (!hasDisplay()) {
        std::fprintf(stderr,
            "vireo-mixer: there is no display to open a window on; set DISPLAY, or use the "
            "program vireo\n");
        return ExitFailed;
    }
    static const std::string lastLine = std::string("vireo-mixer: ") + outOfMemory + '\n';
    dzReportOutOfMemory(lastLine.c_str());
    try {
        return run(argc, argv, options);
    } catch (const std::bad_alloc&) {
        dzEndOutOfMemory();
    }
}
