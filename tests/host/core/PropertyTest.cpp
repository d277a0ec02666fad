// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzelement.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimagemgr.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"
#include "dzpropertysettings.h"
#include "dzstringproperty.h"
#include "dztexture.h"
#include "dzundostack.h"
#include "settingstree.h"

#include <QSignalSpy>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>

namespace {

const float infinity = std::numeric_limits<float>::infinity();
const float notANumber = std::numeric_limits<float>::quiet_NaN();

QString name()
{
    return QStringLiteral("name");
}

/// Three items.
void fill(DzEnumProperty* property)
{
    for (const char* item : { "uv", "planar", "2" })
        property->addItem(QString::fromLatin1(item));
}

/// One property of each class, with two values for it as texts.
struct Sample {
    std::unique_ptr<DzProperty> property;
    QString first;
    QString second;
};

std::vector<Sample> samples()
{
    auto* items = new DzEnumProperty(name(), true, false);
    fill(items);
    std::vector<Sample> all;
    const auto add = [&](DzProperty* property, const char* first, const char* second) {
        all.push_back({ std::unique_ptr<DzProperty>(property), QString::fromUtf8(first),
            QString::fromUtf8(second) });
    };
    add(new DzFloatProperty(name(), true, false), "0.25", "-1.5");
    add(new DzIntProperty(name(), true, false), "3", "-4");
    add(new DzBoolProperty(name(), true, false), "true", "false");
    add(new DzColorProperty(name(), true, false), "1 2 3", "255 0 7 128");
    add(items, "planar", "uv");
    add(new DzImageProperty(name(), false), "a.png", "ä \"b\".png");
    add(new DzStringProperty(name(), false), "text", "ä\n\"b\"");
    add(new DzFileProperty(name(), false), "/a/b", "c:\\d");
    return all;
}

void set(DzProperty* property, const QString& text)
{
    QString error;
    EXPECT_TRUE(property->setValueText(text, &error)) << error.toStdString();
    EXPECT_EQ(property->getValueText(), text);
}

} // namespace

// Every class ---------------------------------------------------------------------------------

TEST(Property, everyClassTakesTextsAndTellsOncePerChange)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.property->metaObject()->className());
        QSignalSpy changes(sample.property.get(), SIGNAL(currentValueChanged()));
        set(sample.property.get(), sample.first);
        EXPECT_EQ(changes.size(), 1);
        set(sample.property.get(), sample.first);
        EXPECT_EQ(changes.size(), 1);
        set(sample.property.get(), sample.second);
        EXPECT_EQ(changes.size(), 2);
    }
}

TEST(Property, everyClassRefusesValuesWhileLocked)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.property->metaObject()->className());
        DzProperty* property = sample.property.get();
        set(property, sample.first);
        QSignalSpy locks(property, SIGNAL(lockStateChanged()));
        property->lock(true);
        property->lock(true);
        EXPECT_EQ(locks.size(), 1);
        QSignalSpy changes(property, SIGNAL(currentValueChanged()));
        QString error;
        EXPECT_FALSE(property->setValueText(sample.second, &error));
        EXPECT_EQ(error, QStringLiteral("it is locked"));
        property->resetToDefault();
        EXPECT_EQ(property->getValueText(), sample.first);
        EXPECT_EQ(changes.size(), 0);
        property->lock(false);
        EXPECT_EQ(locks.size(), 2);
        set(property, sample.second);
    }
}

TEST(Property, everyClassIsCopiedIntoALockedProperty)
{
    std::vector<Sample> sources = samples();
    std::vector<Sample> targets = samples();
    for (size_t i = 0; i < sources.size(); ++i) {
        SCOPED_TRACE(sources[i].property->metaObject()->className());
        set(sources[i].property.get(), sources[i].first);
        set(targets[i].property.get(), sources[i].second);
        targets[i].property->lock(true);
        QSignalSpy changes(targets[i].property.get(), SIGNAL(currentValueChanged()));
        targets[i].property->copyFrom(sources[i].property.get());
        targets[i].property->copyFrom(sources[i].property.get());
        targets[i].property->copyFrom(nullptr);
        EXPECT_EQ(targets[i].property->getValueText(), sources[i].first);
        EXPECT_EQ(changes.size(), 1);
        EXPECT_TRUE(targets[i].property->isLocked());
    }
}

