// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoRootBrick.h"

#include "LinkTypes.h"
#include "SceneCodeWriter.h"
#include "VireoExtComplexIn.h"
#include "VireoExtPropertyParam.h"
#include "dzproperty.h"
#include "dzshaderstring.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

namespace {

/// Opaque and flat, for the host's own preview.
const char* const previewShader = "Oi = 1;\nCi = color( .33, .66, .33);\n";

} // namespace

VireoRootBrick::VireoRootBrick()
    : sections(new Sections)
{
    QList<VireoParam*>& material = sections->materialSectionParams;
    material << addComplexInput(
        false, MaterialLink, QLatin1String("material"), QLatin1String("Material"));
    material << addComplexInput(
        false, VolumeLink, QLatin1String("Interior"), QLatin1String("Interior"));
    material << addComplexInput(
        false, VolumeLink, QLatin1String("Exterior"), QLatin1String("Exterior"));

    // A statement each: the order in which the inputs are made is that of the text.
    QList<VireoParam*>& mesh = sections->meshSectionParams;
    mesh << addBool("generatetangents", false);
    VireoExtPropertyParam* displacement = addSetting("displacementmap", 0);
    displacement->setDirection(DzBrickParam::InputDirection);
    displacement->setConnectedOnly(true);
    mesh << displacement;
    mesh << addSetting("dmscale", 0.1f);
    mesh << addSetting("dmoffset", 0);
    mesh << addBool("dmnormalsmooth", true);
    mesh << addBool("dmnormalsplit", false);
    mesh << addBool("dmsharpboundary", false);
    mesh << addInt("nsubdivlevels", 0);
    QStringList schemes;
    schemes << QLatin1String("loop") << QLatin1String("microdisplacement");
    mesh << addEnum("subdivscheme", schemes, 0);

    DzUndoStackLock lock;
    // Its value means nothing: only a texture displaces.
    displacement->getProperty(0)->lock(true);
}

VireoRootBrick::~VireoRootBrick()
{
    delete sections;
}

VireoExtPropertyParam* VireoRootBrick::addSetting(const char* name, float value)
{
    return addNumber(name, name, NoLink, value, value);
}

QString VireoRootBrick::getPreferredName() const
{
    return QLatin1String("Vireo Surface");
}

QString VireoRootBrick::getDefaultCategory() const
{
    return QLatin1String("Vireo/");
}

DzBrickSet::ShaderType VireoRootBrick::type() const
{
    return DzBrickSet::Surface;
}

QStringList VireoRootBrick::getBrickActionList() const
{
    // The host's list, not the family's: the root offers no custom inputs.
    return DzShaderBrick::getBrickActionList()
        << QLatin1String("VireoExportCodeAction") << QString();
}

DzShaderString* VireoRootBrick::getBrickClassShaderCode() const
{
    return new DzShaderString(QLatin1String(previewShader));
}

DzShaderString* VireoRootBrick::getShaderCodeCall(const QStringList&) const
{
    return new DzShaderString(QLatin1String(previewShader));
}

CodeResult* VireoRootBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    result->kind = CodeResult::NothingKind;
    writer->push();
    for (int i = 0; i < sections->materialSectionParams.size(); ++i)
        sections->materialSectionParams.at(i)->writeParameterCode(writer);
    writer->popAndEmit();
    // A displacement texture's statement joins the output meanwhile, after the lines above.
    writer->push();
    for (int i = 0; i < sections->meshSectionParams.size(); ++i)
        sections->meshSectionParams.at(i)->writeParameterCode(writer);
    result->name = writer->takeAndDrop();
    return result;
}

VireoRootBrick* findRootBrick(const IDzBrickUser* user)
{
    QList<uint> ids;
    user->getBrickIDs(ids);
    for (int i = ids.size() - 1; i >= 0; --i)
        if (VireoRootBrick* root = qobject_cast<VireoRootBrick*>(user->getBrick(ids.at(i))))
            return root;
    return nullptr;
}
