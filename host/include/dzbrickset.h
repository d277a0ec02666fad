// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"

#include <QObject>
#include <QPointer>

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

    /// The root brick; null once it is gone, until the owner makes its sets anew.
    Q_INVOKABLE DzShaderBrick* getRoot() const;
    Q_INVOKABLE IDzBrickUser* getBrickUserOwner() const { return m_owner; }
    /// The kind of the root; None without it.
    Q_INVOKABLE ShaderType getShaderType() const;
    /// Name under which render engines know the set's shader.
    QString getShaderFile() const;

    /// Makes the set's shader the surface of what the engine renders next. The shader is made from
    /// the root's shader code at the first render; the owner is told before and after.
    void apply(DzRenderSettings* settings);

private:
    QPointer<DzShaderBrick> m_root;
    IDzBrickUser* m_owner;
    bool m_hasShader = false;
};
