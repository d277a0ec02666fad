// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>

/// The application's main window; parent of dialogs.
class DzMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    DzMainWindow() {}
};
