// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QPalette>
#include <QString>

/// The program's look: one style, light or dark.
namespace Theme {

enum class Mode { System, Light, Dark };

/// The mode's word in settings, and the mode of a word; System for any other.
QString toWord(Mode mode);
Mode fromWord(const QString& word);

/// Sets style and colours of the application. System takes the darkness of the desktop's colours.
void apply(Mode mode);

QPalette palette(bool dark);
/// True when text is lighter than what it stands on.
bool isDark(const QPalette& palette);

} // namespace Theme
