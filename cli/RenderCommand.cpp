// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"

#include "FileNames.h"
#include "NetworkCode.h"
#include "NetworkInput.h"
#include "PreviewStage.h"
#include "RenderProcess.h"
#include "SceneSurfaces.h"
#include "VireoRootBrick.h"
#include "dzfilewriter.h"

#include <CLI/CLI.hpp>
#include <QBuffer>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QImageWriter>
#include <QProcess>
#include <QTimer>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <thread>
#include <unistd.h>

namespace {

struct RenderOptions {
    std::vector<std::string> files;
    std::string output;
    std::string imageFolder;
    std::string shape = "ball";
    std::string size = "640x480";
    int samples = 128;
    double seconds = 0;
    bool denoise = false;
};

/// Set by Ctrl-C.
std::atomic<bool> isInterrupted { false };

void interrupt(int)
{
    isInterrupted = true;
}

QSize pictureSize(const std::string& text)
{
    const QStringList sides = argumentText(text).toLower().split(QLatin1Char('x'));
    bool isWidth = false;
    bool isHeight = false;
    const QSize size(sides.value(0).toInt(&isWidth), sides.value(1).toInt(&isHeight));
    const int most = lux::maximumPictureSide;
    if (sides.size() != 2 || !isWidth || !isHeight || size.width() < 1 || size.height() < 1
        || size.width() > most || size.height() > most)
        failWrongUse(QStringLiteral("\"%1\" is not a size: write width and height such as 640x480, "
                                    "each from 1 to %2")
                         .arg(argumentText(text))
                         .arg(most));
    return size;
}

/// The material of a file, and where its image names begin.
lux::LuxCoreMaterial readMaterial(const QString& path, const RenderOptions& options)
{
    lux::SceneOptions reading;
    reading.reading.acceptsLooseParameters = true;
    lux::LuxCoreOptions translation;
    translation.imageFolder = options.imageFolder.empty() ? QFileInfo(path).absolutePath()
                                                          : argumentText(options.imageFolder);
    lux::SceneText text;
    if (DzFileFormats::getKind(path) == DzFileKind::network()) {
        const BrickUserHandle network;
        GenerateOptions generate;
        generate.mapFiles = true;
        const GeneratedCode code
            = generateCode(loadNetworkRoot(path, network.user, "render"), generate);
        // In the order of the text that users see: what the mesh refers to stands before it.
        const QString whole = code.materialText + QLatin1Char('\n') + code.resultName;
        text.readText(whole.toUtf8(), translation.imageFolder, reading);
    } else if (DzFileFormats::getKind(path) == DzFileKind::scene()) {
        fail(QStringLiteral("cannot render %1: it is a scene; render the network of one of its "
                            "surfaces, which `vireo rebuild --stored` writes")
                 .arg(path));
    } else {
        QString error;
        if (!text.readFile(path, reading, &error))
            fail(error);
    }
    for (int i = 0; i < text.documentCount(); ++i) {
        const lux::Document& document = text.document(i);
        for (const lux::TextError& error : document.errors()) {
            const QString file = text.path(i).isEmpty() ? path : text.path(i);
            lux::PlaceFinder places(document);
            const lux::Place place = places.at(error.span.begin);
            notice(QStringLiteral("warning: %1:%2:%3: %4")
                       .arg(file)
                       .arg(place.line)
                       .arg(place.column)
                       .arg(document.message(error)));
        }
    }
    const lux::LuxCoreMaterial material = lux::luxCoreMaterial(text, translation);
    if (material.name.isEmpty())
        fail(QStringLiteral("cannot render %1: it has no material").arg(path));
    for (const QString& note : material.notes)
        notice(QStringLiteral("notice: %1: %2").arg(path, note));
    return material;
}

/// Renders one stage, telling how far it is on a terminal.
class RenderJob
{
public:
    RenderJob(const QString& title, const RenderOptions& options, const QSize& size)
        : m_title(title)
        , m_isTerminal(isatty(STDERR_FILENO) != 0)
    {
        m_run.size = size;
        m_run.samples = options.samples;
        m_run.seconds = options.seconds;
        m_run.denoise = options.denoise;
        m_run.every = 0.5;
    }

