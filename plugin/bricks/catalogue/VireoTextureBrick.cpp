// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "VireoTextureBrick.h"

#include "LinkTypes.h"
#include "NumberedPairs.h"
#include "PropertyCode.h"
#include "PropertyDefaults.h"
#include "SceneCodeWriter.h"
#include "VireoExtPropertyParam.h"
#include "VireoExtVec3Param.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzundostack.h"

VireoTextureBrick::VireoTextureBrick()
{
}

VireoTextureBrick::~VireoTextureBrick()
{
}

VireoTextureFloatBrick::VireoTextureFloatBrick()
{
    addResult(FloatLink);
}

VireoTextureColorBrick::VireoTextureColorBrick()
{
    addResult(ColorLink);
}

VireoTextureFresnelBrick::VireoTextureFresnelBrick()
{
    addResult(FresnelLink);
}

QString VireoTextureBrick::getLuxTextureKind() const
{
    return QString();
}

CodeResult* VireoTextureBrick::writeCode(CodeResult* result, SceneCodeWriter* writer)
{
    const QString name = beginTexture(writer, getLuxType());
    writeParameters(writer);
    endTexture(result, writer, name);
    return result;
}

QString VireoTextureBrick::beginTexture(SceneCodeWriter* writer, const QString& luxType)
{
    writer->push();
    const QString name = QString::fromLatin1("Lm_texture%1").arg(writer->textureCounter++);
    writer->writeBlankLine();
    writer->writeTexture(name, getLuxTextureKind(), luxType);
    return name;
}

void VireoTextureBrick::endTexture(CodeResult* result, SceneCodeWriter* writer, const QString& name)
{
    result->kind = CodeResult::TextureKind;
    result->name = name;
    writer->popAndEmit();
}

DzElement* VireoTextureBrick::setAttributes(const DzSettings* settings)
{
    // First, so that the pairs stand before the inputs that the base makes anew.
    if (pairs)
        pairs->readCount(settings);
    return VireoBrickBase::setAttributes(settings);
}

void VireoTextureBrick::countChanged()
{
    if (pairs)
        pairs->matchCount();
}

void VireoTextureBrick::writeParameters(SceneCodeWriter* writer)
{
    if (pairs) {
        pairs->write(writer);
        return;
    }
    for (int i = 0; i < getNumParameters(); ++i) {
        writePlainProperties(writer, i);
        writeParameter(getParameter(i), writer);
        writeBlockVector(writer, getParameter(i));
    }
    writePlainProperties(writer, getNumParameters());
}

void VireoTextureBrick::writePlainProperties(SceneCodeWriter* writer, int position)
{
    for (int i = 0; i < plainProperties.size(); ++i) {
        const PlainProperty& plain = plainProperties.at(i);
        DzProperty* property = plain.position == position ? findProperty(plain.name) : nullptr;
        if (property)
            writePropertyCode(writer, plain.name, property);
    }
}

/// Vectors of the blocks are values in every mode: nothing is published for them.
void VireoTextureBrick::writeBlockVector(SceneCodeWriter* writer, const DzBrickParam* param)
{
    for (int i = 0; i < blockParams.size(); ++i) {
        if (blockParams.at(i) != param)
            continue;
        const DzVec3 value = blockParams.at(i)->getValue();
        writer->writeVector(param->getName(), value.m_x, value.m_y, value.m_z);
    }
}

VireoExtPropertyParam* VireoTextureBrick::addFloat(const char* name, float value)
{
    return addFloat(name, value, value);
}

VireoExtPropertyParam* VireoTextureBrick::addFloat(
    const char* name, float value, float defaultValue)
{
    return addNumber(name, name, FloatLink, value, defaultValue);
}

VireoExtPropertyParam* VireoTextureBrick::addFresnel(const char* name, float value)
{
    return addNumber(name, name, FresnelLink, value, value);
}

