// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzapp.h"
#include "dzelement.h"
#include "dzfloatproperty.h"
#include "dzimagemgr.h"
#include "dztexture.h"
#include "dzundostack.h"

#include <QPointer>
#include <QStringList>
#include <gtest/gtest.h>
#include <memory>

namespace {

DzFloatProperty* makeProperty(const QString& name, float value = 0)
{
    return new DzFloatProperty(name, true, true, value);
}

QStringList propertyNames(const DzElement& element)
{
    QStringList names;
    for (int i = 0; i < element.getNumProperties(); ++i)
        names.append(element.getProperty(i)->getName());
    return names;
}

QStringList dataNames(const DzElement& element)
{
    QStringList names;
    for (int i = 0; i < element.getNumDataItems(); ++i)
        names.append(element.getDataItem(i)->getName());
    return names;
}

void addProperties(DzElement* element, int count)
{
    for (int i = 0; i < count; ++i)
        element->addProperty(makeProperty(QStringLiteral("p%1").arg(i)));
}

} // namespace

// Base --------------------------------------------------------------------------------------

TEST(Base, aNewNameIsToldOnce)
{
    DzBase base("first");
    QStringList told;
    QObject::connect(&base, &DzBase::nameChanged, [&](const QString& name) { told.append(name); });
    base.setName("first");
    base.setName("second");
    EXPECT_EQ(base.getName(), QString("second"));
    EXPECT_EQ(told, QStringList("second"));
}

TEST(Base, classesAreTestedByName)
{
    const DzElement element;
    EXPECT_EQ(element.className(), QString("DzElement"));
    EXPECT_TRUE(element.iskindof("DzElement"));
    EXPECT_TRUE(element.iskindof("DzBase"));
    EXPECT_TRUE(element.iskindof("QObject"));
    EXPECT_FALSE(element.iskindof("DzProperty"));
    EXPECT_FALSE(element.iskindof(""));
}

// Properties --------------------------------------------------------------------------------

TEST(Element, anAddedPropertyIsOwnedAndDeletedWithTheElement)
{
    QPointer<DzProperty> property = makeProperty("a");
    {
        DzElement element;
        EXPECT_EQ(element.addProperty(property), DZ_NO_ERROR);
        EXPECT_EQ(property->getOwner(), &element);
        EXPECT_EQ(element.findProperty("a"), property.data());
        dzUndoStack->clearAll();
        EXPECT_FALSE(property.isNull());
    }
    EXPECT_TRUE(property.isNull());
}

TEST(Element, aPropertyWhoseNameIsTakenIsRefusedAndStaysTheCallers)
{
    DzElement element;
    element.addProperty(makeProperty("a"));
    const std::unique_ptr<DzProperty> second(makeProperty("a"));
    EXPECT_EQ(element.addProperty(second.get()), DZ_REFUSED_ERROR);
    EXPECT_EQ(second->getOwner(), nullptr);
    EXPECT_EQ(element.getNumProperties(), 1);
}

