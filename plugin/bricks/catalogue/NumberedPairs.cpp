// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NumberedPairs.h"

#include "LinkTypes.h"
#include "PropertyDefaults.h"
#include "SceneCodeWriter.h"
#include "VireoExtPropertyParam.h"
#include "VireoTextureBrick.h"
#include "dzapp.h"
#include "dzcolorproperty.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzundostack.h"

namespace {

const int maximumCount = 10;

QLatin1String countKey()
{
    return QLatin1String("count");
}

QLatin1String valueKey()
{
    return QLatin1String("Value");
}

} // namespace

NumberedPairs::NumberedPairs(
    VireoTextureBrick* owner, const char* name, VireoExtPropertyParam* amountParam)
    : brick(owner)
    , numberName(name)
    , amount(amountParam)
    , numPairs(0)
{
}

DzIntProperty* NumberedPairs::createCount()
{
    DzUndoStackLock lock;
    count = new DzIntProperty(countKey(), true, false, 0);
    count->setMinMax(0, maximumCount);
    count->setIsClamped(true);
    count->setPath(PropertyDefaults::path());
    brick->addProperty(count);
    return count;
}

void NumberedPairs::readCount(const DzSettings* attributes)
{
    const DzSettings* properties
        = attributes ? attributes->getSettingsValue(QLatin1String("BrickProperties")) : nullptr;
    const DzSettings* stored = properties ? properties->getSettingsValue(countKey()) : nullptr;
    DzPropertySettings value;
    if (!count || !stored || !stored->copySetting(valueKey(), &value))
        return;
    const int wanted = value.getIntValue(valueKey());
    if (wanted < 0 || wanted > maximumCount)
        dzApp->warning(VireoTextureBrick::tr("%1: \"count\" is %2, but a brick has 0 to %3 pairs; "
                                             "the nearer of these is used")
                           .arg(brick->getPreferredName())
                           .arg(wanted)
                           .arg(maximumCount));
    count->setAttributes(&value);
}

/// What "count" asks for. The property holds that number as well: a file or a script may have
/// taken its clamping away.
int NumberedPairs::boundedCount()
{
    if (!count)
        return 0;
    const int bounded = qBound(0, count->getValue(), maximumCount);
    if (bounded != count->getValue()) {
        // Not as a user would: it may be locked.
        DzPropertySettings value;
        value.setIntValue(valueKey(), bounded);
        count->setAttributes(&value);
    }
    return bounded;
}

void NumberedPairs::matchCount()
{
    DzUndoStackLock lock;
    const int wanted = boundedCount();
    for (int i = 1; i <= wanted; ++i)
        completePair(i);
    while (numPairs > wanted)
        removeLastPair();
}

void NumberedPairs::completePair(int index)
{
    while (pairs.size() < index)
        pairs.append(Pair());
    numPairs = qMax(numPairs, index);
    Pair& pair = pairs[index - 1];
    const bool isNew = !isOnBrick(pair.number) && !isOnBrick(pair.texture);
    const QByteArray number = QByteArray::number(index);
    if (!isOnBrick(pair.number)) {
        const int place = brick->findOwnParamsEnd();
        if (!pair.number)
            pair.number = brick->addFloat((numberName + number).constData(), 0);
        else
            brick->addParameter(pair.number);
        brick->changeParamIndex(pair.number, place);
    }
    if (!isOnBrick(pair.texture)) {
        const int place = brick->findOwnParamsEnd();
        if (!pair.texture)
            pair.texture = createTexture(("tex" + number).constData());
        else
            brick->addParameter(pair.texture);
        brick->changeParamIndex(pair.texture, place);
    }
    const std::map<int, HeldPair>::iterator held = heldPairs.find(index);
    if (held == heldPairs.end())
        return;
    if (isNew) {
        giveBack(held->second.number, pair.number);
        giveBack(held->second.texture, pair.texture);
    }
    heldPairs.erase(held);
}

bool NumberedPairs::isOnBrick(const DzBrickParam* param) const
{
    return param && param->getTopBrickOwner() == brick;
}

VireoExtPropertyParam* NumberedPairs::createTexture(const char* name) const
{
    if (brick->getLuxTextureKind() == QLatin1String("fresnel"))
        return brick->addFresnel(name, 0);
    if (brick->getLuxTextureKind() == QLatin1String("float"))
        return brick->addFloat(name, 0);
    return brick->addColor(name, name, QColor());
}

void NumberedPairs::removeLastPair()
{
    HeldPair& held = heldPairs[numPairs];
    // It stays listed: the host keeps the inputs that undo may put back, and their steps mean them.
    const Pair pair = pairs.at(--numPairs);
    held.number = holdInput(pair.number);
    held.texture = holdInput(pair.texture);
    brick->deleteParam(pair.texture);
    brick->deleteParam(pair.number);
}

NumberedPairs::HeldInput NumberedPairs::holdInput(const VireoExtPropertyParam* param)
{
    HeldInput held;
    if (!param)
        return held;
    held.label = param->getLabel();
    param->getProperty(0)->getAttributes(&held.property);
    // Else the user flag would stay as that of a new property.
    held.property.setBoolValue(QLatin1String("ForceSetUser"), true);
    for (int i = 0; i < param->getNumConnections(); ++i)
        held.sources.append(QPointer<DzBrickParam>(param->getConnection(i)));
    return held;
}

void NumberedPairs::giveBack(const HeldInput& held, VireoExtPropertyParam* param) const
{
    if (held.property.getNumValues() == 0)
        return; // It had gone on its own before.
    param->setLabel(held.label);
    param->getProperty(0)->setAttributes(&held.property);
    for (int i = 0; i < held.sources.size(); ++i) {
        DzBrickParam* source = held.sources.at(i);
        // A brick that was deleted meanwhile may live on for undo: it has no user then.
        if (source && source->getTopBrickOwner()
            && source->getTopBrickOwner()->getBrickUser() == brick->getBrickUser())
            param->addConnection(source);
    }
}

void NumberedPairs::write(SceneCodeWriter* writer) const
{
    if (amount)
        amount->writeParameterCode(writer);
    QVector<double> numbers;
    for (int i = 0; i < numPairs; ++i) {
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
        writer->writeFloatArray(QString::fromLatin1(numberName) + QLatin1Char('s'), numbers);
}
