// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkUndo.h"

#include "BrickAppearance.h"
#include "NetworkEdit.h"
#include "dzshaderbrick.h"

BrickMoveItem::Entry::Entry(DzShaderBrick* moved, const QPointF& place)
    : brick(moved)
    , before(BrickAppearance::position(moved))
    , after(place)
    , hadPlace(BrickAppearance::hasPosition(moved))
{
}

BrickMoveItem::BrickMoveItem(NetworkEdit* edit, const QVector<Entry>& entries)
    : m_edit(edit)
    , m_entries(entries)
{
}

void BrickMoveItem::place(bool isAfter)
{
    QVector<DzShaderBrick*> moved;
    moved.reserve(m_entries.size());
    for (const Entry& entry : qAsConst(m_entries)) {
        if (!entry.brick)
            continue;
        if (isAfter || entry.hadPlace) {
            BrickAppearance::setPosition(entry.brick, isAfter ? entry.after : entry.before);
        } else {
            entry.brick->getBrickSettings()->removeValue(BrickAppearance::xKey());
            entry.brick->getBrickSettings()->removeValue(BrickAppearance::yKey());
        }
        moved.append(entry.brick);
    }
    if (m_edit)
        emit m_edit->bricksMoved(moved);
}

BrickSettingsItem::BrickSettingsItem(
    NetworkEdit* edit, DzShaderBrick* brick, const DzSettings& before)
    : m_edit(edit)
    , m_brick(brick)
    , m_before(before)
    , m_after(*brick->getBrickSettings())
{
}

void BrickSettingsItem::restore(const DzSettings& settings)
{
    if (!m_brick)
        return;
    const DzSettings replaced(*m_brick->getBrickSettings());
    m_brick->getBrickSettings()->replaceWithSettings(settings);
    tell(m_edit, m_brick, replaced);
}

void BrickSettingsItem::tell(NetworkEdit* edit, DzShaderBrick* brick, const DzSettings& before)
{
    // Titles are named in texts and problems, which are made anew then: not for every width.
    if (!before.hasEqualValue(*brick->getBrickSettings(), BrickAppearance::titleKey()))
        emit brick->brickTitleChanged(brick->getBrickTitle());
    if (edit)
        emit edit->brickSettingsChanged(brick);
}
