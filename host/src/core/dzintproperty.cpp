// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzintproperty.h"

#include <cmath>
#include <limits>

DzIntProperty::DzIntProperty(
    const QString& name, bool canAnimate, bool isUserProperty, int defaultValue)
    : DzNumberProperty(name, canAnimate, isUserProperty, defaultValue)
{
}

void DzIntProperty::setDoubleValue(double value)
{
    const double rounded = std::nearbyint(value);
    if (rounded >= std::numeric_limits<int>::min() && rounded <= std::numeric_limits<int>::max())
        setValue(static_cast<int>(rounded));
}

QString DzIntProperty::getValueText() const
{
    return QString::number(getValue());
}

bool DzIntProperty::setValueText(const QString& text, QString* error)
{
    bool ok = false;
    const int value = text.trimmed().toInt(&ok);
    if (!ok) {
        *error = tr("\"%1\" is not a whole number").arg(text);
        return false;
    }
    if (isLocked()) {
        *error = tr("it is locked");
        return false;
    }
    setValue(value);
    return true;
}

DzProperty* DzIntProperty::createSimilar() const
{
    return new DzIntProperty(getName(), canAnimate(), isUserProperty());
}
