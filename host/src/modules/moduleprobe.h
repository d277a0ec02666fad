// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// How long trying out a module may take in all, in milliseconds.
const int moduleTimeLimit = 5000;

/// Tries out in a child process whether the module in file `path` survives being loaded, entered
/// and read: its code can throw, crash, end the program or never return, and nothing could stop
/// that here. Takes up to `timeLimit` milliseconds. The cause when the module is to be refused;
/// empty when nothing speaks against it, when the file cannot be loaded at all, and on systems
/// without child processes of this kind.
QString moduleFailure(const QString& path, int timeLimit = moduleTimeLimit);
