// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestScene.h"
#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dztexture.h"

#include <QMetaEnum>
#include <QMetaMethod>
#include <QSignalSpy>
#include <memory>

namespace {

typedef QHash<QString, DzShaderBrick*> BrickTable;
typedef QList<IDzBrickUser*> BrickUserList;

const int numSignals = 4;

/// What scripts see, in the order that they count on.
const char* const entries[] = {
    "void brickRemoved(DzShaderBrick*)",
    "void brickAdded(DzShaderBrick*)",
    "void generateFilesStarted()",
    "void generateFilesFinished()",
    "void setDiffuseColor(QColor)",
    "void setBaseOpacity(float)",
    "void setColorMap(const DzTexture*)",
    "void setOpacityMap(const DzTexture*)",
    "QColor getDiffuseColor()",
    "float getBaseOpacity()",
    "bool isColorMappable()",
    "bool isOpacityMappable()",
    "DzTexture* getColorMap()",
    "DzTexture* getOpacityMap()",
    "QString getMaterialName()",
    "bool needsTangentSpaceParams()",
    "bool shouldAlwaysEmbed()",
    "QString getExtension()",
    "DzElement* setAttributes(const DzSettings*)",
    "void getAttributes(DzSettings*)",
    "QString getBrickUserName()",
    "void setBrickUserName(QString)",
    "int getNumBrickSets()",
    "DzBrickSet* getBrickSet(int)",
    "uint addBrick(DzShaderBrick*)",
    "DzShaderBrick* getBrick(uint)",
    "QVariantList getBrickIDs()",
    "void getBrickIDs(QList<uint>&)",
    "bool deleteBrick(uint)",
    "bool deleteBrick(DzShaderBrick*)",
    "void deleteAllBricks()",
    "void invalidateSets()",
    "bool moveBrick(uint,IDzBrickUser*)",
    "QUuid getIdentifier()",
    "void setIdentifier(QUuid)",
    "void updateIdentifierOnSetInvalidate(bool)",
    "bool isInEditMode()",
    "void startEditMode()",
    "void endEditMode()",
    "void applyToScene()",
    "QList<IDzBrickUser*> fromScene()",
    "void applyElementPropsToSettings(QHash<QString,DzShaderBrick*>,const DzSettings*,DzElement*)",
    "bool usesLocalShaderSpace()",
    "void removeSet(DzBrickSet*)",
    "void brickIDChanged(int)",
    "void resolvePropertyOwnership(DzShaderBrick*)",
};
const int numEntries = sizeof entries / sizeof *entries;

QMetaMethod entry(int index)
{
    const QMetaObject& meta = VireoBrickUser::staticMetaObject;
    return meta.method(meta.methodOffset() + index);
}

QMetaMethod entry(const char* signature)
{
    const QMetaObject& meta = VireoBrickUser::staticMetaObject;
    return meta.method(meta.indexOfMethod(signature));
}

/// Calls by name, as a script does; a failure of the test when there is no such entry.
template <typename... Arguments>
void call(VireoBrickUser& user, const char* name, const Arguments&... arguments)
{
    EXPECT_TRUE(QMetaObject::invokeMethod(&user, name, Qt::DirectConnection, arguments...)) << name;
}

/// The same for an entry with a result.
template <typename Result, typename... Arguments>
Result ask(
    VireoBrickUser& user, const char* typeName, const char* name, const Arguments&... arguments)
{
    Result result {};
    EXPECT_TRUE(QMetaObject::invokeMethod(
        &user, name, Qt::DirectConnection, QReturnArgument<Result>(typeName, result), arguments...))
        << name;
    return result;
}

class ScriptInterfaceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qRegisterMetaType<DzShaderBrick*>("DzShaderBrick*");
        qRegisterMetaType<DzBrickSet*>("DzBrickSet*");
    }

    VireoBrickUser user;
};

} // namespace

// The list ---------------------------------------------------------------------------------------

TEST_F(ScriptInterfaceTest, theEntriesStandInTheirOrder)
{
    const QMetaObject& meta = VireoBrickUser::staticMetaObject;
    ASSERT_EQ(numEntries, 46);
    ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 46);
    for (int i = 0; i < numEntries; ++i) {
        const QByteArray found = QByteArray(entry(i).typeName()) + ' ' + entry(i).methodSignature();
        EXPECT_STREQ(found.constData(), entries[i]) << i;
    }
}

TEST_F(ScriptInterfaceTest, fourSignalsThenMethodsOfWhichNoneIsASlotOrHasDefaults)
{
    for (int i = 0; i < numEntries; ++i) {
        EXPECT_EQ(entry(i).methodType(), i < numSignals ? QMetaMethod::Signal : QMetaMethod::Method)
            << entries[i];
        EXPECT_EQ(entry(i).attributes() & QMetaMethod::Cloned, 0) << entries[i];
        EXPECT_EQ(entry(i).access(), QMetaMethod::Public) << entries[i];
    }
}

