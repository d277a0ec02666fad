// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QString>

/// The colour of wires and pins of a link type, by the type's text (DzBrickParam::getTypeString).
/// The host's own types, and types of modules that end in the host's word ("LFloat"), have chosen
/// colours; any other text has a colour of its own that is the same in every run.
QColor linkColor(const QString& typeText);