    /// The last picture; null, with the reason in `error`, when there is none.
    QImage render(const QByteArray& config, const QByteArray& scene, QString* error)
    {
        using lux::RenderProcess;
        QEventLoop loop;
        const auto failed = [&](const QString& reason) {
            *error = reason;
            loop.quit();
        };
        QObject::connect(
            &m_process, &RenderProcess::answered, &loop, [&](int, const QString& reason) {
                if (!reason.isEmpty())
                    failed(reason);
            });
        QObject::connect(&m_process, &RenderProcess::runFailed, &loop,
            [&](int, const QString& reason) { failed(reason); });
        QObject::connect(&m_process, &RenderProcess::ended, &loop, failed);
        QObject::connect(&m_process, &RenderProcess::pictureReady, &loop,
            [&](int, const QImage& picture, int samples, double seconds, bool isLast) {
                m_picture = picture;
                m_samples = samples;
                tellProgress(seconds, isLast);
                if (isLast)
                    loop.quit();
            });
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &loop, [&] {
            if (isInterrupted)
                loop.quit();
        });
        watch.start(50);
        m_process.open(QStringLiteral("render"), config, scene);
        m_process.run(QStringLiteral("render"), m_run);
        loop.exec();
        if (m_isTerminal && m_samples > 0)
            std::fputc('\n', stderr);
        m_process.end();
        return error->isEmpty() ? m_picture : QImage();
    }

    int samples() const { return m_samples; }

private:
    void tellProgress(double seconds, bool isLast) const
    {
        if (!m_isTerminal)
            return;
        double left = seconds / std::max(1, m_samples) * (m_run.samples - m_samples);
        if (m_run.seconds > 0)
            left = std::min(left, m_run.seconds - seconds);
        const QString text = isLast ? QStringLiteral("%1: %2 samples, %3 s")
                                          .arg(m_title)
                                          .arg(m_samples)
                                          .arg(seconds, 0, 'f', 1)
                                    : QStringLiteral("%1: %2 of %3 samples, %4 s left")
                                          .arg(m_title)
                                          .arg(m_samples)
                                          .arg(m_run.samples)
                                          .arg(std::max(0.0, left), 0, 'f', 0);
        std::fprintf(stderr, "\r%-76s", text.toUtf8().constData());
        std::fflush(stderr);
    }

    QString m_title;
    lux::RenderProcess m_process;
    lux::RenderRun m_run;
    QImage m_picture;
    int m_samples = 0;
    bool m_isTerminal;
};

void savePicture(const QImage& picture, const QString& path)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, QFileInfo(path).suffix().toLatin1());
    if (!writer.write(picture))
        fail(QStringLiteral("cannot write %1: %2").arg(path, writer.errorString()));
    QString error;
    if (!dzWriteFile(path, buffer.data(), &error))
        fail(error);
}

/// Where the picture of each file goes.
QStringList pictureFiles(const RenderOptions& options)
{
    const QString output = argumentText(options.output);
    if (output.isEmpty())
        failWrongUse(QStringLiteral("-o needs the name of a picture or of a folder"));
    const bool isFolder = QFileInfo(output).isDir() || output.endsWith(QLatin1Char('/'));
    if (!isFolder) {
        if (options.files.size() > 1)
            failWrongUse(QStringLiteral("%1 is one picture for %2 files: name a folder")
                             .arg(output)
                             .arg(options.files.size()));
        const QByteArray suffix = QFileInfo(output).suffix().toLower().toLatin1();
        if (!QImageWriter::supportedImageFormats().contains(suffix))
            failWrongUse(QStringLiteral("%1 is not the name of a picture: end it in .png or .jpg")
                             .arg(output));
        return { output };
    }
    if (!QDir().mkpath(output))
        fail(QStringLiteral("cannot make the folder %1: check its permissions").arg(output));
    FileNames names(QStringLiteral("png"));
    QStringList pictures;
    for (const std::string& file : options.files)
        pictures.append(
            QDir(output).filePath(names.nameFor(QFileInfo(argumentText(file)).completeBaseName())));
    return pictures;
}

