// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <memory>

/// What a script holds of an object: it knows when the object is gone.
class ScriptHandle
{
public:
    explicit ScriptHandle(QObject* target)
        : m_target(target)
        , m_class(target->metaObject())
    {
    }

    /// The object, null when it is gone.
    QObject* target() const { return m_target; }
    /// Name of the object's class, also after it is gone.
    QString className() const { return QString::fromLatin1(m_class->className()); }

private:
    QPointer<QObject> m_target;
    const QMetaObject* m_class;
};

typedef std::shared_ptr<ScriptHandle> ScriptHandlePtr;
Q_DECLARE_METATYPE(ScriptHandlePtr)
