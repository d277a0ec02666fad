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
    for (int i = 0; i < m_shapes.size(); ++i)
        delete m_shapes.at(i);
}

DzError DzObject::setCurrentShape(DzShape* shape)
{
    if (!m_shapes.contains(shape))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (shape == getCurrentShape())
        return DZ_NO_ERROR;
    m_current = shape;
    emit currentShapeSwitched();
    emit materialListChanged();
    return DZ_NO_ERROR;
}

DzError DzObject::addShape(DzShape* shape)
{
    if (!shape)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (!m_shapes.append(shape))
        return DZ_REFUSED_ERROR;
    connect(shape, &DzShape::materialListChanged, this, &DzObject::materialListChanged);
    connect(shape, &DzShape::materialSelectionChanged, this, &DzObject::materialSelectionChanged);
    emit shapeAdded(shape);
    if (shape->getNumMaterials() > 0)
        emit materialListChanged();
    return DZ_NO_ERROR;
}

DzError DzObject::removeShape(DzShape* shape)
{
    if (!m_shapes.remove(shape))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (m_current == shape)
        m_current = nullptr;
    disconnect(shape, nullptr, this, nullptr);
    emit shapeRemoved(shape);
    if (shape->getNumMaterials() > 0)
        emit materialListChanged();
    return DZ_NO_ERROR;
}
