// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LinkTypes.h"
#include "TestSupport.h"
#include "dzboolproperty.h"
#include "dzbrickset.h"
#include "dzbrickstate.h"
#include "dzbrickuserfile.h"
#include "dzcolorproperty.h"
#include "dzdefaultbrickuser.h"
#include "dzfloatproperty.h"
#include "dzintproperty.h"
#include "dzmatrixparam.h"
#include "dzoutparam.h"
#include "dzpropertyparam.h"
#include "dzstringproperty.h"
#include "dzundostack.h"
#include "dzvec3param.h"

#include <QPointer>

namespace {

/// A brick with an output "out" and whatever inputs a test adds.
class TestBrick : public DzShaderBrick
{
public:
    explicit TestBrick(DzBrickParam::ParamType type = DzBrickParam::FloatType)
        : output(new DzOutParam)
    {
        output->setName(QStringLiteral("out"));
        output->setType(type);
        addParameter(output);
    }

    QString getPreferredName() const override { return QStringLiteral("Test"); }
    QString getDefaultCategory() const override { return QString(); }
    DzBrickSet::ShaderType type() const override { return shaderType; }

    DzPropertyParam* addInput(const char* name, DzProperty* property = nullptr)
    {
        const QString text = QString::fromLatin1(name);
        auto* input = new DzPropertyParam;
        input->setName(text);
        input->setProperty(
            property ? property : new DzFloatProperty(text, true, false), text, QString());
        input->setDirection(DzBrickParam::InputDirection);
        EXPECT_TRUE(addParameter(input));
        return input;
    }

    DzOutParam* output;
    DzBrickSet::ShaderType shaderType = DzBrickSet::None;
};

typedef DzTSharedPointer<TestBrick> TestBrickPtr;

class TestUser : public DzElement, public DzDefaultBrickUser
{
public:
    ~TestUser() override
    {
        const DzUndoStackLock lock;
        deleteAllBricks();
    }
    DzElement* getBrickUserElement() override { return this; }
    QString getExtension() const override { return QStringLiteral("test"); }
    IDzBrickUser* createBrickUser() const override { return new TestUser; }
    void applyToScene() override {}
    QList<IDzBrickUser*> fromScene() override { return QList<IDzBrickUser*>(); }
    bool canUseBrick(const DzShaderBrick* brick) const override
    {
        return takesAll && brick != nullptr;
    }

    /// A brick with one input "in" in this network.
    TestBrick* add()
    {
        auto* brick = new TestBrick;
        brick->addInput("in");
        EXPECT_NE(addBrick(brick), 0u);
        return brick;
    }

    bool takesAll = true;
    QStringList events;

protected:
    void brickWasRestored(DzShaderBrick* brick) override
    {
        events.append(QStringLiteral("+%1").arg(brick->getBrickID()));
    }
    void brickWasRemoved(DzShaderBrick*) override { events.append(QStringLiteral("-")); }
};

bool join(TestBrick* from, TestBrick* to, const char* input = "in")
{
    return param(to, input)->addConnection(from->output);
}

/// The bricks at the other ends of a parameter's links.
QList<DzShaderBrick*> peers(const DzBrickParam* param)
{
    QList<DzShaderBrick*> bricks;
    for (int i = 0; i < param->getNumConnections(); ++i)
        bricks.append(param->getConnection(i)->getTopBrickOwner());
    return bricks;
}

QStringList paramNames(const DzShaderBrick* brick)
{
    QStringList names;
    for (int i = 0; i < brick->getNumParameters(); ++i)
        names.append(brick->getParameter(i)->getName());
    return names;
}

class LinkTest : public testing::Test
{
protected:
    TestUser user;
};

} // namespace

// Making and removing links -------------------------------------------------------------------

TEST_F(LinkTest, bothEndsKnowEachOther)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    DzBrickParam* input = param(b, "in");
    int changes = 0;
    QObject::connect(input, &DzBrickParam::connectionsChanged, [&] { ++changes; });
    QObject::connect(a->output, &DzBrickParam::connectionsChanged, [&] { changes += 10; });
    QObject::connect(b, &DzShaderBrick::connectionsChanged, [&] { changes += 100; });
    EXPECT_TRUE(input->addConnection(a->output));
    EXPECT_EQ(changes, 111);
    EXPECT_EQ(input->getNumConnections(), 1);
    EXPECT_EQ(input->getConnection(0), a->output);
    EXPECT_EQ(a->output->getConnection(0), input);
    EXPECT_TRUE(input->isConnectedTo(a->output));
    EXPECT_TRUE(a->output->isConnectedTo(input));
    EXPECT_EQ(input->getConnection(1), nullptr);
    EXPECT_EQ(input->getConnection(-1), nullptr);
    EXPECT_TRUE(a->output->removeConnection(input));
    EXPECT_EQ(changes, 222);
    EXPECT_EQ(input->getNumConnections(), 0);
    EXPECT_EQ(a->output->getNumConnections(), 0);
    EXPECT_FALSE(a->output->removeConnection(input));
    EXPECT_EQ(changes, 222);
}

