// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzfloatproperty.h"
#include "dzitemlist.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <QPointer>
#include <QStringList>

#include <gtest/gtest.h>
#include <vector>

namespace {

/// A node with one shape, in no scene.
struct Figure {
    explicit Figure(const QString& name = QStringLiteral("figure"))
        : node(new DzNode(name))
        , shape(new DzShape(QStringLiteral("shape")))
    {
        node->setObject(new DzObject);
        node->getObject()->addShape(shape);
    }
    DzDefaultMaterial* add(const QString& name) const
    {
        auto* material = new DzDefaultMaterial(name);
        EXPECT_EQ(shape->addMaterial(material), DZ_NO_ERROR);
        return material;
    }

    DzNode* node;
    DzShape* shape;
};

QStringList names(const DzScene& scene)
{
    QStringList list;
    for (int i = 0; i < scene.getNumNodes(); ++i)
        list.append(scene.getNode(i)->getName());
    return list;
}

QStringList names(const DzShape* shape)
{
    QStringList list;
    for (int i = 0; i < shape->getNumMaterials(); ++i)
        list.append(shape->getMaterial(i)->getName());
    return list;
}

} // namespace

TEST(ItemList, keepsItsOrderWhateverIsTakenOut)
{
    std::vector<int> items(10);
    DzItemList<int> list;
    for (int& item : items)
        EXPECT_TRUE(list.append(&item));
    EXPECT_FALSE(list.append(&items[3]));
    EXPECT_TRUE(list.remove(&items[0]));
    EXPECT_TRUE(list.remove(&items[5]));
    EXPECT_TRUE(list.remove(&items[9]));
    EXPECT_FALSE(list.remove(&items[9]));
    EXPECT_EQ(list.size(), 7);
    EXPECT_EQ(list.at(0), &items[1]);
    EXPECT_EQ(list.at(4), &items[6]);
    EXPECT_EQ(list.at(7), nullptr);
    EXPECT_EQ(list.at(-1), nullptr);
    EXPECT_EQ(list.indexOf(&items[8]), 6);
    EXPECT_EQ(list.indexOf(&items[5]), -1);
    EXPECT_TRUE(list.insert(0, &items[0]));
    EXPECT_TRUE(list.insert(5, &items[5]));
    EXPECT_EQ(list.indexOf(&items[5]), 5);
    EXPECT_EQ(list.at(0), &items[0]);
    EXPECT_TRUE(list.append(&items[9]));
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(list.at(i), &items[static_cast<std::size_t>(i)]);
    list.clear();
    EXPECT_TRUE(list.isEmpty());
    EXPECT_TRUE(list.append(&items[2]));
    EXPECT_EQ(list.at(0), &items[2]);
}

TEST(Scene, theApplicationsSceneStaysTheGlobalOne)
{
    ASSERT_NE(dzScene, nullptr);
    EXPECT_EQ(dzScene, dzApp->getScene());
    {
        const DzScene another;
        EXPECT_EQ(dzScene, dzApp->getScene());
    }
    EXPECT_EQ(dzScene, dzApp->getScene());
}

