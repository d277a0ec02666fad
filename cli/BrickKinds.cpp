// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickKinds.h"

#include "VireoMaterialBrick.h"
#include "VireoTextureBrick.h"
#include "VireoVolumeBrick.h"
#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"

BrickPtr makeBrick(const QString& className)
{
    const DzClassFactory* factory = dzApp->findClassFactory(className);
    if (!factory || !factory->getMetaObject().inherits(&VireoBrickBase::staticMetaObject))
        return nullptr;
    return qobject_cast<VireoBrickBase*>(factory->createInstance());
}

QVector<BrickPtr> makeAllBricks()
{
    QVector<BrickPtr> bricks;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories()) {
        const BrickPtr brick = makeBrick(factory->className());
        if (brick)
            bricks.append(brick);
    }
    return bricks;
}

QString brickKind(const VireoBrickBase* brick)
{
    if (auto* texture = qobject_cast<const VireoTextureBrick*>(brick))
        return texture->getLuxTextureKind();
    if (qobject_cast<const VireoVolumeBrick*>(brick))
        return QStringLiteral("volume");
    if (qobject_cast<const VireoMaterialBrick*>(brick))
        return QStringLiteral("material");
    return QStringLiteral("root");
}
