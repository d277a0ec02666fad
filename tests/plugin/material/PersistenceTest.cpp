// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkPersistence.h"
#include "TestScene.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzelementsnapshot.h"

#include <limits>

namespace {

const char* const itemName = "VireoElementDataItem";

QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

QStringList keysOf(const DzSettings* settings)
{
    QStringList keys;
    for (int i = 0; settings && i < settings->getNumValues(); ++i)
        keys.append(settings->getKey(i));
    return keys;
}

/// The nested tree at the end of a way of keys; null when there is none.
DzSettings* treeAt(const DzSettings* settings, const QStringList& way)
{
    auto* tree = const_cast<DzSettings*>(settings);
    for (const QString& key : way)
        tree = tree ? tree->getSettingsValue(key) : nullptr;
    return tree;
}

DzSimpleElementData* itemOf(const DzMaterial* material)
{
    return qobject_cast<DzSimpleElementData*>(material->findDataItem(text(itemName)));
}

DzSettings attributesOf(const VireoBrickUser& user)
{
    DzSettings attributes;
    user.getAttributes(&attributes);
    return attributes;
}

/// An item that is no settings tree.
class OtherData : public DzElementData
{
public:
    explicit OtherData(const char* name)
        : DzElementData(text(name), true)
    {
    }
    DzElementData* duplicate() const override
    {
        return new OtherData(getName().toUtf8().constData());
    }
};

class PersistenceTest : public testing::Test
{
protected:
    PersistenceTest()
    {
        const DzUndoStackLock lock;
        user.setBrickUserName(text("Wood"));
        root = addBrick(user, "VireoRootBrick");
        matte = addBrick(user, "VireoMatMatteBrick");
        EXPECT_TRUE(link(matte, root, "material"));
        propertyAs<DzFloatProperty>(matte, "sigma")->setValue(0.75f);
    }

    DzMaterialPtr surface { DzDefaultMaterial::createBare(text("surface")) };
    VireoBrickUser user;
    VireoBrickBase* root;
    VireoBrickBase* matte;
};

} // namespace

// The tree of a brick user, and of its bricks ----------------------------------------------------

TEST_F(PersistenceTest, aUsersAttributesNestTheNetworkAndEachBricksTree)
{
    matte->addCustomInput(1012, text("v"), text("A Vector"), 1);
    const DzSettings attributes = attributesOf(user);
    EXPECT_EQ(keysOf(&attributes), QStringList({ text("BrickSetup") }));
    const DzSettings* setup = attributes.getSettingsValue(text("BrickSetup"));
    EXPECT_EQ(setup->getStringValue(text("BrickUserName")), text("Wood"));
    const DzSettings* bricks = treeAt(setup, { text("Bricks") });
    EXPECT_EQ(keysOf(bricks), QStringList({ text("Brick_1"), text("Brick_2") }));
    const DzSettings* stored = treeAt(bricks, { text("Brick_2") });
    EXPECT_EQ(stored->getStringValue(text("DAZStudioClassName")), text("VireoMatMatteBrick"));
    const DzSettings* own = treeAt(stored, { text("Attributes") });
    ASSERT_NE(own, nullptr);
    EXPECT_EQ(keysOf(own).first(), text("VireoExtCustomParameters"));
    EXPECT_EQ(keysOf(own).last(), text("BrickSettings"));
    const DzSettings* custom = treeAt(own, { text("VireoExtCustomParameters"), text("para0") });
    EXPECT_EQ(keysOf(custom),
        QStringList({ text("Label"), text("Name"), text("ExtTypeID"), text("Direction") }));
    EXPECT_EQ(custom->getStringValue(text("Label")), text("A Vector"));
    EXPECT_EQ(custom->getStringValue(text("Name")), text("v"));
    EXPECT_EQ(custom->getFloatValue(text("ExtTypeID")), 1012);
    EXPECT_EQ(custom->getFloatValue(text("Direction")), 1);
    // A brick without custom inputs has the tree too.
    const DzSettings* none
        = treeAt(bricks, { text("Brick_1"), text("Attributes"), text("VireoExtCustomParameters") });
    ASSERT_NE(none, nullptr);
    EXPECT_EQ(none->getNumValues(), 0);
}