void VireoTextureBrick::addNumberedPairs(const char* numberName, VireoExtPropertyParam* amount)
{
    pairs.reset(new NumberedPairs(this, numberName, amount));
    connect(pairs->createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}

void VireoTextureBrick::addPlainFloat(const char* name, float value)
{
    DzUndoStackLock lock;
    DzFloatProperty* property = new DzFloatProperty(QLatin1String(name), true, false, value);
    property->setMinMax(-PropertyDefaults::floatLimit, PropertyDefaults::floatLimit);
    property->setPath(PropertyDefaults::path());
    addProperty(property);
    PlainProperty plain;
    plain.name = QLatin1String(name);
    plain.position = getNumParameters();
    plainProperties.append(plain);
}

void VireoTextureBrick::addBlockVector(const char* name, const DzVec3& value)
{
    const QLatin1String text(name);
    blockParams.append(QPointer<VireoExtVec3Param>(addVec3Param(false, PropertyDefaults::path(),
        text, text, DzBrickParam::VectorType, value, DzBrickParam::InputDirection)));
}

void VireoTextureBrick::add2DBlock()
{
    QStringList mappings;
    mappings << QLatin1String("uv") << QLatin1String("spherical") << QLatin1String("cylindrical")
             << QLatin1String("planar");
    addEnum("mapping", mappings, 0);
    addFloat("uscale", 1);
    addFloat("vscale", 1);
    addBlockVector("v1", DzVec3(1, 0, 0));
    addBlockVector("v2", DzVec3(0, 1, 0));
}

void VireoTextureBrick::add3DBlock()
{
    // One item has a blank and the other has none: the renderer's words are spelt so.
    QStringList systems;
    systems << QLatin1String("global") << QLatin1String("local") << QLatin1String("global normal")
            << QLatin1String("localnormal") << QLatin1String("uv");
    addEnum("coordinates", systems, 0);
    // All three start at (1, 0, 0), which collapses the texture until a user sets its scale.
    addBlockVector("translate", DzVec3(1, 0, 0));
    addBlockVector("rotate", DzVec3(1, 0, 0));
    addBlockVector("scale", DzVec3(1, 0, 0));
}

void VireoTextureBrick::addImageBlock()
{
    const QLatin1String gamma("gamma");
    addFloatParam(false, PropertyDefaults::path(), gamma, gamma, gamma, 1, 1, 0, 10, false,
        linkTypeName(FloatLink));
    QStringList filters;
    filters << QLatin1String("bilinear") << QLatin1String("mipmap_trilinear")
            << QLatin1String("mipmap_ewa") << QLatin1String("nearest");
    addEnum("filtertype", filters, 0);
    addFloat("maxanisotropy", 8);
    QStringList wraps;
    wraps << QLatin1String("repeat") << QLatin1String("black") << QLatin1String("white")
          << QLatin1String("clamp");
    addEnum("wrap", wraps, 0);
    addInt("discardmipmaps", 0);
    QStringList channels;
    channels << QLatin1String("red") << QLatin1String("green") << QLatin1String("blue")
             << QLatin1String("alpha") << QLatin1String("mean") << QLatin1String("colored_mean");
    addEnum("channel", channels, channels.indexOf(QLatin1String("mean")));
}

void VireoTextureBrick::addBrickRows()
{
    addColor("bricktex", 255, 255, 255);
    addColor("mortartex", 51, 51, 51);
    addColor("brickmodtex", 255, 255, 255);
    addFloat("brickwidth", 0.3f);
    addFloat("brickheight", 0.1f);
    addFloat("brickdepth", 0.15f);
    addFloat("mortarsize", 0.01f);
    addFloat("brickrun", 0.75f);
    addFloat("brickbevel", 0);
    QStringList bonds;
    bonds << QLatin1String("stacked") << QLatin1String("flemish") << QLatin1String("english")
          << QLatin1String("herringbone") << QLatin1String("basket") << QLatin1String("chain link");
    addEnum("brickbond", bonds, 0);
}
