// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "dzapp.h"
#include "dzpluginmgr.h"
#include "dzundostack.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <CLI/CLI.hpp>
#include <cstdio>

namespace {

const char* const programVersion = "vireo " VIREO_VERSION;

/// One line, whatever the message.
void printFailure(const QString& message)
{
    notice(message.simplified());
}

void handleMessage(DzApp::MessageType type, const QString& message)
{
    if (type == DzApp::WarningMessage)
        notice(QStringLiteral("warning: ") + message.simplified());
}

int run(int argc, char** argv)
{
    CLI::App program("Designs LuxRender materials: turns networks of bricks into scene text.");
    program.name("vireo");
    program.set_version_flag("--version", programVersion);
    program.require_subcommand(1);
    program.set_help_all_flag("--help-all", "Help for all commands");
    addExportCommand(program);
    addBricksCommand(program);
    addShowCommand(program);
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& success) {
        program.exit(success); // help and version, on standard output
        return ExitDone;
    } catch (const CLI::ParseError& error) {
        printFailure(QString::fromUtf8(error.what()) + QStringLiteral("; see vireo --help"));
        return ExitWrongUse;
    } catch (const CommandError& error) {
        printFailure(error.message);
        return error.exitCode;
    }
    return ExitDone;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("vireo"));
    // File names are UTF-8 also where no locale is set, as in a nightly batch.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));

    DzApp host;
    host.setMessageHandler(handleMessage);
    // Nothing here is taken back.
    const DzUndoStackLock lock;
    host.getPluginMgr()->loadPlugins(
        DzPluginMgr::getPluginFolders("VIREO_PLUGIN_PATH", QStringLiteral("vireo/plugins")));
    return run(argc, argv);
}
