// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>

/// What a script holds of an object: it knows when the object is gone.
///
/// The script engine deletes a handle once no script can reach it. One object has at most one
/// handle at a time, so that a script can compare objects.
class ScriptHandle : public QObject
{
    Q_OBJECT

public:
    typedef QHash<const QObject*, ScriptHandle*> Registry;

    /// Enters itself into the registry, which must outlive it, and leaves it when deleted.
    ScriptHandle(QObject* target, Registry* registry);
    ~ScriptHandle() override;

    /// The object, null when it is gone.
    QObject* target() const { return m_target; }
    /// Name of the object's class, also after it is gone.
    QString className() const;

private:
    QPointer<QObject> m_target;
    const QObject* m_key;
    const QMetaObject* m_class;
    Registry* m_registry;
};