TEST_F(PersistenceTest, allKindsOfCustomInputsTravelWithTheirOrderValuesAndLinks)
{
    // Not in the order of their numbers.
    static const int kinds[] = { 1016, 1007, 1015, 1009, 1012, 1014, 1008, 1011, 1010, 1013 };
    for (const int kind : kinds)
        matte->addCustomInput(kind, text("n%1").arg(kind), text("L%1").arg(kind), 0);
    propertyAs<DzFloatProperty>(matte, "n1009")->setValue(0.5f);
    propertyAs<DzFloatProperty>(matte, "n1016")->setValue(1.5f);
    propertyAs<DzColorProperty>(matte, "n1010")->setColorValue(QColor(1, 2, 3));
    propertyAs<DzStringProperty>(matte, "n1015")->setValue(text("K\xc3\xa4se"));
    VireoBrickBase* texture = addBrick(user, "VireoTexFltConstantBrick");
    VireoBrickBase* fresnel = addBrick(user, "VireoTexFnlSopraBrick");
    ASSERT_TRUE(link(texture, matte, "n1009"));
    ASSERT_TRUE(link(fresnel, matte, "n1016"));
    ASSERT_TRUE(link(addBrick(user, "VireoVolClearBrick"), matte, "n1008"));
    VireoBrickUser again;
    const DzSettings attributes = attributesOf(user);
    // Twice, which must not double them.
    again.setAttributes(&attributes);
    again.setAttributes(&attributes);
    EXPECT_TRUE(attributesOf(again).isEqual(attributes));
    auto* copy = qobject_cast<VireoBrickBase*>(again.getBrick(2));
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->getNumCustomParams(), 10);
    EXPECT_EQ(copy->getNumParameters(), matte->getNumParameters());
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(copy->getCustomParam(i)->getType(), kinds[i]);
        EXPECT_EQ(copy->getCustomParam(i)->getName(), text("n%1").arg(kinds[i]));
        EXPECT_EQ(copy->getCustomParam(i)->getLabel(), text("L%1").arg(kinds[i]));
    }
    EXPECT_EQ(propertyAs<DzFloatProperty>(copy, "n1009")->getValue(), 0.5f);
    EXPECT_EQ(propertyAs<DzFloatProperty>(copy, "n1016")->getValue(), 1.5f);
    EXPECT_EQ(propertyAs<DzColorProperty>(copy, "n1010")->getColorValue(), QColor(1, 2, 3));
    EXPECT_EQ(propertyAs<DzStringProperty>(copy, "n1015")->getValue(), text("K\xc3\xa4se"));
    EXPECT_EQ(param(copy, "n1009")->getNumConnections(), 1);
    EXPECT_EQ(param(copy, "n1016")->getNumConnections(), 1);
    EXPECT_EQ(param(copy, "n1008")->getNumConnections(), 1);
    EXPECT_EQ(param(copy, "n1007")->getNumConnections(), 0);
}

TEST_F(PersistenceTest, aCustomInputOfUnknownKindIsSkippedAndWrittenBack)
{
    DzSettings attributes = attributesOf(user);
    DzSettings* customs = treeAt(&attributes,
        { text("BrickSetup"), text("Bricks"), text("Brick_2"), text("Attributes"),
            text("VireoExtCustomParameters") });
    ASSERT_NE(customs, nullptr);
    DzSettings* unknown = customs->setSettingsValue(text("para0"));
    unknown->setStringValue(text("Name"), text("later"));
    unknown->setFloatValue(text("ExtTypeID"), 1017);
    customs->setSettingsValue(text("para1"))->setFloatValue(text("ExtTypeID"), 1007);
    VireoBrickUser again;
    Warnings warnings;
    again.setAttributes(&attributes);
    EXPECT_EQ(warnings.messages.size(), 1);
    auto* copy = qobject_cast<VireoBrickBase*>(again.getBrick(2));
    ASSERT_NE(copy, nullptr);
    ASSERT_EQ(copy->getNumCustomParams(), 1);
    EXPECT_EQ(copy->getCustomParam(0)->getName(), text("arg_1"));
    EXPECT_EQ(copy->getCustomParam(0)->getLabel(), text("arg_1"));
    EXPECT_EQ(copy->getCustomParam(0)->getType(), 1007);
    const DzSettings written = attributesOf(again);
    const DzSettings* kept = treeAt(&written,
        { text("BrickSetup"), text("Bricks"), text("Brick_2"), text("Attributes"),
            text("VireoExtCustomParameters"), text("para1") });
    ASSERT_NE(kept, nullptr);
    EXPECT_TRUE(kept->isEqual(*unknown));
}

