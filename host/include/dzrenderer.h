// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"

/// A render engine: receives surfaces and the shaders that they use.
class DzRenderer : public DzBase
{
    Q_OBJECT

public:
    DzRenderer() {}

    /// Makes a shader of this name from its source text; true on success.
    virtual bool compileShader(const QString& name, const QString& source) = 0;
    /// Sets the surface shader of what is rendered next. An empty name clears it. `tokens` and
    /// `values` hold `count` entries each and are null when that is 0; they are the caller's.
    virtual void riSurface(
        const QString& name, int count, const char* const* tokens, const void* const* values)
        = 0;
};

/// The settings of one render.
struct DzRenderSettings {
    explicit DzRenderSettings(DzRenderer* engine)
        : renderEngine(engine)
    {
    }

    DzRenderer* renderEngine; ///< not owned
};
