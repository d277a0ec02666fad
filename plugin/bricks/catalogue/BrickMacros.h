// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What sets a material or volume apart: the renderer's word for it and its label. Goes into the
/// class body after Q_OBJECT.
#define VIREO_BRICK(Class, luxType, label)                                                         \
public:                                                                                            \
    Class();                                                                                       \
    QString getLuxType() const override                                                            \
    {                                                                                              \
        return QLatin1String(luxType);                                                             \
    }                                                                                              \
    QString getPreferredName() const override                                                      \
    {                                                                                              \
        return QLatin1String(label);                                                               \
    }

/// The same for a texture, with its category.
#define VIREO_TEXTURE_BRICK(Class, luxType, label, category)                                       \
    VIREO_BRICK(Class, luxType, label)                                                             \
    QString getDefaultCategory() const override                                                    \
    {                                                                                              \
        return QLatin1String(category);                                                            \
    }