// The data item of a surface ---------------------------------------------------------------------

TEST_F(PersistenceTest, storingMakesAPersistentItemOfThreeLevels)
{
    const DzSettings attributes = attributesOf(user);
    storeNetwork(surface, attributes);
    ASSERT_EQ(surface->getNumDataItems(), 1);
    const DzSimpleElementData* item = itemOf(surface);
    ASSERT_NE(item, nullptr);
    EXPECT_TRUE(item->isPersistent());
    EXPECT_EQ(keysOf(item->getSettings()), QStringList({ text("VireoSceneBrickInformation") }));
    const DzSettings* information
        = item->getSettings()->getSettingsValue(text("VireoSceneBrickInformation"));
    ASSERT_NE(information, nullptr);
    EXPECT_EQ(keysOf(information), QStringList({ text("BrickSetup") }));
    EXPECT_TRUE(information->getSettingsValue(text("BrickSetup"))
                    ->isEqual(*attributes.getSettingsValue(text("BrickSetup"))));
    EXPECT_EQ(storedNetwork(surface), information);
}

TEST_F(PersistenceTest, attributesWithoutANetworkStoreNothing)
{
    DzSettings attributes;
    storeNetwork(surface, attributes);
    attributes.setStringValue(text("BrickSetup"), text("not nested"));
    storeNetwork(surface, attributes);
    EXPECT_EQ(surface->getNumDataItems(), 0);
    EXPECT_FALSE(dzUndoStack->hasItems());
    storeNetwork(surface, attributesOf(user));
    storeNetwork(surface, attributes);
    EXPECT_NE(storedNetwork(surface), nullptr);
}

TEST_F(PersistenceTest, storingTwiceLeavesOneItemWithTheLaterNetwork)
{
    storeNetwork(surface, attributesOf(user));
    VireoBrickUser later;
    addBrick(later, "VireoVolClearBrick");
    const DzSettings attributes = attributesOf(later);
    storeNetwork(surface, attributes);
    ASSERT_EQ(surface->getNumDataItems(), 1);
    EXPECT_TRUE(storedNetwork(surface)->isEqual(attributes));
}

TEST_F(PersistenceTest, otherKeysOfTheItemStayAndTheOldMapGoes)
{
    auto* item = new DzSimpleElementData(text(itemName), false);
    item->getSettings()->setStringValue(text("Author"), text("somebody"));
    DzSettings* information
        = item->getSettings()->setSettingsValue(text("VireoSceneBrickInformation"));
    information->setSettingsValue(text("MyExtBrickSetProperties"));
    item->getSettings()->setIntValue(text("Version"), 3);
    ASSERT_EQ(surface->addDataItem(item), DZ_NO_ERROR);
    storeNetwork(surface, attributesOf(user));
    ASSERT_EQ(surface->getNumDataItems(), 1);
    const DzSettings* stored = itemOf(surface)->getSettings();
    EXPECT_EQ(keysOf(stored),
        QStringList({ text("Author"), text("VireoSceneBrickInformation"), text("Version") }));
    EXPECT_EQ(stored->getStringValue(text("Author")), text("somebody"));
    EXPECT_EQ(stored->getIntValue(text("Version")), 3);
    EXPECT_EQ(keysOf(stored->getSettingsValue(text("VireoSceneBrickInformation"))),
        QStringList({ text("BrickSetup") }));
}

