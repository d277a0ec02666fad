// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzdefaultmaterial.h"

#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzundostack.h"

namespace {

/// Names that the kinds of material of the host's files have for the two, the common ones first.
const char* const colorNames[] = { "Diffuse Color", "diffuse", "Diffuse" };
const char* const opacityNames[] = { "Opacity Strength", "Cutout Opacity", "transparency" };

template <typename Property, std::size_t count>
Property* firstOf(const DzElement* element, const char* const (&names)[count])
{
    for (const char* name : names)
        if (auto* found = qobject_cast<Property*>(element->findProperty(QString::fromLatin1(name))))
            return found;
    return nullptr;
}

} // namespace

DzDefaultMaterial::DzDefaultMaterial(const QString& name)
    : DzDefaultMaterial(name, Bare())
{
    const DzUndoStackLock lock;
    addColorProperty();
    addOpacityProperty();
}

DzDefaultMaterial::DzDefaultMaterial(const QString& name, Bare)
    : DzMaterial(name)
    , m_materialName(QStringLiteral("Default"))
{
}

DzDefaultMaterial* DzDefaultMaterial::createBare(const QString& name)
{
    return new DzDefaultMaterial(name, Bare());
}

DzColorProperty* DzDefaultMaterial::colorProperty() const
{
    return firstOf<DzColorProperty>(this, colorNames);
}

DzFloatProperty* DzDefaultMaterial::opacityProperty() const
{
    return firstOf<DzFloatProperty>(this, opacityNames);
}

DzColorProperty* DzDefaultMaterial::addColorProperty()
{
    auto* color = new DzColorProperty(
        QString::fromLatin1(colorNames[0]), true, false, QColor(255, 255, 255));
    color->setPath(QStringLiteral("/Base"));
    color->setIsMappable(true);
    addProperty(color);
    return color;
}

DzFloatProperty* DzDefaultMaterial::addOpacityProperty()
{
    auto* opacity = new DzFloatProperty(QString::fromLatin1(opacityNames[0]), true, false, 1);
    opacity->setPath(QStringLiteral("/Base"));
    opacity->setMinMax(0, 1);
    opacity->setIsClamped(true);
    opacity->setIsMappable(true);
    addProperty(opacity);
    return opacity;
}

void DzDefaultMaterial::setDiffuseColor(QColor color)
{
    DzColorProperty* property = colorProperty();
    (property ? property : addColorProperty())->setColorValue(color);
}

QColor DzDefaultMaterial::getDiffuseColor() const
{
    const DzColorProperty* property = colorProperty();
    return property ? property->getColorValue() : QColor(255, 255, 255);
}

void DzDefaultMaterial::setBaseOpacity(float opacity)
{
    DzFloatProperty* property = opacityProperty();
    (property ? property : addOpacityProperty())->setValue(opacity);
}

float DzDefaultMaterial::getBaseOpacity() const
{
    const DzFloatProperty* property = opacityProperty();
    return property ? property->getValue() : 1;
}

void DzDefaultMaterial::setColorMap(const DzTexture* map)
{
    DzColorProperty* property = colorProperty();
    (property ? property : addColorProperty())->setMap(map);
}

DzTexture* DzDefaultMaterial::getColorMap() const
{
    const DzColorProperty* property = colorProperty();
    return property ? property->getMapValue() : nullptr;
}

void DzDefaultMaterial::setOpacityMap(const DzTexture* map)
{
    DzFloatProperty* property = opacityProperty();
    (property ? property : addOpacityProperty())->setMap(map);
}

DzTexture* DzDefaultMaterial::getOpacityMap() const
{
    const DzFloatProperty* property = opacityProperty();
    return property ? property->getMapValue() : nullptr;
}

bool DzDefaultMaterial::isColorMappable() const
{
    const DzColorProperty* property = colorProperty();
    return !property || property->isMappable();
}

bool DzDefaultMaterial::isOpacityMappable() const
{
    const DzFloatProperty* property = opacityProperty();
    return !property || property->isMappable();
}
