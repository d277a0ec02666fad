// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzelementdata.h"

#include "dzsimpleelementdata.h"

DzElementData::DzElementData(const QString& name, bool persistent)
    : DzBase(name)
    , m_persistent(persistent)
{
}

DzSimpleElementData::DzSimpleElementData(const QString& name, bool persistent)
    : DzElementData(name, persistent)
{
}

DzElementData* DzSimpleElementData::duplicate() const
{
    auto* copy = new DzSimpleElementData(getName(), isPersistent());
    copy->m_settings = m_settings;
    return copy;
}
