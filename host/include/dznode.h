// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"
#include "dzitemlist.h"

class DzObject;
class DzScene;

/// A place in the scene: a figure, a bone, a prop. It has children and may have an object.
class DzNode : public DzElement
{
    Q_OBJECT

public:
    explicit DzNode(const QString& name = QString());
    /// Leaves parent and scene; deletes the object and everything below.
    ~DzNode() override;

    /// What the node shows, null when it shows nothing.
    Q_INVOKABLE DzObject* getObject() const { return m_object; }
    /// Takes ownership; the object before is deleted.
    Q_INVOKABLE void setObject(DzObject* object);

    Q_INVOKABLE DzNode* getNodeParent() const { return m_parent; }
    Q_INVOKABLE int getNumNodeChildren() const { return m_children.size(); }
    Q_INVOKABLE DzNode* getNodeChild(int index) const { return m_children.at(index); }
    /// Takes ownership of a node that has no parent; it joins this node's scene with everything
    /// below it. Refused when this node stands below it.
    Q_INVOKABLE DzError addNodeChild(DzNode* child);
    /// Takes a child off, out of the scene too, and gives it back to the caller.
    Q_INVOKABLE DzError removeNodeChild(DzNode* child);

    /// The scene that the node is part of, null for none.
    Q_INVOKABLE DzScene* getScene() const { return m_scene; }
    Q_INVOKABLE bool isSelected() const { return m_selected; }
    Q_INVOKABLE void select(bool onOff);

signals:
    void selectionStateChanged(DzNode* node, bool onOff);
    void materialListChanged();
    void materialSelectionChanged();

private:
    friend class DzScene;
    friend class DzSceneMaker;

    bool isBelow(const DzNode* other) const;
    /// Adds a child that is known not to close a circle.
    void attachChild(DzNode* child);

    DzObject* m_object = nullptr;
    DzNode* m_parent = nullptr;
    DzScene* m_scene = nullptr;
    DzItemList<DzNode> m_children;
    bool m_selected = false;
};
