// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

class DzSettings;

/// Replaces `settings` with the settings tree of a JSON text.
///
/// The outermost object is bare, a nested one is {"type": "settings", "value": {...}}, an integer
/// is ["i", n], a bare number is a float, and ["f", "nan" | "inf" | "-inf"] is a float that JSON
/// has no number for. Whatever else stands as a value is kept as an opaque value. On failure
/// false, the place and the cause in `error`, and `settings` as they were.
bool settingsFromJson(const QByteArray& text, DzSettings* settings, QString* error);

/// False, with the limit in `error`, for a tree so deep that no text of it could be read again.
bool settingsFitJson(const DzSettings& settings, QString* error);

/// The JSON text of a settings tree, one value a line, with a line end at its end; empty for one
/// that does not fit. Reading and writing it gives the same bytes. A float that single precision
/// holds is written as short as that allows: 0.1f is "0.1", and reads as the double 0.1.
QByteArray settingsToJson(const DzSettings& settings);

/// The shortest decimal text of a number that was stored in single or double precision; "nan",
/// "inf" and "-inf" where there is none.
QByteArray shortestNumberText(double number);
