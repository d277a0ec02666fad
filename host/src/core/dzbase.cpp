// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbase.h"

DzBase::DzBase(const QString& name)
    : m_name(name)
{
}

DzBase::~DzBase()
{
}

void DzBase::setName(const QString& name)
{
    if (name == m_name)
        return;
    m_name = name;
    emit nameChanged(name);
}

QString DzBase::className() const
{
    return QString::fromLatin1(metaObject()->className());
}

bool DzBase::iskindof(const QString& className) const
{
    return inherits(className.toUtf8().constData());
}
