// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ImageFiles.h"

#include "Command.h"

#include "NetworkCode.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"

#include <CLI/CLI.hpp>
#include <QDir>
#include <QFileInfo>

namespace {

/// A property and its brick, as messages name them.
QString placeCaption(const DzProperty* property)
{
    return QStringLiteral("%1/%2").arg(
        brickCaption(qobject_cast<const DzShaderBrick*>(property->getOwner())),
        property->getName());
}

/// Where a text of this file name stands, links resolved: ".." goes up from there.
QString folderOf(const std::string& outputFile)
{
    const QDir folder
        = outputFile.empty() ? QDir::current() : QFileInfo(argumentText(outputFile)).absoluteDir();
    const QString resolved = folder.canonicalPath();
    return resolved.isEmpty() ? folder.absolutePath() : resolved;
}

} // namespace

void addImageOptions(CLI::App* command, ImageOptions* options)
{
    CLI::Option* mapFiles = command->add_flag("--map-files", options->mapFiles,
        "Write a mapped \"filename\" as the name of its image file; names are absolute");
    command
        ->add_flag("--relative", options->relative,
            "Name image files from the folder of the written file, or from the current folder")
        ->needs(mapFiles);
}

void useImageOptions(const ImageOptions& options, const QString& imageFolder,
    const std::string& outputFile, GenerateOptions* generate)
{
    if (!options.mapFiles)
        return;
    generate->mapFiles = true;
    generate->imageNames.imageFolder = imageFolder;
    if (options.relative)
        generate->imageNames.textFolder = folderOf(outputFile);
}

void noticeImages(const ImageOptions& options, const GeneratedCode& code)
{
    for (const DzNumericProperty* property : code.unwrittenMaps) {
        const bool isHelped = !options.mapFiles && property->getName() == QLatin1String("filename");
        notice(QStringLiteral("notice: %1: its value is written and does not carry its map %2%3")
                   .arg(placeCaption(property), property->getMapValue()->getFilename(),
                       isHelped ? QStringLiteral("; --map-files writes it") : QString()));
    }
    if (!options.mapFiles)
        return;
    for (const WrittenImageFile& image : code.imageFiles)
        if (!QFileInfo(image.path).isFile())
            notice(QStringLiteral("warning: %1: there is no image file %2; the renderer will not "
                                  "find it either")
                       .arg(placeCaption(image.property), image.path));
}
