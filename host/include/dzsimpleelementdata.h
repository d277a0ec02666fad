// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelementdata.h"
#include "dzsettings.h"

/// Element data that is a settings tree.
class DzSimpleElementData : public DzElementData
{
    Q_OBJECT

public:
    explicit DzSimpleElementData(const QString& name, bool persistent = false);

    /// The tree, owned by the item.
    Q_INVOKABLE DzSettings* getSettings() { return &m_settings; }
    const DzSettings* getSettings() const { return &m_settings; }

    DzElementData* duplicate() const override;

private:
    DzSettings m_settings;
};
