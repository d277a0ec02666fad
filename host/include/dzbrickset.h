// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzrefcounteditem.h"

#include <QObject>

class DzShaderBrick;
class IDzBrickUser;

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

    Q_INVOKABLE DzShaderBrick* getRoot() const { return m_root; }
    Q_INVOKABLE IDzBrickUser* getBrickUserOwner() const { return m_owner; }
    Q_INVOKABLE ShaderType getShaderType() const;

private:
    DzShaderBrick* m_root;
    IDzBrickUser* m_owner;
};
