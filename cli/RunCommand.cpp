// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "ScriptMemory.h"

#include "dzscript.h"
#include "dzundostack.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <unistd.h>

namespace {

struct RunOptions {
    std::string file;
    std::vector<std::string> arguments;
};

/// As shells report a program that Ctrl+C ended.
const int exitInterrupted = 130;

/// Files are written as a whole or not at all, so that there is nothing to clean up.
extern "C" void endAtOnce(int)
{
    _exit(exitInterrupted);
}

/// The undo stack is open to the script.
class OpenUndoStack
{
public:
    OpenUndoStack() { dzUndoStack->unlock(); }
    ~OpenUndoStack() { dzUndoStack->lock(); }
};

bool printForScript(const QString& text, QString* error)
{
    try {
        printText(text.toUtf8());
    } catch (const CommandError& problem) {
        *error = problem.message;
        return false;
    }
    return true;
}

void runScript(const RunOptions& options)
{
    DzScript script;
    if (!script.loadFromFile(argumentText(options.file)))
        fail(script.getErrorMessage());
    QStringList arguments;
    for (const std::string& argument : options.arguments)
        arguments.append(argumentText(argument));
    script.setPrintHandler(printForScript);
    guardAgainstScript();
    std::signal(SIGINT, endAtOnce);
    const OpenUndoStack open;
    const bool isDone = script.execute(arguments);
    if (isDone)
        return;
    // The place stands first, where editors look for it.
    QString message = script.getErrorMessage();
    for (const QString& call : script.getErrorBacktrace())
        message += QStringLiteral("\n    ") + call;
    printError(message);
    throw CommandError { QString(), ExitFailed };
}

} // namespace

void addRunCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand("run", "Run a script");
    auto options = std::make_shared<RunOptions>();
    command->add_option("SCRIPT", options->file, fileHelp("Script file", DzFileKind::script()))
        ->required();
    command->add_option("ARG", options->arguments, "What the script finds in args");
    // All that follows the script is the script's, options too.
    command->positionals_at_end();
    command->callback([options] { runScript(*options); });
}
