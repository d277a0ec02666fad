// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzBrickParam;
class DzProperty;
class DzShaderBrick;

/// What bricks and their values are for, in a sentence or two of plain text.
namespace BrickHelp {

/// True for an input that a user added, which only that user could explain.
bool isCustom(const DzBrickParam* input);

// Each is empty where there is nothing to say.

QString ofBrick(const DzShaderBrick* brick);
QString ofInput(const DzBrickParam* input);
/// Of a value: of the input that it belongs to, or of itself.
QString ofValue(const DzProperty* property);

/// A plain text as a tool tip: wrapped, and never taken for rich text, since names come from files.
QString tipOf(const QString& plainText);

} // namespace BrickHelp