TEST_F(PersistenceTest, otherItemsStayAsTheyAre)
{
    const auto others = [this] {
        QStringList found;
        for (int i = 0; i < surface->getNumDataItems(); ++i) {
            auto* item = qobject_cast<DzSimpleElementData*>(surface->getDataItem(i));
            if (item->getName() != text(itemName))
                found.append(item->getName() + QLatin1Char('=')
                    + item->getSettings()->getStringValue(text("is")));
        }
        return found;
    };
    const QStringList expected { text("first=a"), text("last=z") };
    for (const char* name : { "first", itemName, "last" })
        ASSERT_EQ(surface->addDataItem(new DzSimpleElementData(text(name), true)), DZ_NO_ERROR);
    for (const auto& one : { std::make_pair("first", "a"), std::make_pair("last", "z") })
        qobject_cast<DzSimpleElementData*>(surface->findDataItem(text(one.first)))
            ->getSettings()
            ->setStringValue(text("is"), text(one.second));
    storeNetwork(surface, attributesOf(user));
    EXPECT_EQ(surface->getNumDataItems(), 3);
    EXPECT_EQ(others(), expected);
    ASSERT_NE(storedNetwork(surface), nullptr);
}

TEST_F(PersistenceTest, anItemOfAnotherKindHoldsNoNetworkAndGivesWay)
{
    ASSERT_EQ(surface->addDataItem(new OtherData(itemName)), DZ_NO_ERROR);
    EXPECT_EQ(storedNetwork(surface), nullptr);
    VireoBrickUser again;
    EXPECT_FALSE(rebuildStoredNetwork(surface, &again));
    storeNetwork(surface, attributesOf(user));
    ASSERT_EQ(surface->getNumDataItems(), 1);
    EXPECT_NE(storedNetwork(surface), nullptr);
}

TEST_F(PersistenceTest, storingIsUndoneAndRedone)
{
    VireoBrickUser earlier;
    addBrick(earlier, "VireoVolClearBrick");
    const DzSettings first = attributesOf(earlier);
    const DzSettings second = attributesOf(user);
    storeNetwork(surface, first);
    dzUndoStack->clearAll();
    const DzElementSnapshot before(surface);
    DzUndoStackHold hold;
    storeNetwork(surface, second);
    hold.accept(text("Store"));
    const DzElementSnapshot after(surface);
    EXPECT_EQ(before.changesTo(after).size(), 1);
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(dzUndoStack->undo());
        EXPECT_TRUE(before.changesTo(DzElementSnapshot(surface)).isEmpty());
        ASSERT_NE(storedNetwork(surface), nullptr);
        EXPECT_TRUE(storedNetwork(surface)->isEqual(first));
        ASSERT_TRUE(dzUndoStack->redo());
        EXPECT_TRUE(after.changesTo(DzElementSnapshot(surface)).isEmpty());
        ASSERT_NE(storedNetwork(surface), nullptr);
        EXPECT_TRUE(storedNetwork(surface)->isEqual(second));
    }
}

TEST_F(PersistenceTest, aMissingLevelIsNoNetwork)
{
    const auto rebuilds = [this] {
        VireoBrickUser again;
        addBrick(again, "VireoVolClearBrick");
        const bool isRebuilt = rebuildStoredNetwork(surface, &again);
        EXPECT_EQ(isRebuilt, storedNetwork(surface) != nullptr);
        EXPECT_EQ(again.getNumBricks(), isRebuilt ? 2 : 1);
        return isRebuilt;
    };
    EXPECT_FALSE(rebuilds());
    auto* item = new DzSimpleElementData(text(itemName), true);
    ASSERT_EQ(surface->addDataItem(item), DZ_NO_ERROR);
    EXPECT_FALSE(rebuilds());
    item->getSettings()->setStringValue(text("VireoSceneBrickInformation"), text("none"));
    EXPECT_FALSE(rebuilds());
    DzSettings* information
        = item->getSettings()->setSettingsValue(text("VireoSceneBrickInformation"));
    EXPECT_FALSE(rebuilds());
    information->setStringValue(text("BrickSetup"), text("none"));
    EXPECT_FALSE(rebuilds());
    const DzSettings attributes = attributesOf(user);
    information->setSettingsValue(
        text("BrickSetup"), *attributes.getSettingsValue(text("BrickSetup")));
    EXPECT_TRUE(rebuilds());
}

