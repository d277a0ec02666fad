// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "dzapp.h"
#include "dzfilename.h"
#include "dzmemory.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QCoreApplication>

#include <CLI/CLI.hpp>
#include <cstdio>
#include <new>
#include <string>

namespace {

const char* const programVersion = "vireo " VIREO_VERSION;

const char* const outOfMemory
    = "there is not enough memory for this; close other programs or take a smaller file";

/// What is wrong with the command line, and where help is.
QString wrongUse(const CLI::App& program, const CLI::ParseError& error, const QStringList& words)
{
    QString help = QStringLiteral("vireo --help");
    const QString word = words.value(0);
    const CLI::App* command = nullptr;
    if (!word.isEmpty() && !word.startsWith(QLatin1Char('-'))) {
        try {
            command = program.get_subcommand(word.toStdString());
        } catch (const CLI::OptionNotFound&) {
            return QStringLiteral("there is no command \"%1\"; see %2").arg(word, help);
        }
        help = QStringLiteral("vireo %1 --help").arg(word);
    }
    // The library names what is missing before what is too much; the latter is mostly the cause.
    const std::vector<std::string> unknown
        = command ? command->remaining() : std::vector<std::string>();
    const QString cause = unknown.empty()
        ? argumentText(error.what()).simplified()
        : QStringLiteral("unknown argument \"%1\"").arg(argumentText(unknown.front()));
    return QStringLiteral("%1; see %2").arg(cause, help);
}

void handleMessage(DzApp::MessageType type, const QString& message)
{
    if (type == DzApp::WarningMessage)
        notice(QStringLiteral("warning: ") + message);
}

int run(int argc, char** argv)
{
    CLI::App program("Designs LuxRender materials: turns networks of bricks into scene text.");
    program.name("vireo");
    program.set_version_flag("--version", programVersion);
    program.require_subcommand(1);
    program.set_help_all_flag("--help-all", "Help for all commands");
    addExportCommand(program);
    addCheckCommand(program);
    addBricksCommand(program);
    addShowCommand(program);
    addSurfacesCommand(program);
    addApplyCommand(program);
    addRebuildCommand(program);
    addStripCommand(program);
    addPluginsCommand(program);
    addRenderCommand(program);
    addRendererCommand(program);
    addRunCommand(program);
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& success) {
        program.exit(success); // help and version, on standard output
        return ExitDone;
    } catch (const CLI::ParseError& error) {
        notice(wrongUse(program, error, QCoreApplication::arguments().mid(1)));
        return ExitWrongUse;
    } catch (const CommandError& error) {
        if (!error.message.isEmpty())
            notice(error.message);
        return error.exitCode;
    } catch (const std::bad_alloc&) {
        notice(QString::fromLatin1(outOfMemory));
        return ExitFailed;
    }
    return ExitDone;
}

/// What ends the program says so itself, in a line of its own.
void handleQtMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && !message.startsWith(QLatin1String("QThread::start: ")))
        notice(message.simplified());
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vireo"));
    // File names are UTF-8 also where no locale is set, as in a nightly batch; others stay usable.
    dzUseByteFileNames();

    static const std::string lastLine = std::string("vireo: ") + outOfMemory + '\n';
    dzReportOutOfMemory(lastLine.c_str());
    qInstallMessageHandler(handleQtMessage);

    DzApp host;
    host.setMessageHandler(handleMessage);
    // Nothing here is taken back.
    const DzUndoStackLock lock;
    host.getPluginMgr()->loadPlugins(
        DzPluginMgr::getPluginFolders("VIREO_PLUGIN_PATH", QStringLiteral("vireo/plugins")));
    return run(argc, argv);
}
