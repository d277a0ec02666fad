// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MultiInputTextureBricks.h"

#include "LinkTypes.h"
#include "PropertyDefaults.h"
#include "SceneCodeWriter.h"
#include "VireoExtPropertyParam.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzpropertysettings.h"
#include "dzundostack.h"

namespace {

using PropertyDefaults::floatLimit;

const int maximumCount = 10;

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
    count->setPath(PropertyDefaults::path());
    brick->addProperty(count);
    return count;
}

void NumberedPairs::setAmount(VireoExtPropertyParam* param)
{
    amount = param;
}

void NumberedPairs::readCount(const DzSettings* attributes)
{
    const DzSettings* properties
        = attributes ? attributes->getSettingsValue(QLatin1String("BrickProperties")) : nullptr;
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
    VireoExtPropertyParam* param = brick->addFloatParam(false, PropertyDefaults::path(), name, name,
        name, 0, 0, -floatLimit, floatLimit, false, linkTypeName(FloatLink));
    placeBeforeCustomInputs(param);
    return param;
}

VireoExtPropertyParam* NumberedPairs::createTexture(const QString& name) const
{
    VireoExtPropertyParam* param = nullptr;
    if (kind == ColorTexture)
        param = brick->addColorParam(false, PropertyDefaults::path(), name, name, name, QColor(),
            QColor(), linkTypeName(ColorLink));
    else if (kind == FresnelTexture)
        param = brick->addFloatParamFlagged(false, PropertyDefaults::path(), name, name, name, 0, 0,
            -floatLimit, floatLimit, false, linkTypeName(FresnelLink));
    else
        param = brick->addFloatParam(false, PropertyDefaults::path(), name, name, name, 0, 0,
            -floatLimit, floatLimit, false, linkTypeName(FloatLink));
    placeBeforeCustomInputs(param);
    return param;
}

void NumberedPairs::placeBeforeCustomInputs(DzBrickParam* param) const
{
    const int first = brick->findFirstCustomParamIndex();
    if (first >= 0)
        brick->changeParamIndex(param, first);
}

void NumberedPairs::write(SceneCodeWriter* writer) const
{
    if (amount)
        amount->writeParameterCode(writer);
    QVector<double> numbers;
    for (int i = 0; i < pairs.size(); ++i) {
        const Pair& pair = pairs.at(i);
        // The number is a value in every mode: a texture linked to it is not followed.
        if (DzFloatProperty* number
            = pair.number ? qobject_cast<DzFloatProperty*>(pair.number->getProperty(0)) : nullptr) {
            numbers.append(number->getValue());
            writer->noteUnwrittenMap(number);
        }
        if (pair.texture)
            pair.texture->writeParameterCode(writer);
    }
    if (!numbers.isEmpty())
        writer->writeFloatArray(numberName + QLatin1Char('s'), numbers);
}

// What the six bricks have in common; they differ in base, number name and kind.
#define VIREO_NUMBERED_PAIRS(Class, Base)                                                          \
    DzElement* Class::setAttributes(const DzSettings* settings)                                    \
    {                                                                                              \
        pairs.readCount(settings);                                                                 \
        return Base::setAttributes(settings);                                                      \
    }                                                                                              \
    void Class::writeParameters(SceneCodeWriter* writer)                                           \
    {                                                                                              \
        pairs.write(writer);                                                                       \
    }                                                                                              \
    void Class::countChanged()                                                                     \
    {                                                                                              \
        pairs.matchCount();                                                                        \
    }

VireoTexFltBAndBrick::VireoTexFltBAndBrick()
    : pairs(this, "offset", NumberedPairs::FloatTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    pairs.setAmount(addFloat("amount", 0));
}
VIREO_NUMBERED_PAIRS(VireoTexFltBAndBrick, VireoTextureFloatBrick)

VireoTexClrBAndBrick::VireoTexClrBAndBrick()
    : pairs(this, "offset", NumberedPairs::ColorTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    pairs.setAmount(addFloat("amount", 0));
}
VIREO_NUMBERED_PAIRS(VireoTexClrBAndBrick, VireoTextureColorBrick)

VireoTexFnlBAndBrick::VireoTexFnlBAndBrick()
    : pairs(this, "offset", NumberedPairs::FresnelTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
    pairs.setAmount(addFloat("amount", 0));
}
VIREO_NUMBERED_PAIRS(VireoTexFnlBAndBrick, VireoTextureFresnelBrick)

VireoTexFltMultiMixBrick::VireoTexFltMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::FloatTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}
VIREO_NUMBERED_PAIRS(VireoTexFltMultiMixBrick, VireoTextureFloatBrick)

VireoTexClrMultiMixBrick::VireoTexClrMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::ColorTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}
VIREO_NUMBERED_PAIRS(VireoTexClrMultiMixBrick, VireoTextureColorBrick)

VireoTexFnlMultiMixBrick::VireoTexFnlMultiMixBrick()
    : pairs(this, "weight", NumberedPairs::FresnelTexture)
{
    connect(pairs.createCount(), SIGNAL(currentValueChanged()), this, SLOT(countChanged()));
}
VIREO_NUMBERED_PAIRS(VireoTexFnlMultiMixBrick, VireoTextureFresnelBrick)

#undef VIREO_NUMBERED_PAIRS
