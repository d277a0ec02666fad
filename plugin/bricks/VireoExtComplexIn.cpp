// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoExtComplexIn.h"

#include "BrickCodeCache.h"
#include "LinkTypes.h"
#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"

VireoExtComplexIn::VireoExtComplexIn()
    : DzBrickParam(InputDirection)
{
}

int VireoExtComplexIn::getNumTokensNeeded() const
{
    return 1;
}

QString VireoExtComplexIn::getArg(int) const
{
    return block.argName;
}

DzBrickParam::ParamType VireoExtComplexIn::getArgType(int) const
{
    return block.linkType;
}

int VireoExtComplexIn::getPropertyMapToken(int) const
{
    return -1;
}

int VireoExtComplexIn::getType() const
{
    return block.linkType;
}

QString VireoExtComplexIn::getStringValue(int) const
{
    return block.linkType == StringType ? getEscapedString(QString()) : QLatin1String("0");
}

bool VireoExtComplexIn::canConnect(DzBrickParam* other) const
{
    return other && other->getType() == getType() && DzBrickParam::canConnect(other);
}

QString VireoExtComplexIn::getTypeString(int) const
{
    return linkTypeText(this);
}

void VireoExtComplexIn::setLinkType(int code)
{
    if (!isLinkType(code) || code == block.linkType)
        return;
    block.linkType = code;
    emit typeChanged();
    clearInvalidConnections();
}

void VireoExtComplexIn::writeParameterCode(SceneCodeWriter* writer)
{
    // Which of several is meant nobody knows: then nothing is written, as by the other inputs.
    if (getNumConnections() != 1)
        return;
    VireoBrickBase* brick = qobject_cast<VireoBrickBase*>(getConnection(0)->getTopBrickOwner());
    if (!brick)
        return;
    const CodeResult code = codeFor(brick, writer);
    // The root stands above this class: it is known by name.
    const bool isRoot = getTopBrickOwner()->inherits("VireoRootBrick");
    if (code.kind == CodeResult::MaterialKind && isRoot) {
        writer->writeBlankLine();
        writer->writeStatement(QLatin1String("NamedMaterial"), code.name);
    } else if (code.kind == CodeResult::VolumeKind && isRoot) {
        writer->writeBlankLine();
        writer->writeStatement(getName(), code.name);
    } else if (code.kind == CodeResult::MaterialKind) {
        writer->writeString(getName(), code.name);
    }
}
