// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkSteps.h"

#include "MixerDocument.h"
#include "dzundostack.h"

#include <QUndoStack>

NetworkSteps::NetworkSteps(QObject* parent)
    : QObject(parent)
{
    connect(
        dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, &NetworkSteps::indexChanged);
    m_index = dzUndoStack->getQtStack()->index();
    m_owners.resize(m_index);
    remember();
}

void NetworkSteps::watch(MixerDocument* document)
{
    connect(document, &MixerDocument::changed, this, &NetworkSteps::documentChanged,
        Qt::UniqueConnection);
}

MixerDocument* NetworkSteps::getOwner(int step) const
{
    const Documents owners = m_owners.value(step);
    return owners.size() == 1 ? owners.first() : nullptr;
}

void NetworkSteps::documentChanged()
{
    auto* document = static_cast<MixerDocument*>(sender());
    // The stack is locked while it takes back what a hold gathered: that leaves no change.
    const bool isTakenBack = dzUndoStack->isInUndoRedo() && dzUndoStack->isLocked();
    Documents& changed = dzUndoStack->isInUndoRedo() && !isTakenBack ? m_run : m_changed;
    changed.removeAll(document);
    if (!isTakenBack)
        changed.append(document);
}

void NetworkSteps::indexChanged(int index)
{
    const QUndoStack* stack = dzUndoStack->getQtStack();
    const bool isUndo = index < m_index;
    const bool isRedo = index > m_index && m_next && stack->command(m_index) == m_next;
    if (stack->count() == 0)
        m_owners.clear();
    else if (index > m_index && !isRedo)
        pushed(index);
    QVector<MixerDocument*> changed;
    for (const QPointer<MixerDocument>& document : qAsConst(m_run))
        if (document)
            changed.append(document);
    m_run.clear();
    m_changed.clear();
    m_index = index;
    remember();
    if (!changed.isEmpty() && (isUndo || isRedo))
        emit ran(changed, isUndo, stack->text(isUndo ? index : index - 1));
}

void NetworkSteps::pushed(int index)
{
    // Steps that were undone went.
    m_owners.resize(index);
    m_owners[index - 1] = m_changed;
}

void NetworkSteps::remember()
{
    m_next = dzUndoStack->getQtStack()->command(m_index);
}