TEST(Property, everyClassIsDuplicatedWithAllThatDescribesIt)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.property->metaObject()->className());
        DzProperty* property = sample.property.get();
        property->setLabel(QString::fromUtf8("Lä"));
        property->setPath(QStringLiteral("/A/B"));
        property->setHidden(true);
        property->setIsUserProperty(true);
        property->setCanAnimate(!property->canAnimate());
        if (auto* numeric = qobject_cast<DzNumericProperty*>(property)) {
            numeric->setIsMappable(true);
            EXPECT_TRUE(numeric->setMap(QStringLiteral("m.png")));
        }
        set(property, sample.first);
        property->lock(true);
        const std::unique_ptr<DzProperty> copy(property->duplicate());
        EXPECT_EQ(copy->metaObject(), property->metaObject());
        EXPECT_EQ(copy->getName(), name());
        EXPECT_EQ(copy->getOwner(), nullptr);
        EXPECT_EQ(copy->getValueText(), sample.first);
        DzPropertySettings before;
        DzPropertySettings after;
        property->getAttributes(&before);
        copy->getAttributes(&after);
        EXPECT_TRUE(before.isEqual(after));
        EXPECT_EQ(copy->getLabel(), QString::fromUtf8("Lä"));
        EXPECT_EQ(copy->getPath(), QStringLiteral("/A/B"));
        EXPECT_TRUE(copy->isHidden() && copy->isUserProperty() && copy->isLocked());
        if (auto* numeric = qobject_cast<DzNumericProperty*>(copy.get())) {
            EXPECT_EQ(numeric->getMapValue()->getFilename(), QStringLiteral("m.png"));
        }
    }
}

TEST(Property, everyClassReadsBackWhatItWrote)
{
    std::vector<Sample> sources = samples();
    std::vector<Sample> targets = samples();
    for (size_t i = 0; i < sources.size(); ++i) {
        SCOPED_TRACE(sources[i].property->metaObject()->className());
        DzProperty* source = sources[i].property.get();
        DzProperty* target = targets[i].property.get();
        source->setIsUserProperty(true);
        source->setHidden(true);
        set(source, sources[i].second);
        DzPropertySettings settings;
        source->getAttributes(&settings);
        target->lock(true);
        settings.setBoolValue(QStringLiteral("Locked"), true);
        target->setAttributes(&settings);
        EXPECT_EQ(target->getValueText(), sources[i].second);
        EXPECT_TRUE(target->isHidden());
        // The user flag is read only where the settings say so.
        EXPECT_FALSE(target->isUserProperty());
        settings.setBoolValue(QStringLiteral("ForceSetUser"), true);
        target->setAttributes(&settings);
        EXPECT_TRUE(target->isUserProperty());
        target->setAttributes(nullptr);
        EXPECT_EQ(target->getValueText(), sources[i].second);
    }
}

TEST(Property, everyClassKeepsItsValueWhenSettingsHoldAnotherType)
{
    for (const Sample& sample : samples()) {
        SCOPED_TRACE(sample.property->metaObject()->className());
        set(sample.property.get(), sample.first);
        DzPropertySettings settings;
        settings.tree()->setOpaqueValue(QStringLiteral("Value"), "[1]");
        sample.property->setAttributes(&settings);
        settings.setSettingsValue(QStringLiteral("Value"));
        sample.property->setAttributes(&settings);
        EXPECT_FALSE(sample.property->readAttribute(*settings.tree(), QStringLiteral("Value")));
        EXPECT_FALSE(sample.property->readAttribute(*settings.tree(), QStringLiteral("absent")));
        EXPECT_EQ(sample.property->getValueText(), sample.first);
    }
}

