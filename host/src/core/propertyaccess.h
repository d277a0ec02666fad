// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzproperty.h"
#include "settingstree.h"

/// What the host's own sources do with a property.
struct DzProperty::Access {
    static void setOwner(DzProperty* property, DzElement* owner) { property->m_owner = owner; }
    static bool hasOwner(const DzProperty* property)
    {
        return property->m_owner || property->m_carrier;
    }
    static DzElement* owner(const DzProperty* property) { return property->m_owner; }
    static void setCarrier(DzProperty* property, DzBrickParam* param, DzPropertyCarrier* carrier)
    {
        property->m_param = param;
        property->m_carrier = carrier;
    }
    /// Renames without undo.
    static void setName(DzProperty* property, const QString& name) { property->assignName(name); }
    /// Does what copyFrom() says, without undo.
    static void take(DzProperty* property, const DzProperty* other) { property->takeFrom(other); }
    /// Makes a change with one undo item for all of it.
    static void changeDescription(
        DzProperty* property, const char* kind, const std::function<void()>& change)
    {
        property->changeDescription(kind, change);
    }
    // All of it, without undo.
    typedef DzProperty::Description Description;
    static Description describe(const DzProperty* property) { return property->describe(); }
    static void assign(DzProperty* property, const Description& all)
    {
        property->assignDescription(all);
    }
    static std::unique_ptr<SettingsTree>& kept(DzProperty* property)
    {
        return property->m_keptMembers;
    }
    static const SettingsTree* kept(const DzProperty* property)
    {
        return property->m_keptMembers.get();
    }
};
