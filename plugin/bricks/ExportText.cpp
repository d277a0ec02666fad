// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ExportText.h"

#include "BrickCodeCache.h"
#include "SceneCodeWriter.h"
#include "VireoBrickBase.h"
#include "dznumericproperty.h"

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
    code.statements = writer.writtenStatements();
    return code;
}

QString exportSeparator()
{
    return QLatin1Char('#') + QString(69, QLatin1Char('-'));
}

namespace {

/// What stands before the material section and before the mesh section.
QString headingText(const char* heading)
{
    return exportSeparator() + QLatin1Char('\n') + QLatin1String(heading) + QLatin1Char('\n');
}

QString textBeforeMaterial()
{
    return headingText("# Material Settings");
}

QString textBeforeMesh()
{
    return QLatin1String("\n\n") + headingText("# Mesh Settings");
}

QVariant objectVariant(QObject* object)
{
    return QVariant::fromValue(object);
}

QVariantMap propertyMap(DzProperty* property)
{
    QVariantMap map;
    map.insert(QLatin1String("brick"), objectVariant(property->getOwner()));
    map.insert(QLatin1String("property"), objectVariant(property));
    return map;
}

QVariantMap statementMap(QObject* brick, int begin, int length)
{
    QVariantMap map;
    map.insert(QLatin1String("brick"), objectVariant(brick));
    map.insert(QLatin1String("begin"), begin);
    map.insert(QLatin1String("length"), length);
    return map;
}

} // namespace

QString exportText(const GeneratedCode& code)
{
    return textBeforeMaterial() + code.materialText + textBeforeMesh() + code.resultName;
}

QVariantMap sceneCodeMap(VireoBrickBase* brick, const GeneratedCode& code)
{
    QVariantList placeholders;
    for (int i = 0; i < code.placeholderKeys.size(); ++i) {
        QVariantMap placeholder = propertyMap(code.placeholderKeys.at(i));
        placeholder.insert(QLatin1String("name"), code.placeholderNames.at(i));
        placeholders.append(placeholder);
    }
    QVariantList unwrittenMaps;
    for (int i = 0; i < code.unwrittenMaps.size(); ++i)
        unwrittenMaps.append(propertyMap(code.unwrittenMaps.at(i)));
    const int materialBegin = textBeforeMaterial().size();
    QVariantList statements;
    for (int i = 0; i < code.statements.size(); ++i) {
        const WrittenStatement& statement = code.statements.at(i);
        statements.append(
            statementMap(statement.brick, materialBegin + statement.begin, statement.length));
    }
    const int meshBegin = materialBegin + code.materialText.size() + textBeforeMesh().size();
    statements.append(statementMap(brick, meshBegin, code.resultName.size()));
    QVariantMap map;
    map.insert(QLatin1String("materialText"), code.materialText);
    map.insert(QLatin1String("meshText"), code.resultName);
    map.insert(QLatin1String("exportText"), exportText(code));
    map.insert(QLatin1String("placeholders"), placeholders);
    map.insert(QLatin1String("unwrittenMaps"), unwrittenMaps);
    map.insert(QLatin1String("statements"), statements);
    return map;
}
