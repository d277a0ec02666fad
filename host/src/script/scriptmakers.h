// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "scriptclasses.h"

#include <QHash>
#include <functional>
#include <vector>

// What makes objects of classes for scripts: it reads the arguments of a constructor.

/// The host's classes of which objects get to scripts.
const std::vector<const QMetaObject*>& scriptHostClasses();

/// The makers of those that scripts can make.
QHash<const QMetaObject*, ScriptClasses::Maker> scriptHostMakers(const ScriptEngine* engine);

/// A maker that takes no arguments.
ScriptClasses::Maker scriptPlainMaker(
    const ScriptEngine* engine, const std::function<QObject*()>& make);
