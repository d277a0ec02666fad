// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"
#include "Networks.h"
#include "VireoRootBrick.h"
#include "dzapp.h"
#include "dzdefaultmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

/// With root and material over twenty bricks.
const int texturesOfNetwork = 20;

/// One node with selected surfaces in the application's scene while it lives.
class Surfaces
{
public:
    explicit Surfaces(int count)
    {
        auto* node = new DzNode(QStringLiteral("Node"));
        auto* object = new DzObject;
        auto* newShape = new DzShape;
        for (int i = 0; i < count; ++i) {
            DzMaterial* material
                = DzDefaultMaterial::createBare(QStringLiteral("Surface %1").arg(i));
            newShape->addMaterial(material);
            material->select(true);
        }
        object->addShape(newShape);
        node->setObject(object);
        dzApp->getScene()->addNode(node);
        shape = newShape;
    }
    ~Surfaces() { dzApp->getScene()->clear(); }

    DzShape* shape;
};

/// The program locks the stack: while this lives, changes can be undone as in the mixer.
class Undoable
{
public:
    Undoable() { dzUndoStack->unlock(); }
    ~Undoable()
    {
        dzUndoStack->clearAll();
        dzUndoStack->lock();
    }
};

void BM_ApplyToSurfaces(benchmark::State& state)
{
    const Network network = buildMixedNetwork(texturesOfNetwork);
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        auto surfaces = std::make_unique<Surfaces>(count);
        auto undoable = std::make_unique<Undoable>();
        state.ResumeTiming();
        network.user->applyToScene();
        state.PauseTiming();
        DzMaterial* last = surfaces->shape->getMaterial(count - 1);
        require(last->findProperty(QStringLiteral("LuxRender_Lm_001_bumpmap")), "published value");
        require(last->getNumDataItems() == 1, "network");
        require(dzUndoStack->getNumUndoItems() == 1, "one step");
        undoable.reset();
        surfaces.reset();
        state.ResumeTiming();
    }
}

void BM_RebuildSurfaces(benchmark::State& state)
{
    const Network network = buildMixedNetwork(texturesOfNetwork);
    const int count = static_cast<int>(state.range(0));
    const Surfaces surfaces(count);
    network.user->applyToScene();
    const QString text = generateCode(network.root, GenerateOptions()).materialText;
    for (auto _ : state) {
        const QList<IDzBrickUser*> users = network.user->fromScene();
        state.PauseTiming();
        require(users.size() == count, "number of networks");
        require(generateCode(findRootBrick(users.last()), GenerateOptions()).materialText == text,
            "the same text");
        for (IDzBrickUser* user : users)
            delete user;
        state.ResumeTiming();
    }
}

} // namespace

// Once each, as a user does it: getting memory that was not in use before is part of the cost.
BENCHMARK(BM_ApplyToSurfaces)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BM_RebuildSurfaces)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
