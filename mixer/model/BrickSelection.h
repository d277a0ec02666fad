// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QSet>
#include <QVector>

class DzShaderBrick;

/// The selected bricks of one document, in order of selecting; the last one is the current brick.
/// Bricks that are deleted leave it by themselves.
class BrickSelection : public QObject
{
    Q_OBJECT

public:
    explicit BrickSelection(QObject* parent = nullptr);

    const QVector<DzShaderBrick*>& getBricks() const { return m_bricks; }
    bool contains(const DzShaderBrick* brick) const;
    bool isEmpty() const { return m_bricks.isEmpty(); }
    int size() const { return m_bricks.size(); }
    /// The brick that was selected last; null when nothing is selected.
    DzShaderBrick* getCurrent() const;

    /// Selects exactly these bricks.
    void set(const QVector<DzShaderBrick*>& bricks);
    void add(const QVector<DzShaderBrick*>& bricks);
    void remove(const QVector<DzShaderBrick*>& bricks);
    void toggle(DzShaderBrick* brick);
    void clear() { set(QVector<DzShaderBrick*>()); }

    /// While something is being selected with the mouse, changes come with every move of it:
    /// whoever takes long over them may wait for selectingEnded().
    bool isSelecting() const { return m_isSelecting; }
    void setSelecting(bool isSelecting);

signals:
    void selectionChanged();
    void selectingEnded();

private:
    bool insert(DzShaderBrick* brick);
    void watch(DzShaderBrick* brick);
    void unwatch(DzShaderBrick* brick);
    void forget(QObject* brick);

    QVector<DzShaderBrick*> m_bricks;
    QSet<const QObject*> m_members;
    bool m_isSelecting = false;
};