TEST_F(LinkTest, linkMayBeAskedForAtTheOutput)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    EXPECT_TRUE(a->output->canConnect(param(b, "in")));
    EXPECT_TRUE(a->output->addConnection(param(b, "in")));
    EXPECT_EQ(param(b, "in")->getConnection(0), a->output);
}

TEST_F(LinkTest, orderOfLinkingIsKeptAcrossRemovals)
{
    TestBrick* target = user.add();
    QList<DzShaderBrick*> bricks;
    for (int i = 0; i < 40; ++i) {
        TestBrick* source = user.add();
        bricks.append(source);
        ASSERT_TRUE(join(source, target));
    }
    DzBrickParam* input = param(target, "in");
    EXPECT_EQ(peers(input), bricks);
    for (int i = 37; i >= 0; i -= 3) {
        ASSERT_TRUE(input->removeConnection(static_cast<TestBrick*>(bricks.takeAt(i))->output));
        EXPECT_EQ(input->getNumConnections(), bricks.size());
    }
    EXPECT_EQ(peers(input), bricks);
    for (DzShaderBrick* brick : qAsConst(bricks))
        EXPECT_TRUE(input->isConnectedTo(static_cast<TestBrick*>(brick)->output));
    input->removeAllConnections();
    EXPECT_EQ(input->getNumConnections(), 0);
}

TEST_F(LinkTest, oneLinkBetweenTwoParametersOnly)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    ASSERT_TRUE(join(a, b));
    EXPECT_FALSE(join(a, b));
    EXPECT_FALSE(a->output->addConnection(param(b, "in")));
    EXPECT_EQ(param(b, "in")->getNumConnections(), 1);
}

TEST_F(LinkTest, directionsDecideWhatCanBeLinked)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    DzBrickParam* input = param(b, "in");
    EXPECT_FALSE(input->canConnect(param(a, "in")));
    EXPECT_FALSE(a->output->canConnect(b->output));
    EXPECT_FALSE(input->canConnect(nullptr));
    EXPECT_FALSE(input->canConnect(input));
    EXPECT_TRUE(input->canConnect(a->output));
    DzPropertyParam* row = b->addInput("row");
    EXPECT_TRUE(row->canConnect(a->output));
    row->setDirection(DzBrickParam::SettingsDirection);
    EXPECT_FALSE(row->canConnect(a->output));
    EXPECT_FALSE(a->output->canConnect(row));
    EXPECT_FALSE(row->addConnection(a->output));
}

TEST_F(LinkTest, propertyParameterIsASettingsRowAtFirst)
{
    EXPECT_EQ(DzPropertyParam().getDirection(), DzBrickParam::SettingsDirection);
}

TEST_F(LinkTest, parameterThatBecomesASettingsRowLosesItsLinks)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    ASSERT_TRUE(join(a, b));
    static_cast<DzPropertyParam*>(param(b, "in"))->setDirection(DzBrickParam::SettingsDirection);
    EXPECT_EQ(a->output->getNumConnections(), 0);
}

TEST_F(LinkTest, parameterWithoutBrickIsNotLinked)
{
    TestBrick* a = user.add();
    DzPropertyParam loose;
    loose.setProperty(new DzFloatProperty(QStringLiteral("x"), true, false), QString(), QString());
    loose.setDirection(DzBrickParam::InputDirection);
    EXPECT_FALSE(loose.addConnection(a->output));
    EXPECT_FALSE(a->output->addConnection(&loose));
}

// Loops ---------------------------------------------------------------------------------------

TEST_F(LinkTest, brickDoesNotFeedItself)
{
    TestBrick* a = user.add();
    EXPECT_FALSE(join(a, a));
}

TEST_F(LinkTest, loopThroughThreeBricksIsRefused)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    TestBrick* c = user.add();
    ASSERT_TRUE(join(a, b));
    ASSERT_TRUE(join(b, c));
    EXPECT_FALSE(join(c, a));
    EXPECT_FALSE(join(b, a));
    EXPECT_TRUE(join(a, c));
    ASSERT_TRUE(param(b, "in")->removeConnection(a->output));
    EXPECT_TRUE(join(b, a));
}

