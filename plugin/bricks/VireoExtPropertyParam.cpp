// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExtPropertyParam.h"

#include "BrickCodeCache.h"
#include "LinkTypes.h"
#include "PropertyCode.h"
#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"

VireoExtPropertyParam::VireoExtPropertyParam()
{
    setShouldWriteTokenInShader(false);
}

DzBrickParam::ParamType VireoExtPropertyParam::getArgType(int) const
{
    return linkTypeFor(DzPropertyParam::getType());
}

int VireoExtPropertyParam::getType() const
{
    return block.fresnel ? static_cast<int>(FresnelLink) : linkTypeFor(DzPropertyParam::getType());
}

DzBrickParam::ParamType VireoExtPropertyParam::getTypeForToken(int) const
{
    return linkTypeFor(DzPropertyParam::getType());
}

bool VireoExtPropertyParam::needsPrepForCall(int) const
{
    return false;
}

bool VireoExtPropertyParam::canConnect(DzBrickParam* other) const
{
    // The host's property parameter would convert between types: its base is asked instead.
    return other && other->getType() == getType() && DzBrickParam::canConnect(other);
}

QString VireoExtPropertyParam::getTypeString(int) const
{
    return linkTypeText(this);
}

void VireoExtPropertyParam::writeParameterCode(SceneCodeWriter* writer)
{
    const int connections = getNumConnections();
    // Which of several is meant nobody knows.
    if (connections > 1)
        return;
    if (connections == 1) {
        writeConnected(writer);
        return;
    }
    if (block.connectedOnly)
        return;
    for (int i = 0; i < getNumProperties(); ++i)
        writePropertyCode(writer, getName(), getProperty(i));
}

void VireoExtPropertyParam::writeConnected(SceneCodeWriter* writer)
{
    VireoBrickBase* brick = qobject_cast<VireoBrickBase*>(getConnection(0)->getTopBrickOwner());
    if (!brick)
        return;
    const CodeResult code = codeFor(brick, writer);
    switch (code.kind) {
    case CodeResult::TextureKind:
        // The renderer takes the displacement map by name, as a plain text.
        if (getName() == QLatin1String("displacementmap"))
            writer->writeString(getName(), code.name);
        else
            writer->writeTextureRef(getName(), code.name);
        break;
    // A brick of another kind may have been given an output of this type as well.
    case CodeResult::MaterialKind:
        writer->writeBlankLine();
        writer->writeString(getName(), code.name);
        break;
    case CodeResult::VolumeKind:
        writer->writeBlankLine();
        writer->writeStatement(getName(), code.name);
        break;
    default:
        break;
    }
}
