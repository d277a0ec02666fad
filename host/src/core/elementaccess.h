// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"

/// What properties and undo steps do with an element.
struct DzElement::Access {
    static void attach(DzElement* element, int index, DzProperty* property)
    {
        element->attach(index, property);
    }
    /// Takes the property off the list without deleting it; returns the index it had.
    static int detach(DzElement* element, DzProperty* property)
    {
        return element->detach(property);
    }
    /// Notes a property's coming name; false when another property has it.
    static bool rename(DzElement* element, DzProperty* property, const QString& name)
    {
        return element->renameProperty(property, name);
    }
};

/// What an element does with its data items.
struct DzElementData::Access {
    static DzElement*& owner(DzElementData* item) { return item->m_owner; }
};
