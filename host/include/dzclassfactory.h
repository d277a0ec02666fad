// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzguid.h"

#include <QObject>

/// Makes objects of one class by name.
class DzClassFactory
{
public:
    DzClassFactory(const QMetaObject& metaObject, const DzGuid& guid)
        : m_metaObject(metaObject)
        , m_guid(guid)
    {
    }
    virtual ~DzClassFactory() {}

    /// A new object, owned by the caller.
    virtual QObject* createInstance() const = 0;

    QString className() const { return QString::fromLatin1(m_metaObject.className()); }
    const QMetaObject& getMetaObject() const { return m_metaObject; }
    DzGuid getGuid() const { return m_guid; }

private:
    const QMetaObject& m_metaObject;
    DzGuid m_guid;
};

/// The factory of a class that is constructed without arguments.
template <typename T>
class DzTClassFactory : public DzClassFactory
{
public:
    DzTClassFactory(const QMetaObject& metaObject, const DzGuid& guid)
        : DzClassFactory(metaObject, guid)
    {
    }
    QObject* createInstance() const override { return new T; }
};
