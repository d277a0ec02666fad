// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzmatrixparam.h"

#include "dzfloatproperty.h"

#include <QStringList>
#include <limits>

DzMatrixParam::DzMatrixParam()
    : DzBrickParam(InputDirection)
{
    for (int i = 0; i < 16; ++i) {
        const bool onDiagonal = i % 5 == 0;
        m_components[i] = new DzFloatProperty(QStringLiteral("M%1%2").arg(i / 4 + 1).arg(i % 4 + 1),
            true, false, onDiagonal ? 1.0f : 0.0f);
        m_components[i]->setMinMax(
            -std::numeric_limits<float>::max(), std::numeric_limits<float>::max());
        adoptProperty(m_components[i]);
    }
}

DzMatrixParam::~DzMatrixParam()
{
    for (DzFloatProperty* component : m_components)
        delete component;
}

DzProperty* DzMatrixParam::getProperty(int index) const
{
    return index >= 0 && index < 16 ? m_components[index] : nullptr;
}

QString DzMatrixParam::getStringValue(int) const
{
    QStringList numbers;
    for (const DzFloatProperty* component : m_components)
        numbers.append(QString::number(component->getDoubleValue()));
    return QStringLiteral("matrix( %1)").arg(numbers.join(QStringLiteral(", ")));
}

QString DzMatrixParam::getTypeString(int) const
{
    const QString name = typeToString(MatrixType);
    return isArray() ? QStringLiteral("%1[]").arg(name) : name;
}

bool DzMatrixParam::canConnect(DzBrickParam* other) const
{
    return DzBrickParam::canConnect(other) && other->getType() == getType();
}