TEST_F(LinkTest, diamondIsNoLoop)
{
    TestBrick* top = user.add();
    TestBrick* left = user.add();
    TestBrick* right = user.add();
    TestBrick* bottom = user.add();
    EXPECT_TRUE(join(top, left));
    EXPECT_TRUE(join(top, right));
    EXPECT_TRUE(join(left, bottom));
    EXPECT_TRUE(join(right, bottom));
    EXPECT_FALSE(join(bottom, top));
}

TEST_F(LinkTest, longChainsAreBuiltFromBothEnds)
{
    const DzUndoStackLock lock;
    TestBrick* first = user.add();
    TestBrick* last = first;
    for (int i = 0; i < 2000; ++i) {
        TestBrick* next = user.add();
        ASSERT_TRUE(i % 2 == 0 ? join(last, next) : join(next, first));
        (i % 2 == 0 ? last : first) = next;
    }
    EXPECT_FALSE(join(last, first));
}

// Users ---------------------------------------------------------------------------------------

TEST_F(LinkTest, bricksOfTwoUsersAreNotLinked)
{
    TestUser other;
    EXPECT_FALSE(join(user.add(), other.add()));
}

TEST_F(LinkTest, brickWithoutUserIsLinkedWithAny)
{
    const TestBrickPtr loose(new TestBrick);
    loose->addInput("in");
    EXPECT_TRUE(join(loose, user.add()));
    EXPECT_TRUE(join(user.add(), loose));
}

TEST_F(LinkTest, joiningAUserRemovesLinksThatThenCrossUsers)
{
    TestUser other;
    const TestBrickPtr loose(new TestBrick);
    loose->addInput("in");
    TestBrick* mine = user.add();
    TestBrick* theirs = other.add();
    ASSERT_TRUE(join(loose, mine));
    ASSERT_TRUE(join(loose, theirs));
    ASSERT_NE(user.addBrick(loose), 0u);
    EXPECT_EQ(peers(loose->output), QList<DzShaderBrick*>({ mine }));
    EXPECT_EQ(param(theirs, "in")->getNumConnections(), 0);
    // Adding the brick and losing the link was one step.
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(loose->getBrickUser(), nullptr);
    EXPECT_EQ(peers(loose->output), QList<DzShaderBrick*>({ mine, theirs }));
}

TEST_F(LinkTest, movedBrickLosesTheLinksToWhatStays)
{
    TestUser other;
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    other.add();
    ASSERT_TRUE(join(a, b));
    const int steps = dzUndoStack->getNumItems();
    ASSERT_TRUE(user.moveBrick(b->getBrickID(), &other));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    EXPECT_EQ(b->getBrickUser(), &other);
    EXPECT_EQ(b->getBrickID(), 2u);
    EXPECT_EQ(user.getNumBricks(), 1);
    EXPECT_EQ(a->output->getNumConnections(), 0);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(b->getBrickUser(), &user);
    EXPECT_EQ(other.getNumBricks(), 1);
    EXPECT_EQ(peers(a->output), QList<DzShaderBrick*>({ b }));
}

TEST_F(LinkTest, brickIsNotMovedToItsOwnOrAnUnwillingUser)
{
    TestUser other;
    other.takesAll = false;
    const uint id = user.add()->getBrickID();
    EXPECT_FALSE(user.moveBrick(id, &user));
    EXPECT_FALSE(user.moveBrick(id, &other));
    EXPECT_FALSE(user.moveBrick(id, nullptr));
    EXPECT_FALSE(user.moveBrick(id + 1, &other));
    EXPECT_EQ(user.getNumBricks(), 1);
}

TEST_F(LinkTest, brickOfAUserIsNotAddedAgain)
{
    TestUser other;
    TestBrick* a = user.add();
    const int shares = a->getRefCount();
    EXPECT_EQ(other.addBrick(a), 0u);
    EXPECT_EQ(user.addBrick(a), 0u);
    EXPECT_EQ(user.addBrick(nullptr), 0u);
    EXPECT_EQ(a->getRefCount(), shares);
    EXPECT_EQ(other.getNumBricks(), 0);
}

