// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MultiInputTextureBricks.h"

#include "LinkTypes.h"
#include "SceneCodeWriter.h"
#include "VireoExtPropertyParam.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzpropertysettings.h"
#include "dzundostack.h"

namespace {

const float floatLimit = 1e38f;
const int maximumCount = 10;

QLatin1String generalPath()
{
    return QLatin1String("/General");
}

} // namespace

NumberedPairs::NumberedPairs(VireoBrickBase* owner, const char* name, TextureKind textureKind)
    : brick(owner)
    , numberName(QLatin1String(name))
    , kind(textureKind)
{
}

DzIntProperty* NumberedPairs::createCount()
{
    DzUndoStackLock lock;
    count = new DzIntProperty(QLatin1String("count"), true, false, 0);
    count->setMinMax(0, maximumCount);
    count->setIsClamped(true);
    count->setPath(generalPath());
    brick->addProperty(count);
    return count;
}

void NumberedPairs::readCount(const DzSettings* attributes)
{
    const DzSettings* properties = attributes
        ? attributes->getSettingsValue(QLatin1String("BrickProperties"))
        : nullptr;
    const DzSettings* stored
        = properties ? properties->getSettingsValue(QLatin1String("count")) : nullptr;
    DzPropertySettings value;
    if (count && stored && stored->copySetting(QLatin1String("Value"), &value))
        count->setAttributes(&value);
}

void NumberedPairs::matchCount()
{
    DzUndoStackLock lock;
    // A file may take the clamping away.
    const int wanted = count ? qBound(0, count->getValue(), maximumCount) : 0;
    for (int i = 1; i <= wanted; ++i)
        completePair(i);
    while (pairs.size() > wanted) {
        const Pair pair = pairs.takeLast();
        brick->deleteParam(pair.texture);
        brick->deleteParam(pair.number);
    }
}

void NumberedPairs::completePair(int index)
{
    if (pairs.size() < index)
        pairs.append(Pair());
    Pair& pair = pairs[index - 1];
    if (!pair.number)
        pair.number = createNumber(numberName + QString::number(index));
    if (!pair.texture)
        pair.texture = createTexture(QLatin1String("tex") + QString::number(index));
}

VireoExtPropertyParam* NumberedPairs::createNumber(const QString& name) const
{
    VireoExtPropertyParam* param = brick->addFloatParam(false, generalPath(), name, name, name, 0,
        0, -floatLimit, floatLimit, false, linkTypeName(FloatLink));
    placeBeforeCustomInputs(param);
    return param;
}

VireoExtPropertyParam* NumberedPairs::createTexture(const QString& name) const
{
    VireoExtPropertyParam* param = nullptr;
    if (kind == ColorTexture)
        param = brick->addColorParam(false, generalPath(), name, name, name, QColor(), QColor(),
            linkTypeName(ColorLink));
    else if (kind == FresnelTexture)
        param = brick->addFloatParamFlagged(false, generalPath(), name, name, name, 0, 0,
            -floatLimit, floatLimit, false, linkTypeName(FresnelLink));
    else
        param = brick->addFloatParam(false, generalPath(), name, name, name, 0, 0, -floatLimit,
            floatLimit, false, linkTypeName(FloatLink));
    placeBeforeCustomInputs(param);
    return param;
}

void NumberedPairs::placeBeforeCustomInputs(DzBrickParam* param) const
{
    int place = brick->findParameterIndex(param);
    for (int i = 0; i < brick->getNumCustomParams(); ++i)
        place = qMin(place, brick->findParameterIndex(brick->getCustomParam(i)));
    brick->changeParamIndex(param, place);
}

void NumberedPairs::write(SceneCodeWriter* writer) const
{
    QVector<double> numbers;
    for (int i = 0; i < pairs.size(); ++i) {
        const Pair& pair = pairs.at(i);
        // The number is a value in every mode: a texture linked to it is not followed.
        if (DzFloatProperty* number
            = pair.number ? qobject_cast<DzFloatProperty*>(pair.number->getProperty(0)) : nullptr) {
            numbers.append(number->getValue());
            if (number->isMapped())
                writer->unwrittenMaps.append(number);
        }
        if (pair.texture)
            pair.texture->writeParameterCode(writer);
    }
    if (!numbers.isEmpty())
        writer->writeFloatArray(numberName + QLatin1Char('s'), numbers);
}

VireoTexFltBAndBrick::VireoTexFltBAndBrick()
    : pairs(this, "offset", NumberedPairs::FloatTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    amountParam = addFloat("amount", 0);
}

DzElement* VireoTexFltBAndBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureFloatBrick::setAttributes(settings);
}

void VireoTexFltBAndBrick::writeParameters(SceneCodeWriter* writer)
{
    if (amountParam)
        amountParam->writeParameterCode(writer);
    pairs.write(writer);
}

void VireoTexFltBAndBrick::countChanged()
{
    pairs.matchCount();
}

VireoTexClrBAndBrick::VireoTexClrBAndBrick()
    : pairs(this, "offset", NumberedPairs::ColorTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    amountParam = addFloat("amount", 0);
}

DzElement* VireoTexClrBAndBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureColorBrick::setAttributes(settings);
}

void VireoTexClrBAndBrick::writeParameters(SceneCodeWriter* writer)
{
    if (amountParam)
        amountParam->writeParameterCode(writer);
    pairs.write(writer);
}

void VireoTexClrBAndBrick::countChanged()
{
    pairs.matchCount();
}

VireoTexFnlBAndBrick::VireoTexFnlBAndBrick()
    : pairs(this, "offset", NumberedPairs::FresnelTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    amountParam = addFloat("amount", 0);
}

DzElement* VireoTexFnlBAndBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureFresnelBrick::setAttributes(settings);
}

void VireoTexFnlBAndBrick::writeParameters(SceneCodeWriter* writer)
{
    if (amountParam)
        amountParam->writeParameterCode(writer);
    pairs.write(writer);
}

void VireoTexFnlBAndBrick::countChanged()
{
    pairs.matchCount();
}

VireoTexFltMultiMixBrick::VireoTexFltMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::FloatTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}

DzElement* VireoTexFltMultiMixBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureFloatBrick::setAttributes(settings);
}

void VireoTexFltMultiMixBrick::writeParameters(SceneCodeWriter* writer)
{
    pairs.write(writer);
}

void VireoTexFltMultiMixBrick::countChanged()
{
    pairs.matchCount();
}

VireoTexClrMultiMixBrick::VireoTexClrMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::ColorTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}

DzElement* VireoTexClrMultiMixBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureColorBrick::setAttributes(settings);
}

void VireoTexClrMultiMixBrick::writeParameters(SceneCodeWriter* writer)
{
    pairs.write(writer);
}

void VireoTexClrMultiMixBrick::countChanged()
{
    pairs.matchCount();
}

VireoTexFnlMultiMixBrick::VireoTexFnlMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::FresnelTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}

DzElement* VireoTexFnlMultiMixBrick::setAttributes(const DzSettings* settings)
{
    pairs.readCount(settings);
    return VireoTextureFresnelBrick::setAttributes(settings);
}

void VireoTexFnlMultiMixBrick::writeParameters(SceneCodeWriter* writer)
{
    pairs.write(writer);
}

void VireoTexFnlMultiMixBrick::countChanged()
{
    pairs.matchCount();
}