TEST(Property, everyChangeOfAnOwnedPropertyIsOneStep)
{
    DzElement element;
    int number = 0;
    for (Sample& sample : samples()) {
        SCOPED_TRACE(sample.property->metaObject()->className());
        DzProperty* property = sample.property.release();
        property->setName(QString::number(number++));
        property->setLabel(QStringLiteral("Size"));
        set(property, sample.first);
        element.addProperty(property);
        dzUndoStack->clearAll();

        set(property, sample.second);
        EXPECT_EQ(dzUndoStack->getNumItems(), 1);
        EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Size"));
        set(property, sample.second);
        EXPECT_EQ(dzUndoStack->getNumItems(), 1);
        property->lock(true);
        EXPECT_EQ(dzUndoStack->getNumItems(), 2);
        EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Lock Size"));
        QString error;
        property->setValueText(sample.first, &error);
        EXPECT_EQ(dzUndoStack->getNumItems(), 2);

        dzUndoStack->undo();
        EXPECT_FALSE(property->isLocked());
        dzUndoStack->undo();
        EXPECT_EQ(property->getValueText(), sample.first);
        dzUndoStack->redo();
        EXPECT_EQ(property->getValueText(), sample.second);
        dzUndoStack->undo();
        {
            const DzUndoStackLock lock;
            set(property, sample.second);
        }
        EXPECT_EQ(dzUndoStack->getNumUndoItems(), 0);
    }
}

TEST(Property, changesOfAPropertyWithoutOwnerLeaveNoStep)
{
    DzFloatProperty property(name(), true, false);
    property.setValue(1);
    property.setLabel(QStringLiteral("L"));
    property.lock(true);
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
}

TEST(Property, descriptionsTellOncePerChangeAndLeaveSteps)
{
    DzElement element;
    auto* property = new DzFloatProperty(name(), true, false);
    element.addProperty(property);
    EXPECT_EQ(property->getOwner(), &element);
    EXPECT_EQ(property->getLabel(), name());
    dzUndoStack->clearAll();
    QSignalSpy labels(property, SIGNAL(labelChanged(QString)));
    QSignalSpy paths(property, SIGNAL(pathChanged(QString)));
    QSignalSpy hidden(property, SIGNAL(hiddenChanged(bool)));
    QSignalSpy user(property, SIGNAL(isUserPropertyChanged(bool)));
    QSignalSpy animation(property, SIGNAL(canAnimateChanged(bool)));
    QStringList captions;
    for (int round = 0; round < 2; ++round) {
        property->setLabel(QStringLiteral("L"));
        captions.append(dzUndoStack->getUndoCaption());
        property->setPath(QStringLiteral("/P"));
        captions.append(dzUndoStack->getUndoCaption());
        property->setHidden(true);
        captions.append(dzUndoStack->getUndoCaption());
        property->setIsUserProperty(true);
        captions.append(dzUndoStack->getUndoCaption());
        property->setCanAnimate(false);
        captions.append(dzUndoStack->getUndoCaption());
    }
    EXPECT_EQ(captions.mid(0, 5),
        QStringList({ "Rename name", "Move L", "Hide L", "Change L", "Change L" }));
    EXPECT_EQ(dzUndoStack->getNumItems(), 5);
    for (const QSignalSpy* spy : { &labels, &paths, &hidden, &user, &animation })
        EXPECT_EQ(spy->size(), 1);
    while (dzUndoStack->undo()) {}
    EXPECT_EQ(property->getLabel(), name());
    EXPECT_EQ(property->getPath(), QString());
    EXPECT_FALSE(property->isHidden());
    EXPECT_FALSE(property->isUserProperty());
    EXPECT_TRUE(property->canAnimate());
    EXPECT_EQ(labels.size(), 2);
}

