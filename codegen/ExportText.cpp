// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ExportText.h"

#include "BrickCodeCache.h"
#include "SceneCodeWriter.h"
#include "VireoRootBrick.h"
#include "idzbrickuser.h"

GeneratedCode generateCode(VireoBrickBase* brick, const GenerateOptions& options)
{
    // What was written for an earlier run has other numbers and maybe other values.
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = options.literalValues;
    writer.mapFiles = options.mapFiles;
    const CodeResult result = codeFor(brick, &writer);
    GeneratedCode code;
    code.materialText = writer.outputText();
    code.resultName = result.name;
    code.placeholderKeys = writer.placeholderKeys;
    code.placeholderNames = writer.placeholderNames;
    code.unwrittenMaps = writer.unwrittenMaps;
    return code;
}

QString exportSeparator()
{
    return QLatin1Char('#') + QString(69, QLatin1Char('-'));
}

QString exportText(const GeneratedCode& code)
{
    QStringList paragraphs;
    paragraphs << exportSeparator() << QLatin1String("# Material Settings") << code.materialText
               << QString() << exportSeparator() << QLatin1String("# Mesh Settings")
               << code.resultName;
    return paragraphs.join(QLatin1String("\n"));
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