TEST_F(ScriptInterfaceTest, argumentsBearTheirNames)
{
    EXPECT_EQ(entry("moveBrick(uint,IDzBrickUser*)").parameterNames(),
        QList<QByteArray>({ "id", "newOwner" }));
    EXPECT_EQ(entry("applyElementPropsToSettings(QHash<QString,DzShaderBrick*>,const DzSettings*,"
                    "DzElement*)")
                  .parameterNames(),
        QList<QByteArray>({ "createdBricks", "propertyMapSet", "elem" }));
    EXPECT_EQ(entry("brickIDChanged(int)").parameterNames(), QList<QByteArray>({ "oldID" }));
}

TEST_F(ScriptInterfaceTest, theKindsOfCustomInputsAreDeclared)
{
    static const struct {
        const char* name;
        int value;
    } kinds[] = {
        { "VireoExtMaterial", 1007 },
        { "VireoExtVolume", 1008 },
        { "VireoExtFloat", 1009 },
        { "VireoExtColor", 1010 },
        { "VireoExtPoint", 1011 },
        { "VireoExtVector", 1012 },
        { "VireoExtNormal", 1013 },
        { "VireoExtMatrix", 1014 },
        { "VireoExtString", 1015 },
        { "VireoExtFresnel", 1016 },
    };
    const QMetaObject& meta = VireoBrickUser::staticMetaObject;
    ASSERT_EQ(meta.enumeratorCount() - meta.enumeratorOffset(), 1);
    const QMetaEnum found = meta.enumerator(meta.enumeratorOffset());
    EXPECT_STREQ(found.name(), "MyExParamType");
    ASSERT_EQ(found.keyCount(), 10);
    for (int i = 0; i < 10; ++i) {
        EXPECT_STREQ(found.key(i), kinds[i].name);
        EXPECT_EQ(found.value(i), kinds[i].value) << kinds[i].name;
    }
}

TEST_F(ScriptInterfaceTest, theBasesAreTheMaterialAndThenTheBrickUser)
{
    EXPECT_STREQ(VireoBrickUser::staticMetaObject.superClass()->className(), "DzMaterial");
    EXPECT_EQ(static_cast<void*>(static_cast<DzMaterial*>(&user)), static_cast<void*>(&user));
    EXPECT_NE(dynamic_cast<DzDefaultBrickUser*>(static_cast<IDzBrickUser*>(&user)), nullptr);
    EXPECT_EQ(user.getBrickUserElement(), &user);
    EXPECT_FALSE(user.allowsAutoBake());
}

// Calling ----------------------------------------------------------------------------------------

