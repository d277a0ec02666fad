// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

class ScriptEngine;

/// Puts the global functions and objects, and what objects of the host have beyond their invokable
/// methods, into the engine. `filename` is the script's file.
void defineScriptFunctions(
    ScriptEngine* engine, const QString& filename, const QStringList& arguments);
