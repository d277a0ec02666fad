// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkPersistence.h"
#include "SurfaceProperties.h"
#include "TestScene.h"
#include "TestSupport.h"
#include "VireoRootBrick.h"
#include "dzintproperty.h"

namespace {

typedef DzTSharedPointer<VireoBrickUser> UserPtr;

/// A matte material on a root.
UserPtr matteUser()
{
    const DzUndoStackLock lock;
    const UserPtr user(new VireoBrickUser);
    VireoBrickBase* root = addBrick(*user, "VireoRootBrick");
    link(addBrick(*user, "VireoMatMatteBrick"), root, "material");
    return user;
}

DzIntProperty* addInt(DzElement* element, const char* name, int value, const char* map = "")
{
    const DzUndoStackLock lock;
    auto* number = new DzIntProperty(QString::fromUtf8(name), true, true, value);
    number->setIsMappable(true);
    number->setMap(QString::fromUtf8(map));
    return addTo(element, number);
}

VireoBrickBase* brickOf(IDzBrickUser* user, const char* className)
{
    QList<uint> ids;
    user->getBrickIDs(ids);
    for (const uint id : ids)
        if (user->getBrick(id)->inherits(className))
            return qobject_cast<VireoBrickBase*>(user->getBrick(id));
    ADD_FAILURE() << className;
    return nullptr;
}

} // namespace

TEST(RemoveFromScene, takesOffWhatApplyingPutThereAsOneStep)
{
    TestScene scene;
    DzMaterial* chosen = scene.addSelected();
    DzMaterial* other = scene.addSelected("other");
    addFloat(chosen, "LuxRender_matte_sigma", 3);
    const UserPtr user = matteUser();
    user->applyToScene();
    addFloat(chosen, "LuxRender_matte_sigma", 3);
    other->select(false);
    const QStringList applied = propertyNames(chosen);
    ASSERT_TRUE(storedNetwork(chosen));
    ASSERT_GT(applied.size(), 3);
    dzUndoStack->clearAll();

    user->removeFromScene();
    EXPECT_EQ(propertyNames(chosen), QStringList { QStringLiteral("LuxRender_matte_sigma") });
    EXPECT_FALSE(storedNetwork(chosen));
    EXPECT_TRUE(storedNetwork(other));
    ASSERT_EQ(dzUndoStack->getNumItems(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(storedNetwork(chosen));
    QStringList names = propertyNames(chosen);
    QStringList wanted = applied;
    names.sort();
    wanted.sort();
    EXPECT_EQ(names, wanted);
}

TEST(SelectedSurfaces, networksStandInTheOrderOfTheHostsOneFunction)
{
    TestScene scene;
    DzShape* later = nullptr;
    {
        // Made first, but at the second place in the scene.
        const DzUndoStackLock lock;
        auto* node = new DzNode(QStringLiteral("later"));
        later = new DzShape(QStringLiteral("shape"));
        node->setObject(new DzObject);
        node->getObject()->addShape(later);
        scene.addSurface(later, "first made");
        scene.addSurface(scene.addFigure("sooner"), "second made");
        EXPECT_EQ(dzScene->addNode(node), DZ_NO_ERROR);
    }
    const auto names = [](const QVector<DzSurface>& surfaces) {
        QStringList list;
        for (const DzSurface& surface : surfaces)
            list.append(surface.node->getName() + QLatin1Char('/') + surface.material->getName());
        return list.join(QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(names(dzScene->getSelectedSurfaces()), "sooner/second made later/first made");
    EXPECT_EQ(names(DzScene::getSelectedMaterials()), "later/first made sooner/second made");
}

TEST(ConvertIntegers, aWholeNumberServesAFloatInput)
{
    TestScene scene;
    DzMaterial* material = scene.addSelected();
    addEnum(material, "LuxRender_material_type", { QStringLiteral("glass") }, "glass");
    addInt(material, "LuxRender_glass_index", 2);
    addInt(material, "LuxRender_glass_cauchyb", 1, "map.png");
    addBool(material, "LuxRender_glass_film", true);
    const UserPtr maker(new VireoBrickUser);
    const QList<IDzBrickUser*> users = maker->fromScene();
    ASSERT_EQ(users.size(), 1);
    const UserPtr user(dynamic_cast<VireoBrickUser*>(users.first()));
    VireoBrickBase* glass = brickOf(user, "VireoMatGlassBrick");
    EXPECT_EQ(propertyAs<DzFloatProperty>(glass, "index")->getValue(), 2.0f);
    // What is on or off is no number.
    EXPECT_EQ(propertyAs<DzFloatProperty>(glass, "film")->getValue(),
        propertyAs<DzFloatProperty>(makeBrick("VireoMatGlassBrick"), "film")->getValue());
    VireoBrickBase* map = brickOf(user, "VireoTexFltImageMapBrick");
    auto* filename = propertyAs<DzFloatProperty>(map, "filename");
    EXPECT_EQ(filename->getValue(), 1.0f);
    EXPECT_EQ(filename->getMapValue()->getFilename(), QStringLiteral("map.png"));
}
