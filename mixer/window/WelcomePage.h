// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QWidget>

class CommandSet;
class QVBoxLayout;

/// What the window shows while no network is open: how to begin.
class WelcomePage : public QWidget
{
    Q_OBJECT

public:
    explicit WelcomePage(const CommandSet& commands, QWidget* parent = nullptr);

    void setRecentFiles(const QStringList& paths);

signals:
    void fileChosen(const QString& path);
    void exampleChosen(const QString& path);

private:
    QVBoxLayout* m_recent;
    QWidget* m_recentBox;
};
