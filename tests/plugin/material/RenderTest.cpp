// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TestSupport.h"
#include "dzrenderer.h"
#include "dzundostack.h"

namespace {

/// Writes down what it is told, in order.
class RecordingRenderer : public DzRenderer
{
public:
    bool compileShader(const QString& name, const QString& source) override
    {
        calls.append(QStringLiteral("compile %1: %2").arg(name, source));
        return canCompile;
    }
    void riSurface(const QString& name, int count, const char* const* tokens,
        const void* const* values) override
    {
        calls.append(QStringLiteral("surface \"%1\" %2%3%4")
                         .arg(name)
                         .arg(count)
                         .arg(tokens ? QStringLiteral(" tokens") : QString())
                         .arg(values ? QStringLiteral(" values") : QString()));
    }

    QStringList calls;
    bool canCompile = true;
};

/// The shader of a root of the given number, and what the renderer is told of it.
QString compileCall(int number)
{
    return QStringLiteral("compile 4f1f7a3e-9b9f-4b5c-8f9a-0a1b2c3d4e5f_%1: "
                          "Oi = 1;\nCi = color( .33, .66, .33);\n")
        .arg(number);
}

QString surfaceCall(int number)
{
    return QStringLiteral("surface \"4f1f7a3e-9b9f-4b5c-8f9a-0a1b2c3d4e5f_%1\" 0").arg(number);
}

const QString cleared = QStringLiteral("surface \"\" 0");
const QString started = QStringLiteral("started");
const QString finished = QStringLiteral("finished");

class RenderTest : public testing::Test
{
protected:
    RenderTest()
    {
        user.setIdentifier(QUuid(QStringLiteral("{4f1f7a3e-9b9f-4b5c-8f9a-0a1b2c3d4e5f}")));
        QObject::connect(
            &user, &VireoBrickUser::generateFilesStarted, [this] { engine.calls.append(started); });
        QObject::connect(&user, &VireoBrickUser::generateFilesFinished,
            [this] { engine.calls.append(finished); });
    }

    /// What one render tells.
    QStringList render()
    {
        engine.calls.clear();
        DzRenderSettings settings(&engine);
        user.setRender(&settings);
        return engine.calls;
    }

    RecordingRenderer engine;
    VireoBrickUser user;
};

} // namespace

TEST_F(RenderTest, withoutBricksTheSurfaceIsOnlyCleared)
{
    EXPECT_EQ(render(), QStringList({ cleared }));
}

TEST_F(RenderTest, withoutARootTheSurfaceIsOnlyCleared)
{
    addBrick(user, "VireoMatMatteBrick");
    addBrick(user, "VireoTexFltConstantBrick");
    EXPECT_EQ(render(), QStringList({ cleared }));
}

TEST_F(RenderTest, aRootsShaderIsMadeBetweenTheSignalsAndSetLast)
{
    addBrick(user, "VireoRootBrick");
    EXPECT_EQ(
        render(), QStringList({ cleared, started, compileCall(1), finished, surfaceCall(1) }));
}

TEST_F(RenderTest, everySetIsAppliedInItsOrderAfterTheClearing)
{
    addBrick(user, "VireoRootBrick");
    addBrick(user, "VireoMatMatteBrick");
    addBrick(user, "VireoRootBrick");
    EXPECT_EQ(render(),
        QStringList({ cleared, started, compileCall(1), finished, surfaceCall(1), started,
            compileCall(3), finished, surfaceCall(3) }));
}

TEST_F(RenderTest, aShaderIsMadeAnewOnlyForNewSets)
{
    addBrick(user, "VireoRootBrick");
    render();
    EXPECT_EQ(render(), QStringList({ cleared, surfaceCall(1) }));
    user.invalidateSets();
    EXPECT_EQ(
        render(), QStringList({ cleared, started, compileCall(1), finished, surfaceCall(1) }));
    addBrick(user, "VireoMatMatteBrick");
    EXPECT_EQ(
        render(), QStringList({ cleared, started, compileCall(1), finished, surfaceCall(1) }));
    EXPECT_EQ(render(), QStringList({ cleared, surfaceCall(1) }));
}

TEST_F(RenderTest, aShaderThatCannotBeMadeLeavesTheSurfaceClearAndIsTriedAgain)
{
    addBrick(user, "VireoRootBrick");
    engine.canCompile = false;
    const QStringList failing { cleared, started, compileCall(1), finished, cleared };
    EXPECT_EQ(render(), failing);
    EXPECT_EQ(render(), failing);
    engine.canCompile = true;
    EXPECT_EQ(
        render(), QStringList({ cleared, started, compileCall(1), finished, surfaceCall(1) }));
}

TEST_F(RenderTest, whoeverHearsTheSignalsMayChangeTheNetwork)
{
    addBrick(user, "VireoRootBrick");
    // Asking for the sets makes them anew, while one of the old ones is at work.
    const auto connection = QObject::connect(&user, &VireoBrickUser::generateFilesStarted, [this] {
        user.deleteAllBricks();
        dzUndoStack->clearAll();
        EXPECT_EQ(user.getNumBrickSets(), 0);
    });
    const QStringList calls = render();
    QObject::disconnect(connection);
    ASSERT_FALSE(calls.isEmpty());
    EXPECT_EQ(calls.first(), cleared);
    EXPECT_EQ(calls.count(started), 1);
    EXPECT_EQ(calls.count(finished), 1);
    EXPECT_EQ(render(), QStringList({ cleared }));
}

TEST_F(RenderTest, renderingLeavesNoUndoStep)
{
    addBrick(user, "VireoRootBrick");
    dzUndoStack->clearAll();
    render();
    EXPECT_FALSE(dzUndoStack->hasItems());
}
