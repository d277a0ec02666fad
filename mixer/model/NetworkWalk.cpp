// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkWalk.h"

#include "dzbrickparam.h"
#include "dzforeachlink.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"

#include <QSet>

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

namespace {

QVector<DzShaderBrick*> reachable(const QVector<DzShaderBrick*>& bricks, bool upstream)
{
    QVector<DzShaderBrick*> found;
    QSet<DzShaderBrick*> isFound;
    const auto meet = [&](DzShaderBrick* brick) {
        if (brick && !isFound.contains(brick)) {
            isFound.insert(brick);
            found.append(brick);
        }
    };
    for (DzShaderBrick* brick : bricks)
        meet(brick);
    // The list grows while it is walked: chains may be longer than the stack is deep.
    for (int next = 0; next < found.size(); ++next) {
        const DzShaderBrick* brick = found.at(next);
        forEachLink(brick, !upstream,
            [&](const DzBrickParam*, const DzBrickParam* peer) { meet(peer->getTopBrickOwner()); });
    }
    return found;
}

} // namespace

QVector<DzShaderBrick*> withUpstream(const QVector<DzShaderBrick*>& bricks)
{
    return reachable(bricks, true);
}

QVector<DzShaderBrick*> withDownstream(const QVector<DzShaderBrick*>& bricks)
{
    return reachable(bricks, false);
}
