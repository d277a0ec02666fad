// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzversion.h"

#include <QString>
#include <functional>

class DzPlugin;

/// What a module gives when it is entered, or why it is refused.
struct ModuleEntry {
    DzVersion sdkVersion;           ///< that the module was written against
    DzPlugin* definition = nullptr; ///< the module's own
    QString refusal;                ///< empty when nothing speaks against the module
};

/// What a module is doing; a refusal names it.
enum class ModuleStage { Loading, Version, Definition, Reading };

/// The address of a module's symbol, null when it has none of that name.
typedef std::function<QFunctionPointer(const char* symbol)> ModuleSymbols;

/// Runs both entry points of a loaded module. `begin` is told of each stage before it begins.
ModuleEntry enterModule(
    const ModuleSymbols& symbols, const std::function<void(ModuleStage)>& begin);

/// A module's own message on one line, cut where it grows too long for one.
QString moduleMessage(const char* utf8);
