// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "BrickSelection.h"

#include "dzshaderbrick.h"

#include <algorithm>

BrickSelection::BrickSelection(QObject* parent)
    : QObject(parent)
{
}

bool BrickSelection::contains(const DzShaderBrick* brick) const
{
    return m_members.contains(brick);
}

DzShaderBrick* BrickSelection::getCurrent() const
{
    return m_bricks.isEmpty() ? nullptr : m_bricks.last();
}

void BrickSelection::set(const QVector<DzShaderBrick*>& bricks)
{
    const QVector<DzShaderBrick*> before = m_bricks;
    const QSet<const QObject*> members = m_members;
    m_bricks.clear();
    m_members.clear();
    for (DzShaderBrick* brick : bricks) {
        if (!brick || m_members.contains(brick))
            continue;
        m_members.insert(brick);
        m_bricks.append(brick);
        if (!members.contains(brick))
            watch(brick);
    }
    if (m_bricks == before)
        return;
    for (DzShaderBrick* brick : before)
        if (!m_members.contains(brick))
            unwatch(brick);
    emit selectionChanged();
}

void BrickSelection::setSelecting(bool isSelecting)
{
    if (isSelecting == m_isSelecting)
        return;
    m_isSelecting = isSelecting;
    if (!isSelecting)
        emit selectingEnded();
}

void BrickSelection::add(const QVector<DzShaderBrick*>& bricks)
{
    bool isChanged = false;
    for (DzShaderBrick* brick : bricks)
        isChanged = insert(brick) || isChanged;
    if (isChanged)
        emit selectionChanged();
}

void BrickSelection::remove(const QVector<DzShaderBrick*>& bricks)
{
    bool isChanged = false;
    for (DzShaderBrick* brick : bricks) {
        if (!m_members.remove(brick))
            continue;
        unwatch(brick);
        isChanged = true;
    }
    if (!isChanged)
        return;
    const auto isGone = [this](const DzShaderBrick* brick) { return !m_members.contains(brick); };
    m_bricks.erase(std::remove_if(m_bricks.begin(), m_bricks.end(), isGone), m_bricks.end());
    emit selectionChanged();
}

void BrickSelection::toggle(DzShaderBrick* brick)
{
    if (contains(brick))
        remove({ brick });
    else
        add({ brick });
}

bool BrickSelection::insert(DzShaderBrick* brick)
{
    if (!brick || m_members.contains(brick))
        return false;
    m_members.insert(brick);
    m_bricks.append(brick);
    watch(brick);
    return true;
}

void BrickSelection::watch(DzShaderBrick* brick)
{
    // Guarded pointers would forget it too, but tell nobody that the selection changed.
    connect(brick, &QObject::destroyed, this, &BrickSelection::forget);
}

void BrickSelection::unwatch(DzShaderBrick* brick)
{
    QObject::disconnect(brick, &QObject::destroyed, this, &BrickSelection::forget);
}

/// The brick is half gone already: only its address is of use.
void BrickSelection::forget(QObject* brick)
{
    if (!m_members.remove(brick))
        return;
    const auto isGone = [brick](const DzShaderBrick* other) {
        return static_cast<const QObject*>(other) == brick;
    };
    m_bricks.erase(std::remove_if(m_bricks.begin(), m_bricks.end(), isGone), m_bricks.end());
    emit selectionChanged();
}