TEST_F(LinkTest, numbersOfBricksAreNeverUsedAgain)
{
    const uint first = user.add()->getBrickID();
    const uint second = user.add()->getBrickID();
    EXPECT_EQ(first, 1u);
    EXPECT_EQ(second, 2u);
    ASSERT_TRUE(user.deleteBrick(second));
    EXPECT_FALSE(user.deleteBrick(second));
    EXPECT_EQ(user.add()->getBrickID(), 3u);
    user.deleteAllBricks();
    EXPECT_EQ(user.getNumBricks(), 0);
    EXPECT_EQ(user.add()->getBrickID(), 4u);
}

TEST_F(LinkTest, brickWithoutUserHasNumberZero)
{
    const TestBrickPtr brick(new TestBrick);
    EXPECT_EQ(brick->getBrickID(), 0u);
    ASSERT_EQ(user.addBrick(brick), 1u);
    ASSERT_TRUE(user.deleteBrick(brick));
    EXPECT_EQ(brick->getBrickUser(), nullptr);
    EXPECT_EQ(brick->getBrickID(), 0u);
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_EQ(brick->getBrickID(), 1u);
}

TEST_F(LinkTest, thereIsOneBrickSetForEachRoot)
{
    EXPECT_EQ(user.getNumBrickSets(), 0);
    user.add();
    auto* surface = new TestBrick;
    surface->shaderType = DzBrickSet::Surface;
    auto* light = new TestBrick;
    light->shaderType = DzBrickSet::Light;
    user.addBrick(surface);
    user.addBrick(light);
    ASSERT_EQ(user.getNumBrickSets(), 2);
    EXPECT_EQ(user.getBrickSet(0)->getRoot(), surface);
    EXPECT_EQ(user.getBrickSet(0)->getShaderType(), DzBrickSet::Surface);
    EXPECT_EQ(user.getBrickSet(0)->getBrickUserOwner(), &user);
    EXPECT_EQ(user.getBrickSet(1)->getRoot(), light);
    EXPECT_EQ(user.getBrickSet(2), nullptr);
    EXPECT_EQ(user.getBrickSet(-1), nullptr);
    user.deleteBrick(surface);
    ASSERT_EQ(user.getNumBrickSets(), 1);
    EXPECT_EQ(user.getBrickSet(0)->getRoot(), light);
}

// Undo ----------------------------------------------------------------------------------------

TEST_F(LinkTest, makingAndRemovingALinkIsOneStepEach)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    const int steps = dzUndoStack->getNumItems();
    ASSERT_TRUE(join(a, b));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    EXPECT_FALSE(join(a, b));
    EXPECT_FALSE(join(b, a));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    dzUndoStack->undo();
    EXPECT_EQ(b->output->getNumConnections() + a->output->getNumConnections(), 0);
    dzUndoStack->redo();
    EXPECT_EQ(peers(a->output), QList<DzShaderBrick*>({ b }));
    ASSERT_TRUE(a->output->removeConnection(param(b, "in")));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 2);
    dzUndoStack->undo();
    EXPECT_EQ(peers(param(b, "in")), QList<DzShaderBrick*>({ a }));
}

TEST_F(LinkTest, undoneDeletionBringsBrickLinksAndTheirOrderBack)
{
    TestBrick* sources[3];
    TestBrick* targets[3];
    for (TestBrick*& brick : sources)
        brick = user.add();
    TestBrick* middle = user.add();
    for (TestBrick*& brick : targets)
        brick = user.add();
    // The middle one stands second everywhere.
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(join(sources[0], targets[i]));
        ASSERT_TRUE(join(middle, targets[i]));
        ASSERT_TRUE(join(sources[2], targets[i]));
        ASSERT_TRUE(join(sources[i], middle));
    }
    const QList<DzShaderBrick*> ofTarget({ sources[0], middle, sources[2] });
    const QList<DzShaderBrick*> ofOutput({ targets[0], targets[1], targets[2] });
    const QList<DzShaderBrick*> ofInput({ sources[0], sources[1], sources[2] });
    const QList<DzShaderBrick*> ofSource = peers(sources[0]->output);
    const int steps = dzUndoStack->getNumItems();
    const uint id = middle->getBrickID();
    ASSERT_TRUE(user.deleteBrick(id));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(user.getBrick(id), nullptr);
        EXPECT_EQ(
            peers(param(targets[1], "in")), QList<DzShaderBrick*>({ sources[0], sources[2] }));
        EXPECT_EQ(sources[1]->output->getNumConnections(), 0);
        ASSERT_TRUE(dzUndoStack->undo());
        EXPECT_EQ(user.getBrick(id), middle);
        EXPECT_EQ(middle->getBrickID(), id);
        for (TestBrick* target : targets)
            EXPECT_EQ(peers(param(target, "in")), ofTarget);
        EXPECT_EQ(peers(middle->output), ofOutput);
        EXPECT_EQ(peers(param(middle, "in")), ofInput);
        EXPECT_EQ(peers(sources[0]->output), ofSource);
        ASSERT_TRUE(dzUndoStack->redo());
    }
}

