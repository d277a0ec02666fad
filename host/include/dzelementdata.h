// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"

class DzElement;

/// A named object that travels with an element.
class DzElementData : public DzBase
{
    Q_OBJECT

public:
    DzElementData(const QString& name, bool persistent);

    /// True when the item is saved with its element.
    Q_INVOKABLE bool isPersistent() const { return m_persistent; }
    Q_INVOKABLE DzElement* getOwner() const { return m_owner; }
    /// A copy for another element, owned by the caller.
    Q_INVOKABLE virtual DzElementData* duplicate() const = 0;

    /// For the host's own sources.
    struct Access;

private:
    bool m_persistent;
    DzElement* m_owner = nullptr;
};
