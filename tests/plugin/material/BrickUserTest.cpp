// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzbrickparam.h"
#include "dzfloatproperty.h"
#include "dztexture.h"
#include "dzundostack.h"

#include <QPointer>
#include <QSignalSpy>
#include <memory>

namespace {

/// A brick of the host's own.
class HostBrick : public DzShaderBrick
{
public:
    QString getPreferredName() const override { return QStringLiteral("Host Brick"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return DzBrickSet::None; }
};

/// The brick that a signal told of.
const DzShaderBrick* toldBrick(const QSignalSpy& spy)
{
    return spy.first().first().value<DzShaderBrick*>();
}

QStringList classesOf(const VireoBrickUser& user)
{
    QList<uint> ids;
    user.getBrickIDs(ids);
    QStringList names;
    for (const uint id : qAsConst(ids))
        names.append(user.getBrick(id)->className());
    return names;
}

DzFloatProperty* addNumber(DzElement& element, const char* name, float value)
{
    auto* number = new DzFloatProperty(QString::fromLatin1(name), true, true, value);
    EXPECT_EQ(element.addProperty(number), DZ_NO_ERROR);
    return number;
}

class BrickUserTest : public testing::Test
{
protected:
    /// A spy keeps arguments of registered types only.
    static void SetUpTestSuite() { qRegisterMetaType<DzShaderBrick*>("DzShaderBrick*"); }
};

} // namespace

TEST_F(BrickUserTest, aNewUserIsEmptyAndHasItsNames)
{
    const VireoBrickUser user;
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(user.getNumBrickSets(), 0);
    EXPECT_EQ(user.getName(), QStringLiteral("Vireo Brick User"));
    EXPECT_EQ(user.getBrickUserName(), QStringLiteral("Vireo Brick User"));
    EXPECT_EQ(user.getMaterialName(), QStringLiteral("Vireo - LuxRender"));
    EXPECT_EQ(user.getExtension(), QStringLiteral("sskn"));
    EXPECT_FALSE(user.getIdentifier().isNull());
    EXPECT_FALSE(user.isInEditMode());
    EXPECT_FALSE(user.needsTangentSpaceParams());
    EXPECT_TRUE(user.shouldAlwaysEmbed());
}

TEST_F(BrickUserTest, aUserComesFromItsFactoryAndFromAnother)
{
    QObject* made = dzApp->createInstance(QStringLiteral("VireoBrickUser"));
    const DzTSharedPointer<VireoBrickUser> user(qobject_cast<VireoBrickUser*>(made));
    ASSERT_NE(user, nullptr);
    const std::unique_ptr<IDzBrickUser> other(user->createBrickUser());
    ASSERT_NE(other, nullptr);
    EXPECT_EQ(other->getNumBricks(), 0);
    EXPECT_EQ(other->getExtension(), QStringLiteral("sskn"));
    EXPECT_NE(other->getIdentifier(), user->getIdentifier());
    EXPECT_EQ(other->getBrickUserElement()->className(), QStringLiteral("VireoBrickUser"));
}

TEST_F(BrickUserTest, theViewportMaterialStaysBlackAndOpaque)
{
    VireoBrickUser user;
    const DzTexturePtr map(new DzTexture(QStringLiteral("maps/wood.png")));
    user.setDiffuseColor(QColor(255, 0, 0));
    user.setBaseOpacity(0.5f);
    user.setColorMap(map);
    user.setOpacityMap(map);
    EXPECT_EQ(user.getDiffuseColor(), QColor(0, 0, 0, 255));
    EXPECT_EQ(user.getBaseOpacity(), 1.0f);
    EXPECT_EQ(user.getColorMap(), nullptr);
    EXPECT_EQ(user.getOpacityMap(), nullptr);
    EXPECT_FALSE(user.isColorMappable());
    EXPECT_FALSE(user.isOpacityMappable());
}

TEST_F(BrickUserTest, aBrickOfTheHostIsRefused)
{
    VireoBrickUser user;
    HostBrick foreign;
    foreign.ref();
    QSignalSpy added(&user, SIGNAL(brickAdded(DzShaderBrick*)));
    EXPECT_FALSE(user.canUseBrick(&foreign));
    EXPECT_EQ(user.addBrick(&foreign), 0u);
    EXPECT_EQ(user.addBrick(nullptr), 0u);
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(added.count(), 0);
}

TEST_F(BrickUserTest, addingABrickIsToldOnce)
{
    VireoBrickUser user;
    const BrickPtr brick = makeBrick("VireoMatMatteBrick");
    EXPECT_TRUE(user.canUseBrick(brick));
    QSignalSpy added(&user, SIGNAL(brickAdded(DzShaderBrick*)));
    EXPECT_EQ(user.addBrick(brick), 1u);
    ASSERT_EQ(added.count(), 1);
    EXPECT_EQ(toldBrick(added), brick);
    EXPECT_EQ(user.getBrick(1), brick);
    EXPECT_EQ(brick->getBrickUser(), static_cast<IDzBrickUser*>(&user));
    // It is there already.
    EXPECT_EQ(user.addBrick(brick), 0u);
    EXPECT_EQ(added.count(), 1);
    EXPECT_EQ(user.getNumBricks(), 1);
}

TEST_F(BrickUserTest, deletingABrickIsToldAndTakesItsLinks)
{
    VireoBrickUser user;
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    const BrickPtr alive(matte);
    QSignalSpy removed(&user, SIGNAL(brickRemoved(DzShaderBrick*)));
    EXPECT_TRUE(user.deleteBrick(matte));
    ASSERT_EQ(removed.count(), 1);
    EXPECT_EQ(toldBrick(removed), matte);
    EXPECT_EQ(matte->getBrickUser(), nullptr);
    EXPECT_EQ(param(root, "material")->getNumConnections(), 0);
    EXPECT_FALSE(user.deleteBrick(matte));
    EXPECT_FALSE(user.deleteBrick(99));
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(classesOf(user), QStringList({ QStringLiteral("VireoRootBrick") }));
}

TEST_F(BrickUserTest, numbersAreNotGivenTwice)
{
    VireoBrickUser user;
    addBrick(user, "VireoRootBrick");
    user.deleteBrick(addBrick(user, "VireoMatMatteBrick"));
    EXPECT_EQ(addBrick(user, "VireoMatMatteBrick")->getBrickID(), 3u);
}

TEST_F(BrickUserTest, everyRootMakesABrickSet)
{
    VireoBrickUser user;
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    addBrick(user, "VireoMatMatteBrick");
    ASSERT_EQ(user.getNumBrickSets(), 1);
    EXPECT_EQ(user.getBrickSet(0)->getRoot(), root);
    EXPECT_EQ(user.getBrickSet(0)->getShaderType(), DzBrickSet::Surface);
    EXPECT_EQ(user.getBrickSet(1), nullptr);
    user.deleteBrick(root);
    EXPECT_EQ(user.getNumBrickSets(), 0);
}

TEST_F(BrickUserTest, movingABrickRemovesTheLinksThatWouldCross)
{
    VireoBrickUser from;
    VireoBrickUser to;
    VireoBrickBase* root = addBrick(from, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(from, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    ASSERT_TRUE(link(addBrick(from, "VireoTexFltConstantBrick"), matte, "sigma"));
    QSignalSpy removed(&from, SIGNAL(brickRemoved(DzShaderBrick*)));
    QSignalSpy added(&to, SIGNAL(brickAdded(DzShaderBrick*)));
    EXPECT_FALSE(from.moveBrick(matte->getBrickID(), &from));
    EXPECT_FALSE(from.moveBrick(matte->getBrickID(), nullptr));
    ASSERT_TRUE(from.moveBrick(matte->getBrickID(), &to));
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(added.count(), 1);
    EXPECT_EQ(matte->getBrickUser(), static_cast<IDzBrickUser*>(&to));
    EXPECT_EQ(from.getNumBricks(), 2);
    EXPECT_EQ(to.getNumBricks(), 1);
    EXPECT_EQ(param(root, "material")->getNumConnections(), 0);
    EXPECT_EQ(param(matte, "sigma")->getNumConnections(), 0);
}

TEST_F(BrickUserTest, bricksOfTwoUsersCannotBeLinked)
{
    VireoBrickUser one;
    VireoBrickUser two;
    VireoBrickBase* root = addBrick(one, "VireoRootBrick");
    EXPECT_FALSE(link(addBrick(two, "VireoMatMatteBrick"), root, "material"));
    // A brick of no user may be, until it joins another one.
    const BrickPtr free = makeBrick("VireoMatMatteBrick");
    EXPECT_TRUE(link(free, root, "material"));
    EXPECT_NE(two.addBrick(free), 0u);
    EXPECT_EQ(param(root, "material")->getNumConnections(), 0);
}

// Copying ----------------------------------------------------------------------------------------

TEST_F(BrickUserTest, copyingFromNothingWarnsAndChangesNothing)
{
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    const QUuid identifier = user.getIdentifier();
    Warnings warnings;
    user.copyFrom(nullptr);
    EXPECT_EQ(warnings.messages,
        QStringList({ QStringLiteral("NULL pointer passed to DzBrickGroup::copyFrom()") }));
    EXPECT_EQ(user.getNumBricks(), 1);
    EXPECT_EQ(user.getIdentifier(), identifier);
}

TEST_F(BrickUserTest, copyingReplacesTheNetworkByACopyOfTheSources)
{
    VireoBrickUser source;
    source.setBrickUserName(QStringLiteral("Old Wood"));
    source.setLabel(QStringLiteral("Wood"));
    VireoBrickBase* root = addBrick(source, "VireoRootBrick");
    VireoBrickBase* matte = addBrick(source, "VireoMatMatteBrick");
    ASSERT_TRUE(link(matte, root, "material"));
    propertyAs<DzFloatProperty>(matte, "sigma")->setValue(0.75f);
    property(matte, "sigma")->lock(true);
    matte->addCustomInput(1016, QStringLiteral("mine"), QStringLiteral("Mine"), 0);

    VireoBrickUser target;
    addBrick(target, "VireoVolClearBrick");
    const QUuid before = target.getIdentifier();
    target.copyFrom(&source);
    EXPECT_EQ(classesOf(target),
        QStringList({ QStringLiteral("VireoRootBrick"), QStringLiteral("VireoMatMatteBrick") }));
    EXPECT_EQ(classesOf(source), classesOf(target));
    auto* copiedRoot = qobject_cast<VireoBrickBase*>(target.getBrick(1));
    auto* copied = qobject_cast<VireoBrickBase*>(target.getBrick(2));
    ASSERT_TRUE(copiedRoot && copied);
    EXPECT_NE(copied, matte);
    EXPECT_TRUE(param(copiedRoot, "material")->isConnectedTo(param(copied, "result")));
    EXPECT_EQ(propertyAs<DzFloatProperty>(copied, "sigma")->getValue(), 0.75f);
    EXPECT_TRUE(property(copied, "sigma")->isLocked());
    EXPECT_EQ(copied->getNumCustomParams(), 1);
    EXPECT_TEXT(literalText(root), literalText(copiedRoot));
    EXPECT_TEXT(placeholderText(root), placeholderText(copiedRoot));
    // The copy is another user of the same name.
    EXPECT_NE(target.getIdentifier(), source.getIdentifier());
    EXPECT_NE(target.getIdentifier(), before);
    EXPECT_FALSE(target.getIdentifier().isNull());
    EXPECT_EQ(target.getBrickUserName(), QStringLiteral("Old Wood"));
    EXPECT_EQ(target.getLabel(), QStringLiteral("Wood"));
}

TEST_F(BrickUserTest, copyingFromAnotherClassTakesPropertiesOnly)
{
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    addNumber(user, "shared", 1);
    DzElement other;
    other.setLabel(QStringLiteral("Other"));
    addNumber(other, "shared", 5);
    const QUuid identifier = user.getIdentifier();
    user.copyFrom(&other);
    EXPECT_EQ(classesOf(user), QStringList({ QStringLiteral("VireoMatMatteBrick") }));
    EXPECT_EQ(user.getIdentifier(), identifier);
    EXPECT_EQ(user.getLabel(), QStringLiteral("Other"));
    EXPECT_EQ(
        qobject_cast<DzFloatProperty*>(user.findProperty(QStringLiteral("shared")))->getValue(),
        5.0f);
}

TEST_F(BrickUserTest, copyingFromItselfKeepsTheNetwork)
{
    VireoBrickUser user;
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    const QUuid identifier = user.getIdentifier();
    user.copyFrom(&user);
    EXPECT_EQ(user.getNumBricks(), 1);
    EXPECT_EQ(user.getBrick(1), matte);
    EXPECT_EQ(user.getIdentifier(), identifier);
}

// Attributes -------------------------------------------------------------------------------------

TEST_F(BrickUserTest, attributesHoldTheNetworkUnderOneKey)
{
    VireoBrickUser user;
    addBrick(user, "VireoMatMatteBrick");
    DzSettings settings;
    user.getAttributes(&settings);
    ASSERT_EQ(settings.getNumValues(), 1);
    EXPECT_EQ(settings.getKey(0), QStringLiteral("BrickSetup"));
    const DzSettings* setup = settings.getSettingsValue(QStringLiteral("BrickSetup"));
    ASSERT_NE(setup, nullptr);
    QStringList keys;
    for (int i = 0; i < setup->getNumValues(); ++i)
        keys.append(setup->getKey(i));
    EXPECT_EQ(keys,
        QStringList({ QStringLiteral("Bricks"), QStringLiteral("Connections"),
            QStringLiteral("BrickUserName"), QStringLiteral("Identifier") }));
    const DzSettings* bricks = setup->getSettingsValue(QStringLiteral("Bricks"));
    ASSERT_EQ(bricks->getNumValues(), 1);
    EXPECT_EQ(bricks->getKey(0), QStringLiteral("Brick_1"));
    EXPECT_EQ(bricks->getSettingsValue(QStringLiteral("Brick_1"))
                  ->getStringValue(QStringLiteral("DAZStudioClassName")),
        QStringLiteral("VireoMatMatteBrick"));
}

TEST_F(BrickUserTest, attributesAreReadBackWithNameAndIdentifier)
{
    VireoBrickUser user;
    user.setBrickUserName(QStringLiteral("Käse"));
    VireoBrickBase* root = addBrick(user, "VireoRootBrick");
    ASSERT_TRUE(link(addBrick(user, "VireoVolClearBrick"), root, "Interior"));
    DzSettings settings;
    user.getAttributes(&settings);
    VireoBrickUser again;
    addBrick(again, "VireoMatMatteBrick");
    EXPECT_EQ(again.setAttributes(&settings), &again);
    EXPECT_EQ(classesOf(again), classesOf(user));
    EXPECT_EQ(again.getBrickUserName(), QStringLiteral("Käse"));
    EXPECT_EQ(again.getIdentifier(), user.getIdentifier());
    DzSettings written;
    again.getAttributes(&written);
    EXPECT_TRUE(written.isEqual(settings));
}

TEST_F(BrickUserTest, attributesWithoutANetworkChangeNothing)
{
    VireoBrickUser user;
    VireoBrickBase* matte = addBrick(user, "VireoMatMatteBrick");
    DzSettings settings;
    settings.setStringValue(QStringLiteral("BrickSetup"), QStringLiteral("not nested"));
    settings.setStringValue(QStringLiteral("AttributesMode"), QStringLiteral("Copy"));
    Warnings warnings;
    user.setAttributes(&settings);
    settings.clear();
    user.setAttributes(&settings);
    EXPECT_EQ(user.getNumBricks(), 1);
    EXPECT_EQ(user.getBrick(1), matte);
    EXPECT_EQ(warnings.messages, QStringList());
}

TEST_F(BrickUserTest, aUserThatGoesDeletesItsBricks)
{
    QPointer<DzShaderBrick> brick;
    {
        VireoBrickUser user;
        brick = addBrick(user, "VireoMatMatteBrick");
        // Taking the adding back would need the brick.
        dzUndoStack->clearAll();
        ASSERT_FALSE(brick.isNull());
    }
    EXPECT_FALSE(dzUndoStack->hasItems());
    EXPECT_TRUE(brick.isNull());
}

TEST(BrickUserUndo, stepsOfAUserThatIsGoneDoNothing)
{
    QPointer<DzShaderBrick> brick;
    {
        VireoBrickUser user;
        brick = addBrick(user, "VireoMatMatteBrick");
        ASSERT_TRUE(user.deleteBrick(brick));
    }
    while (dzUndoStack->canUndo())
        EXPECT_TRUE(dzUndoStack->undo());
    while (dzUndoStack->canRedo())
        EXPECT_TRUE(dzUndoStack->redo());
    EXPECT_TRUE(brick);
    dzUndoStack->clearAll();
    EXPECT_FALSE(brick);
}

TEST(BrickUserUndo, stepsFromBeforeACopyLeaveTheCopiedNetworkAlone)
{
    VireoBrickUser source;
    addBrick(source, "VireoVolClearBrick");
    addBrick(source, "VireoVolClearBrick");
    VireoBrickUser target;
    DzShaderBrick* matte = addBrick(target, "VireoMatMatteBrick");
    ASSERT_TRUE(target.deleteBrick(matte));
    addBrick(target, "VireoMatNullBrick");
    target.copyFrom(&source);
    while (dzUndoStack->canUndo())
        dzUndoStack->undo();
    QList<uint> ids;
    target.getBrickIDs(ids);
    ASSERT_EQ(ids.size(), 2);
    for (const uint id : ids)
        EXPECT_EQ(target.getBrick(id)->className(), QStringLiteral("VireoVolClearBrick"));
}
