// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzBrickParam;
class DzProperty;
class SceneCodeWriter;

/// The type's name as users see it, for parameters that carry links.
QString linkTypeString(const DzBrickParam* param);

/// Writes a property's line under `name`: its value when it is locked or the writer wants values,
/// else its placeholder.
void writePropertyCode(SceneCodeWriter* writer, const QString& name, DzProperty* property);
