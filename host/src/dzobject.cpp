// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzobject.h"

#include "dzshape.h"

DzObject::DzObject(const QString& name)
    : DzElement(name)
{
}

DzObject::~DzObject()
{
    qDeleteAll(m_shapes);
}

DzError DzObject::setCurrentShape(DzShape* shape)
{
    const int index = m_shapes.indexOf(shape);
    if (index < 0)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (index == m_current)
        return DZ_NO_ERROR;
    m_current = index;
    emit currentShapeSwitched();
    emit materialListChanged();
    return DZ_NO_ERROR;
}

DzError DzObject::addShape(DzShape* shape)
{
    if (!shape)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (m_shapes.contains(shape))
        return DZ_REFUSED_ERROR;
    m_shapes.append(shape);
    connect(shape, &DzShape::materialListChanged, this, &DzObject::materialListChanged);
    connect(shape, &DzShape::materialSelectionChanged, this, &DzObject::materialSelectionChanged);
    emit shapeAdded(shape);
    if (shape->getNumMaterials() > 0)
        emit materialListChanged();
    return DZ_NO_ERROR;
}

DzError DzObject::removeShape(DzShape* shape)
{
    const int index = m_shapes.indexOf(shape);
    if (index < 0)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    m_shapes.remove(index);
    if (index < m_current || m_current == m_shapes.size())
        m_current = qMax(0, m_current - 1);
    disconnect(shape, nullptr, this, nullptr);
    emit shapeRemoved(shape);
    if (shape->getNumMaterials() > 0)
        emit materialListChanged();
    return DZ_NO_ERROR;
}
