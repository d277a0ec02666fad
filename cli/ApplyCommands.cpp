// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "SceneSurfaces.h"
#include "SurfaceChanges.h"
#include "SurfaceProperties.h"
#include "VireoRootBrick.h"
#include "dzbrickuserfile.h"
#include "dzfilename.h"
#include "dzscene.h"
#include "idzbrickuser.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace {

/// What applying and its opposite have in common.
struct ChangeOptions {
    std::string scene;
    std::string output;
    SurfaceChoice choice;
    bool dryRun = false;
    bool json = false;

    void addTo(CLI::App* command, const char* what)
    {
        command->add_option("SCENE", scene, fileHelp("Scene file", DzFileKind::scene()))
            ->required();
        choice.addTo(command, what);
        CLI::Option* file = notEmpty(command->add_option(
            "-o,--output", output, "Write the scene into this file; it may be SCENE itself"));
        command
            ->add_flag("--dry-run", dryRun,
                "List per surface what would appear (+), change (~) and vanish (-); write nothing")
            ->excludes(file);
        command->add_flag("--json", json, "Print what changes as JSON");
    }
    void check() const
    {
        if (choice.patterns.empty() && !choice.all)
            failWrongUse(QStringLiteral("no surface is chosen; give --surface NAME or --all"));
        if (output.empty() && !dryRun)
            failWrongUse(QStringLiteral("no file to write is named; give -o FILE or --dry-run"));
    }
};

struct ApplyOptions : ChangeOptions {
    std::string network;
};

QVector<Surface> chosenSurfaces(const ChangeOptions& options, const OpenScene& scene)
{
    const QVector<Surface> surfaces = options.choice.in(scene);
    if (surfaces.isEmpty())
        fail(QStringLiteral("%1: the scene has no surfaces").arg(scene.path()));
    return surfaces;
}

/// Makes the change and saves or lists it.
template <typename Change>
void changeScene(const ChangeOptions& options, const QString& verb, const Change& change)
{
    Progress progress;
    progress.tell(QStringLiteral("reading the scene"));
    OpenScene scene(options.scene);
    const QVector<Surface> surfaces = chosenSurfaces(options, scene);
    std::unique_ptr<SurfaceChanges> changes;
    if (options.dryRun || options.json)
        changes = std::make_unique<SurfaceChanges>(surfaces);
    progress.tell(QStringLiteral("changing %1 surfaces").arg(surfaces.size()));
    change(scene, surfaces);
    if (!options.dryRun) {
        progress.tell(QStringLiteral("writing the scene"));
        scene.save(options.output);
    }
    progress.tell(QString());
    // What the file says counts, not what was wanted.
    if (changes)
        changes->setAfter(*scene.asSaved());
    scene.tellSaveWarnings();
    const QVector<Surface> incomplete = scene.incomplete(surfaces);
    const int count = surfaces.size() - incomplete.size();
    if (options.json)
        printText(changes->toJson());
    else if (options.dryRun)
        printText(changes->toText());
    else
        printText(QStringLiteral("%1 %2 surface%3; written to %4\n")
                      .arg(verb)
                      .arg(count)
                      .arg(count == 1 ? QString() : QStringLiteral("s"))
                      .arg(dzShownText(argumentText(options.output)))
                      .toUtf8());
    if (!incomplete.isEmpty())
        fail(QStringLiteral("%1: not all could be stored of %2; the warnings say what")
                 .arg(scene.path(), someNames(incomplete)));
}

void loadNetwork(const std::string& network, IDzBrickUser* user)
{
    const QString path = argumentText(network);
    DzBrickUserFile file;
    if (!file.load(path, user))
        fail(file.getError());
    for (const QString& warning : file.getWarnings())
        notice(QStringLiteral("warning: %1: %2").arg(path, warning));
    if (!findRootBrick(user))
        notice(QStringLiteral("warning: %1: the network has no root brick; its text is empty and "
                              "only the network itself is stored")
                   .arg(path));
}

void runApply(const ApplyOptions& options)
{
    options.check();
    const BrickUserHandle network;
    loadNetwork(options.network, network.user);
    changeScene(options, QStringLiteral("applied to"),
        [&](const OpenScene& scene, const QVector<Surface>& surfaces) {
            selectOnly(scene, surfaces);
            network.user->applyToScene();
        });
}

void runStrip(const ChangeOptions& options)
{
    options.check();
    changeScene(options, QStringLiteral("stripped"),
        [](const OpenScene&, const QVector<Surface>& surfaces) {
            for (const Surface& surface : surfaces)
                stripSurface(surface.material);
        });
}

} // namespace

void addApplyCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand("apply", "Put a network on the surfaces of a scene");
    auto options = std::make_shared<ApplyOptions>();
    notEmpty(command->add_option(
                 "NET", options->network, fileHelp("Network file", DzFileKind::network())))
        ->required();
    options->addTo(command, "Surfaces to put it on");
    command->callback([options] { runApply(*options); });
}

void addStripCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "strip", "Remove from the surfaces of a scene what applying put there");
    auto options = std::make_shared<ChangeOptions>();
    options->addTo(command, "Surfaces to take it off");
    command->callback([options] { runStrip(*options); });
}
