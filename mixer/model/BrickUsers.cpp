// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickUsers.h"

#include "dzapp.h"
#include "dzclassfactory.h"
#include "dzelement.h"
#include "dzpluginmgr.h"
#include "dzrefcounteditem.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"

#include <memory>

namespace {

/// Bricks and actions are no brick users: most factories need not be tried.
bool mayBeBrickUser(const DzClassFactory* factory)
{
    const QMetaObject& metaObject = factory->getMetaObject();
    return metaObject.inherits(&DzElement::staticMetaObject)
        && !metaObject.inherits(&DzShaderBrick::staticMetaObject);
}

} // namespace

IDzBrickUser* makeBrickUser()
{
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories()) {
        if (!mayBeBrickUser(factory))
            continue;
        std::unique_ptr<QObject> object(factory->createInstance());
        // The interface is no QObject: qobject_cast does not know it.
        if (auto* user = dynamic_cast<IDzBrickUser*>(object.get())) {
            object.release();
            keepBrickUser(user);
            return user;
        }
    }
    return nullptr;
}

void keepBrickUser(IDzBrickUser* user)
{
    if (auto* shared = dynamic_cast<DzRefCountedItem*>(user))
        shared->ref();
}

void releaseBrickUser(IDzBrickUser* user)
{
    // A user that is not counted has one owner, who is done with it.
    if (auto* shared = dynamic_cast<DzRefCountedItem*>(user))
        shared->unref();
    else
        delete user;
}
