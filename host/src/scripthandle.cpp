// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scripthandle.h"

ScriptHandle::ScriptHandle(QObject* target, Registry* registry)
    : m_target(target)
    , m_key(target)
    , m_class(target->metaObject())
    , m_registry(registry)
{
    m_registry->insert(m_key, this);
}

ScriptHandle::~ScriptHandle()
{
    // Another object may have been made at the same address since, and have a handle of its own.
    const auto entry = m_registry->find(m_key);
    if (entry != m_registry->end() && entry.value() == this)
        m_registry->erase(entry);
}

QString ScriptHandle::className() const
{
    return QString::fromLatin1(m_class->className());
}