TEST_F(LinkTest, deletingAllBricksIsOneStep)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    join(a, b);
    const int steps = dzUndoStack->getNumItems();
    user.deleteAllBricks();
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    dzUndoStack->undo();
    EXPECT_EQ(user.getNumBricks(), 2);
    EXPECT_EQ(peers(a->output), QList<DzShaderBrick*>({ b }));
}

TEST_F(LinkTest, undoneDeletionOfAParameterBringsItsLinksAndPlaceBack)
{
    TestBrick* a = user.add();
    TestBrick* b = user.add();
    b->addInput("second");
    b->addInput("third");
    ASSERT_TRUE(join(a, b));
    ASSERT_TRUE(join(a, b, "second"));
    ASSERT_TRUE(join(a, b, "third"));
    const int steps = dzUndoStack->getNumItems();
    const QPointer<DzBrickParam> second(param(b, "second"));
    ASSERT_TRUE(b->deleteParamByName(QStringLiteral("second")));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(paramNames(b), QStringList({ "out", "in", "third" }));
        EXPECT_EQ(a->output->getNumConnections(), 2);
        dzUndoStack->undo();
        EXPECT_EQ(paramNames(b), QStringList({ "out", "in", "second", "third" }));
        EXPECT_EQ(a->output->getConnection(1), second.data());
        EXPECT_EQ(a->output->getNumConnections(), 3);
        dzUndoStack->redo();
    }
    dzUndoStack->clearAll();
    EXPECT_TRUE(second.isNull());
    EXPECT_FALSE(b->deleteParamByName(QStringLiteral("second")));
}

TEST_F(LinkTest, addedParameterIsAStepOnlyInAUsersBrick)
{
    const TestBrickPtr loose(new TestBrick);
    loose->addInput("in");
    EXPECT_EQ(dzUndoStack->getNumItems(), 0);
    TestBrick* a = user.add();
    const int steps = dzUndoStack->getNumItems();
    a->addInput("more");
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    dzUndoStack->undo();
    EXPECT_EQ(paramNames(a), QStringList({ "out", "in" }));
    dzUndoStack->redo();
    EXPECT_EQ(paramNames(a), QStringList({ "out", "in", "more" }));
}

TEST_F(LinkTest, deletedObjectsTakeTheirLinksAlong)
{
    TestBrick* a = user.add();
    {
        const TestBrickPtr loose(new TestBrick);
        loose->addInput("in");
        loose->addInput("more");
        ASSERT_TRUE(join(a, loose));
        ASSERT_TRUE(join(a, loose, "more"));
        delete param(loose, "in");
        EXPECT_EQ(a->output->getNumConnections(), 1);
        EXPECT_EQ(paramNames(loose), QStringList({ "out", "more" }));
    }
    EXPECT_EQ(a->output->getNumConnections(), 0);
    EXPECT_EQ(user.events, QStringList());
}

// Many links ----------------------------------------------------------------------------------

TEST_F(LinkTest, tenThousandInputsOfOneOutputGoWithTheirBricks)
{
    TestBrick* source = user.add();
    std::vector<TestBrick*> bricks;
    {
        const DzUndoStackLock lock;
        for (int i = 0; i < 10000; ++i) {
            bricks.push_back(user.add());
            ASSERT_TRUE(join(source, bricks.back()));
        }
    }
    EXPECT_EQ(source->output->getNumConnections(), 10000);
    for (TestBrick* brick : bricks)
        ASSERT_TRUE(user.deleteBrick(brick));
    EXPECT_EQ(source->output->getNumConnections(), 0);
    EXPECT_EQ(user.getNumBricks(), 1);
}

TEST_F(LinkTest, tenThousandInputsOfOneBrickGoOneByOne)
{
    const DzUndoStackLock lock;
    TestBrick* source = user.add();
    TestBrick* target = user.add();
    std::vector<DzBrickParam*> inputs;
    for (int i = 0; i < 10000; ++i) {
        inputs.push_back(target->addInput("many"));
        ASSERT_TRUE(inputs.back()->addConnection(source->output));
    }
    for (DzBrickParam* input : inputs)
        ASSERT_TRUE(target->deleteParam(input));
    EXPECT_EQ(source->output->getNumConnections(), 0);
    EXPECT_EQ(paramNames(target), QStringList({ "out", "in" }));
}

