// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCode.h"

#include "BrickCodeCache.h"
#include "ExportText.h"
#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"
#include "dzbrickcodekeys.h"
#include "dznumericproperty.h"

namespace {

using namespace DzBrickCodeKeys;

QVariant objectVariant(QObject* object)
{
    return QVariant::fromValue(object);
}

QVariantMap propertyMap(DzProperty* carrier)
{
    QVariantMap map;
    map.insert(QLatin1String(brick), objectVariant(carrier->getOwner()));
    map.insert(QLatin1String(property), objectVariant(carrier));
    return map;
}

QVariantMap statementMap(QObject* writer, int place, int size)
{
    QVariantMap map;
    map.insert(QLatin1String(brick), objectVariant(writer));
    map.insert(QLatin1String(begin), place);
    map.insert(QLatin1String(length), size);
    return map;
}

QVariantList placeholderList(const GeneratedCode& code)
{
    QVariantList list;
    for (int i = 0; i < code.placeholderKeys.size(); ++i) {
        QVariantMap placeholder = propertyMap(code.placeholderKeys.at(i));
        placeholder.insert(QLatin1String(name), code.placeholderNames.at(i));
        list.append(placeholder);
    }
    return list;
}

QVariantList unwrittenMapList(const GeneratedCode& code)
{
    QVariantList list;
    for (int i = 0; i < code.unwrittenMaps.size(); ++i)
        list.append(propertyMap(code.unwrittenMaps.at(i)));
    return list;
}

QVariantList imageFileList(const GeneratedCode& code)
{
    QVariantList list;
    for (int i = 0; i < code.imageFiles.size(); ++i) {
        QVariantMap image = propertyMap(code.imageFiles.at(i).property);
        image.insert(QLatin1String(file), code.imageFiles.at(i).path);
        list.append(image);
    }
    return list;
}

} // namespace

GeneratedCode generateCode(VireoBrickBase* startBrick, const GenerateOptions& options)
{
    // What was written for an earlier run has other numbers and maybe other values.
    BrickCodeCache::instance().clear();
    SceneCodeWriter writer;
    writer.literalValues = options.literalValues;
    writer.mapFiles = options.mapFiles;
    writer.imageNames = options.imageNames;
    const CodeResult result = codeFor(startBrick, &writer);
    GeneratedCode code;
    code.materialText = writer.outputText();
    code.resultName = result.name;
    code.placeholderKeys = writer.placeholderKeys;
    code.placeholderNames = writer.placeholderNames;
    code.unwrittenMaps = writer.unwrittenMaps;
    code.imageFiles = writer.imageFiles;
    code.statements = writer.writtenStatements();
    return code;
}

QString exportText(const GeneratedCode& code)
{
    return ExportText(code.materialText, code.resultName).text;
}

QVariantMap sceneCodeMap(VireoBrickBase* startBrick, const GeneratedCode& code)
{
    const ExportText whole(code.materialText, code.resultName);
    QVariantList list;
    for (int i = 0; i < code.statements.size(); ++i) {
        const WrittenStatement& statement = code.statements.at(i);
        list.append(
            statementMap(statement.brick, whole.materialBegin + statement.begin, statement.length));
    }
    list.append(statementMap(startBrick, whole.meshBegin, code.resultName.size()));
    QVariantMap map;
    map.insert(QLatin1String(materialText), code.materialText);
    map.insert(QLatin1String(meshText), code.resultName);
    map.insert(QLatin1String(DzBrickCodeKeys::exportText), whole.text);
    map.insert(QLatin1String(placeholders), placeholderList(code));
    map.insert(QLatin1String(unwrittenMaps), unwrittenMapList(code));
    map.insert(QLatin1String(imageFiles), imageFileList(code));
    map.insert(QLatin1String(statements), list);
    return map;
}
