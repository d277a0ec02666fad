// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzundostack.h"

#include <memory>
#include <vector>

/// The changes of one brick while a DzBrickStateHold is open: an undo item made of undo items.
class BrickJournal : public DzUndoItem
{
public:
    bool isEmpty() const { return m_items.empty(); }
    void add(DzUndoItem* item)
    {
        std::unique_ptr<DzUndoItem> owned(item);
        if (m_items.empty() || !m_items.back()->mergeWith(item))
            m_items.push_back(std::move(owned));
    }

    void undo() override
    {
        for (auto item = m_items.rbegin(); item != m_items.rend(); ++item)
            (*item)->undo();
    }
    void redo() override
    {
        for (const std::unique_ptr<DzUndoItem>& item : m_items)
            item->redo();
    }

private:
    std::vector<std::unique_ptr<DzUndoItem>> m_items;
};
