// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickMenu.h"

#include "BrickCatalogue.h"
#include "dzapp.h"
#include "dzbrickaction.h"
#include "dzshaderbrick.h"

BrickMenu::BrickMenu(DzShaderBrick* brick, QWidget* parent)
    : QMenu(parent)
    , m_brick(brick)
{
    // Menus drop separators at their ends and doubled ones by themselves.
    const QStringList listed = brick->getBrickActionList();
    for (const QString& className : listed) {
        if (className.isEmpty())
            addSeparator();
        else
            addNamed(className);
    }
    addSeparator();
    for (const QString& className : BrickCatalogue::instance()->getUnlistedActions())
        addNamed(className);
}

void BrickMenu::addNamed(const QString& className)
{
    QObject* object = dzApp->createInstance(className);
    auto* action = qobject_cast<DzBrickAction*>(object);
    if (!action) {
        delete object;
        return;
    }
    action->setParent(this);
    action->setBrick(m_brick);
    // What the menu shows is not the action itself: triggering it is up to the host, which makes
    // one undo step of it.
    auto* shown = new QAction(action->icon(), action->text(), this);
    shown->setObjectName(className);
    shown->setToolTip(action->toolTip());
    shown->setEnabled(action->isEnabled());
    connect(shown, &QAction::triggered, this, [this, action] {
        if (m_brick)
            dzTriggerBrickAction(action, m_brick);
    });
    addAction(shown);
}
