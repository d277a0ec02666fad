// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "NetworkPersistence.h"
#include "SceneSurfaces.h"
#include "SurfaceProperties.h"
#include "dzfilename.h"
#include "dznode.h"
#include "dzproperty.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

struct SurfacesOptions {
    std::string scene;
    bool json = false;
};

/// Name of the network that a surface keeps, empty when it keeps none.
QString networkName(const DzMaterial* material)
{
    const DzSettings* information = storedNetwork(material);
    return information ? information->getSettingsValue(StoredKeys::brickSetup())
                             ->getStringValue(QStringLiteral("BrickUserName"))
                       : QString();
}

int numAppliedProperties(const DzMaterial* material)
{
    int count = 0;
    for (int i = 0; i < material->getNumProperties(); ++i)
        count += isAppliedProperty(material->getProperty(i)->getName()) ? 1 : 0;
    return count;
}

Json surfaceJson(const Surface& surface)
{
    const SurfaceState state = stateOf(surface.material);
    Json json;
    json["node"] = surface.node->getName().toStdString();
    json["nodeLabel"] = surface.node->getLabel().toStdString();
    json["surface"] = surface.material->getName().toStdString();
    json["material"] = surface.material->getMaterialName().toStdString();
    json["state"] = state == SurfaceState::None ? "none" : stateWord(state).toStdString();
    json["network"] = networkName(surface.material).toStdString();
    json["appliedProperties"] = numAppliedProperties(surface.material);
    return json;
}

void runSurfaces(const SurfacesOptions& options)
{
    const OpenScene scene(options.scene);
    if (options.json) {
        Json list = Json::array();
        for (const Surface& surface : scene.surfaces())
            list.push_back(surfaceJson(surface));
        printText(QByteArray::fromStdString(list.dump(2)) + '\n');
        return;
    }
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("node"), QStringLiteral("surface"), QStringLiteral("material"),
        QStringLiteral("LuxRender"), QStringLiteral("network") });
    for (const Surface& surface : scene.surfaces())
        rows.append(
            { dzShownName(surface.node->getName()), dzShownName(surface.material->getName()),
                dzShownName(surface.material->getMaterialName()),
                stateWord(stateOf(surface.material)), dzShownName(networkName(surface.material)) });
    printText(formatTable(rows).toUtf8());
}

} // namespace

void addSurfacesCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "surfaces", "List the surfaces of a scene and what they hold for LuxRender");
    auto options = std::make_shared<SurfacesOptions>();
    command->add_option("SCENE", options->scene, fileHelp("Scene file", DzFileKind::scene()))
        ->required();
    command->add_flag("--json", options->json, "Print JSON");
    command->callback([options] { runSurfaces(*options); });
}
