// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "RenderProcess.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <cmath>
#include <cstring>

namespace lux {

namespace {

// The process is given so long to end by itself, in milliseconds.
constexpr int endTime = 500;
// As much of its messages is kept for telling why it ended.
constexpr int messageSize = 4096;
// A line of an answer is short; more than this is no answer.
constexpr int maximumLine = 1024 * 1024;

uchar byteOf(float value)
{
    // Also false for what is not a number.
    if (!(value > 0))
        return 0;
    return static_cast<uchar>(std::min(255.f, value * 255 + 0.5f));
}

/// A picture of floats, three a pixel, lowest row first.
QImage imageOf(const QByteArray& data, const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    const char* next = data.constData();
    for (int row = size.height() - 1; row >= 0; --row) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(row));
        for (int column = 0; column < size.width(); ++column) {
            float rgb[3];
            std::memcpy(rgb, next, sizeof rgb);
            next += sizeof rgb;
            line[column] = qRgb(byteOf(rgb[0]), byteOf(rgb[1]), byteOf(rgb[2]));
        }
    }
    return image;
}

QString lastLine(const QByteArray& messages)
{
    const QList<QByteArray> lines = messages.trimmed().split('\n');
    return QString::fromUtf8(lines.last()).simplified();
}

} // namespace

RenderProcess::RenderProcess(QObject* parent)
    : QObject(parent)
{
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &RenderProcess::readAnswers);
    connect(&m_process, &QProcess::readyReadStandardError, this, [this] {
        m_messages = (m_messages + m_process.readAllStandardError()).right(messageSize);
    });
    connect(&m_process, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
        &RenderProcess::processEnded);
    connect(&m_process, &QProcess::errorOccurred, this, &RenderProcess::processFailed);
}

RenderProcess::~RenderProcess()
{
    m_process.disconnect(this);
    end();
}

void RenderProcess::end()
{
    if (!isRunning())
        return;
    m_isEnding = true;
    // The end of its input ends it.
    m_process.closeWriteChannel();
    if (!m_process.waitForFinished(endTime)) {
        m_process.kill();
        m_process.waitForFinished(endTime);
    }
    m_isEnding = false;
}

bool RenderProcess::start()
{
    if (isRunning())
        return true;
    const Renderer renderer = findRenderer();
    QString problem = renderer.problem();
    if (problem.isEmpty() && !m_folder.isValid())
        problem = tr("there is no room for pictures in the folder for temporary files: %1")
                      .arg(m_folder.errorString());
    if (!problem.isEmpty()) {
        QMetaObject::invokeMethod(
            this, [this, problem] { emit ended(problem); }, Qt::QueuedConnection);
        return false;
    }
    m_rest.clear();
    m_messages.clear();
    m_process.start(renderer.python, rendererServiceArguments(renderer));
    return true;
}

int RenderProcess::send(QJsonObject command)
{
    const int id = ++m_lastId;
    if (!start())
        return id;
    command.insert(QStringLiteral("id"), id);
    m_process.write(QJsonDocument(command).toJson(QJsonDocument::Compact) + '\n');
    return id;
}

int RenderProcess::open(const QString& stage, const QByteArray& config, const QByteArray& scene)
{
    return send({ { QStringLiteral("do"), QStringLiteral("open") },
        { QStringLiteral("stage"), stage }, { QStringLiteral("config"), QString::fromUtf8(config) },
        { QStringLiteral("scene"), QString::fromUtf8(scene) } });
}

int RenderProcess::edit(
    const QString& stage, const QByteArray& scene, const QHash<QString, QByteArray>& materials)
{
    QJsonObject objects;
    for (auto it = materials.begin(); it != materials.end(); ++it)
        objects.insert(it.key(), QString::fromUtf8(it.value()));
    return send({ { QStringLiteral("do"), QStringLiteral("edit") },
        { QStringLiteral("stage"), stage }, { QStringLiteral("scene"), QString::fromUtf8(scene) },
        { QStringLiteral("objects"), objects } });
}

