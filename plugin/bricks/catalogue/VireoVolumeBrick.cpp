// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoVolumeBrick.h"

#include "LinkTypes.h"
#include "SceneCodeWriter.h"

VireoVolumeBrick::VireoVolumeBrick()
{
    addResult(VolumeLink);
}

void VireoVolumeBrick::addFresnel(const char* name, float value)
{
    addNumber(name, name, FresnelLink, value, 0);
}

CodeResult* VireoVolumeBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    writer->push();
    const QString name = QString::fromLatin1("Lm_volume%1").arg(writer->volumeCounter++);
    writer->writeBlankLine();
    writer->writeStatement2(QLatin1String("MakeNamedVolume"), name, getLuxType());
    writeParameters(writer);
    result->kind = CodeResult::VolumeKind;
    result->name = name;
    writer->popAndEmit();
    return result;
}
