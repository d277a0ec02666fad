// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzvec3param.h"

#include "dzfloatproperty.h"
#include "dzundostack.h"

#include <limits>

namespace {

const char* const componentNames[3] = { "X", "Y", "Z" };

} // namespace

DzVec3Param::DzVec3Param(ParamType type, const DzVec3& defaultValue)
    : DzBrickParam(InputDirection)
    , m_type(type)
{
    const float values[3] = { defaultValue.m_x, defaultValue.m_y, defaultValue.m_z };
    for (int i = 0; i < 3; ++i) {
        m_components[i]
            = new DzFloatProperty(QString::fromLatin1(componentNames[i]), true, false, values[i]);
        m_components[i]->setMinMax(
            -std::numeric_limits<float>::max(), std::numeric_limits<float>::max());
        adoptProperty(m_components[i]);
    }
}

DzVec3Param::~DzVec3Param()
{
    for (DzFloatProperty* component : m_components)
        delete component;
}

DzVec3 DzVec3Param::getValue() const
{
    return DzVec3(
        m_components[0]->getValue(), m_components[1]->getValue(), m_components[2]->getValue());
}

void DzVec3Param::setValue(const DzVec3& value)
{
    DzUndoStackHold hold;
    m_components[0]->setValue(value.m_x);
    m_components[1]->setValue(value.m_y);
    m_components[2]->setValue(value.m_z);
    hold.accept(tr("Change %1").arg(getLabel()));
}

DzVec3 DzVec3Param::getDefaultValue() const
{
    return DzVec3(m_components[0]->getDefaultValue(), m_components[1]->getDefaultValue(),
        m_components[2]->getDefaultValue());
}

DzProperty* DzVec3Param::getProperty(int index) const
{
    return index >= 0 && index < 3 ? m_components[index] : nullptr;
}

QString DzVec3Param::getStringValue(int) const
{
    const DzVec3 value = getValue();
    return QStringLiteral("%1( %2, %3, %4)")
        .arg(typeToString(m_type))
        .arg(static_cast<double>(value.m_x))
        .arg(static_cast<double>(value.m_y))
        .arg(static_cast<double>(value.m_z));
}

QString DzVec3Param::getTypeString(int) const
{
    const QString name = typeToString(m_type);
    return isArray() ? QStringLiteral("%1[]").arg(name) : name;
}

bool DzVec3Param::canConnect(DzBrickParam* other) const
{
    return DzBrickParam::canConnect(other) && other->getType() == getType();
}