TEST(Element, aPropertyOfAnotherElementAndNoneAreRefused)
{
    DzElement element;
    DzElement other;
    DzProperty* property = makeProperty("a");
    other.addProperty(property);
    EXPECT_EQ(element.addProperty(property), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.addProperty(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.removeProperty(property), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.removeProperty(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.removeProperty(QString("none")), DZ_ILLEGAL_ARGUMENT_ERROR);
}

TEST(Element, propertiesAreInsertedAtTheirPlace)
{
    DzElement element;
    element.addProperty(makeProperty("b"));
    element.insertProperty(0, makeProperty("a"));
    element.insertProperty(99, makeProperty("d"));
    element.insertProperty(2, makeProperty("c"));
    EXPECT_EQ(propertyNames(element), QStringList({ "a", "b", "c", "d" }));
    EXPECT_EQ(element.getProperty(-1), nullptr);
    EXPECT_EQ(element.getProperty(4), nullptr);
}

TEST(Element, onlyUserPropertiesAreRemoved)
{
    DzElement element;
    auto* fixed = new DzFloatProperty("fixed", true, false);
    element.addProperty(fixed);
    EXPECT_EQ(element.removeProperty(fixed), DZ_REFUSED_ERROR);
    EXPECT_EQ(element.removeProperty(QString("fixed")), DZ_REFUSED_ERROR);
    EXPECT_EQ(element.getNumProperties(), 1);
    fixed->setIsUserProperty(true);
    EXPECT_EQ(element.removeProperty(QString("fixed")), DZ_NO_ERROR);
    EXPECT_EQ(element.getNumProperties(), 0);
}

TEST(Element, aPropertyRemovedWithoutUndoIsDeleted)
{
    DzElement element;
    const QPointer<DzProperty> property = makeProperty("a");
    element.addProperty(property);
    const DzUndoStackLock lock;
    EXPECT_EQ(element.removeProperty(property.data()), DZ_NO_ERROR);
    EXPECT_TRUE(property.isNull());
}

TEST(Element, aPropertyDeletedBySomebodyElseLeavesTheElement)
{
    DzElement element;
    addProperties(&element, 12);
    delete element.findProperty("p3");
    EXPECT_EQ(element.getNumProperties(), 11);
    EXPECT_EQ(element.findProperty("p3"), nullptr);
    EXPECT_EQ(element.findProperty("p4")->getName(), QString("p4"));
}

TEST(Element, propertiesAreFoundAmongFewAndMany)
{
    for (int count : { 0, 1, 8, 9, 40 }) {
        DzElement element;
        addProperties(&element, count);
        for (int i = 0; i < count; ++i)
            EXPECT_EQ(element.findProperty(QStringLiteral("p%1").arg(i)), element.getProperty(i));
        EXPECT_EQ(element.findProperty(QStringLiteral("p%1").arg(count)), nullptr);
    }
}

TEST(Element, propertiesAreFoundAfterRemovingAddingAndRenamingAmongMany)
{
    DzElement element;
    addProperties(&element, 12);
    EXPECT_NE(element.findProperty("p5"), nullptr);
    element.removeProperty(QString("p5"));
    EXPECT_EQ(element.findProperty("p5"), nullptr);
    element.insertProperty(0, makeProperty("new"));
    EXPECT_EQ(element.findProperty("new"), element.getProperty(0));
    element.getProperty(0)->setName("renamed");
    EXPECT_EQ(element.findProperty("new"), nullptr);
    EXPECT_EQ(element.findProperty("renamed"), element.getProperty(0));
    element.getProperty(0)->setName("p7");
    EXPECT_EQ(element.getProperty(0)->getName(), QString("renamed")) << "the name is taken";
}

TEST(Element, addingAndRemovingPropertiesIsTold)
{
    DzElement element;
    QStringList told;
    QObject::connect(&element, &DzElement::propertyAdded,
        [&](DzProperty* property) { told.append("added " + property->getName()); });
    QObject::connect(&element, &DzElement::propertyRemoved,
        [&](DzProperty* property) { told.append("removed " + property->getName()); });
    QObject::connect(&element, &DzElement::propertyListChanged, [&] { told.append("list"); });
    element.addProperty(makeProperty("a"));
    element.removeProperty(QString("a"));
    EXPECT_EQ(told, QStringList({ "added a", "list", "removed a", "list" }));
}

// Undo --------------------------------------------------------------------------------------

TEST(Element, addingAPropertyIsUndoneAndRedone)
{
    DzElement element;
    addProperties(&element, 3);
    dzUndoStack->clearAll();
    DzProperty* property = makeProperty("new");
    element.insertProperty(1, property);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(propertyNames(element), QStringList({ "p0", "p1", "p2" }));
    EXPECT_EQ(property->getOwner(), nullptr);
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(propertyNames(element), QStringList({ "p0", "new", "p1", "p2" }));
    EXPECT_EQ(element.getProperty(1), property) << "the same object, with its value";
}

TEST(Element, removingAPropertyIsUndoneAndRedone)
{
    DzElement element;
    addProperties(&element, 3);
    dzUndoStack->clearAll();
    const QPointer<DzProperty> property = element.getProperty(1);
    element.removeProperty(property.data());
    EXPECT_FALSE(property.isNull());
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(propertyNames(element), QStringList({ "p0", "p1", "p2" }));
    EXPECT_EQ(property->getOwner(), &element);
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(propertyNames(element), QStringList({ "p0", "p2" }));
    dzUndoStack->clearAll();
    EXPECT_TRUE(property.isNull()) << "the step owned it";
}

TEST(Element, anUndonePropertyIsDeletedWithItsStep)
{
    DzElement element;
    const QPointer<DzProperty> property = makeProperty("a");
    element.addProperty(property);
    dzUndoStack->undo();
    EXPECT_FALSE(property.isNull());
    dzUndoStack->clearAll();
    EXPECT_TRUE(property.isNull());
}

TEST(Element, stepsOfADeletedElementDoNothing)
{
    auto element = std::make_unique<DzElement>();
    element->addProperty(makeProperty("kept"));
    const QPointer<DzProperty> removed = makeProperty("removed");
    element->addProperty(removed);
    element->removeProperty(removed.data());
    element->setLabel("label");
    element->addDataItem(new DzSimpleElementData("data"));
    element->deleteDataItem(element->findDataItem("data"));
    element.reset();
    while (dzUndoStack->undo()) {}
    while (dzUndoStack->redo()) {}
    EXPECT_FALSE(removed.isNull());
    dzUndoStack->clearAll();
    EXPECT_TRUE(removed.isNull());
}

TEST(Element, stepsOfADeletedPropertyDoNothing)
{
    DzElement element;
    element.addProperty(makeProperty("a"));
    delete element.findProperty("a");
    EXPECT_TRUE(dzUndoStack->undo());
    EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(element.getNumProperties(), 0);
}

TEST(Element, aRemovedPropertyDoesNotReturnWhenItsNameWasTakenMeanwhile)
{
    DzElement element;
    const QPointer<DzProperty> first = makeProperty("a");
    element.addProperty(first);
    element.removeProperty(first.data());
    {
        const DzUndoStackLock lock;
        element.addProperty(makeProperty("a"));
    }
    dzUndoStack->undo();
    EXPECT_EQ(element.getNumProperties(), 1);
    EXPECT_EQ(first->getOwner(), nullptr);
    dzUndoStack->clearAll();
    EXPECT_TRUE(first.isNull());
}

TEST(Element, aRemovedPropertyReturnsToAListThatBecameShorter)
{
    DzElement element;
    addProperties(&element, 3);
    element.removeProperty(QString("p2"));
    {
        const DzUndoStackLock lock;
        element.removeProperty(QString("p0"));
        element.removeProperty(QString("p1"));
    }
    dzUndoStack->undo();
    EXPECT_EQ(propertyNames(element), QStringList("p2"));
}

TEST(Element, aLabelIsToldAndUndone)
{
    DzElement element;
    element.setLabel("first");
    QStringList told;
    QObject::connect(
        &element, &DzElement::labelChanged, [&](const QString& label) { told.append(label); });
    EXPECT_EQ(element.setLabel("first"), DZ_NO_ERROR);
    EXPECT_EQ(element.setLabel("second"), DZ_NO_ERROR);
    dzUndoStack->undo();
    EXPECT_EQ(element.getLabel(), QString("first"));
    dzUndoStack->redo();
    EXPECT_EQ(element.getLabel(), QString("second"));
    EXPECT_EQ(told, QStringList({ "second", "first", "second" }));
}

TEST(Element, aLockedUndoStackGetsNoSteps)
{
    DzElement element;
    const DzUndoStackLock lock;
    element.setLabel("label");
    element.addProperty(makeProperty("a"));
    element.removeProperty(QString("a"));
    element.addDataItem(new DzSimpleElementData("data"));
    element.deleteDataItem(element.findDataItem("data"));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

// Data items --------------------------------------------------------------------------------

TEST(Element, dataItemsAreOwnedAndFoundByName)
{
    QPointer<DzElementData> item = new DzSimpleElementData("data", true);
    {
        DzElement element;
        EXPECT_EQ(element.addDataItem(item), DZ_NO_ERROR);
        EXPECT_EQ(item->getOwner(), &element);
        EXPECT_TRUE(item->isPersistent());
        EXPECT_EQ(element.findDataItem("data"), item.data());
        EXPECT_EQ(element.findDataItem("other"), nullptr);
        EXPECT_EQ(element.getDataItem(1), nullptr);
    }
    EXPECT_TRUE(item.isNull());
}

TEST(Element, aDataItemWhoseNameIsTakenIsRefused)
{
    DzElement element;
    element.addDataItem(new DzSimpleElementData("data"));
    const std::unique_ptr<DzElementData> second(new DzSimpleElementData("data"));
    EXPECT_EQ(element.addDataItem(second.get()), DZ_REFUSED_ERROR);
    EXPECT_EQ(element.addDataItem(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.removeDataItem(second.get()), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.deleteDataItem(nullptr), DZ_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(element.getNumDataItems(), 1);
}

TEST(Element, aRemovedDataItemBelongsToTheCallerAndUndoingPutsACopyBack)
{
    DzElement element;
    element.addDataItem(new DzSimpleElementData("before"));
    auto* item = new DzSimpleElementData("data", true);
    item->getSettings()->setIntValue("x", 5);
    element.addDataItem(item);
    element.addDataItem(new DzSimpleElementData("behind"));
    EXPECT_EQ(element.removeDataItem(item), DZ_NO_ERROR);
    EXPECT_EQ(item->getOwner(), nullptr);
    delete item;
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(dataNames(element), QStringList({ "before", "data", "behind" }));
    auto* copy = qobject_cast<DzSimpleElementData*>(element.findDataItem("data"));
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->isPersistent());
    EXPECT_EQ(copy->getSettings()->getIntValue("x"), 5);
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_EQ(dataNames(element), QStringList({ "before", "behind" }));
    while (dzUndoStack->undo()) {}
    EXPECT_EQ(element.getNumDataItems(), 0);
    while (dzUndoStack->redo()) {}
    EXPECT_EQ(dataNames(element), QStringList({ "before", "behind" }));
}

TEST(Element, aRemovedDataItemCanBeGivenToAnotherElement)
{
    DzElement element;
    DzElement other;
    auto* item = new DzSimpleElementData("data");
    element.addDataItem(item);
    element.removeDataItem(item);
    EXPECT_EQ(other.addDataItem(item), DZ_NO_ERROR);
    while (dzUndoStack->undo()) {}
    EXPECT_EQ(element.getNumDataItems(), 0);
    EXPECT_EQ(other.getNumDataItems(), 0);
    while (dzUndoStack->redo()) {}
    EXPECT_EQ(element.getNumDataItems(), 0);
    EXPECT_EQ(dataNames(other), QStringList("data"));
}

TEST(Element, deletingADataItemIsUndoneInItsPlace)
{
    DzElement element;
    element.addDataItem(new DzSimpleElementData("a"));
    element.addDataItem(new DzSimpleElementData("b"));
    element.addDataItem(new DzSimpleElementData("c"));
    element.deleteDataItem(element.findDataItem("a"));
    EXPECT_EQ(dataNames(element), QStringList({ "b", "c" }));
    dzUndoStack->undo();
    EXPECT_EQ(dataNames(element), QStringList({ "a", "b", "c" }));
    dzUndoStack->redo();
    EXPECT_EQ(dataNames(element), QStringList({ "b", "c" }));
}

TEST(Element, aDuplicateOfSimpleDataIsIndependent)
{
    DzSimpleElementData data("data", true);
    data.getSettings()->setSettingsValue("n")->setIntValue("x", 1);
    const std::unique_ptr<DzElementData> copy(data.duplicate());
    data.getSettings()->getSettingsValue("n")->setIntValue("x", 2);
    auto* simple = qobject_cast<DzSimpleElementData*>(copy.get());
    ASSERT_NE(simple, nullptr);
    EXPECT_EQ(simple->getName(), QString("data"));
    EXPECT_TRUE(simple->isPersistent());
    EXPECT_EQ(simple->getOwner(), nullptr);
    EXPECT_EQ(simple->getSettings()->getSettingsValue("n")->getIntValue("x"), 1);
}

// Copying -----------------------------------------------------------------------------------

TEST(Element, copyingTakesLabelAndValuesOfPropertiesOfEqualNames)
{
    DzElement source;
    source.setLabel("label");
    source.addProperty(makeProperty("both", 1));
    source.addProperty(makeProperty("source only", 2));
    DzElement target;
    target.addProperty(makeProperty("target only", 3));
    auto* both = makeProperty("both", 4);
    target.addProperty(both);
    dzUndoStack->clearAll();
    target.copyFrom(&source);
    EXPECT_EQ(target.getLabel(), QString("label"));
    EXPECT_EQ(both->getValue(), 1);
    EXPECT_EQ(propertyNames(target), QStringList({ "target only", "both" }));
    EXPECT_FALSE(dzUndoStack->hasItems());
}

TEST(Element, copyingItselfOrNothingChangesNothing)
{
    DzElement element;
    element.setLabel("label");
    element.copyFrom(&element);
    element.copyFrom(nullptr);
    EXPECT_EQ(element.getLabel(), QString("label"));
}

TEST(Element, byDefaultThereAreNoAttributes)
{
    DzElement element;
    DzSettings settings;
    element.getAttributes(&settings);
    EXPECT_EQ(settings.getNumValues(), 0);
    settings.setStringValue("Label", "x");
    EXPECT_EQ(element.setAttributes(&settings), &element);
    EXPECT_EQ(element.getLabel(), QString());
}

// Textures ----------------------------------------------------------------------------------

TEST(Texture, oneNameIsOneTextureWhileSomebodyHoldsIt)
{
    DzImageMgr* manager = dzApp->getImageMgr();
    const int before = manager->getNumImages();
    {
        const DzTexturePtr first = manager->getImage("some/./file.png");
        EXPECT_EQ(first->getFilename(), QString("some/./file.png"));
        EXPECT_EQ(manager->getImage("some/./file.png"), first);
        EXPECT_NE(manager->getImage("some/file.png"), first);
        EXPECT_EQ(manager->getNumImages(), before + 2);
        const DzTexturePtr other = manager->getImage("some/file.png");
    }
    EXPECT_EQ(manager->getNumImages(), before);
}

TEST(Texture, anEmptyNameGivesNoTexture)
{
    EXPECT_EQ(dzApp->getImageMgr()->getImage(QString()), nullptr);
}

TEST(Texture, oneMadeByHandDoesNotTakeTheSharedOneAway)
{
    const DzTexturePtr shared = dzApp->getImageMgr()->getImage("file.png");
    {
        const DzTexturePtr other = new DzTexture("file.png");
    }
    EXPECT_EQ(dzApp->getImageMgr()->getImage("file.png"), shared);
}

TEST(Texture, oneThatOutlivesTheManagersIsDeletedSafely)
{
    DzTexturePtr held;
    {
        DzImageMgr manager;
        held = manager.getImage("held.png");
        manager.getImage("nobody holds this.png");
    }
    EXPECT_EQ(held->getFilename(), QString("held.png"));
    held = nullptr;
}
