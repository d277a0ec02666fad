// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scripthandle.h"

#include <QHash>
#include <QMap>
#include <QPointer>

class DzRefCountedItem;

/// The objects that a script made or was given, as long as they belong to nobody else.
///
/// A counted object is held by one share, any other by itself.
class ScriptObjects
{
public:
    ScriptObjects() {}
    ~ScriptObjects() { deleteAll(); }

    /// Takes an object that nobody owns.
    void own(QObject* object);
    /// Takes a counted object that nobody has a share of; leaves any other alone.
    void ownIfFresh(QObject* object);
    bool owns(const QObject* object) const { return m_serials.contains(object) && find(object); }
    /// Forgets an object that somebody else owns now.
    void release(QObject* object);
    /// Gives up the share of a counted object when somebody else took one.
    void releaseIfShared(QObject* object);
    /// Deletes an object that is owned, unless somebody else holds a share; false for others.
    bool deleteNow(QObject* object);
    /// Deletes all, those made last first.
    void deleteAll();

private:
    Q_DISABLE_COPY(ScriptObjects)

    struct Owned {
        QPointer<QObject> object;
        DzRefCountedItem* counted; ///< null for an object that is not counted
    };

    const Owned* find(const QObject* object) const;
    static void giveUp(const Owned& owned);

    quint64 m_nextSerial = 0;
    QMap<quint64, Owned> m_objects; ///< in order of making
    QHash<const QObject*, quint64> m_serials;
};