TEST_F(PersistenceTest, aRebuiltNetworkIsTheStoredOneUnderAFreshIdentifier)
{
    storeNetwork(surface, attributesOf(user));
    VireoBrickUser first;
    VireoBrickUser second;
    ASSERT_TRUE(rebuildStoredNetwork(surface, &first));
    ASSERT_TRUE(rebuildStoredNetwork(surface, &second));
    EXPECT_EQ(first.getBrickUserName(), text("Wood"));
    EXPECT_FALSE(first.getIdentifier().isNull());
    EXPECT_NE(first.getIdentifier(), user.getIdentifier());
    EXPECT_NE(first.getIdentifier(), second.getIdentifier());
    auto* rebuilt = qobject_cast<VireoBrickBase*>(first.getBrick(1));
    ASSERT_NE(rebuilt, nullptr);
    EXPECT_TEXT(literalText(root), literalText(rebuilt));
    EXPECT_TEXT(placeholderText(root), placeholderText(rebuilt));
}

// The property map -------------------------------------------------------------------------------

namespace {

/// A user with a matte of the name "Brick_1", and an element with properties to bring into it.
class PropertyMapTest : public testing::Test
{
protected:
    PropertyMapTest()
    {
        const DzUndoStackLock lock;
        matte = addBrick(user, "VireoMatMatteBrick");
        table.insert(text("Brick_1"), matte);
        sigma = propertyAs<DzFloatProperty>(matte, "sigma");
        source = addFloat(&element, "roughness", 0.25f);
    }

    DzSettings* addEntry(const char* key, const char* brick, const char* paramName,
        const char* propertyName, double index)
    {
        DzSettings* entry = map.setSettingsValue(text(key));
        entry->setStringValue(text("SourceBrick"), text(brick));
        entry->setStringValue(text("SourceParam"), text(paramName));
        entry->setStringValue(text("PropertyName"), text(propertyName));
        entry->setFloatValue(text("PropertyIndex"), index);
        return entry;
    }
    DzSettings* addSigmaEntry() { return addEntry("0", "Brick_1", "sigma", "roughness", 0); }
    void apply() { user.applyElementPropsToSettings(table, &map, &element); }
    /// True when the map, applied now, brings the source's value into sigma.
    bool reachesSigma()
    {
        {
            const DzUndoStackLock lock;
            sigma->setValue(0);
        }
        apply();
        return sigma->getValue() == 0.25f;
    }

    VireoBrickUser user;
    VireoBrickBase* matte;
    QHash<QString, DzShaderBrick*> table;
    DzElement element;
    DzSettings map;
    DzFloatProperty* sigma;
    DzFloatProperty* source;
};

} // namespace

TEST_F(PropertyMapTest, anEntryBringsDescriptionValueAndMap)
{
    const DzUndoStackLock lock;
    source->setLabel(text("Roughness of Skin"));
    source->setPath(text("/Skin/Rough"));
    source->setMinMax(-1, 2);
    source->setIsClamped(true);
    source->setMap(text("maps/rough.png"));
    source->setHidden(true);
    source->lock(true);
    addSigmaEntry();
    const bool isUser = sigma->isUserProperty();
    apply();
    EXPECT_EQ(sigma->getName(), text("sigma"));
    EXPECT_EQ(sigma->getLabel(), text("Roughness of Skin"));
    EXPECT_EQ(sigma->getPath(), text("/Skin/Rough"));
    EXPECT_EQ(sigma->getValue(), 0.25f);
    EXPECT_EQ(sigma->getMin(), -1);
    EXPECT_EQ(sigma->getMax(), 2);
    EXPECT_TRUE(sigma->isClamped());
    EXPECT_TRUE(sigma->isHidden());
    EXPECT_TRUE(sigma->isLocked());
    EXPECT_TRUE(sigma->isMapped());
    EXPECT_EQ(sigma->getMapValue()->getFilename(), text("maps/rough.png"));
    EXPECT_EQ(sigma->isUserProperty(), isUser);
    // The element is only read.
    EXPECT_EQ(source->getName(), text("roughness"));
    EXPECT_TRUE(source->isUserProperty());
}

TEST_F(PropertyMapTest, lockedPropertiesAreWrittenAndMapsAreTakenAway)
{
    {
        const DzUndoStackLock lock;
        sigma->setMap(text("maps/old.png"));
        sigma->lock(true);
    }
    addSigmaEntry();
    apply();
    EXPECT_EQ(sigma->getValue(), 0.25f);
    EXPECT_FALSE(sigma->isMapped());
    EXPECT_FALSE(sigma->isLocked());
}

