// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ImageAndConstantTextureBricks.h"

#include "PropertyCode.h"
#include "SceneCodeWriter.h"
#include "VireoExtPropertyParam.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"

namespace {

/// The property of the wanted class behind an input; null when either is gone.
template <typename Property>
Property* propertyOf(const QPointer<VireoExtPropertyParam>& param)
{
    return param ? qobject_cast<Property*>(param->getProperty(0)) : nullptr;
}

bool isLinked(const QPointer<VireoExtPropertyParam>& param)
{
    return param && param->getNumConnections() > 0;
}

/// What the caller is told of the colour in the statement.
void noteColor(CodeResult* result, double red, double green, double blue, int components)
{
    result->aux = components;
    result->values[0] = red;
    result->values[1] = green;
    result->values[2] = blue;
    result->values[3] = 1;
}

// What the two image maps differ in, told by the class of the tint.

void noteTint(CodeResult* result, const DzFloatProperty* tint)
{
    noteColor(result, tint->getValue(), tint->getValue(), tint->getValue(), 1);
}

void noteTint(CodeResult* result, const DzColorProperty* tint)
{
    const QColor color = tint->getColorValue();
    noteColor(result, color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0, 3);
}

bool isNeutral(const DzFloatProperty* tint)
{
    return tint->getValue() == 1.0f;
}

/// White that is not opaque is a tint, although no alpha is ever written.
bool isNeutral(const DzColorProperty* tint)
{
    return tint->getColorValue() == QColor(255, 255, 255, 255);
}

void writeTint(SceneCodeWriter* writer, const char* name, const DzFloatProperty* tint)
{
    writer->writeFloat(QLatin1String(name), tint->getValue());
}

void writeTint(SceneCodeWriter* writer, const char* name, const DzColorProperty* tint)
{
    writer->writeColor(QLatin1String(name), tint->getColorValue());
}

void writeTintPlaceholder(SceneCodeWriter* writer, const char* name, DzFloatProperty* tint)
{
    writeFloatPlaceholder(
        writer, QLatin1String(name), placeholderName(writer, tint, tint->getName()));
}

void writeTintPlaceholder(SceneCodeWriter* writer, const char* name, DzColorProperty* tint)
{
    writeColorPlaceholder(
        writer, QLatin1String(name), placeholderName(writer, tint, tint->getName()));
}

} // namespace

VireoTexFltConstantBrick::VireoTexFltConstantBrick()
{
    addFloat("value", 1);
}

VireoTexFnlConstantBrick::VireoTexFnlConstantBrick()
{
    addFloat("value", 1);
}

VireoTexFltNormalMapBrick::VireoTexFltNormalMapBrick()
{
    addFloat("filename", 1);
    add2DBlock();
}

VireoTexClrConstantBrick::VireoTexClrConstantBrick()
    : valueParam(addColor("value", 255, 255, 255))
    , scaleParam(addFloat("scale", 1))
{
}

CodeResult* VireoTexClrConstantBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    DzColorProperty* color = propertyOf<DzColorProperty>(valueParam);
    DzFloatProperty* scale = propertyOf<DzFloatProperty>(scaleParam);
    if (!color || !scale)
        return VireoTextureColorBrick::writeCode(result, writer);
    const double s = scale->getValue();
    const QColor c = color->getColorValue();
    const double red = s * c.red() / 255.0;
    const double green = s * c.green() / 255.0;
    const double blue = s * c.blue() / 255.0;
    // With placeholders a texture may stand in the colour's place.
    if (writer->literalValues || !isLinked(valueParam))
        noteColor(result, red, green, blue, 3);
    if (writer->literalValues) {
        const QString name = beginTexture(writer, QLatin1String("constant"));
        writer->writeColor3(QLatin1String("value"), red, green, blue);
        writer->noteUnwrittenMap(color);
        writer->noteUnwrittenMap(scale);
        endTexture(result, writer, name);
        return result;
    }
    VireoTextureColorBrick::writeCode(result, writer);
    const QString constant = result->name;
    const QString name = beginTexture(writer, QLatin1String("scale"));
    writer->writeTextureRef(QLatin1String("tex1"), constant);
    // Neither a value nor a placeholder for one carries a map.
    writer->noteUnwrittenMap(scale);
    if (scale->isLocked()) {
        // A locked scale goes under "value", not "tex2", on purpose.
        writer->writeColor3(QLatin1String("value"), s, s, s);
    } else {
        const QString placeholder = placeholderName(writer, scale, scale->getName());
        writeColorPlaceholder3(writer, QLatin1String("tex2"), placeholder);
    }
    endTexture(result, writer, name);
    return result;
}

VireoTexFltImageMapBrick::VireoTexFltImageMapBrick()
    : filenameParam(addFloat("filename", 1))
{
    addImageBlock();
    add2DBlock();
}

VireoTexClrImageMapBrick::VireoTexClrImageMapBrick()
    : filenameParam(addColor("filename", 255, 255, 255))
{
    addImageBlock();
    add2DBlock();
}

template <typename Property>
CodeResult* VireoTextureBrick::writeImageMap(
    Property* tint, bool isImageLinked, CodeResult* result, SceneCodeWriter* writer)
{
    const bool isConstant = writer->literalValues && tint && !tint->isMapped();
    if (tint && (isConstant || !isImageLinked))
        noteTint(result, tint);
    if (isConstant) {
        const QString name = beginTexture(writer, QLatin1String("constant"));
        writeTint(writer, "value", tint);
        endTexture(result, writer, name);
        return result;
    }
    VireoTextureBrick::writeCode(result, writer);
    if (!tint || isImageLinked)
        return result;
    const bool isLiteral = tint->isLocked() || writer->literalValues;
    if (isLiteral && isNeutral(tint))
        return result;
    const QString image = result->name;
    const QString name = beginTexture(writer, QLatin1String("scale"));
    writer->writeTextureRef(QLatin1String("tex1"), image);
    if (isLiteral)
        writeTint(writer, "tex2", tint);
    else
        writeTintPlaceholder(writer, "tex2", tint);
    endTexture(result, writer, name);
    return result;
}

CodeResult* VireoTexFltImageMapBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    return writeImageMap(
        propertyOf<DzFloatProperty>(filenameParam), isLinked(filenameParam), result, writer);
}

CodeResult* VireoTexClrImageMapBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    return writeImageMap(
        propertyOf<DzColorProperty>(filenameParam), isLinked(filenameParam), result, writer);
}
