// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkWalk.h"

#include "dzbrickparam.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"

QVector<DzShaderBrick*> bricksOf(const IDzBrickUser* user)
{
    QList<uint> ids;
    user->getBrickIDs(ids);
    QVector<DzShaderBrick*> bricks;
    bricks.reserve(ids.size());
    for (const uint id : qAsConst(ids))
        bricks.append(user->getBrick(id));
    return bricks;
}

bool isRoot(const DzShaderBrick* brick)
{
    return brick->type() == DzBrickSet::Surface;
}

DzShaderBrick* rootOf(const IDzBrickUser* user)
{
    DzShaderBrick* root = nullptr;
    for (DzShaderBrick* brick : bricksOf(user))
        if (isRoot(brick))
            root = brick;
    return root;
}

QString mapFileOf(const DzProperty* property)
{
    auto* numeric = qobject_cast<const DzNumericProperty*>(property);
    return numeric && numeric->isMapped() ? numeric->getMapValue()->getFilename() : QString();
}

void forEachProperty(const DzShaderBrick* brick, const std::function<void(DzProperty*)>& visit)
{
    for (int i = 0; i < brick->getNumProperties(); ++i)
        visit(brick->getProperty(i));
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        const DzBrickParam* param = brick->getParameter(i);
        for (int k = 0; k < param->getNumProperties(); ++k)
            if (DzProperty* property = param->getProperty(k))
                visit(property);
    }
}
