// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <string>

namespace CLI {
class App;
}
struct GeneratedCode;
struct GenerateOptions;

/// What a user asked for the image files of the text that a command writes.
struct ImageOptions {
    bool mapFiles = false;
    bool relative = false;
};

/// Adds `--map-files` and `--relative` to a command that outlives neither `options`.
void addImageOptions(CLI::App* command, ImageOptions* options);
/// Says how the text names image files. Relative names in the network are meant from
/// `imageFolder`; `outputFile` is the text's, empty when it is printed.
void useImageOptions(const ImageOptions& options, const QString& imageFolder,
    const std::string& outputFile, GenerateOptions* generate);
/// Tells the user which maps the text does not carry and, where it was to name files, which of them
/// are missing.
void noticeImages(const ImageOptions& options, const GeneratedCode& code);
