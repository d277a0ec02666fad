// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"

/// The settings of one property, as DzProperty::getAttributes() writes them.
class DzPropertySettings : public DzSettings
{
    Q_OBJECT

public:
    DzPropertySettings() {}
    explicit DzPropertySettings(const DzSettings& other)
        : DzSettings(other)
    {
    }
};
