// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzfileproperty.h"

DzFileProperty::DzFileProperty(const QString& name, bool isUserProperty)
    : DzStringProperty(name, isUserProperty)
{
}

void DzFileProperty::setFilter(const QString& filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    emit filterChanged();
}

DzProperty* DzFileProperty::createSimilar() const
{
    auto* copy = new DzFileProperty(getName(), isUserProperty());
    copy->setDefaultValue(getDefaultValue());
    copy->m_type = m_type;
    copy->m_filter = m_filter;
    return copy;
}
