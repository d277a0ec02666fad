// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptobjects.h"

#include "dzrefcounteditem.h"
#include "dzundostack.h"

#include <utility>

void ScriptObjects::own(QObject* object)
{
    if (!object || owns(object))
        return;
    auto* counted = dynamic_cast<DzRefCountedItem*>(object);
    if (counted)
        counted->ref();
    // What stood at the address before is gone.
    if (m_serials.contains(object))
        m_objects.remove(m_serials.value(object));
    m_objects.insert(m_nextSerial, Owned { object, counted });
    m_serials.insert(object, m_nextSerial++);
}

void ScriptObjects::ownIfFresh(QObject* object)
{
    const auto* counted = dynamic_cast<DzRefCountedItem*>(object);
    if (counted && counted->getRefCount() == 0)
        own(object);
}

const ScriptObjects::Owned* ScriptObjects::find(const QObject* object) const
{
    const auto serial = m_serials.find(object);
    if (serial == m_serials.end())
        return nullptr;
    const auto owned = m_objects.find(serial.value());
    return owned != m_objects.end() && owned->object == object ? &owned.value() : nullptr;
}

void ScriptObjects::release(QObject* object)
{
    const Owned* found = find(object);
    if (!found)
        return;
    const Owned owned = *found;
    m_objects.remove(m_serials.take(object));
    if (owned.counted)
        owned.counted->unref();
}

void ScriptObjects::releaseIfShared(QObject* object)
{
    const Owned* owned = find(object);
    if (owned && owned->counted && owned->counted->isShared())
        release(object);
}

bool ScriptObjects::deleteNow(QObject* object)
{
    const Owned* found = find(object);
    if (!found)
        return false;
    const Owned owned = *found;
    m_objects.remove(m_serials.take(object));
    giveUp(owned);
    return true;
}

void ScriptObjects::deleteAll()
{
    // What is left over was no work of the user's.
    const DzUndoStackLock lock;
    m_serials.clear();
    const QMap<quint64, Owned> objects = std::exchange(m_objects, {});
    for (auto it = objects.end(); it != objects.begin();)
        giveUp(*--it);
}

void ScriptObjects::giveUp(const Owned& owned)
{
    if (!owned.object)
        return;
    if (owned.counted)
        owned.counted->unref();
    else
        delete owned.object;
}
