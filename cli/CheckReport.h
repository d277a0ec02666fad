// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include <nlohmann/json.hpp>

/// What is told of files that are checked.
struct ReportOptions {
    bool tellsQuiet = false;       ///< also what loses nothing, and what is not rendered
    bool tellsPortability = false; ///< also where LuxCore differs
};

/// True for the names of files that can be checked.
bool isCheckable(const QString& path);
/// The suffixes of such files as help texts list them.
std::string checkableHelp();

/// What a check finds in a file: an object with "file", "findings" and, if it could not be read,
/// "error".
nlohmann::ordered_json reportOf(const QString& path, const ReportOptions& options);

/// A finding of a report on one line.
QString findingLine(const nlohmann::ordered_json& finding);

/// True if a report has an error, or a finding that ends the renderer or is refused by it.
bool isBad(const nlohmann::ordered_json& report);
