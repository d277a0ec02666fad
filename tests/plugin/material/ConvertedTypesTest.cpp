// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickTable.h"
#include "TestScene.h"
#include "TestSupport.h"

#include <memory>

namespace {

/// The classes of the bricks that a surface of a type is rebuilt as.
QStringList rebuiltFrom(const QString& type)
{
    TestScene scene;
    const QByteArray word = type.toUtf8();
    addEnum(scene.addSelected(), "LuxRender_material_type", { type }, word.constData());
    VireoBrickUser caller;
    QStringList classes;
    for (IDzBrickUser* user : caller.fromScene()) {
        const std::unique_ptr<VireoBrickUser> owner(dynamic_cast<VireoBrickUser*>(user));
        QList<uint> ids;
        user->getBrickIDs(ids);
        for (const uint id : qAsConst(ids))
            classes.append(user->getBrick(id)->className());
    }
    return classes;
}

} // namespace

TEST(ConvertedTypes, aSurfaceIsRebuiltAsEachMaterialOfWhichTheTableSaysSo)
{
    for (const BrickRow& brick : brickTable()) {
        if (brick.kind != QLatin1String("material"))
            continue;
        const QStringList classes = rebuiltFrom(brick.type);
        if (brick.isConverted) {
            EXPECT_TRUE(classes.contains(brick.name))
                << brick.name.toStdString()
                << " has no row in createMaterialBrick() of MaterialConversion.cpp";
        } else {
            EXPECT_FALSE(classes.contains(brick.name))
                << brick.name.toStdString()
                << " is rebuilt from surfaces, but its row in the table does not say so";
        }
    }
}
