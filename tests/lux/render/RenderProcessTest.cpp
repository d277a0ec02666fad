// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RenderProcess.h"
#include "LuxCoreScene.h"
#include "PreviewStage.h"
#include "TestSupport.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <csignal>

using namespace lux;

namespace {

const QSize size(48, 36);

class LuxRenderProcess : public testing::Test
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsSet("VIREO_SKIP_DEPS") && !findRenderer().isThere())
            GTEST_SKIP() << findRenderer().problem().toStdString();
    }

    static LuxCoreMaterial material(const QByteArray& text, const QByteArray& prefix)
    {
        SceneText scene;
        scene.readText(text, QString(), SceneOptions());
        LuxCoreOptions options;
        options.prefix = prefix;
        return luxCoreMaterial(scene, options);
    }

    int open()
    {
        const LuxCoreMaterial red
            = material("Material \"matte\" \"color Kd\" [0.9 0 0]\n", "first");
        m_process.open(QStringLiteral("a"), m_stage.config(size, 2), m_stage.scene(red, size));
        RenderRun run;
        run.size = size;
        run.samples = 1000000;
        run.every = 0.01;
        run.denoise = false;
        return m_process.run(QStringLiteral("a"), run);
    }

    /// The next picture that fulfils a condition; null when none comes in time.
    template <typename Condition>
    QImage waitForPicture(Condition condition)
    {
        QSignalSpy pictures(&m_process, &RenderProcess::pictureReady);
        for (int i = 0; i < 200; ++i) {
            if (!pictures.wait(10000))
                return QImage();
            const QImage picture = pictures.takeLast().at(1).value<QImage>();
            if (condition(picture.pixel(size.width() / 2, size.height() / 2)))
                return picture;
        }
        return QImage();
    }

    RenderProcess m_process;
    PreviewStage m_stage;
};

bool isRed(QRgb color)
{
    return qRed(color) > 2 * qGreen(color);
}

bool isGreen(QRgb color)
{
    return qGreen(color) > 2 * qRed(color);
}

} // namespace

TEST_F(LuxRenderProcess, editsAreDrawnLive)
{
    open();
    EXPECT_FALSE(waitForPicture(isRed).isNull());
    const LuxCoreMaterial green = material("Material \"matte\" \"color Kd\" [0 0.9 0]\n", "second");
    m_process.edit(QStringLiteral("a"), green.properties,
        { { QString::fromUtf8(PreviewStage::objectName()), green.name } });
    EXPECT_FALSE(waitForPicture(isGreen).isNull());
}

TEST_F(LuxRenderProcess, wrongSceneIsAnErrorAndTheNextOneIsDrawn)
{
    QSignalSpy answers(&m_process, &RenderProcess::answered);
    const int id = m_process.open(
        QStringLiteral("a"), m_stage.config(size, 2), "scene.textures.x.type = nonsense\n");
    ASSERT_TRUE(answers.wait(20000));
    EXPECT_EQ(answers.first().at(0).toInt(), id);
    EXPECT_FALSE(answers.first().at(1).toString().isEmpty());
    open();
    EXPECT_FALSE(waitForPicture(isRed).isNull());
}

TEST_F(LuxRenderProcess, commandForAStageThatIsNotThereIsAnError)
{
    QSignalSpy answers(&m_process, &RenderProcess::answered);
    RenderRun run;
    run.size = size;
    m_process.run(QStringLiteral("nowhere"), run);
    ASSERT_TRUE(answers.wait(20000));
    EXPECT_FALSE(answers.first().at(1).toString().isEmpty());
}

TEST_F(LuxRenderProcess, killedProcessIsToldOfAndStartsAgain)
{
    open();
    ASSERT_FALSE(waitForPicture(isRed).isNull());
    QSignalSpy ended(&m_process, &RenderProcess::ended);
    ::kill(static_cast<pid_t>(m_process.getProcessId()), SIGKILL);
    ASSERT_TRUE(ended.wait(10000));
    EXPECT_TRUE(ended.first().first().toString().startsWith(QLatin1String("the renderer ended")));
    open();
    EXPECT_FALSE(waitForPicture(isRed).isNull());
}

TEST_F(LuxRenderProcess, stoppedStageDrawsNoMore)
{
    open();
    ASSERT_FALSE(waitForPicture(isRed).isNull());
    QSignalSpy answers(&m_process, &RenderProcess::answered);
    m_process.stop(QStringLiteral("a"));
    ASSERT_TRUE(answers.wait(10000));
    QSignalSpy pictures(&m_process, &RenderProcess::pictureReady);
    EXPECT_FALSE(pictures.wait(300));
}

TEST_F(LuxRenderProcess, missingRendererIsSaidInOneLine)
{
    const QTemporaryDir empty;
    qputenv("VIREO_RENDERER", empty.path().toLocal8Bit());
    RenderProcess process;
    QSignalSpy ended(&process, &RenderProcess::ended);
    process.open(QStringLiteral("a"), QByteArray(), QByteArray());
    ASSERT_TRUE(ended.wait(10000));
    qunsetenv("VIREO_RENDERER");
    EXPECT_EQ(ended.first().first().toString(),
        QStringLiteral("the renderer is not installed: run `vireo renderer install`"));
}

TEST_F(LuxRenderProcess, brokenPackageIsSaid)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("pyluxcore")));
    QFile module(folder.filePath(QStringLiteral("pyluxcore/__init__.py")));
    ASSERT_TRUE(module.open(QIODevice::WriteOnly));
    module.write("raise ImportError('its library is gone')\n");
    module.close();
    qputenv("VIREO_RENDERER", folder.path().toLocal8Bit());
    RenderProcess process;
    QSignalSpy ended(&process, &RenderProcess::ended);
    process.open(QStringLiteral("a"), QByteArray(), QByteArray());
    ASSERT_TRUE(ended.wait(10000));
    qunsetenv("VIREO_RENDERER");
    EXPECT_TRUE(ended.first().first().toString().contains(QLatin1String("its library is gone")));
}
