// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzpropertyparam.h"

#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzstringproperty.h"
#include "propertyaccess.h"

namespace {

DzBrickParam::ParamType typeOf(const DzProperty* property)
{
    // Colours and switches are whole numbers too: the most derived classes come first.
    if (qobject_cast<const DzFloatProperty*>(property))
        return DzBrickParam::FloatType;
    if (qobject_cast<const DzColorProperty*>(property))
        return DzBrickParam::ColorType;
    if (qobject_cast<const DzBoolProperty*>(property))
        return DzBrickParam::BooleanType;
    if (qobject_cast<const DzIntProperty*>(property))
        return DzBrickParam::IntegerType;
    return DzBrickParam::StringType;
}

bool isNumber(DzBrickParam::ParamType type)
{
    return type == DzBrickParam::FloatType || type == DzBrickParam::BooleanType
        || type == DzBrickParam::IntegerType;
}

bool isTriple(DzBrickParam::ParamType type)
{
    return type >= DzBrickParam::ColorType && type <= DzBrickParam::NormalType;
}

/// The host converts among numbers, and among colours, points, vectors and normals, by itself.
bool isConvertible(DzBrickParam::ParamType from, DzBrickParam::ParamType to)
{
    return from == to || (isNumber(from) && isNumber(to)) || (isTriple(from) && isTriple(to))
        || (isNumber(from) && isTriple(to));
}

} // namespace

DzPropertyParam::DzPropertyParam()
    : DzBrickParam(SettingsDirection)
{
}

DzPropertyParam::~DzPropertyParam()
{
    delete m_property;
}

void DzPropertyParam::setProperty(DzProperty* property, const QString& arg, const QString& mapArg)
{
    if (property != m_property)
        delete m_property;
    m_property = property;
    m_arg = arg;
    m_mapArg = mapArg;
    const ParamType type = typeOf(property);
    if (property)
        adoptProperty(property);
    if (type == m_type)
        return;
    m_type = type;
    emit typeChanged();
    clearInvalidConnections();
}

QString DzPropertyParam::getArg(int index) const
{
    return index == 0 ? m_arg : QString();
}

void DzPropertyParam::nameFollowed(const QString& before)
{
    if (m_arg == before)
        m_arg = getName();
    // It is made under the parameter's name, and would be so again on loading.
    if (m_property && m_property->getName() == before)
        DzProperty::Access::setName(m_property, getName());
}

DzProperty* DzPropertyParam::getProperty(int index) const
{
    return index == 0 ? m_property : nullptr;
}

int DzPropertyParam::getPropertyMapToken(int index) const
{
    auto* numeric = qobject_cast<const DzNumericProperty*>(getProperty(index));
    return numeric && numeric->isMappable() ? index : -1;
}

QString DzPropertyParam::getStringValue(int) const
{
    if (auto* color = qobject_cast<const DzColorProperty*>(m_property)) {
        const QColor value = color->getColorValue();
        return QStringLiteral("color( %1, %2, %3)")
            .arg(value.redF())
            .arg(value.greenF())
            .arg(value.blueF());
    }
    if (auto* numeric = qobject_cast<const DzNumericProperty*>(m_property))
        return QString::number(numeric->getDoubleValue());
    return getEscapedString(m_property ? m_property->getValueText() : QString());
}

int DzPropertyParam::getType() const
{
    return m_type;
}

bool DzPropertyParam::canConnect(DzBrickParam* other) const
{
    return DzBrickParam::canConnect(other) && isConvertible(other->getType(), getType());
}
