// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelement.h"

/// What users call a node or a surface: its label, or its name where it has none.
inline QString labelOf(const DzElement* element)
{
    return element->getLabel().isEmpty() ? element->getName() : element->getLabel();
}