TEST(Scene, nodesComeWithEverythingBelowThem)
{
    DzScene scene;
    auto* hip = new DzNode(QStringLiteral("hip"));
    auto* chest = new DzNode(QStringLiteral("chest"));
    EXPECT_EQ(hip->addNodeChild(chest), DZ_NO_ERROR);
    EXPECT_EQ(chest->addNodeChild(new DzNode(QStringLiteral("head"))), DZ_NO_ERROR);
    EXPECT_EQ(hip->addNodeChild(new DzNode(QStringLiteral("leg"))), DZ_NO_ERROR);
    QStringList added;
    QObject::connect(
        &scene, &DzScene::nodeAdded, [&added](DzNode* node) { added.append(node->getName()); });
    EXPECT_EQ(scene.addNode(hip), DZ_NO_ERROR);
    const QStringList all = { "hip", "chest", "head", "leg" };
    EXPECT_EQ(names(scene), all);
    EXPECT_EQ(added, all);
    EXPECT_EQ(scene.findNode(QStringLiteral("head"))->getNodeParent(), chest);
    EXPECT_EQ(scene.findNode(QStringLiteral("tail")), nullptr);
    EXPECT_EQ(scene.addNode(hip), DZ_ILLEGAL_ARGUMENT_ERROR);

    EXPECT_EQ(scene.removeNode(chest), DZ_NO_ERROR);
    EXPECT_EQ(names(scene), QStringList({ "hip", "leg" }));
    EXPECT_EQ(chest->getScene(), nullptr);
    EXPECT_EQ(scene.removeNode(chest), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(hip->addNodeChild(chest), DZ_NO_ERROR);
    EXPECT_EQ(scene.getNumNodes(), 4);
    chest->setName(QStringLiteral("torso"));
    EXPECT_EQ(scene.findNode(QStringLiteral("torso")), chest);
    EXPECT_EQ(scene.findNode(QStringLiteral("chest")), nullptr);
    delete chest;
    EXPECT_EQ(names(scene), QStringList({ "hip", "leg" }));
}

TEST(Scene, aNodeIsNeverBelowItself)
{
    DzNode top;
    auto* child = new DzNode;
    EXPECT_EQ(top.addNodeChild(child), DZ_NO_ERROR);
    EXPECT_EQ(top.addNodeChild(child), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(child->addNodeChild(&top), DZ_REFUSED_ERROR);
    EXPECT_EQ(top.addNodeChild(&top), DZ_REFUSED_ERROR);
    EXPECT_EQ(top.addNodeChild(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
}

TEST(Scene, clearingDeletesTheNodes)
{
    const DzUndoStackLock lock; // an undo item would hold a share
    DzScene scene;
    const Figure figure;
    const QPointer<DzMaterial> material = figure.add(QStringLiteral("Skin"));
    scene.addNode(figure.node);
    int cleared = 0;
    QObject::connect(&scene, &DzScene::sceneCleared, [&cleared] { ++cleared; });
    scene.clear();
    EXPECT_EQ(cleared, 1);
    EXPECT_EQ(scene.getNumNodes(), 0);
    EXPECT_TRUE(material.isNull());
}

TEST(Scene, theLastSelectedNodeIsThePrimaryOne)
{
    DzScene scene;
    auto* first = new DzNode(QStringLiteral("first"));
    auto* second = new DzNode(QStringLiteral("second"));
    scene.addNode(first);
    scene.addNode(second);
    first->select(true);
    second->select(true);
    EXPECT_EQ(scene.getPrimarySelection(), second);
    EXPECT_EQ(scene.getNumSelectedNodes(), 2);
    EXPECT_EQ(scene.getSelectedNode(0), first);
    EXPECT_EQ(scene.getSelectedNode(2), nullptr);
    second->select(false);
    EXPECT_EQ(scene.getPrimarySelection(), nullptr);
    scene.setPrimarySelection(second);
    EXPECT_TRUE(second->isSelected());
    EXPECT_EQ(scene.getPrimarySelection(), second);
    delete second;
    EXPECT_EQ(scene.getPrimarySelection(), nullptr);
    EXPECT_EQ(scene.getNumSelectedNodes(), 1);
    scene.selectAllNodes(false);
    EXPECT_EQ(scene.getNumSelectedNodes(), 0);
}

TEST(Scene, whatHappensToASurfaceIsHeardInTheScene)
{
    DzScene scene;
    const Figure figure;
    scene.addNode(figure.node);
    int list = 0;
    int selection = 0;
    QObject::connect(&scene, &DzScene::materialListChanged, [&list] { ++list; });
    QObject::connect(&scene, &DzScene::materialSelectionChanged, [&selection] { ++selection; });
    DzMaterial* material = figure.add(QStringLiteral("Skin"));
    EXPECT_EQ(list, 1);
    material->select(true);
    material->select(true);
    EXPECT_EQ(selection, 1);
    figure.shape->removeMaterial(material);
    EXPECT_EQ(list, 2);
    EXPECT_EQ(selection, 2);
}

TEST(Shape, sharesItsMaterials)
{
    const DzUndoStackLock lock;
    DzShape shape;
    DzShape other;
    QPointer<DzMaterial> material = new DzDefaultMaterial(QStringLiteral("Skin"));
    EXPECT_EQ(shape.addMaterial(material), DZ_NO_ERROR);
    EXPECT_EQ(shape.addMaterial(material), DZ_REFUSED_ERROR);
    EXPECT_EQ(shape.addMaterial(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(other.addMaterial(material), DZ_NO_ERROR);
    EXPECT_EQ(material->getRefCount(), 2);
    EXPECT_EQ(material->getNumShapes(), 2);
    EXPECT_EQ(material->getShape(1), &other);
    EXPECT_EQ(shape.removeMaterial(material), DZ_NO_ERROR);
    EXPECT_EQ(material->getNumShapes(), 1);
    EXPECT_EQ(other.removeMaterial(material), DZ_NO_ERROR);
    EXPECT_TRUE(material.isNull());
}

TEST(Shape, findsTheFirstMaterialOfAName)
{
    const Figure figure;
    DzMaterial* first = figure.add(QStringLiteral("Skin"));
    EXPECT_EQ(figure.shape->findMaterial(QStringLiteral("Skin")), first);
    DzMaterial* second = figure.add(QStringLiteral("Skin"));
    DzMaterial* lips = figure.add(QStringLiteral("Lips"));
    EXPECT_EQ(figure.shape->findMaterial(QStringLiteral("Skin")), first);
    EXPECT_EQ(figure.shape->findMaterial(QStringLiteral("Lips")), lips);
    first->setName(QStringLiteral("Face"));
    EXPECT_EQ(figure.shape->findMaterial(QStringLiteral("Skin")), second);
    figure.shape->removeMaterial(second);
    EXPECT_EQ(figure.shape->findMaterial(QStringLiteral("Skin")), nullptr);
    delete figure.node;
}

TEST(Shape, listsWhatIsSelectedInItsOrder)
{
    const Figure figure;
    DzMaterial* a = figure.add(QStringLiteral("a"));
    figure.add(QStringLiteral("b"));
    DzMaterial* c = figure.add(QStringLiteral("c"));
    EXPECT_EQ(figure.shape->getNumSelectedMaterials(), 0);
    c->select(true);
    a->select(true);
    EXPECT_EQ(figure.shape->getNumSelectedMaterials(), 2);
    EXPECT_EQ(figure.shape->getSelectedMaterial(0), a);
    EXPECT_EQ(figure.shape->getSelectedMaterial(1), c);
    EXPECT_EQ(figure.shape->getSelectedMaterial(2), nullptr);
    figure.shape->removeMaterial(a);
    EXPECT_EQ(figure.shape->getNumSelectedMaterials(), 1);
    delete figure.node;
}

TEST(Shape, changesOfItsMaterialsAreUndone)
{
    const Figure figure;
    DzMaterial* a = figure.add(QStringLiteral("a"));
    DzMaterial* b = figure.add(QStringLiteral("b"));
    const DzMaterialPtr other(new DzDefaultMaterial(QStringLiteral("other")));
    EXPECT_EQ(figure.shape->replaceMaterial(a, other), DZ_NO_ERROR);
    EXPECT_EQ(figure.shape->replaceMaterial(b, other), DZ_REFUSED_ERROR);
    EXPECT_EQ(names(figure.shape), QStringList({ "other", "b" }));
    EXPECT_EQ(figure.shape->removeMaterial(other), DZ_NO_ERROR);
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(names(figure.shape), QStringList({ "other", "b" }));
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(names(figure.shape), QStringList({ "a", "b" }));
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(names(figure.shape), QStringList({ "a" }));
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(names(figure.shape), QStringList({ "other", "b" }));
    dzUndoStack->clearAll();
    delete figure.node;
}

TEST(Object, theFirstShapeIsCurrentUntilAnotherIsChosen)
{
    DzObject object;
    EXPECT_EQ(object.getCurrentShape(), nullptr);
    auto* first = new DzShape;
    auto* second = new DzShape;
    EXPECT_EQ(object.addShape(first), DZ_NO_ERROR);
    EXPECT_EQ(object.addShape(second), DZ_NO_ERROR);
    EXPECT_EQ(object.addShape(second), DZ_REFUSED_ERROR);
    EXPECT_EQ(object.getCurrentShape(), first);
    EXPECT_EQ(object.setCurrentShape(second), DZ_NO_ERROR);
    EXPECT_EQ(object.getCurrentShape(), second);
    EXPECT_EQ(object.removeShape(second), DZ_NO_ERROR);
    EXPECT_EQ(object.getCurrentShape(), first);
    delete second;
}

TEST(DefaultMaterial, keepsColourAndOpacityInProperties)
{
    DzDefaultMaterial material(QStringLiteral("Skin"));
    EXPECT_EQ(material.getMaterialName(), QStringLiteral("Default"));
    EXPECT_EQ(material.getDiffuseColor(), QColor(255, 255, 255));
    EXPECT_EQ(material.getBaseOpacity(), 1);
    material.setDiffuseColor(QColor(10, 20, 30));
    material.setBaseOpacity(0.5f);
    auto* color
        = qobject_cast<DzColorProperty*>(material.findProperty(QStringLiteral("Diffuse Color")));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->getColorValue(), QColor(10, 20, 30));
    color->setMap(QStringLiteral("skin.png"));
    EXPECT_EQ(material.getColorMap()->getFilename(), QStringLiteral("skin.png"));
    EXPECT_EQ(material.getBaseOpacity(), 0.5f);
    EXPECT_TRUE(material.isOpacityMappable());
}

TEST(DefaultMaterial, aBareOneGetsAPropertyWhenItIsSet)
{
    const DzMaterialPtr share(DzDefaultMaterial::createBare(QStringLiteral("Skin")));
    DzMaterial* material = share;
    EXPECT_EQ(material->getNumProperties(), 0);
    EXPECT_EQ(material->getDiffuseColor(), QColor(255, 255, 255));
    EXPECT_EQ(material->getBaseOpacity(), 1);
    EXPECT_EQ(material->getColorMap(), nullptr);
    material->setBaseOpacity(0.25f);
    EXPECT_EQ(material->getNumProperties(), 1);
    EXPECT_EQ(material->getBaseOpacity(), 0.25f);
}

// Speed -------------------------------------------------------------------------------------

TEST(Scene, manySurfacesAreRemovedOneByOneFromEitherEnd)
{
    const DzUndoStackLock lock;
    const int count = 100000;
    for (const bool fromFront : { true, false }) {
        DzScene scene;
        const Figure figure;
        scene.addNode(figure.node);
        for (int i = 0; i < count; ++i)
            figure.shape->addMaterial(DzDefaultMaterial::createBare(QString::number(i)));
        DzShape* shape = figure.shape;
        while (shape->getNumMaterials() > 0)
            shape->removeMaterial(shape->getMaterial(fromFront ? 0 : shape->getNumMaterials() - 1));
    }
}

TEST(Scene, aLongChainOfNodesIsDeletedWithoutADeepStack)
{
    const int count = 100000;
    DzScene scene;
    auto* top = new DzNode;
    scene.addNode(top);
    DzNode* last = top;
    for (int i = 1; i < count; ++i) {
        auto* node = new DzNode;
        last->addNodeChild(node);
        last = node;
    }
    EXPECT_EQ(scene.getNumNodes(), count);
    delete top;
    EXPECT_EQ(scene.getNumNodes(), 0);
}
