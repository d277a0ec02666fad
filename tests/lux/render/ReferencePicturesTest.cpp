// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
//
// Pictures that LuxRender made of the ball, against ours of the same texts.

#include "LuxCoreScene.h"
#include "PreviewStage.h"
#include "RenderProcess.h"
#include "TestSupport.h"

#include <QDir>
#include <QEventLoop>
#include <QTimer>
#include <cmath>

using namespace lux;

namespace {

const QSize size(160, 120);
// What pictures of the ball cover, in pixels.
const QRect ball(45, 20, 70, 70);
const int block = 5;

/// A difference below which two pictures show the same material, and below which they are alike,
/// of 255, as a mean over blocks.
const double same = 9;
const double alike = 18;

/// Materials that LuxCore draws alike but not the same, or not, each with its bound. The reasons
/// stand in docs/rendering.md.
double boundOf(const QString& name)
{
    if (name == QLatin1String("uv"))
        return alike;
    if (name == QLatin1String("displaced-surface"))
        return 25;
    return same;
}

double difference(const QImage& picture, const QImage& reference)
{
    double sum = 0;
    int count = 0;
    for (int top = ball.top(); top + block <= ball.bottom() + 1; top += block) {
        for (int left = ball.left(); left + block <= ball.right() + 1; left += block) {
            int channels[3] = {};
            for (int y = top; y < top + block; ++y) {
                for (int x = left; x < left + block; ++x) {
                    const QRgb ours = picture.pixel(x, y);
                    const QRgb theirs = reference.pixel(x, y);
                    channels[0] += qRed(ours) - qRed(theirs);
                    channels[1] += qGreen(ours) - qGreen(theirs);
                    channels[2] += qBlue(ours) - qBlue(theirs);
                }
            }
            for (const int channel : channels) {
                sum += std::abs(channel) / static_cast<double>(block * block);
                ++count;
            }
        }
    }
    return sum / count;
}

QString folder()
{
    return projectPath(QStringLiteral("tests/data/reference-pictures"));
}

std::vector<std::string> names()
{
    std::vector<std::string> list;
    for (const QFileInfo& file :
        QDir(folder()).entryInfoList({ QStringLiteral("*.txt") }, QDir::Files, QDir::Name))
        list.push_back(file.completeBaseName().toStdString());
#ifdef __SANITIZE_ADDRESS__
    // The renderer is not instrumented: a few are enough to see that pictures come.
    list.resize(2);
#endif
    return list;
}

/// One service for all pictures.
RenderProcess* service()
{
    static RenderProcess process;
    return &process;
}

QImage rendered(const LuxCoreMaterial& material, QString* error)
{
    const PreviewStage stage;
    RenderProcess* process = service();
    QImage result;
    QEventLoop loop;
    const auto failed = [&](const QString& reason) {
        *error = reason;
        loop.quit();
    };
    QObject::connect(process, &RenderProcess::answered, &loop, [&](int, const QString& reason) {
        if (!reason.isEmpty())
            failed(reason);
    });
    QObject::connect(process, &RenderProcess::runFailed, &loop,
        [&](int, const QString& reason) { failed(reason); });
    QObject::connect(process, &RenderProcess::ended, &loop, failed);
    QObject::connect(process, &RenderProcess::pictureReady, &loop,
        [&](int, const QImage& picture, int, double, bool isLast) {
            result = picture;
            if (isLast)
                loop.quit();
        });
    QTimer::singleShot(120 * 1000, &loop, [&] { failed(QStringLiteral("no picture in time")); });
    process->open(QStringLiteral("stage"), stage.config(size, 2), stage.scene(material, size));
    RenderRun run;
    run.size = size;
    run.samples = 32;
    run.every = 1000;
    run.denoise = false;
    process->run(QStringLiteral("stage"), run);
    loop.exec();
    return result;
}

std::string testNameOf(const testing::TestParamInfo<std::string>& info)
{
    std::string name = info.param;
    for (char& letter : name)
        if (!isalnum(static_cast<unsigned char>(letter)))
            letter = '_';
    return name;
}

class LuxReferencePictures : public testing::TestWithParam<std::string>
{
};

} // namespace

TEST_P(LuxReferencePictures, ballLooksAsLuxRenderDrawsIt)
{
    // Where the packages are brought by other means there may be no renderer.
    if (qEnvironmentVariableIsSet("VIREO_SKIP_DEPS") && !findRenderer().isThere())
        GTEST_SKIP() << findRenderer().problem().toStdString();
    const QString name = QString::fromStdString(GetParam());
    SceneOptions options;
    options.reading.acceptsLooseParameters = true;
    SceneText text;
    QString error;
    ASSERT_TRUE(text.readFile(folder() + '/' + name + ".txt", options, &error))
        << error.toStdString();
    LuxCoreOptions translation;
    translation.imageFolder = projectPath(QStringLiteral("examples"));
    const QImage reference(folder() + '/' + name + ".png");
    ASSERT_EQ(reference.size(), size);
    const QImage picture = rendered(luxCoreMaterial(text, translation), &error);
    ASSERT_EQ(error, QString());
    ASSERT_EQ(picture.size(), size);
    const double found = difference(picture, reference);
    RecordProperty("difference", std::to_string(found));
    EXPECT_LT(found, boundOf(name));
}

INSTANTIATE_TEST_SUITE_P(All, LuxReferencePictures, testing::ValuesIn(names()), testNameOf);