TEST_F(PropertyMapTest, applyingLeavesNoUndoStep)
{
    dzUndoStack->clearAll();
    source->setLabel(text("Other"));
    source->setPath(text("/MyExtProperties/Skin"));
    dzUndoStack->clearAll();
    addSigmaEntry();
    apply();
    EXPECT_EQ(sigma->getLabel(), text("Other"));
    EXPECT_EQ(sigma->getPath(), text("Skin/"));
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_FALSE(dzUndoStack->isLocked());
}

TEST_F(PropertyMapTest, withoutMapElementOrBricksNothingHappens)
{
    addSigmaEntry();
    user.applyElementPropsToSettings(table, nullptr, &element);
    user.applyElementPropsToSettings(table, &map, nullptr);
    user.applyElementPropsToSettings(QHash<QString, DzShaderBrick*>(), &map, &element);
    EXPECT_EQ(sigma->getValue(), 0);
    EXPECT_TRUE(reachesSigma());
}

TEST_F(PropertyMapTest, anEntryWithAnEmptyOrMissingKeyIsSkippedAndTheNextIsNot)
{
    for (const char* key : { "SourceBrick", "SourceParam", "PropertyName" }) {
        addSigmaEntry();
        EXPECT_TRUE(reachesSigma());
        map.getSettingsValue(text("0"))->setStringValue(text(key), QString());
        EXPECT_FALSE(reachesSigma()) << key;
        map.getSettingsValue(text("0"))->removeValue(text(key));
        EXPECT_FALSE(reachesSigma()) << key;
        map.getSettingsValue(text("0"))->setFloatValue(text(key), 1);
        EXPECT_FALSE(reachesSigma()) << key;
        addEntry("1", "Brick_1", "sigma", "roughness", 0);
        EXPECT_TRUE(reachesSigma()) << key;
        map.removeValue(text("1"));
    }
}

TEST_F(PropertyMapTest, whatLeadsNowhereIsSkipped)
{
    addEntry("0", "Brick_2", "sigma", "roughness", 0);
    EXPECT_FALSE(reachesSigma());
    addEntry("0", "brick_1", "sigma", "roughness", 0);
    EXPECT_FALSE(reachesSigma());
    addEntry("0", "Brick_1", "Sigma", "roughness", 0);
    EXPECT_FALSE(reachesSigma());
    addEntry("0", "Brick_1", "sigma", "Roughness", 0);
    EXPECT_FALSE(reachesSigma());
    table.insert(text("Brick_2"), nullptr);
    addEntry("0", "Brick_2", "sigma", "roughness", 0);
    EXPECT_FALSE(reachesSigma());
    // A parameter without properties.
    addEntry("0", "Brick_1", "result", "roughness", 0);
    EXPECT_FALSE(reachesSigma());
    addSigmaEntry();
    EXPECT_TRUE(reachesSigma());
}

TEST_F(PropertyMapTest, anIndexOutsideTheParametersPropertiesIsSkipped)
{
    const double infinite = std::numeric_limits<double>::infinity();
    for (const double index : { 1.0, 2.0, -1.0, 1e30, -1e30, 4294967296.0, infinite, -infinite,
             std::numeric_limits<double>::quiet_NaN() }) {
        addEntry("0", "Brick_1", "sigma", "roughness", index);
        EXPECT_FALSE(reachesSigma()) << index;
    }
    addSigmaEntry();
    EXPECT_TRUE(reachesSigma());
}

TEST_F(PropertyMapTest, aMissingIndexIsTheFirstAndAnIntegerIsRead)
{
    addSigmaEntry()->removeValue(text("PropertyIndex"));
    EXPECT_TRUE(reachesSigma());
    map.getSettingsValue(text("0"))->setIntValue(text("PropertyIndex"), 0);
    EXPECT_TRUE(reachesSigma());
    map.getSettingsValue(text("0"))->setIntValue(text("PropertyIndex"), 1);
    EXPECT_FALSE(reachesSigma());
}

