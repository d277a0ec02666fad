// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzProperty;
class SceneCodeWriter;

/// Writes a property's line under `name`: its value when it is locked or the writer wants values,
/// else its placeholder.
void writePropertyCode(SceneCodeWriter* writer, const QString& name, DzProperty* property);

// The placeholder lines of textures that write a factor by themselves: one number, one colour, or a
// colour of three equal numbers.
void writeFloatPlaceholder(
    SceneCodeWriter* writer, const QString& name, const QString& placeholder);
void writeColorPlaceholder(
    SceneCodeWriter* writer, const QString& name, const QString& placeholder);
void writeColorPlaceholder3(
    SceneCodeWriter* writer, const QString& name, const QString& placeholder);