// Types ---------------------------------------------------------------------------------------

TEST_F(LinkTest, propertyParametersTakeWhatTheHostConverts)
{
    TestBrick* target = user.add();
    DzBrickParam* inputs[] = {
        target->addInput("float"),
        target->addInput("color", new DzColorProperty(QString(), true, false)),
        target->addInput("text", new DzStringProperty(QString(), false)),
        target->addInput("switch", new DzBoolProperty(QString(), true, false)),
        target->addInput("whole", new DzIntProperty(QString(), true, false)),
    };
    // By output type 1 to 9: float, colour, point, vector, normal, matrix, string, boolean,
    // integer.
    const char* const allowed[]
        = { "100000011", "111110011", "000000100", "100000011", "100000011" };
    for (int i = 0; i < 5; ++i) {
        for (int type = 1; type <= 9; ++type) {
            TestBrickPtr source(new TestBrick(type));
            EXPECT_EQ(inputs[i]->canConnect(source->output), allowed[i][type - 1] == '1')
                << i << ' ' << type;
        }
    }
}

TEST_F(LinkTest, vectorsAndMatricesTakeTheirOwnTypeOnly)
{
    TestBrick* target = user.add();
    auto* vector = new DzVec3Param(DzBrickParam::VectorType);
    auto* matrix = new DzMatrixParam;
    target->addParameter(vector);
    target->addParameter(matrix);
    for (int type = 0; type <= 10; ++type) {
        TestBrickPtr source(new TestBrick(type));
        EXPECT_EQ(vector->canConnect(source->output), type == DzBrickParam::VectorType) << type;
        EXPECT_EQ(matrix->canConnect(source->output), type == DzBrickParam::MatrixType) << type;
    }
}

TEST(LinkTypeNames, hostTypesHaveWords)
{
    const char* const words[] = { "", "float", "color", "point", "vector", "normal", "matrix",
        "string", "boolean", "integer", "" };
    for (int type = 0; type <= 10; ++type)
        EXPECT_EQ(DzBrickParam::typeToString(type), QString::fromLatin1(words[type]));
    EXPECT_EQ(DzBrickParam::typeToString(-1), QString());
}

// Scoped variables ----------------------------------------------------------------------------

TEST_F(LinkTest, brickIsFedOnlyByBricksWhoseNeedsItProvides)
{
    TestBrick* needy = user.add();
    TestBrick* plain = user.add();
    TestBrick* giving = user.add();
    needy->addRequiredParam(DzBrickParam::StringType, QStringLiteral("scope"));
    giving->addScopedParam(DzBrickParam::StringType, QStringLiteral("scope"), -1);
    EXPECT_EQ(needy->getNumRequiredScopedParams(), 1);
    EXPECT_EQ(needy->getRequiredScopedParam(0), QStringLiteral("scope"));
    EXPECT_EQ(needy->getRequiredScopedParamType(0), 7);
    EXPECT_EQ(giving->getNumScopedParams(), 1);
    EXPECT_EQ(giving->getScopedParamName(0), QStringLiteral("scope"));
    EXPECT_EQ(giving->getScopedParamType(0), 7);
    EXPECT_TRUE(giving->providesParam(QStringLiteral("scope"), DzBrickParam::StringType));
    EXPECT_FALSE(giving->providesParam(QStringLiteral("scope"), DzBrickParam::FloatType));
    EXPECT_FALSE(giving->providesParam(QStringLiteral("other"), DzBrickParam::StringType));
    EXPECT_FALSE(join(needy, plain));
    EXPECT_TRUE(join(needy, giving));
    EXPECT_TRUE(join(plain, needy));
    needy->addRequiredParam(DzBrickParam::FloatType, QStringLiteral("second"));
    EXPECT_FALSE(giving->providesParams(needy, param(giving, "in")));
}

// Parameters ----------------------------------------------------------------------------------

TEST_F(LinkTest, parametersAreMovedAndOrdered)
{
    const TestBrickPtr brick(new TestBrick);
    for (const char* name : { "a", "b", "c" })
        brick->addInput(name);
    EXPECT_TRUE(brick->changeParamIndex(param(brick, "c"), 0));
    EXPECT_EQ(paramNames(brick), QStringList({ "c", "out", "a", "b" }));
    EXPECT_FALSE(brick->changeParamIndex(param(brick, "c"), 4));
    EXPECT_FALSE(brick->changeParamIndex(param(brick, "c"), -1));
    EXPECT_FALSE(brick->changeParamIndex(nullptr, 0));
    const TestBrickPtr other(new TestBrick);
    EXPECT_FALSE(brick->changeParamIndex(other->output, 0));
    // Those that are not listed stay; doubles, strangers and nothing are skipped.
    brick->setParameterOrder(
        { param(brick, "b"), nullptr, other->output, param(brick, "c"), param(brick, "b") });
    EXPECT_EQ(paramNames(brick), QStringList({ "b", "out", "a", "c" }));
}

