// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"
#include "FileNames.h"
#include "NetworkPersistence.h"
#include "SceneSurfaces.h"
#include "dzbrickuserfile.h"
#include "dzelement.h"
#include "dzfilename.h"
#include "dznetworklayout.h"
#include "dznode.h"
#include "dzscene.h"
#include "idzbrickuser.h"

#include <QDir>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

/// Surfaces that are rebuilt at a time: few enough for their networks to fit in memory.
const int surfacesAtOnce = 64;

struct RebuildOptions {
    std::string scene;
    std::string folder;
    std::vector<std::string> patterns;
    bool stored = false;
    bool json = false;
};

struct Rebuilt {
    Surface surface;
    QString file;
    int numBricks;
};

QVector<Surface> chosenSurfaces(const RebuildOptions& options, const OpenScene& scene)
{
    QVector<Surface> surfaces
        = options.patterns.empty() ? scene.surfaces() : scene.matching(options.patterns);
    if (options.stored)
        surfaces.erase(std::remove_if(surfaces.begin(), surfaces.end(),
                           [](const Surface& surface) { return !storedNetwork(surface.material); }),
            surfaces.end());
    if (surfaces.isEmpty())
        fail(options.stored ? QStringLiteral("%1: no chosen surface keeps a network; without "
                                             "--stored networks are made from properties")
                                  .arg(scene.path())
                            : QStringLiteral("%1: the scene has no surfaces").arg(scene.path()));
    return surfaces;
}

/// A file name for each surface: its own name, with the node's before it where names repeat.
QStringList fileNames(const QVector<Surface>& surfaces, const QString& extension)
{
    QHash<QString, int> numOfName;
    for (const Surface& surface : surfaces)
        ++numOfName[surface.material->getName().toCaseFolded()];
    FileNames names(extension);
    QStringList files;
    for (const Surface& surface : surfaces) {
        const QString name = surface.material->getName();
        files.append(names.nameFor(numOfName.value(name.toCaseFolded()) > 1
                ? surface.node->getName() + QLatin1Char('_') + name
                : name));
    }
    return files;
}

/// The new network of each of these surfaces; the caller owns them.
QHash<const DzMaterial*, IDzBrickUser*> rebuild(
    IDzBrickUser* maker, const OpenScene& scene, const QVector<Surface>& surfaces)
{
    selectOnly(scene, surfaces);
    const QVector<DzSurface> sources = DzScene::getSelectedMaterials();
    const QList<IDzBrickUser*> users = maker->fromScene();
    if (users.size() != sources.size())
        fail(QStringLiteral("%1: %2 networks came of %3 surfaces")
                 .arg(scene.path())
                 .arg(users.size())
                 .arg(sources.size()));
    QHash<const DzMaterial*, IDzBrickUser*> userOf;
    for (int i = 0; i < users.size(); ++i)
        userOf.insert(sources.at(i).material, users.at(i));
    return userOf;
}

void saveNetwork(IDzBrickUser* user, const QString& path)
{
    // Networks made from properties have no places yet.
    DzNetworkLayout::arrangeUnplaced(user);
    DzBrickUserFile file;
    if (!file.save(path, user))
        fail(file.getError());
}

void printList(const QVector<Rebuilt>& list, const RebuildOptions& options)
{
    if (options.json) {
        Json json = Json::array();
        for (const Rebuilt& rebuilt : list)
            json.push_back(Json { { "node", rebuilt.surface.node->getName().toStdString() },
                { "surface", rebuilt.surface.material->getName().toStdString() },
                { "file", rebuilt.file.toStdString() }, { "bricks", rebuilt.numBricks } });
        printText(QByteArray::fromStdString(json.dump(2)) + '\n');
        return;
    }
    QVector<QStringList> rows;
    rows.append({ QStringLiteral("surface"), QStringLiteral("bricks"), QStringLiteral("file") });
    for (const Rebuilt& rebuilt : list)
        rows.append({ dzShownName(rebuilt.surface.path()), QString::number(rebuilt.numBricks),
            rebuilt.file });
    printText(formatTable(rows).toUtf8());
}

void runRebuild(const RebuildOptions& options)
{
    const BrickUserHandle maker;
    const OpenScene scene(options.scene);
    const QVector<Surface> surfaces = chosenSurfaces(options, scene);
    const QDir folder(argumentText(options.folder));
    if (!folder.mkpath(QStringLiteral(".")))
        fail(QStringLiteral("cannot make the folder %1; check that its place exists and may be "
                            "written to")
                 .arg(folder.path()));
    const QStringList files = fileNames(surfaces, maker.user->getExtension());
    QVector<Rebuilt> list;
    Progress progress;
    for (int begin = 0; begin < surfaces.size(); begin += surfacesAtOnce) {
        const QVector<Surface> some = surfaces.mid(begin, surfacesAtOnce);
        const QHash<const DzMaterial*, IDzBrickUser*> userOf = rebuild(maker.user, scene, some);
        for (int i = 0; i < some.size(); ++i) {
            IDzBrickUser* const user = userOf.value(some.at(i).material);
            const DzTSharedPointer<DzMaterial> owner(
                qobject_cast<DzMaterial*>(user->getBrickUserElement()));
            const QString path = folder.filePath(files.at(begin + i));
            saveNetwork(user, path);
            list.append({ some.at(i), path, user->getNumBricks() });
            progress.tell(QStringLiteral("rebuilding"), list.size(), surfaces.size());
        }
    }
    progress.tell(QString());
    printList(list, options);
}

} // namespace

void addRebuildCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "rebuild", "Make network files from the surfaces of a scene, one per surface");
    auto options = std::make_shared<RebuildOptions>();
    notEmpty(
        command->add_option("SCENE", options->scene, fileHelp("Scene file", DzFileKind::scene())))
        ->required();
    command
        ->add_option("--surface", options->patterns,
            "Surfaces to rebuild, all if not given: a surface's name or NODE/NAME; * and ? stand "
            "for any text and character. May be given several times")
        ->allow_extra_args(false);
    command->add_flag("--stored", options->stored, "Only surfaces that keep a network");
    notEmpty(command->add_option("-o,--output", options->folder,
                 "Folder for the files, made if missing; files of the same names are replaced"))
        ->required();
    command->add_flag("--json", options->json, "Print the list as JSON");
    command->callback([options] { runRebuild(*options); });
}