int RenderProcess::run(const QString& stage, const RenderRun& run)
{
    const QString path = m_folder.filePath(stage + QStringLiteral(".pixels"));
    QFile file(path);
    const qint64 size
        = qint64(run.size.width()) * run.size.height() * 3 * static_cast<qint64>(sizeof(float));
    const bool isThere = file.open(QIODevice::WriteOnly) && file.resize(size);
    const int id = send({ { QStringLiteral("do"), QStringLiteral("run") },
        { QStringLiteral("stage"), stage }, { QStringLiteral("file"), path },
        { QStringLiteral("samples"), run.samples }, { QStringLiteral("seconds"), run.seconds },
        { QStringLiteral("every"), run.every }, { QStringLiteral("denoise"), run.denoise } });
    m_pictures.insert(id, path);
    if (!isThere)
        QMetaObject::invokeMethod(
            this,
            [this, id] {
                emit runFailed(
                    id, tr("there is no room for the picture in %1").arg(m_folder.path()));
            },
            Qt::QueuedConnection);
    return id;
}

void RenderProcess::stop(const QString& stage)
{
    if (isRunning())
        send({ { QStringLiteral("do"), QStringLiteral("stop") },
            { QStringLiteral("stage"), stage } });
}

void RenderProcess::close(const QString& stage)
{
    if (isRunning())
        send({ { QStringLiteral("do"), QStringLiteral("close") },
            { QStringLiteral("stage"), stage } });
}

void RenderProcess::readAnswers()
{
    m_rest += m_process.readAllStandardOutput();
    for (;;) {
        const int end = m_rest.indexOf('\n');
        if (end < 0)
            break;
        const QByteArray line = m_rest.left(end);
        m_rest.remove(0, end + 1);
        takeAnswer(QJsonDocument::fromJson(line).object());
    }
    if (m_rest.size() > maximumLine)
        m_process.kill();
}

void RenderProcess::takeAnswer(const QJsonObject& answer)
{
    const int id = answer.value(QStringLiteral("id")).toInt();
    const QString error = answer.value(QStringLiteral("error")).toString();
    if (answer.contains(QStringLiteral("picture")))
        takePicture(id, answer);
    else if (answer.contains(QStringLiteral("done")))
        emit runFailed(id, error);
    else if (id > 0)
        emit answered(id, error);
    else if (!error.isEmpty()) // Its greeting: what it could not load.
        m_messages = error.toUtf8();
}

void RenderProcess::takePicture(int id, const QJsonObject& answer)
{
    const QJsonArray sides = answer.value(QStringLiteral("picture")).toArray();
    const QSize size(sides.at(0).toInt(), sides.at(1).toInt());
    QFile file(m_pictures.value(id));
    const qint64 bytes
        = qint64(size.width()) * size.height() * 3 * static_cast<qint64>(sizeof(float));
    if (size.isEmpty() || !file.open(QIODevice::ReadOnly))
        return;
    const QByteArray data = file.read(bytes);
    if (data.size() != bytes)
        return;
    emit pictureReady(id, imageOf(data, size), answer.value(QStringLiteral("samples")).toInt(),
        answer.value(QStringLiteral("seconds")).toDouble(),
        answer.value(QStringLiteral("done")).toBool());
}

void RenderProcess::processEnded()
{
    m_pictures.clear();
    if (m_isEnding)
        return;
    const QString said = lastLine(m_messages);
    emit ended(said.isEmpty() ? tr("the renderer ended unexpectedly")
                              : tr("the renderer ended unexpectedly: %1").arg(said));
}

void RenderProcess::processFailed(QProcess::ProcessError error)
{
    // The others are told of by its end.
    if (error == QProcess::FailedToStart)
        emit ended(tr("the renderer cannot be started: %1").arg(m_process.errorString()));
}

} // namespace lux