TEST_F(ScriptInterfaceTest, signalsAreRaisedByName)
{
    const BrickPtr brick = makeBrick("VireoMatMatteBrick");
    QSignalSpy removed(&user, SIGNAL(brickRemoved(DzShaderBrick*)));
    QSignalSpy added(&user, SIGNAL(brickAdded(DzShaderBrick*)));
    QSignalSpy started(&user, SIGNAL(generateFilesStarted()));
    QSignalSpy finished(&user, SIGNAL(generateFilesFinished()));
    call(user, "brickRemoved", Q_ARG(DzShaderBrick*, brick));
    call(user, "brickAdded", Q_ARG(DzShaderBrick*, brick));
    call(user, "generateFilesStarted");
    call(user, "generateFilesFinished");
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(removed.first().first().value<DzShaderBrick*>(), brick);
    ASSERT_EQ(added.count(), 1);
    EXPECT_EQ(added.first().first().value<DzShaderBrick*>(), brick);
    EXPECT_EQ(started.count(), 1);
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(ScriptInterfaceTest, theHostsNotificationsRaiseTheSignals)
{
    QSignalSpy started(&user, SIGNAL(generateFilesStarted()));
    QSignalSpy finished(&user, SIGNAL(generateFilesFinished()));
    IDzBrickUser* host = &user;
    host->generatingFilesStarted();
    EXPECT_EQ(started.count(), 1);
    EXPECT_EQ(finished.count(), 0);
    host->generatingFilesFinished();
    EXPECT_EQ(started.count(), 1);
    EXPECT_EQ(finished.count(), 1);
}

TEST_F(ScriptInterfaceTest, theViewportEntries)
{
    const DzTexturePtr map(new DzTexture(QStringLiteral("maps/wood.png")));
    call(user, "setDiffuseColor", Q_ARG(QColor, QColor(1, 2, 3)));
    call(user, "setBaseOpacity", Q_ARG(float, 0.5f));
    call(user, "setColorMap", Q_ARG(const DzTexture*, map));
    call(user, "setOpacityMap", Q_ARG(const DzTexture*, map));
    EXPECT_EQ(ask<QColor>(user, "QColor", "getDiffuseColor"), QColor(0, 0, 0, 255));
    EXPECT_EQ(ask<float>(user, "float", "getBaseOpacity"), 1.0f);
    EXPECT_FALSE(ask<bool>(user, "bool", "isColorMappable"));
    EXPECT_FALSE(ask<bool>(user, "bool", "isOpacityMappable"));
    EXPECT_EQ(ask<DzTexture*>(user, "DzTexture*", "getColorMap"), nullptr);
    EXPECT_EQ(ask<DzTexture*>(user, "DzTexture*", "getOpacityMap"), nullptr);
    EXPECT_EQ(
        ask<QString>(user, "QString", "getMaterialName"), QStringLiteral("Vireo - LuxRender"));
    EXPECT_FALSE(ask<bool>(user, "bool", "needsTangentSpaceParams"));
    EXPECT_TRUE(ask<bool>(user, "bool", "shouldAlwaysEmbed"));
    EXPECT_EQ(ask<QString>(user, "QString", "getExtension"), QStringLiteral("sskn"));
}

TEST_F(ScriptInterfaceTest, attributesAreWrittenAndReadByName)
{
    addBrick(user, "VireoVolClearBrick");
    DzSettings settings;
    call(user, "getAttributes", Q_ARG(DzSettings*, &settings));
    ASSERT_NE(settings.getSettingsValue(QStringLiteral("BrickSetup")), nullptr);
    VireoBrickUser again;
    EXPECT_EQ(
        ask<DzElement*>(again, "DzElement*", "setAttributes", Q_ARG(const DzSettings*, &settings)),
        &again);
    ASSERT_EQ(again.getNumBricks(), 1);
    EXPECT_EQ(again.getBrick(1)->className(), QStringLiteral("VireoVolClearBrick"));
}

TEST_F(ScriptInterfaceTest, nameAndIdentifierAreSetByName)
{
    EXPECT_EQ(
        ask<QString>(user, "QString", "getBrickUserName"), QStringLiteral("Vireo Brick User"));
    call(user, "setBrickUserName", Q_ARG(QString, QStringLiteral("Skin")));
    EXPECT_EQ(ask<QString>(user, "QString", "getBrickUserName"), QStringLiteral("Skin"));
    EXPECT_EQ(user.getBrickUserName(), QStringLiteral("Skin"));
    const QUuid identifier(QStringLiteral("{4f1f7a3e-9b9f-4b5c-8f9a-0a1b2c3d4e5f}"));
    call(user, "setIdentifier", Q_ARG(QUuid, identifier));
    EXPECT_EQ(ask<QUuid>(user, "QUuid", "getIdentifier"), identifier);
    EXPECT_EQ(user.getIdentifier(), identifier);
}

TEST_F(ScriptInterfaceTest, bricksAreAddedFoundAndListedByName)
{
    const BrickPtr brick = makeBrick("VireoMatMatteBrick");
    QSignalSpy added(&user, SIGNAL(brickAdded(DzShaderBrick*)));
    EXPECT_EQ(ask<uint>(user, "uint", "addBrick", Q_ARG(DzShaderBrick*, brick)), 1u);
    EXPECT_EQ(added.count(), 1);
    addBrick(user, "VireoRootBrick");
    EXPECT_EQ(ask<DzShaderBrick*>(user, "DzShaderBrick*", "getBrick", Q_ARG(uint, 1)), brick);
    EXPECT_EQ(ask<DzShaderBrick*>(user, "DzShaderBrick*", "getBrick", Q_ARG(uint, 7)), nullptr);
    EXPECT_EQ(ask<QVariantList>(user, "QVariantList", "getBrickIDs"), QVariantList({ 1u, 2u }));
    QList<uint> ids;
    call(user, "getBrickIDs", Q_ARG(QList<uint>&, ids));
    EXPECT_EQ(ids, QList<uint>({ 1, 2 }));
}

TEST_F(ScriptInterfaceTest, bricksAreDeletedByName)
{
    addBrick(user, "VireoMatMatteBrick");
    VireoBrickBase* second = addBrick(user, "VireoMatMatteBrick");
    addBrick(user, "VireoMatMatteBrick");
    addBrick(user, "VireoMatMatteBrick");
    QSignalSpy removed(&user, SIGNAL(brickRemoved(DzShaderBrick*)));
    EXPECT_TRUE(ask<bool>(user, "bool", "deleteBrick", Q_ARG(uint, 1)));
    EXPECT_FALSE(ask<bool>(user, "bool", "deleteBrick", Q_ARG(uint, 1)));
    EXPECT_TRUE(ask<bool>(user, "bool", "deleteBrick", Q_ARG(DzShaderBrick*, second)));
    EXPECT_EQ(user.getNumBricks(), 2);
    EXPECT_EQ(removed.count(), 2);
    call(user, "deleteAllBricks");
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(removed.count(), 4);
}

TEST_F(ScriptInterfaceTest, aBrickIsMovedByName)
{
    VireoBrickUser other;
    VireoBrickBase* brick = addBrick(user, "VireoMatMatteBrick");
    EXPECT_TRUE(ask<bool>(user, "bool", "moveBrick", Q_ARG(uint, 1),
        Q_ARG(IDzBrickUser*, static_cast<IDzBrickUser*>(&other))));
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(other.getBrick(1), brick);
}

TEST_F(ScriptInterfaceTest, brickSetsAreListedMadeAnewAndRemovedByName)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    EXPECT_EQ(ask<int>(user, "int", "getNumBrickSets"), 1);
    const DzTSharedPointer<DzBrickSet> first(
        ask<DzBrickSet*>(user, "DzBrickSet*", "getBrickSet", Q_ARG(int, 0)));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->getRoot(), root);
    EXPECT_EQ(ask<DzBrickSet*>(user, "DzBrickSet*", "getBrickSet", Q_ARG(int, 1)), nullptr);
    call(user, "invalidateSets");
    DzBrickSet* second = user.getBrickSet(0);
    EXPECT_NE(second, first);
    call(user, "removeSet", Q_ARG(DzBrickSet*, second));
    EXPECT_EQ(user.getNumBrickSets(), 0);
}

