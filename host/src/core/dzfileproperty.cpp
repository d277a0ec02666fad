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
    return new DzFileProperty(getName(), isUserProperty());
}

void DzFileProperty::assignAll(const DzProperty* model)
{
    DzStringProperty::assignAll(model);
    auto* source = static_cast<const DzFileProperty*>(model);
    m_type = source->m_type;
    m_filter = source->m_filter;
}
