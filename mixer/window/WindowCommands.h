// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QVector>

class CommandSet;
class DzShaderBrick;
class MainWindow;
class ProgramSettings;

/// The commands of the window, a row each.
class WindowCommands
{
    Q_DECLARE_TR_FUNCTIONS(WindowCommands)

public:
    /// None is owned.
    WindowCommands(CommandSet* commands, MainWindow* window, ProgramSettings* settings);

    void addFileCommands();
    void addEditCommands();
    void addValueCommands();
    void addSceneCommands();
    void addViewCommands();
    void addHelpCommands();

private:
    CommandSet* m_commands;
    MainWindow* m_window;
    ProgramSettings* m_settings;
};
