// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMenu>

class ProgramSettings;

/// The files that were opened last, networks and scenes apart.
class RecentMenu : public QMenu
{
    Q_OBJECT

public:
    /// The settings are not owned.
    RecentMenu(ProgramSettings* settings, const QString& title, QWidget* parent);

signals:
    void fileChosen(const QString& path);
    /// The user wants none of them remembered.
    void cleared();

private:
    void fill();
    void addFiles(const QString& title, const QStringList& paths);

    ProgramSettings* m_settings;
};

/// The networks that came with the program.
class ExampleMenu : public QMenu
{
    Q_OBJECT

public:
    ExampleMenu(const QString& title, QWidget* parent);

signals:
    void fileChosen(const QString& path);

private:
    void fill();
};
