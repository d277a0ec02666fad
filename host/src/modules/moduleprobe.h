// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Tries out in a child process whether the module in file `path` survives being loaded: code that
/// a module runs by itself then can throw, crash, end the program or never return, and nothing
/// could stop that here. The cause when it does not survive; empty when it does, when the file
/// cannot be loaded at all, and on systems without child processes of this kind.
QString moduleLoadFailure(const QString& path);
