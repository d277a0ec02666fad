// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtPlugin>

class SceneCodeWriter;

/// A parameter that writes its own lines.
class VireoParam
{
public:
    virtual ~VireoParam() {}

    /// Appends the parameter's lines to the writer's current buffer.
    virtual void writeParameterCode(SceneCodeWriter* writer) = 0;
};

Q_DECLARE_INTERFACE(VireoParam, "VireoParam")
