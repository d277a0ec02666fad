// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"

#include <QObject>

class DzShaderBrick;
class IDzBrickUser;
struct DzRenderSettings;

/// The bricks of one user that form one shader: a root brick and what feeds it.
class DzBrickSet : public QObject, public DzRefCountedItem
{
    Q_OBJECT

public:
    enum ShaderType {
        None,
        Surface,
        Light,
        LightArea,
        VolumeAtmosphere,
        VolumeInterior,
        VolumeExterior,
        Displacement,
        Imager
    };
    Q_ENUM(ShaderType)

    DzBrickSet(DzShaderBrick* root, IDzBrickUser* owner);

    DzShaderBrick* getRoot() const { return m_root; }
    IDzBrickUser* getBrickUserOwner() const { return m_owner; }
    ShaderType getShaderType() const;
    /// Name under which render engines know the set's shader.
    QString getShaderFile() const;

    /// Makes the set's shader the surface of what the engine renders next. The shader is made from
    /// the root's shader code at the first render; the owner is told before and after.
    void apply(DzRenderSettings* settings);

private:
    DzShaderBrick* m_root;
    IDzBrickUser* m_owner;
    bool m_hasShader = false;
};