void runRender(const RenderOptions& options)
{
    const QSize size = pictureSize(options.size);
    const QStringList pictures = pictureFiles(options);
    lux::PreviewStage stage;
    QString error;
    if (!stage.setShape(argumentText(options.shape), &error))
        fail(error);
    const QString problem = lux::findRenderer().problem();
    if (!problem.isEmpty())
        fail(problem);
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    const int threads = static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
    for (int i = 0; i < pictures.size(); ++i) {
        const QString path = argumentText(options.files.at(static_cast<std::size_t>(i)));
        const lux::LuxCoreMaterial material = readMaterial(path, options);
        RenderJob job(QFileInfo(path).fileName(), options, size);
        const QImage picture
            = job.render(stage.config(size, threads), stage.scene(material, size), &error);
        if (!error.isEmpty())
            fail(QStringLiteral("cannot render %1: %2").arg(path, error));
        if (!picture.isNull())
            savePicture(picture, pictures.at(i));
        if (isInterrupted)
            fail(picture.isNull()
                    ? QStringLiteral("stopped before %1 had a picture").arg(path)
                    : QStringLiteral("stopped after %1 samples: %2 is the picture so far")
                          .arg(job.samples())
                          .arg(pictures.at(i)));
    }
}

void printStatus()
{
    const lux::Renderer renderer = lux::findRenderer();
    const QString problem = renderer.problem();
    if (!problem.isEmpty())
        fail(problem);
    printText(QStringLiteral("LuxCore in %1, run by %2\n")
                  .arg(renderer.folder, renderer.python)
                  .toUtf8());
}

void installRenderer()
{
    lux::Renderer renderer = lux::findRenderer();
    if (renderer.isThere()) {
        printStatus();
        return;
    }
    if (renderer.python.isEmpty())
        fail(renderer.problem());
    QStringList command = lux::rendererInstallCommand(renderer.python, lux::userRendererFolder());
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    const QString program = command.takeFirst();
    process.start(program, command);
    process.closeWriteChannel();
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        fail(QStringLiteral("the renderer could not be installed into %1")
                 .arg(lux::userRendererFolder()));
    printStatus();
}

} // namespace

void addRenderCommand(CLI::App& program)
{
    CLI::App* command = program.add_subcommand(
        "render", "Draw what a network or a material's text looks like, with LuxCore");
    auto options = std::make_shared<RenderOptions>();
    command
        ->add_option("FILE", options->files,
            "Network files, or files of LuxRender text: the last NamedMaterial is drawn, else the "
            "last material")
        ->required();
    command
        ->add_option("-o,--output", options->output,
            "The picture (.png, .jpg), or a folder for a picture of each file")
        ->required();
    command
        ->add_option("--shape", options->shape,
            "What wears the material: ball, cube, plane, cloth or an .obj file")
        ->capture_default_str();
    command->add_option("--size", options->size, "Width and height in pixels")
        ->capture_default_str();
    command->add_option("--samples", options->samples, "Samples for each pixel")
        ->check(CLI::Range(1, 1000000))
        ->capture_default_str();
    command->add_option("--seconds", options->seconds, "Stop after so many seconds")
        ->check(CLI::Range(0.0, 1e6));
    command->add_flag("--denoise", options->denoise, "Smooth the noise of few samples");
    command
        ->add_option("--image-dir", options->imageFolder,
            "Where image names begin that are not absolute (default: the file's folder)")
        ->check(CLI::ExistingDirectory);
    command->callback([options] { runRender(*options); });
}

void addRendererCommand(CLI::App& program)
{
    CLI::App* command
        = program.add_subcommand("renderer", "Install LuxCore for `render`, or say what is there");
    command->require_subcommand(1);
    command->add_subcommand("install", "Install it into the user's data folder")
        ->callback(installRenderer);
    command->add_subcommand("status", "Say where it is, or what is missing")->callback(printStatus);
}
