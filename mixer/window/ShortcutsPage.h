// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QDialog>

class CommandSet;

/// All commands with their shortcuts, and what keys and mouse do on the canvas and on values.
class ShortcutsPage : public QDialog
{
    Q_OBJECT

public:
    explicit ShortcutsPage(const CommandSet& commands, QWidget* parent);
};
