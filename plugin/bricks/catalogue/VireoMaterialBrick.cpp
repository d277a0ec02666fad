// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoMaterialBrick.h"

#include "LinkTypes.h"
#include "SceneCodeWriter.h"
#include "VireoExtComplexIn.h"

VireoMaterialBrick::VireoMaterialBrick()
{
    addResult(MaterialLink);
    addFloat("bumpmap", "Bump Map", 0);
}

void VireoMaterialBrick::addFloat(const char* name, const char* label, float value)
{
    addNumber(name, label, FloatLink, value, 0);
}

void VireoMaterialBrick::addFresnel(const char* name, float value)
{
    addNumber(name, name, FresnelLink, value, 0);
}

void VireoMaterialBrick::addMaterialInput(const char* name, const char* label)
{
    addComplexInput(false, MaterialLink, QLatin1String(name), QLatin1String(label));
}

CodeResult* VireoMaterialBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    writer->push();
    const QString name = QString::fromLatin1("Lm_material%1").arg(writer->materialCounter++);
    writer->writeBlankLine();
    writer->writeStatement(QLatin1String("MakeNamedMaterial"), name);
    writeParameters(writer);
    // Last, after all other lines.
    writer->writeString(QLatin1String("type"), getLuxType());
    result->kind = CodeResult::MaterialKind;
    result->name = name;
    writer->popAndEmit();
    return result;
}
