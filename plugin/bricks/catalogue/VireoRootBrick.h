// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickBase.h"

#include <QList>

class IDzBrickUser;
class VireoParam;

/// The end of a network: the surface's material and volumes, and the mesh's displacement and
/// subdivision. It writes the material section into the output; the mesh section is the name of
/// its code result.
class VireoRootBrick : public VireoBrickBase
{
    Q_OBJECT

public:
    VireoRootBrick();
    ~VireoRootBrick() override;

    // DzShaderBrick
    QString getPreferredName() const override;
    QString getDefaultCategory() const override;
    DzBrickSet::ShaderType type() const override;
    QStringList getBrickActionList() const override;
    DzShaderString* getBrickClassShaderCode() const override;
    DzShaderString* getShaderCodeCall(const QStringList& varCallNames) const override;

    // VireoBrickBase
    CodeResult* writeCode(CodeResult* result, SceneCodeWriter* writer) override;

private:
    /// The parameters of each section in the order in which they are written. They belong to the
    /// brick like any others.
    struct Sections {
        QList<VireoParam*> materialSectionParams;
        QList<VireoParam*> meshSectionParams;
    };

    VireoExtPropertyParam* addSetting(const char* name, float value);

    Sections* sections;
};

/// The root brick of a network, the last when there are several; null when there is none.
VireoRootBrick* findRootBrick(const IDzBrickUser* user);
