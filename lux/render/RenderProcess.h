// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Renderer.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QObject>
#include <QProcess>
#include <QSize>
#include <QTemporaryDir>
#include <memory>

class QJsonObject;

namespace lux {

/// How long and how well something is rendered.
struct RenderRun {
    QSize size;         ///< of the stage's film
    int samples = 64;   ///< for each pixel
    double seconds = 0; ///< at most; 0 for any
    double every = 1;   ///< seconds between two pictures
    bool denoise = true;
};

/// The render service: a process of its own, which draws stages and is edited while it does.
///
/// Nothing here waits. Every command gets a number, which its answers carry. A process that dies or
/// says nothing for too long is ended and told of; the next command starts a new one, whose stages
/// are empty.
class RenderProcess : public QObject
{
    Q_OBJECT

public:
    explicit RenderProcess(QObject* parent = nullptr);
    ~RenderProcess() override;

    /// Makes or replaces a stage; texts are LuxCore's properties.
    int open(const QString& stage, const QByteArray& config, const QByteArray& scene);
    /// Adds to a stage's scene and gives its objects other materials; what is no longer used goes.
    int edit(
        const QString& stage, const QByteArray& scene, const QHash<QString, QByteArray>& materials);
    /// Renders a stage; replaces its run before.
    int run(const QString& stage, const RenderRun& run);
    void stop(const QString& stage);
    void close(const QString& stage);

    bool isRunning() const { return m_process.state() != QProcess::NotRunning; }
    /// The service's own process; 0 when it does not run.
    qint64 getProcessId() const { return m_process.processId(); }
    /// Ends it now.
    void end();

signals:
    /// A command was carried out, or not for the reason given.
    void answered(int id, const QString& error);
    /// A picture of a run; `isLast` when nothing more will come of it.
    void pictureReady(int id, const QImage& picture, int samples, double seconds, bool isLast);
    /// A run ended without a last picture.
    void runFailed(int id, const QString& error);
    /// The process ended or could not be started; all stages are gone.
    void ended(const QString& reason);

private:
    int send(QJsonObject command);
    bool start();
    void readAnswers();
    void takeAnswer(const QJsonObject& answer);
    void takePicture(int id, const QJsonObject& answer);
    void processEnded();
    void processFailed(QProcess::ProcessError error);

    QProcess m_process;
    QTemporaryDir m_folder;         // of the pictures
    QByteArray m_rest;              // of a line that has not come whole
    QByteArray m_messages;          // the end of what the process said to its user
    QHash<int, QString> m_pictures; // files by run; only asked, never walked
    int m_lastId = 0;
    bool m_isEnding = false;
};

} // namespace lux
