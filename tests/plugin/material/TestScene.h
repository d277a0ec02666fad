// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzenumproperty.h"
#include "dzfloatproperty.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzstringproperty.h"
#include "dzundostack.h"

#include <QStringList>

#include <gtest/gtest.h>

/// Builds in the application's scene, without undo, and clears it again.
class TestScene
{
public:
    ~TestScene()
    {
        dzUndoStack->clearAll();
        dzScene->clear();
    }

    /// A node with an object with one shape.
    DzShape* addFigure(const char* name)
    {
        const DzUndoStackLock lock;
        auto* node = new DzNode(QString::fromUtf8(name));
        auto* shape = new DzShape(QStringLiteral("shape"));
        node->setObject(new DzObject);
        node->getObject()->addShape(shape);
        EXPECT_EQ(dzScene->addNode(node), DZ_NO_ERROR);
        return shape;
    }
    /// A surface without properties.
    DzMaterial* addSurface(DzShape* shape, const char* name, bool isSelected = true)
    {
        const DzUndoStackLock lock;
        DzMaterial* material = DzDefaultMaterial::createBare(QString::fromUtf8(name));
        EXPECT_EQ(shape->addMaterial(material), DZ_NO_ERROR);
        material->select(isSelected);
        return material;
    }
    /// A selected surface of a figure of its own.
    DzMaterial* addSelected(const char* name = "surface")
    {
        return addSurface(addFigure("figure"), name);
    }
};

/// Adds a property without undo.
template <typename Property>
Property* addTo(DzElement* element, Property* property)
{
    const DzUndoStackLock lock;
    EXPECT_EQ(element->addProperty(property), DZ_NO_ERROR) << property->getName().toStdString();
    return property;
}

inline DzFloatProperty* addFloat(
    DzElement* element, const char* name, float value, const char* map = "")
{
    const DzUndoStackLock lock;
    auto* number = new DzFloatProperty(QString::fromUtf8(name), true, true, value);
    number->setIsMappable(true);
    number->setMap(QString::fromUtf8(map));
    return addTo(element, number);
}

inline DzColorProperty* addColor(
    DzElement* element, const char* name, const QColor& value, const char* map = "")
{
    const DzUndoStackLock lock;
    auto* color = new DzColorProperty(QString::fromUtf8(name), true, true, value);
    color->setIsMappable(true);
    color->setMap(QString::fromUtf8(map));
    return addTo(element, color);
}

inline DzBoolProperty* addBool(DzElement* element, const char* name, bool value)
{
    return addTo(element, new DzBoolProperty(QString::fromUtf8(name), true, true, value));
}

inline DzStringProperty* addString(DzElement* element, const char* name, const char* value)
{
    const DzUndoStackLock lock;
    auto* string = new DzStringProperty(QString::fromUtf8(name), true);
    string->setValue(QString::fromUtf8(value));
    return addTo(element, string);
}

/// An enumeration whose current item is `item`.
inline DzEnumProperty* addEnum(
    DzElement* element, const char* name, const QStringList& items, const char* item)
{
    const DzUndoStackLock lock;
    auto* property = new DzEnumProperty(QString::fromUtf8(name), true, true);
    for (const QString& text : items)
        property->addItem(text);
    EXPECT_TRUE(property->setValueFromString(QString::fromUtf8(item)));
    return addTo(element, property);
}

inline QStringList propertyNames(const DzElement* element)
{
    QStringList names;
    for (int i = 0; i < element->getNumProperties(); ++i)
        names.append(element->getProperty(i)->getName());
    return names;
}
