// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzundostack.h"

#include "dzapp.h"

#include <QScopedValueRollback>
#include <QUndoStack>

DzUndoStack* dzUndoStack = nullptr;

namespace {

// The stack is locked while items are deleted: what they own may well report its end by a change of
// something else.

typedef std::vector<std::unique_ptr<DzUndoItem>> ItemList;

void undoAll(const ItemList& items)
{
    for (auto item = items.rbegin(); item != items.rend(); ++item)
        (*item)->undo();
}

/// Adds an item, unless the last one takes it over.
void gather(ItemList* items, std::unique_ptr<DzUndoItem> item)
{
    if (items->empty() || !items->back()->mergeWith(item.get()))
        items->push_back(std::move(item));
}

/// One step of the stack.
class Step : public QUndoCommand
{
public:
    Step(ItemList items, const QString& caption, bool* running)
        : QUndoCommand(caption)
        , m_items(std::move(items))
        , m_running(running)
    {
    }

    void undo() override
    {
        const QScopedValueRollback<bool> scope(*m_running, true);
        undoAll(m_items);
    }
    void redo() override
    {
        // The stack calls this when the step is pushed, and the changes are made already.
        if (!m_pushed) {
            m_pushed = true;
            return;
        }
        const QScopedValueRollback<bool> scope(*m_running, true);
        for (const std::unique_ptr<DzUndoItem>& item : m_items)
            item->redo();
    }

private:
    ItemList m_items;
    bool* m_running; // set here, for views run steps without asking the owner
    bool m_pushed = false;
};

} // namespace

DzUndoStack::DzUndoStack()
    : m_stack(new QUndoStack)
{
    connect(m_stack.get(), &QUndoStack::canUndoChanged, this, &DzUndoStack::undoAvailable);
    connect(m_stack.get(), &QUndoStack::undoTextChanged, this, &DzUndoStack::undoCaptionChanged);
    connect(m_stack.get(), &QUndoStack::canRedoChanged, this, &DzUndoStack::redoAvailable);
    connect(m_stack.get(), &QUndoStack::redoTextChanged, this, &DzUndoStack::redoCaptionChanged);
}

DzUndoStack::~DzUndoStack()
{
    lock();
    m_holds.clear();
    m_stack->disconnect(this);
    m_stack->clear();
}

void DzUndoStack::unlock()
{
    if (m_lockCount == 0) {
        qWarning("DzUndoStack::unlock: the stack is not locked");
        return;
    }
    --m_lockCount;
}

void DzUndoStack::beginHold()
{
    m_holds.emplace_back();
}

void DzUndoStack::accept(const QString& caption)
{
    if (m_holds.empty()) {
        qWarning("DzUndoStack::accept: no hold is open");
        return;
    }
    Items items = std::move(m_holds.back());
    m_holds.pop_back();
    if (items.empty())
        return;
    if (m_holds.empty()) {
        pushStep(std::move(items), caption);
        return;
    }
    const DzUndoStackLock lockScope(this);
    for (std::unique_ptr<DzUndoItem>& item : items)
        gather(&m_holds.back(), std::move(item));
}

void DzUndoStack::cancel()
{
    if (m_holds.empty()) {
        qWarning("DzUndoStack::cancel: no hold is open");
        return;
    }
    const DzUndoStackLock lockScope(this);
    const Items items = std::move(m_holds.back());
    m_holds.pop_back();
    const QScopedValueRollback<bool> runningScope(m_running, true);
    undoAll(items);
}

void DzUndoStack::drop()
{
    if (m_holds.empty()) {
        qWarning("DzUndoStack::drop: no hold is open");
        return;
    }
    const DzUndoStackLock lockScope(this);
    const Items items = std::move(m_holds.back());
    m_holds.pop_back();
}

void DzUndoStack::push(DzUndoItem* item, const QString& caption)
{
    std::unique_ptr<DzUndoItem> owned(item);
    if (!owned || !canPushItems())
        return;
    if (m_holds.empty()) {
        Items items;
        items.push_back(std::move(owned));
        pushStep(std::move(items), caption);
        return;
    }
    const DzUndoStackLock lockScope(this);
    gather(&m_holds.back(), std::move(owned));
}

void DzUndoStack::pushStep(Items items, const QString& caption)
{
    // Pushing deletes the steps that were undone.
    const DzUndoStackLock lockScope(this);
    m_stack->push(new Step(std::move(items), caption, &m_running));
}

bool DzUndoStack::run(void (QUndoStack::*step)())
{
    if (m_running)
        return false;
    (m_stack.get()->*step)();
    return true;
}

bool DzUndoStack::undo()
{
    return canUndo() && run(&QUndoStack::undo);
}

bool DzUndoStack::redo()
{
    return canRedo() && run(&QUndoStack::redo);
}

bool DzUndoStack::canUndo() const
{
    return m_holds.empty() && m_stack->canUndo();
}

bool DzUndoStack::canRedo() const
{
    return m_holds.empty() && m_stack->canRedo();
}

QString DzUndoStack::getUndoCaption() const
{
    return m_stack->undoText();
}

QString DzUndoStack::getRedoCaption() const
{
    return m_stack->redoText();
}

int DzUndoStack::getNumUndoItems() const
{
    return m_stack->index();
}

int DzUndoStack::getNumRedoItems() const
{
    return m_stack->count() - m_stack->index();
}

int DzUndoStack::getNumItems() const
{
    return m_stack->count();
}

void DzUndoStack::refuse(const QString& why)
{
    dzApp->warning(tr("a part of this step has no effect: %1").arg(why));
}

void DzUndoStack::clearAll()
{
    // The step that runs must not go from under itself.
    if (m_running)
        return;
    const DzUndoStackLock lockScope(this);
    for (Items& items : m_holds)
        items.clear();
    m_stack->clear();
}