TEST_F(LinkTest, parameterBelongsToOneBrick)
{
    const TestBrickPtr a(new TestBrick);
    const TestBrickPtr b(new TestBrick);
    EXPECT_FALSE(b->addParameter(a->output));
    EXPECT_FALSE(b->addParameter(nullptr));
    EXPECT_FALSE(b->deleteParam(a->output));
    EXPECT_FALSE(b->deleteParam(nullptr));
    EXPECT_EQ(a->output->getTopBrickOwner(), a);
}

// Whole states --------------------------------------------------------------------------------

namespace {

/// A band texture with three pairs, two sources and a custom input, each change an undo step.
class BrickStateTest : public testing::Test
{
protected:
    BrickStateTest()
        : band(addBrick(user, "VireoTexFltBAndBrick"))
        , first(addBrick(user, "VireoTexFltScaleBrick"))
        , second(addBrick(user, "VireoTexFltScaleBrick"))
    {
        dzUndoStack->clearAll();
        note();
        setCount(3);
        note();
        {
            DzBrickStateHold hold(band);
            band->addCustomInput(FloatLink, QStringLiteral("own"), QStringLiteral("Own"), 0);
            hold.accept(QStringLiteral("Add Input"));
        }
        note();
        propertyAs<DzFloatProperty>(band, "own")->setValue(0.75f);
        note();
        propertyAs<DzFloatProperty>(band, "offset3")->setValue(0.3f);
        note();
        propertyAs<DzFloatProperty>(band, "tex2")->setMap(QStringLiteral("a.png"));
        note();
        link(first, band, "tex2");
        note();
        link(second, band, "tex3");
        note();
        link(first, band, "tex3");
        note();
        link(second, band, "own");
        note();
    }

    void setCount(int count)
    {
        DzBrickStateHold hold(band);
        propertyAs<DzIntProperty>(band, "count")->setValue(count);
        hold.accept(QStringLiteral("Change Count"));
    }
    QString state() const { return QString::fromUtf8(DzBrickUserFile().saveText(&user)); }
    void note() { states.append(state()); }

    /// Every step is there, and goes back and forth to the states that were noted.
    void expectStepsToLeadThroughTheStates()
    {
        ASSERT_EQ(dzUndoStack->getNumItems(), states.size() - 1);
        for (int round = 0; round < 2; ++round) {
            for (int i = states.size() - 2; i >= 0; --i) {
                ASSERT_TRUE(dzUndoStack->undo());
                ASSERT_TEXT(states.at(i));
            }
            for (int i = 1; i < states.size(); ++i) {
                ASSERT_TRUE(dzUndoStack->redo());
                ASSERT_TEXT(states.at(i));
            }
        }
    }

    VireoBrickUser user;
    VireoBrickBase* band;
    VireoBrickBase* first;
    VireoBrickBase* second;
    QStringList states;

private:
    void ASSERT_TEXT(const QString& expected) { ASSERT_TRUE(sameText(expected, state())); }
};

} // namespace

TEST_F(BrickStateTest, stepsBeforeGoBackAndForth)
{
    expectStepsToLeadThroughTheStates();
}

TEST_F(BrickStateTest, loweredCountIsOneStepThatBringsValuesAndLinksBack)
{
    const int steps = dzUndoStack->getNumItems();
    setCount(1);
    EXPECT_EQ(dzUndoStack->getNumItems(), steps + 1);
    EXPECT_EQ(dzUndoStack->getUndoCaption(), QStringLiteral("Change Count"));
    EXPECT_EQ(band->findParameterByName(QStringLiteral("tex3")), nullptr);
    EXPECT_EQ(param(second, "result")->getNumConnections(), 1);
    dzUndoStack->undo();
    EXPECT_TRUE(sameText(states.last(), state()));
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "offset3")->getValue(), 0.3f);
    EXPECT_EQ(peers(param(band, "tex3")), QList<DzShaderBrick*>({ second, first }));
    EXPECT_EQ(peers(param(band, "own")), QList<DzShaderBrick*>({ second }));
    // The sources' outputs list their links in the old order too.
    EXPECT_EQ(param(second, "result")->getConnection(0), param(band, "tex3"));
    EXPECT_EQ(param(second, "result")->getConnection(1), param(band, "own"));
}

