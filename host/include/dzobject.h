// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"
#include "dzitemlist.h"

class DzShape;

/// What a node shows: its shapes, of which one is current.
class DzObject : public DzElement
{
    Q_OBJECT

public:
    explicit DzObject(const QString& name = QString());
    /// Deletes the shapes.
    ~DzObject() override;

    Q_INVOKABLE int getNumShapes() const { return m_shapes.size(); }
    Q_INVOKABLE DzShape* getShape(int index) const { return m_shapes.at(index); }
    /// The current shape: the first, as long as no other is chosen; null without shapes.
    Q_INVOKABLE DzShape* getCurrentShape() const { return m_current ? m_current : m_shapes.at(0); }
    Q_INVOKABLE DzError setCurrentShape(DzShape* shape);
    /// Adds a shape and takes ownership.
    Q_INVOKABLE DzError addShape(DzShape* shape);
    /// Takes a shape off and gives it back to the caller.
    Q_INVOKABLE DzError removeShape(DzShape* shape);

signals:
    void shapeAdded(DzShape* shape);
    void shapeRemoved(DzShape* shape);
    void currentShapeSwitched();
    void materialListChanged();
    void materialSelectionChanged();

private:
    DzItemList<DzShape> m_shapes;
    DzShape* m_current = nullptr; ///< null for the first
};
