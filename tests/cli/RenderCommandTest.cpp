// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CliSupport.h"
#include "Renderer.h"
#include "TestSupport.h"

#include <QDir>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <csignal>

namespace {

class CliRender : public testing::Test
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsSet("VIREO_SKIP_DEPS") && !lux::findRenderer().isThere())
            GTEST_SKIP() << lux::findRenderer().problem().toStdString();
    }

    QString picture() const { return m_folder.filePath(QStringLiteral("picture.png")); }
    Outcome render(const QString& file, const QStringList& more = QStringList()) const
    {
        return runVireo(QStringList { QStringLiteral("render"), file, QStringLiteral("-o"),
                            picture(), QStringLiteral("--size"), QStringLiteral("40x30"),
                            QStringLiteral("--samples"), QStringLiteral("2") }
            + more);
    }

    QTemporaryDir m_folder;
};

} // namespace

TEST_F(CliRender, networkBecomesAPicture)
{
    expectDone(render(QStringLiteral("examples/plain-matte.sskn")));
    const QImage image(picture());
    ASSERT_EQ(image.size(), QSize(40, 30));
    // The ball is red, the sky behind it is not.
    const QRgb middle = image.pixel(20, 14);
    EXPECT_GT(qRed(middle), 3 * qBlue(middle) / 2);
    const QRgb corner = image.pixel(1, 1);
    EXPECT_GT(qBlue(corner), qRed(corner));
}

TEST_F(CliRender, textBecomesAPictureWithItsImages)
{
    const QString text = writeFile(m_folder, QStringLiteral("wall.lxm"),
        "Texture \"t\" \"color\" \"imagemap\" \"string filename\" [\"textures/bricks.png\"]\n"
        "Material \"matte\" \"texture Kd\" [\"t\"]\n");
    // Without the folder the image is missing and named.
    const Outcome without = render(text);
    EXPECT_EQ(without.exitCode, 0);
    EXPECT_TRUE(without.error.contains(QLatin1String("textures/bricks.png is missing")));
    expectDone(
        render(text, { QStringLiteral("--image-dir"), projectPath(QStringLiteral("examples")) }));
}

TEST_F(CliRender, everyShapeAndOwnMeshesAreDrawn)
{
    const QString mesh = projectPath(QStringLiteral("examples/scenes/table-and-lamp.obj"));
    for (const QString& shape :
        { QStringLiteral("cube"), QStringLiteral("plane"), QStringLiteral("cloth"), mesh }) {
        SCOPED_TRACE(shape.toStdString());
        expectDone(render(
            QStringLiteral("examples/plain-matte.sskn"), { QStringLiteral("--shape"), shape }));
    }
}

TEST_F(CliRender, severalFilesGoIntoAFolder)
{
    const QString folder = m_folder.filePath(QStringLiteral("pictures"));
    expectDone(runVireo({ QStringLiteral("render"), QStringLiteral("examples/plain-matte.sskn"),
        QStringLiteral("examples/velvet.sskn"), QStringLiteral("-o"), folder + '/',
        QStringLiteral("--size"), QStringLiteral("16x12"), QStringLiteral("--samples"),
        QStringLiteral("1") }));
    EXPECT_EQ(QDir(folder).entryList(QDir::Files, QDir::Name),
        QStringList({ QStringLiteral("plain-matte.png"), QStringLiteral("velvet.png") }));
}

TEST_F(CliRender, wrongCallsAreSaid)
{
    const QString network = QStringLiteral("examples/plain-matte.sskn");
    const auto call = [&](const QStringList& more) {
        return runVireo(QStringList { QStringLiteral("render"), network } + more);
    };
    const QStringList output { QStringLiteral("-o"), picture() };
    expectFailure(call(output + QStringList { QStringLiteral("--size"), QStringLiteral("0x9") }), 2,
        { QStringLiteral("\"0x9\" is not a size") });
    expectFailure(call(output + QStringList { QStringLiteral("--samples"), QStringLiteral("0") }),
        2, { QStringLiteral("--samples") });
    expectFailure(call({ QStringLiteral("-o"), m_folder.filePath(QStringLiteral("a.sskn")) }), 2,
        { QStringLiteral("is not the name of a picture") });
    expectFailure(
        call(output + QStringList { network }), 2, { QStringLiteral("one picture for 2 files") });
}

TEST_F(CliRender, whatCannotBeDrawnIsSaid)
{
    expectFailure(render(QStringLiteral("nowhere.sskn")), 1, { QStringLiteral("nowhere.sskn") });
    expectFailure(render(writeFile(m_folder, QStringLiteral("empty.lxm"), "# nothing\n")), 1,
        { QStringLiteral("it has no material") });
    expectFailure(render(QStringLiteral("examples/plain-matte.sskn"),
                      { QStringLiteral("--shape"),
                          writeFile(m_folder, QStringLiteral("none.obj"), "v 0 0 0\n") }),
        1, { QStringLiteral("has no faces") });
}

TEST_F(CliRender, missingRendererIsSaid)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VIREO_RENDERER"), m_folder.path());
    const QStringList arguments { QStringLiteral("renderer"), QStringLiteral("status") };
    expectFailure(
        runVireo(arguments, environment), 1, { QStringLiteral("vireo renderer install") });
    environment.remove(QStringLiteral("VIREO_RENDERER"));
    environment.insert(QStringLiteral("VIREO_PYTHON"), QStringLiteral("/nowhere/python3"));
    expectFailure(runVireo(arguments, environment), 1, { QStringLiteral("needs Python 3") });
}

TEST_F(CliRender, interruptedRunKeepsThePictureSoFar)
{
    QProcess process;
    process.setWorkingDirectory(projectPath(QString()));
    process.start(QStringLiteral(VIREO_PROGRAM),
        { QStringLiteral("render"), QStringLiteral("examples/plain-matte.sskn"),
            QStringLiteral("-o"), picture(), QStringLiteral("--size"), QStringLiteral("40x30"),
            QStringLiteral("--samples"), QStringLiteral("1000000") });
    ASSERT_TRUE(process.waitForStarted());
    // Until it has had time for a first picture, also on a busy machine.
    QTest::qWait(5000);
    ::kill(static_cast<pid_t>(process.processId()), SIGINT);
    ASSERT_TRUE(process.waitForFinished(20000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains("is the picture so far"));
    EXPECT_EQ(QImage(picture()).size(), QSize(40, 30));
}