TEST(Property, changesInsideAHoldAreMerged)
{
    DzElement element;
    auto* property = new DzFloatProperty(name(), true, false);
    element.addProperty(property);
    property->setValue(1);
    dzUndoStack->clearAll();
    {
        DzUndoStackHold hold;
        for (int i = 2; i < 50; ++i)
            property->setValue(static_cast<float>(i));
        hold.accept(QStringLiteral("Drag"));
    }
    EXPECT_EQ(dzUndoStack->getNumItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Drag"));
    QSignalSpy changes(property, SIGNAL(currentValueChanged()));
    dzUndoStack->undo();
    EXPECT_EQ(property->getValue(), 1.0f);
    EXPECT_EQ(changes.size(), 1);
    dzUndoStack->redo();
    EXPECT_EQ(property->getValue(), 49.0f);
    EXPECT_EQ(changes.size(), 2);
}

// Numbers -------------------------------------------------------------------------------------

TEST(NumericProperty, limitsHoldOnlyWhileClampingIsOn)
{
    DzFloatProperty number(name(), true, false, 5);
    number.setMinMax(0, 10);
    number.setValue(20);
    EXPECT_EQ(number.getValue(), 20.0f);
    QSignalSpy changes(&number, SIGNAL(currentValueChanged()));
    QSignalSpy clamped(&number, SIGNAL(clampedChanged(bool)));
    number.setIsClamped(true);
    number.setIsClamped(true);
    EXPECT_EQ(clamped.size(), 1);
    EXPECT_EQ(changes.size(), 1);
    EXPECT_EQ(number.getValue(), 10.0f);
    number.setValue(30);
    EXPECT_EQ(changes.size(), 1);
    number.setValue(-1);
    EXPECT_EQ(number.getValue(), 0.0f);
    number.setDefaultValue(99);
    EXPECT_EQ(number.getDefaultValue(), 10.0f);
    number.setIsClamped(false);
    number.setValue(-1);
    EXPECT_EQ(number.getValue(), -1.0f);
}

TEST(NumericProperty, changedLimitsBringTheValueAlong)
{
    DzIntProperty number(name(), true, false, 5);
    number.setIsClamped(true);
    QSignalSpy limits(&number, SIGNAL(minMaxChanged()));
    QSignalSpy changes(&number, SIGNAL(currentValueChanged()));
    number.setMinMax(0, 3);
    number.setMinMax(0, 3);
    EXPECT_EQ(limits.size(), 1);
    EXPECT_EQ(number.getValue(), 3);
    EXPECT_EQ(number.getDefaultValue(), 3);
    number.setMin(4);
    number.setMax(8);
    EXPECT_EQ(number.getValue(), 4);
    EXPECT_EQ(changes.size(), 2);
    number.setValue(std::numeric_limits<int>::max());
    EXPECT_EQ(number.getValue(), 8);
    number.setValue(std::numeric_limits<int>::min());
    EXPECT_EQ(number.getValue(), 4);
}

TEST(NumericProperty, limitsTheWrongWayRoundGiveTheLowerOneEveryTime)
{
    DzFloatProperty number(name(), true, false, 0);
    number.setMinMax(3, -3);
    number.setIsClamped(true);
    DzIntProperty whole(name(), true, false, 0);
    whole.setMinMax(3, -3);
    whole.setIsClamped(true);
    EXPECT_EQ(number.getValue(), 3.0f);
    EXPECT_EQ(whole.getValue(), 3);
    for (const int value : { -5, 0, 3, 5 }) {
        number.setValue(static_cast<float>(value));
        whole.setValue(value);
        EXPECT_EQ(number.getValue(), 3.0f);
        EXPECT_EQ(whole.getValue(), 3);
    }
}

TEST(NumericProperty, notANumberIsTakenOnlyWithoutClamping)
{
    DzFloatProperty number(name(), true, false, 5);
    QSignalSpy changes(&number, SIGNAL(currentValueChanged()));
    number.setValue(notANumber);
    number.setValue(notANumber);
    EXPECT_TRUE(std::isnan(number.getValue()));
    EXPECT_EQ(changes.size(), 1);
    number.setValue(2);
    number.setIsClamped(true);
    number.setValue(notANumber);
    EXPECT_EQ(number.getValue(), 2.0f);
    number.setValue(infinity);
    EXPECT_EQ(number.getValue(), 10000.0f);
    number.setValue(-infinity);
    EXPECT_EQ(number.getValue(), -10000.0f);
}

TEST(NumericProperty, withoutAnimationTheValueIsTheDefault)
{
    DzFloatProperty number(name(), false, false, 5);
    number.setValue(7);
    EXPECT_EQ(number.getDefaultValue(), 7.0f);
    EXPECT_TRUE(number.currentValueIsDefaultValue());
    DzIntProperty whole(name(), true, false, 5);
    whole.setValue(7);
    EXPECT_EQ(whole.getDefaultValue(), 5);
    EXPECT_FALSE(whole.currentValueIsDefaultValue());
    whole.resetToDefault();
    EXPECT_EQ(whole.getValue(), 5);
    whole.setCanAnimate(false);
    whole.lock(true);
    whole.setValue(9);
    EXPECT_EQ(whole.getDefaultValue(), 5);
}

TEST(NumericProperty, stepOfAPropertyWithoutAnimationBringsTheDefaultAlong)
{
    DzElement element;
    auto* number = new DzFloatProperty(name(), false, false, 5);
    element.addProperty(number);
    dzUndoStack->clearAll();
    number->setValue(7);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(number->getValue(), 5.0f);
    EXPECT_EQ(number->getDefaultValue(), 5.0f);
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(number->getDefaultValue(), 7.0f);
}

TEST(NumericProperty, wholeNumbersTakeDoublesThatFit)
{
    DzIntProperty whole(name(), true, false, 5);
    whole.setDoubleValue(2.6);
    EXPECT_EQ(whole.getValue(), 3);
    whole.setDoubleValue(1e300);
    whole.setDoubleValue(-2147483649.0);
    whole.setDoubleValue(static_cast<double>(notANumber));
    EXPECT_EQ(whole.getValue(), 3);
    EXPECT_EQ(whole.getDoubleValue(), 3.0);
    EXPECT_EQ(whole.getDoubleDefaultValue(), 5.0);
}

TEST(NumericProperty, textsThatAreNoNumberSayWhy)
{
    DzFloatProperty number(name(), true, false, 5);
    DzIntProperty whole(name(), true, false, 5);
    QString error;
    for (const char* text : { "", "x", "1,5", "1.5.", "0x" }) {
        EXPECT_FALSE(number.setValueText(QString::fromLatin1(text), &error));
        EXPECT_EQ(error, QStringLiteral("\"%1\" is not a number").arg(QLatin1String(text)));
    }
    for (const char* text : { "", "1.5", "x", "2147483648" }) {
        EXPECT_FALSE(whole.setValueText(QString::fromLatin1(text), &error));
        EXPECT_EQ(error, QStringLiteral("\"%1\" is not a whole number").arg(QLatin1String(text)));
    }
    EXPECT_EQ(number.getValue(), 5.0f);
    EXPECT_EQ(whole.getValue(), 5);
    EXPECT_TRUE(number.setValueText(QStringLiteral(" 1e-3 "), &error));
    EXPECT_EQ(number.getValue(), 0.001f);
}

TEST(NumericProperty, floatTextIsTheShortestThatReadsBack)
{
    DzFloatProperty number(name(), true, false);
    for (const char* text :
        { "0.1", "1", "-2.5", "1e+38", "16777217", "0.33333334", "inf", "nan" }) {
        QString error;
        if (!number.setValueText(QString::fromLatin1(text), &error))
            continue;
        const float value = number.getValue();
        number.setValue(12);
        ASSERT_TRUE(number.setValueText(number.getValueText(), &error));
        number.setValue(value);
        const QString shown = number.getValueText();
        number.setValue(12);
        ASSERT_TRUE(number.setValueText(shown, &error)) << shown.toStdString();
        EXPECT_TRUE(
            number.getValue() == value || (std::isnan(value) && std::isnan(number.getValue())))
            << text;
    }
    number.setValue(0.1f);
    EXPECT_EQ(number.getValueText(), QStringLiteral("0.1"));
}

// Maps ----------------------------------------------------------------------------------------

TEST(PropertyMap, onlyAMappablePropertyTakesOne)
{
    DzFloatProperty number(name(), true, false);
    EXPECT_FALSE(number.setMap(QStringLiteral("a.png")));
    EXPECT_EQ(number.getMapValue(), nullptr);
    number.setIsMappable(true);
    QSignalSpy maps(&number, SIGNAL(mapChanged()));
    EXPECT_TRUE(number.setMap(QStringLiteral("a.png")));
    EXPECT_TRUE(number.setMap(QStringLiteral("a.png")));
    EXPECT_EQ(maps.size(), 1);
    EXPECT_TRUE(number.isMapped());
    EXPECT_EQ(number.getMapValue()->getFilename(), QStringLiteral("a.png"));
    number.clearMap();
    number.clearMap();
    EXPECT_EQ(maps.size(), 2);
    EXPECT_FALSE(number.isMapped());
}

TEST(PropertyMap, goesWithTheMappability)
{
    DzColorProperty color(name(), true, false);
    QSignalSpy mappable(&color, SIGNAL(isMappableChanged()));
    color.setIsMappable(true);
    color.setIsMappable(true);
    EXPECT_EQ(mappable.size(), 1);
    color.setMap(QStringLiteral("a.png"));
    QSignalSpy maps(&color, SIGNAL(mapChanged()));
    color.setIsMappable(false);
    EXPECT_EQ(maps.size(), 1);
    EXPECT_EQ(color.getMapValue(), nullptr);
    color.setIsMappable(true);
    EXPECT_EQ(color.getMapValue(), nullptr);
}

TEST(PropertyMap, isRefusedWhileLocked)
{
    DzIntProperty whole(name(), true, false);
    whole.setIsMappable(true);
    whole.setMap(QStringLiteral("a.png"));
    whole.lock(true);
    EXPECT_FALSE(whole.setMap(QStringLiteral("b.png")));
    EXPECT_FALSE(whole.setMap(static_cast<const DzTexture*>(nullptr)));
    whole.clearMap();
    EXPECT_EQ(whole.getMapValue()->getFilename(), QStringLiteral("a.png"));
}

TEST(PropertyMap, changeIsOneStep)
{
    DzElement element;
    auto* number = new DzFloatProperty(name(), true, false);
    number->setIsMappable(true);
    element.addProperty(number);
    dzUndoStack->clearAll();
    number->setMap(QStringLiteral("a.png"));
    number->setMap(QStringLiteral("a.png"));
    EXPECT_EQ(dzUndoStack->getNumItems(), 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Map of name"));
    dzUndoStack->undo();
    EXPECT_FALSE(number->isMapped());
    dzUndoStack->redo();
    EXPECT_EQ(number->getMapValue()->getFilename(), QStringLiteral("a.png"));
}

TEST(PropertyMap, isCopiedBetweenKindsOfNumbers)
{
    DzFloatProperty number(name(), true, false);
    DzColorProperty color(name(), true, false, QColor(1, 2, 3));
    number.setIsMappable(true);
    number.setMap(QStringLiteral("a.png"));
    color.copyFrom(&number);
    EXPECT_EQ(color.getMapValue(), nullptr);
    color.setIsMappable(true);
    color.copyFrom(&number);
    EXPECT_EQ(color.getMapValue(), number.getMapValue());
    EXPECT_EQ(color.getColorValue(), QColor(1, 2, 3));
}

TEST(PropertyMap, oneTextureStandsForOneFileName)
{
    const int before = dzApp->getImageMgr()->getNumImages();
    {
        DzFloatProperty number(name(), true, false);
        DzImageProperty image(name(), false);
        number.setIsMappable(true);
        number.setMap(QStringLiteral("dir/../a.png"));
        image.setValue(QStringLiteral("dir/../a.png"));
        EXPECT_EQ(number.getMapValue(), image.getValue());
        EXPECT_EQ(image.getFilename(), QStringLiteral("dir/../a.png"));
        EXPECT_EQ(dzApp->getImageMgr()->getNumImages(), before + 1);
        EXPECT_EQ(dzApp->getImageMgr()->getImage(QString()), nullptr);
    }
    EXPECT_EQ(dzApp->getImageMgr()->getNumImages(), before);
}

// Switches, colours, items, texts -------------------------------------------------------------

TEST(WholeNumberKinds, areWholeNumbers)
{
    DzBoolProperty flag(name(), true, false, true);
    DzColorProperty color(name(), true, false, QColor(1, 2, 3));
    DzEnumProperty items(name(), true, false);
    fill(&items);
    for (DzProperty* property : { static_cast<DzProperty*>(&flag), static_cast<DzProperty*>(&color),
             static_cast<DzProperty*>(&items) }) {
        EXPECT_NE(qobject_cast<DzIntProperty*>(property), nullptr);
        EXPECT_TRUE(property->isNumeric());
    }
    EXPECT_EQ(flag.getValue(), 1);
    EXPECT_EQ(static_cast<unsigned>(color.getValue()), 0xff010203u);
    static_cast<DzIntProperty&>(items).setValue(2);
    EXPECT_EQ(items.getStringValue(), QStringLiteral("2"));
}

TEST(BoolProperty, isOnForAnyNumberButZero)
{
    DzBoolProperty flag(name(), true, false);
    flag.setValue(7);
    EXPECT_EQ(flag.getValue(), 1);
    EXPECT_TRUE(flag.getBoolValue());
    flag.setDefaultBoolValue(true);
    EXPECT_TRUE(flag.currentValueIsDefaultValue());
    QString error;
    EXPECT_TRUE(flag.setValueText(QStringLiteral(" FALSE "), &error));
    EXPECT_FALSE(flag.getBoolValue());
    EXPECT_FALSE(flag.setValueText(QStringLiteral("maybe"), &error));
    EXPECT_EQ(error, QStringLiteral("\"maybe\" is neither true nor false"));
}

TEST(ColorProperty, unsetIsOpaqueBlack)
{
    DzColorProperty color(name(), true, false);
    EXPECT_EQ(color.getColorValue(), QColor(0, 0, 0, 255));
    EXPECT_EQ(color.getDefaultColorValue(), QColor(0, 0, 0, 255));
    color.setColorValue(QColor(9, 8, 7, 6));
    EXPECT_EQ(color.getColorValue(), QColor(9, 8, 7, 6));
    color.setColorValue(QColor());
    EXPECT_EQ(color.getColorValue(), QColor(0, 0, 0, 255));
    EXPECT_TRUE(color.getColorValue().isValid());
}

TEST(ColorProperty, takesNumbersNamesAndHexadecimalDigits)
{
    DzColorProperty color(name(), true, false);
    QString error;
    EXPECT_TRUE(color.setValueText(QStringLiteral("  1   2 3 4 "), &error));
    EXPECT_EQ(color.getColorValue(), QColor(1, 2, 3, 4));
    EXPECT_EQ(color.getValueText(), QStringLiteral("1 2 3 4"));
    EXPECT_TRUE(color.setValueText(QStringLiteral("#ff8000"), &error));
    EXPECT_EQ(color.getValueText(), QStringLiteral("255 128 0"));
    EXPECT_TRUE(color.setValueText(QStringLiteral("red"), &error));
    EXPECT_EQ(color.getValueText(), QStringLiteral("255 0 0"));
    for (const char* text :
        { "", "1 2", "1 2 256", "1 2 -3", "1 2 3 4 5", "1.5 2 3", "nocolour" }) {
        EXPECT_FALSE(color.setValueText(QString::fromLatin1(text), &error)) << text;
        EXPECT_TRUE(
            error.contains(QStringLiteral("\"%1\" is not a colour").arg(QLatin1String(text))));
    }
    EXPECT_EQ(color.getValueText(), QStringLiteral("255 0 0"));
}

TEST(EnumProperty, itemsAreUniqueAndFoundByText)
{
    DzEnumProperty items(name(), true, false);
    EXPECT_EQ(items.getStringValue(), QString());
    QSignalSpy lists(&items, SIGNAL(itemListChanged()));
    fill(&items);
    EXPECT_EQ(items.addItem(QStringLiteral("uv")), -1);
    EXPECT_EQ(lists.size(), 3);
    EXPECT_EQ(items.getNumItems(), 3);
    EXPECT_EQ(items.getItem(1), QStringLiteral("planar"));
    EXPECT_EQ(items.getItem(3), QString());
    EXPECT_EQ(items.getItem(-1), QString());
    EXPECT_EQ(items.findItemString(QStringLiteral("planar")), 1);
    EXPECT_EQ(items.findItemString(QStringLiteral("Planar")), -1);
    EXPECT_EQ(items.addItem(QStringLiteral("first"), 0), 0);
    EXPECT_EQ(items.getItem(1), QStringLiteral("uv"));
}

TEST(EnumProperty, takesOnlyItems)
{
    DzEnumProperty items(name(), true, false);
    fill(&items);
    items.setValue(99);
    EXPECT_EQ(items.getValue(), 2);
    items.setValue(-1);
    EXPECT_EQ(items.getValue(), 0);
    EXPECT_TRUE(items.setValueFromString(QStringLiteral("planar")));
    EXPECT_EQ(items.getValue(), 1);
    EXPECT_FALSE(items.setValueFromString(QStringLiteral("none")));
    EXPECT_EQ(items.getValue(), 1);
    items.lock(true);
    EXPECT_FALSE(items.setValueFromString(QStringLiteral("uv")));
    items.lock(false);
    QString error;
    // A text that is an item's counts before the index.
    EXPECT_TRUE(items.setValueText(QStringLiteral("2"), &error));
    EXPECT_EQ(items.getValue(), 2);
    EXPECT_TRUE(items.setValueText(QStringLiteral("1"), &error));
    EXPECT_EQ(items.getStringValue(), QStringLiteral("planar"));
    for (const char* text : { "3", "-1", "none" }) {
        EXPECT_FALSE(items.setValueText(QString::fromLatin1(text), &error));
        EXPECT_EQ(
            error, QStringLiteral("\"%1\" is not one of: uv, planar, 2").arg(QLatin1String(text)));
    }
}

TEST(StringProperty, defaultIsSetOnItsOwn)
{
    DzStringProperty text(name(), false);
    EXPECT_FALSE(text.canAnimate());
    EXPECT_TRUE(text.setValue(QStringLiteral("a")));
    EXPECT_EQ(text.getDefaultValue(), QString());
    EXPECT_FALSE(text.currentValueIsDefaultValue());
    text.setDefaultValue(QStringLiteral("b"));
    text.resetToDefault();
    EXPECT_EQ(text.getValue(), QStringLiteral("b"));
    text.lock(true);
    EXPECT_FALSE(text.setValue(QStringLiteral("c")));
}

TEST(StringProperty, duplicateKeepsTheDefault)
{
    DzStringProperty text(name(), false);
    text.setDefaultValue(QStringLiteral("b"));
    const std::unique_ptr<DzProperty> copy(text.duplicate());
    copy->resetToDefault();
    EXPECT_EQ(copy->getValueText(), QStringLiteral("b"));
}

TEST(FileProperty, keepsKindAndFilterInADuplicate)
{
    DzFileProperty file(name(), false);
    EXPECT_EQ(file.getType(), DzFileProperty::FileOpen);
    QSignalSpy filters(&file, SIGNAL(filterChanged()));
    file.setFilter(QStringLiteral("Images (*.png)"));
    file.setFilter(QStringLiteral("Images (*.png)"));
    EXPECT_EQ(filters.size(), 1);
    file.setType(DzFileProperty::Directory);
    const std::unique_ptr<DzProperty> copy(file.duplicate());
    auto* other = qobject_cast<DzFileProperty*>(copy.get());
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->getType(), DzFileProperty::Directory);
    EXPECT_EQ(other->getFilter(), QStringLiteral("Images (*.png)"));
}

TEST(ImageProperty, unsetIsItsDefault)
{
    DzImageProperty image(name(), false);
    EXPECT_TRUE(image.currentValueIsDefaultValue());
    EXPECT_EQ(image.getValue(), nullptr);
    EXPECT_TRUE(image.setValue(QStringLiteral("a.png")));
    EXPECT_FALSE(image.currentValueIsDefaultValue());
    image.lock(true);
    EXPECT_FALSE(image.setValue(QString()));
    EXPECT_EQ(image.getFilename(), QStringLiteral("a.png"));
    image.lock(false);
    image.resetToDefault();
    EXPECT_EQ(image.getFilename(), QString());
}
