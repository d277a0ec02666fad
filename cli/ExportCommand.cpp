// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "ImageFiles.h"

#include "ExportText.h"
#include "NetworkCode.h"
#include "NetworkInput.h"
#include "SceneSurfaces.h"
#include "VireoRootBrick.h"
#include "dzapp.h"
#include "dzelement.h"
#include "dznumericproperty.h"
#include "dzproperty.h"
#include "dztexture.h"

#include <CLI/CLI.hpp>
#include <QFileInfo>

namespace {

struct ExportOptions {
    std::string file;
    std::string section;
    std::string output;
    bool placeholders = false;
    bool list = false;
    ImageOptions images;
};

const DzShaderBrick* brickOf(const DzProperty* property)
{
    return qobject_cast<const DzShaderBrick*>(property->getOwner());
}

QString placeholderTable(const GeneratedCode& code)
{
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("placeholder"), QStringLiteral("brick"),
        QStringLiteral("property"), QStringLiteral("value") });
    for (int i = 0; i < code.placeholderKeys.size(); ++i) {
        const DzProperty* property = code.placeholderKeys.at(i);
        rows.append({ code.placeholderNames.at(i), brickCaption(brickOf(property)),
            property->getName(), valueCaption(property) });
    }
    return formatTable(rows, QStringLiteral("# "));
}

/// The whole as a window shows it, ending with a line end.
QString wholeText(const GeneratedCode& code, bool withList)
{
    QString text = exportText(code);
    if (!text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    if (withList)
        text += QLatin1Char('\n') + exportSeparator() + QStringLiteral("\n# Placeholders\n")
            + placeholderTable(code);
    return text;
}

void runExport(const ExportOptions& options)
{
    const BrickUserHandle network;
    const QString path = argumentText(options.file);
    VireoRootBrick* root = loadNetworkRoot(path, network.user, "export");

    GenerateOptions generate;
    generate.literalValues = !options.placeholders;
    useImageOptions(options.images, QFileInfo(path).absolutePath(), options.output, &generate);
    const GeneratedCode code = generateCode(root, generate);
    const QString text = options.section == "material" ? code.materialText
        : options.section == "mesh"                    ? code.resultName
                                                       : wholeText(code, options.list);
    deliver(text.toUtf8(), options.output);
    noticeImages(options.images, code);
}

} // namespace

void addExportCommand(CLI::App& program)
{
    CLI::App* command
        = program.add_subcommand("export", "Print the LuxRender text of a network file");
    auto options = std::make_shared<ExportOptions>();
    notEmpty(
        command->add_option("FILE", options->file, fileHelp("Network file", DzFileKind::network())))
        ->required();
    CLI::Option* section
        = command->add_option("--section", options->section, "The raw text of one section alone")
              ->check(CLI::IsMember({ "material", "mesh" }));
    CLI::Option* placeholders = command->add_flag("--placeholders", options->placeholders,
        "Write placeholders for values that are not locked");
    command->add_flag("--list", options->list, "Add a table of the placeholders")
        ->needs(placeholders)
        ->excludes(section);
    addImageOptions(command, &options->images);
    notEmpty(command->add_option("-o,--output", options->output, "Write into this file"));
    command->callback([options] { runExport(*options); });
}
