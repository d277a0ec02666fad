// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Reads the code of a script from a UTF-8 file. On failure false, with file and cause in `error`.
bool readScriptSource(const QString& path, QString* code, QString* error);