TEST_F(BrickStateTest, olderStepsStillWorkAfterInputsWereMadeAnew)
{
    setCount(1);
    note();
    setCount(2);
    note();
    setCount(0);
    note();
    expectStepsToLeadThroughTheStates();
}

TEST_F(BrickStateTest, removedCustomInputComesBackWithValueAndLink)
{
    {
        DzBrickStateHold hold(band);
        band->removeCustomParam(band->getCustomParam(0));
        hold.accept(QStringLiteral("Remove Input"));
    }
    note();
    EXPECT_EQ(param(second, "result")->getNumConnections(), 1);
    expectStepsToLeadThroughTheStates();
    dzUndoStack->undo();
    EXPECT_EQ(propertyAs<DzFloatProperty>(band, "own")->getValue(), 0.75f);
}

TEST_F(BrickStateTest, deletionOfTheBrickAfterwardsIsTakenBackToo)
{
    setCount(1);
    note();
    user.deleteBrick(band);
    note();
    user.deleteBrick(second);
    note();
    expectStepsToLeadThroughTheStates();
}

TEST_F(BrickStateTest, withoutAcceptanceEverythingIsTakenBack)
{
    const int steps = dzUndoStack->getNumItems();
    {
        const DzBrickStateHold hold(band);
        propertyAs<DzIntProperty>(band, "count")->setValue(1);
        propertyAs<DzFloatProperty>(band, "amount")->setValue(0.9f);
        band->removeCustomParam(band->getCustomParam(0));
        EXPECT_FALSE(sameText(states.last(), state()));
    }
    EXPECT_TRUE(sameText(states.last(), state()));
    EXPECT_EQ(dzUndoStack->getNumItems(), steps);
    EXPECT_FALSE(dzUndoStack->isLocked());
    expectStepsToLeadThroughTheStates();
}

TEST_F(BrickStateTest, acceptedHoldWithoutChangeLeavesNoStep)
{
    const int steps = dzUndoStack->getNumItems();
    {
        DzBrickStateHold hold(band);
        hold.accept(QStringLiteral("Nothing"));
        hold.accept(QStringLiteral("Nothing again"));
    }
    EXPECT_EQ(dzUndoStack->getNumItems(), steps);
    EXPECT_FALSE(dzUndoStack->isLocked());
}

TEST_F(BrickStateTest, statesCompareByWhatAnActionMayChange)
{
    const DzBrickState before(band);
    EXPECT_TRUE(before == DzBrickState(band));
    band->setBrickTitle(QStringLiteral("Other"));
    EXPECT_TRUE(before == DzBrickState(band));
    propertyAs<DzFloatProperty>(band, "amount")->setValue(0.9f);
    EXPECT_TRUE(before != DzBrickState(band));
    before.restore(band);
    EXPECT_TRUE(before == DzBrickState(band));
    EXPECT_EQ(band->getBrickTitle(), QStringLiteral("Other"));
    param(band, "own")->removeAllConnections();
    EXPECT_TRUE(before != DzBrickState(band));
}

TEST(BrickState, aMapThatIsSetWithinAHoldGoesWithUndo)
{
    VireoBrickUser user;
    VireoBrickBase* brick = addBrick(user, "VireoTexFltScaleBrick");
    auto* tex1 = propertyAs<DzFloatProperty>(brick, "tex1");
    {
        DzBrickStateHold hold(brick);
        ASSERT_TRUE(tex1->setMap(QStringLiteral("a.png")));
        hold.accept(QStringLiteral("Map"));
    }
    ASSERT_TRUE(dzUndoStack->undo());
    EXPECT_FALSE(propertyAs<DzFloatProperty>(brick, "tex1")->isMapped());
    ASSERT_TRUE(dzUndoStack->redo());
    EXPECT_TRUE(propertyAs<DzFloatProperty>(brick, "tex1")->isMapped());
}

TEST(BrickState, aHoldLeavesABrickWithoutUserToItsOwner)
{
    auto* brick = qobject_cast<DzShaderBrick*>(
        dzApp->createInstance(QStringLiteral("VireoTexFltScaleBrick")));
    const QPointer<DzShaderBrick> guard(brick);
    {
        DzBrickStateHold hold(brick);
        hold.accept(QStringLiteral("Nothing"));
    }
    ASSERT_TRUE(guard);
    delete brick;
}