TEST_F(ScriptInterfaceTest, theIdentifierFollowsTheSetsWhenAskedToByName)
{
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    const QUuid first = user.getIdentifier();
    user.invalidateSets();
    EXPECT_EQ(user.getIdentifier(), first);
    call(user, "updateIdentifierOnSetInvalidate", Q_ARG(bool, true));
    user.invalidateSets();
    const QUuid second = user.getIdentifier();
    EXPECT_NE(second, first);
    // A new number and a new owner of properties make the sets invalid too.
    call(user, "brickIDChanged", Q_ARG(int, 1));
    const QUuid third = user.getIdentifier();
    EXPECT_NE(third, second);
    call(user, "resolvePropertyOwnership", Q_ARG(DzShaderBrick*, root));
    const QUuid fourth = user.getIdentifier();
    EXPECT_NE(fourth, third);
    call(user, "updateIdentifierOnSetInvalidate", Q_ARG(bool, false));
    user.invalidateSets();
    EXPECT_EQ(user.getIdentifier(), fourth);
}

TEST_F(ScriptInterfaceTest, theEditModeIsSwitchedByName)
{
    EXPECT_FALSE(ask<bool>(user, "bool", "isInEditMode"));
    call(user, "startEditMode");
    EXPECT_TRUE(ask<bool>(user, "bool", "isInEditMode"));
    call(user, "endEditMode");
    EXPECT_FALSE(ask<bool>(user, "bool", "isInEditMode"));
    EXPECT_FALSE(ask<bool>(user, "bool", "usesLocalShaderSpace"));
}

TEST_F(ScriptInterfaceTest, theSceneIsReachedByName)
{
    TestScene scene;
    DzMaterial* surface = scene.addSelected();
    addBrick(user, "VireoVolClearBrick");
    call(user, "applyToScene");
    EXPECT_NE(surface->findDataItem(QStringLiteral("VireoElementDataItem")), nullptr);
    const auto users = ask<BrickUserList>(user, "QList<IDzBrickUser*>", "fromScene");
    ASSERT_EQ(users.size(), 1);
    const std::unique_ptr<IDzBrickUser> converted(users.first());
    ASSERT_EQ(converted->getNumBricks(), 1);
    EXPECT_EQ(converted->getBrick(1)->className(), QStringLiteral("VireoVolClearBrick"));
}

TEST_F(ScriptInterfaceTest, aPropertyMapIsAppliedByName)
{
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    DzElement element;
    addFloat(&element, "roughness", 0.25f);
    DzSettings map;
    DzSettings* stored = map.setSettingsValue(QStringLiteral("any"));
    stored->setStringValue(QStringLiteral("SourceBrick"), QStringLiteral("Brick_1"));
    stored->setStringValue(QStringLiteral("SourceParam"), QStringLiteral("sigma"));
    stored->setStringValue(QStringLiteral("PropertyName"), QStringLiteral("roughness"));
    stored->setFloatValue(QStringLiteral("PropertyIndex"), 0);
    const BrickTable table { { QStringLiteral("Brick_1"), matte } };
    call(user, "applyElementPropsToSettings",
        QArgument<BrickTable>("QHash<QString,DzShaderBrick*>", table),
        Q_ARG(const DzSettings*, &map), Q_ARG(DzElement*, &element));
    EXPECT_EQ(propertyAs<DzFloatProperty>(matte, "sigma")->getValue(), 0.25f);
}
