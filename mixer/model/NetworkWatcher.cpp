// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkWatcher.h"

#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzelement.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QUndoStack>

namespace {

bool hasSignal(const QObject* object, const char* signature)
{
    return object->metaObject()->indexOfSignal(signature) >= 0;
}

} // namespace

NetworkWatcher::NetworkWatcher(IDzBrickUser* user)
    : m_user(user)
{
    // The interface has no signals, being no object; its element has them.
    const QObject* element = user->getBrickUserElement();
    if (hasSignal(element, "brickAdded(DzShaderBrick*)"))
        connect(element, SIGNAL(brickAdded(DzShaderBrick*)), SLOT(brickAdded(DzShaderBrick*)));
    if (hasSignal(element, "brickRemoved(DzShaderBrick*)"))
        connect(element, SIGNAL(brickRemoved(DzShaderBrick*)), SLOT(brickRemoved(DzShaderBrick*)));
    // Some bricks come and go unannounced when steps are undone.
    connect(dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this,
        &NetworkWatcher::rescanIfNeeded);
    rescan();
}

void NetworkWatcher::rescan()
{
    QSet<DzShaderBrick*> present;
    for (DzShaderBrick* brick : bricksOf(m_user)) {
        present.insert(brick);
        if (!m_bricks.contains(brick))
            watch(brick);
    }
    m_bricks = present;
    emit structureChanged();
}

void NetworkWatcher::rescanIfNeeded()
{
    if (m_bricks.size() != m_user->getNumBricks())
        rescan();
}

void NetworkWatcher::watch(DzShaderBrick* brick)
{
    m_bricks.insert(brick);
    // A brick that left and came back is connected already.
    disconnect(brick, nullptr, this, nullptr);
    connect(brick, &DzShaderBrick::connectionsChanged, this, &NetworkWatcher::structureChanged);
    connect(brick, &DzShaderBrick::brickTitleChanged, this, &NetworkWatcher::structureChanged);
    connect(brick, &DzShaderBrick::paramAdded, this, &NetworkWatcher::parametersChanged);
    connect(brick, &DzShaderBrick::paramRemoved, this, &NetworkWatcher::parametersChanged);
    for (int i = 0; i < brick->getNumProperties(); ++i) {
        const DzProperty* property = brick->getProperty(i);
        connect(property, &DzProperty::currentValueChanged, this,
            &NetworkWatcher::ownPropertyChanged, Qt::UniqueConnection);
        connect(property, &DzProperty::lockStateChanged, this, &NetworkWatcher::ownPropertyChanged,
            Qt::UniqueConnection);
    }
    watchProperties(brick);
}

void NetworkWatcher::watchProperties(DzShaderBrick* brick)
{
    for (int i = 0; i < brick->getNumParameters(); ++i)
        connect(brick->getParameter(i), &DzBrickParam::propertyChanged, this,
            &NetworkWatcher::propertyChanged, Qt::UniqueConnection);
}

void NetworkWatcher::brickAdded(DzShaderBrick* brick)
{
    watch(brick);
    emit structureChanged();
}

void NetworkWatcher::brickRemoved(DzShaderBrick* brick)
{
    m_bricks.remove(brick);
    disconnect(brick, nullptr, this, nullptr);
    for (int i = 0; i < brick->getNumParameters(); ++i)
        disconnect(brick->getParameter(i), nullptr, this, nullptr);
    emit structureChanged();
}

void NetworkWatcher::parametersChanged(DzShaderBrick* brick)
{
    watchProperties(brick);
    emit structureChanged();
}

void NetworkWatcher::ownPropertyChanged()
{
    emit propertyChanged(qobject_cast<DzProperty*>(sender()));
}
