// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzfileformat.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI
class DzShaderBrick;
class DzProperty;

/// Exit codes of the program.
enum ExitCode { ExitDone = 0, ExitFailed = 1, ExitWrongUse = 2 };

/// Ends a command: one line for the user, empty when the user was told already, and the exit code.
struct CommandError {
    QString message;
    ExitCode exitCode;
};

/// A command could not do its work.
[[noreturn]] void fail(const QString& message);
/// A command was called wrongly.
[[noreturn]] void failWrongUse(const QString& message);

/// Prints to standard output; fails when that cannot be written. At a terminal, what it would obey
/// is escaped.
void printText(const QByteArray& text);
/// Prints to standard output, or into `outputFile` when that is not empty.
void deliver(const QByteArray& text, const std::string& outputFile);
/// A text on standard error, of one or more lines; what a terminal would obey is escaped.
void printError(const QString& text);
/// One line on standard error that is no failure.
void notice(const QString& message);

/// Text of a command line argument; a name of a file becomes the same bytes again.
QString argumentText(const std::string& argument);

/// Help on an argument that names a file to read: what it is and the suffixes of its kind.
std::string fileHelp(const char* what, const QString& kind);

/// Refuses an option's or argument's empty text as wrong use; returns the option.
CLI::Option* notEmpty(CLI::Option* option);

/// Columns of text, aligned, with a headline; `linePrefix` begins every line. A row is one line,
/// whatever its cells hold.
QString formatTable(const QVector<QStringList>& cells, const QString& linePrefix = QString());

/// Title and number of a brick, as a mixer shows it.
QString brickCaption(const DzShaderBrick* brick);
/// A property's value and map on one line.
QString valueCaption(const DzProperty* property);

// The commands. Each adds itself and its options to the program; what it does runs when the
// command line has been read.
void addExportCommand(CLI::App& program);
void addBricksCommand(CLI::App& program);
void addCheckCommand(CLI::App& program);
void addPluginsCommand(CLI::App& program);
void addShowCommand(CLI::App& program);
void addSurfacesCommand(CLI::App& program);
void addApplyCommand(CLI::App& program);
void addRebuildCommand(CLI::App& program);
void addStripCommand(CLI::App& program);
void addRunCommand(CLI::App& program);
void addRenderCommand(CLI::App& program);
void addRendererCommand(CLI::App& program);