TEST_F(PropertyMapTest, theIndexChoosesAmongTheParametersProperties)
{
    DzBrickParam* vector = matte->addCustomInput(1012, text("v"), text("v"), 0);
    ASSERT_EQ(vector->getNumProperties(), 3);
    addEntry("0", "Brick_1", "v", "roughness", 2);
    apply();
    const auto component = [&](int index) {
        return qobject_cast<DzFloatProperty*>(vector->getProperty(index))->getValue();
    };
    EXPECT_EQ(component(0), 0);
    EXPECT_EQ(component(1), 0);
    EXPECT_EQ(component(2), 0.25f);
    addEntry("1", "Brick_1", "v", "roughness", 3);
    apply();
    EXPECT_EQ(component(0), 0);
    EXPECT_EQ(component(1), 0);
}

TEST_F(PropertyMapTest, valuesThatAreNoEntriesAreSkippedAndLaterEntriesCount)
{
    addFloat(&element, "later", 0.5f);
    map.setStringValue(text("note"), text("by hand"));
    addEntry("b", "Brick_1", "sigma", "roughness", 0);
    map.setFloatValue(text("number"), 7);
    addEntry("a", "Brick_1", "sigma", "later", 0);
    apply();
    EXPECT_EQ(sigma->getValue(), 0.5f);
}

TEST_F(PropertyMapTest, aPathBelowThatOfTheMapIsCutBack)
{
    static const struct {
        const char* path;
        const char* expected;
    } cases[] = {
        { "/MyExtProperties", "" },
        { "/MyExtProperties/Skin", "Skin/" },
        { "/MyExtProperties/Skin/Rough", "Skin/Rough/" },
        { "/MyExtProperties/", "/" },
        { "/MyExtPropertiesMore", "/MyExtPropertiesMore" },
        { "/myextproperties/Skin", "/myextproperties/Skin" },
        { "MyExtProperties/Skin", "MyExtProperties/Skin" },
        { "/Skin/MyExtProperties", "/Skin/MyExtProperties" },
        { "/", "/" },
        { "", "" },
    };
    addSigmaEntry();
    const DzUndoStackLock lock;
    for (const auto& one : cases) {
        source->setPath(text(one.path));
        apply();
        EXPECT_EQ(sigma->getPath(), text(one.expected)) << one.path;
        EXPECT_EQ(source->getPath(), text(one.path));
    }
}

TEST_F(PropertyMapTest, valuesOfOtherKindsAreNotBent)
{
    addColor(&element, "tint", QColor(10, 20, 30));
    addString(&element, "word", "0.5");
    {
        const DzUndoStackLock lock;
        sigma->setValue(0.125f);
    }
    addEntry("0", "Brick_1", "sigma", "word", 0);
    apply();
    EXPECT_EQ(sigma->getValue(), 0.125f);
    addEntry("0", "Brick_1", "Kd", "tint", 0);
    apply();
    EXPECT_EQ(propertyAs<DzColorProperty>(matte, "Kd")->getColorValue(), QColor(10, 20, 30));
}

TEST_F(PersistenceTest, rebuildingAppliesTheStoredMapToTheNewBricks)
{
    storeNetwork(surface, attributesOf(user));
    addFloat(surface, "Skin Roughness", 0.5f);
    DzSettings* entry = itemOf(surface)
                            ->getSettings()
                            ->getSettingsValue(text("VireoSceneBrickInformation"))
                            ->setSettingsValue(text("MyExtBrickSetProperties"))
                            ->setSettingsValue(text("any key"));
    entry->setStringValue(text("SourceBrick"), text("Brick_2"));
    entry->setStringValue(text("SourceParam"), text("sigma"));
    entry->setStringValue(text("PropertyName"), text("Skin Roughness"));
    entry->setFloatValue(text("PropertyIndex"), 0);
    dzUndoStack->clearAll();
    VireoBrickUser again;
    ASSERT_TRUE(rebuildStoredNetwork(surface, &again));
    auto* rebuilt = qobject_cast<VireoBrickBase*>(again.getBrick(2));
    ASSERT_NE(rebuilt, nullptr);
    EXPECT_EQ(propertyAs<DzFloatProperty>(rebuilt, "sigma")->getValue(), 0.5f);
    EXPECT_EQ(property(rebuilt, "sigma")->getLabel(), text("Skin Roughness"));
    // The network that was stored is another.
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "sigma")->getValue(), 0.75f);
    EXPECT_FALSE(dzUndoStack->hasItems());
}
