// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "FreshValue.h"

#include "BrickCatalogue.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzproperty.h"

const DzProperty* freshValueOf(const DzProperty* property)
{
    const DzBrickParam* param = property->getBrickParam();
    const QObject* brick
        = param ? param->getTopBrickOwner() : static_cast<const QObject*>(property->getOwner());
    const BrickKind* kind = brick
        ? BrickCatalogue::instance()->find(QString::fromLatin1(brick->metaObject()->className()))
        : nullptr;
    if (!kind)
        return nullptr;
    if (!param)
        return kind->sample->findProperty(property->getName());
    const DzBrickParam* same = kind->sample->findParameterByName(param->getName());
    for (int i = 0; same && same->getProperty(i); ++i)
        if (same->getProperty(i)->getName() == property->getName())
            return same->getProperty(i);
    return nullptr;
}

bool isFreshValue(const DzProperty* property)
{
    const DzProperty* fresh = freshValueOf(property);
    return fresh && mapFileOf(property).isEmpty()
        && fresh->getValueText() == property->getValueText();
}
