// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

class QUndoStack;

/// One change that has already been made and can be taken back and made again.
class DzUndoItem
{
public:
    virtual ~DzUndoItem() {}
    virtual void undo() = 0;
    virtual void redo() = 0;
    /// Inside one hold, lets this item take over a later change of the same thing, so that a long
    /// drag stays one small item. True when `later` was taken over and can be thrown away.
    virtual bool mergeWith(DzUndoItem* later)
    {
        (void)later;
        return false;
    }
};

/// The application's one undo stack.
///
/// Changes are pushed after they were made. While the stack is locked, or while it is undoing or
/// redoing, nothing is pushed. A hold gathers everything pushed meanwhile into one step; holds
/// nest, and an accepted inner hold becomes a part of the outer one.
class DzUndoStack : public QObject
{
    Q_OBJECT

public:
    DzUndoStack();
    ~DzUndoStack() override;

    Q_INVOKABLE void lock() { ++m_lockCount; }
    Q_INVOKABLE void unlock();
    Q_INVOKABLE bool isLocked() const { return m_lockCount > 0; }
    /// How many locks are on.
    int getLockCount() const { return m_lockCount; }
    Q_INVOKABLE bool isInUndoRedo() const { return m_running; }
    /// True when a pushed item would be kept. Ask before building an expensive item.
    Q_INVOKABLE bool canPushItems() const { return m_lockCount == 0 && !m_running; }

    Q_INVOKABLE void beginHold();
    /// Closes the innermost hold; what it gathered becomes one step. An empty hold leaves none.
    Q_INVOKABLE void accept(const QString& caption);
    /// Closes the innermost hold and takes back everything that it gathered.
    Q_INVOKABLE void cancel();
    /// Closes the innermost hold and forgets what it gathered; the changes stay.
    Q_INVOKABLE void drop();
    Q_INVOKABLE int getHoldDepth() const { return static_cast<int>(m_holds.size()); }

    /// Adds a change that was just made; takes ownership of `item`, and deletes it when the stack
    /// accepts none now.
    void push(DzUndoItem* item, const QString& caption);

    Q_INVOKABLE bool undo();
    Q_INVOKABLE bool redo();
    Q_INVOKABLE bool canUndo() const;
    Q_INVOKABLE bool canRedo() const;
    Q_INVOKABLE QString getUndoCaption() const;
    Q_INVOKABLE QString getRedoCaption() const;
    Q_INVOKABLE int getNumUndoItems() const;
    Q_INVOKABLE int getNumRedoItems() const;
    Q_INVOKABLE int getNumItems() const;
    Q_INVOKABLE bool hasItems() const { return getNumItems() > 0; }
    Q_INVOKABLE void clearAll();

    /// Says why a part of the step that runs has no effect: what it was made for is gone or
    /// changed.
    static void refuse(const QString& why);

    /// The stack underneath, for views that list and jump.
    QUndoStack* getQtStack() const { return m_stack.get(); }

signals:
    void undoAvailable(bool available);
    void undoCaptionChanged(const QString& caption);
    void redoAvailable(bool available);
    void redoCaptionChanged(const QString& caption);

private:
    typedef std::vector<std::unique_ptr<DzUndoItem>> Items;

    void pushStep(Items items, const QString& caption);
    bool run(void (QUndoStack::*step)());

    std::unique_ptr<QUndoStack> m_stack;
    std::vector<Items> m_holds;
    int m_lockCount = 0;
    bool m_running = false;
};

/// The application's undo stack; null while there is no DzApp.
extern DzUndoStack* dzUndoStack;

/// Keeps an undo stack, mostly the application's, locked for a scope.
class DzUndoStackLock
{
public:
    explicit DzUndoStackLock(DzUndoStack* stack = dzUndoStack)
        : m_stack(stack)
    {
        if (m_stack)
            m_stack->lock();
    }
    ~DzUndoStackLock()
    {
        if (m_stack)
            m_stack->unlock();
    }

private:
    Q_DISABLE_COPY(DzUndoStackLock)

    DzUndoStack* m_stack;
};

/// Gathers the changes of a scope into one undo step. Without accept() the changes are taken back.
class DzUndoStackHold
{
public:
    DzUndoStackHold()
        : m_stack(dzUndoStack)
    {
        if (m_stack)
            m_stack->beginHold();
    }
    ~DzUndoStackHold()
    {
        if (m_stack)
            m_stack->cancel();
    }
    void accept(const QString& caption)
    {
        if (m_stack)
            m_stack->accept(caption);
        m_stack = nullptr;
    }
    /// Ends the hold without a step; the changes stay.
    void drop()
    {
        if (m_stack)
            m_stack->drop();
        m_stack = nullptr;
    }

private:
    Q_DISABLE_COPY(DzUndoStackHold)

    DzUndoStack* m_stack;
};
