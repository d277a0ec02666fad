// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Renderer.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

/// The resources of a static library must be asked for, outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(render);
}

namespace lux {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("Renderer", text);
}

QString findPython()
{
    const QString named = QString::fromLocal8Bit(qgetenv("VIREO_PYTHON"));
    if (!named.isEmpty())
        return QFileInfo(named).isExecutable() ? named : QString();
    // The system's own first: others on the path may be of a version without a package.
    const QString own = QStringLiteral("/usr/bin/python3");
    return QFileInfo(own).isExecutable()
        ? own
        : QStandardPaths::findExecutable(QStringLiteral("python3"));
}

QStringList rendererFolders()
{
    QStringList folders;
    const QString named = QString::fromLocal8Bit(qgetenv("VIREO_RENDERER"));
    if (!named.isEmpty())
        return { named };
    folders.append(QDir::cleanPath(
        QCoreApplication::applicationDirPath() + QStringLiteral("/../share/vireo/renderer")));
    folders.append(userRendererFolder());
    return folders;
}

QString resourceText(const char* name)
{
    initResources();
    QFile file(QStringLiteral(":/lux/render/") + QLatin1String(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

QString userRendererFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)
        + QStringLiteral("/vireo/renderer");
}

Renderer findRenderer()
{
    Renderer renderer;
    renderer.python = findPython();
    for (const QString& folder : rendererFolders()) {
        if (QFileInfo(folder + QStringLiteral("/pyluxcore")).isDir()) {
            renderer.folder = folder;
            break;
        }
    }
    return renderer;
}

QString Renderer::problem() const
{
    if (python.isEmpty())
        return tr("the renderer needs Python 3: install the package python3, or name another "
                  "interpreter by VIREO_PYTHON");
    if (folder.isEmpty())
        return tr("the renderer is not installed: run `vireo renderer install`");
    return QString();
}

QStringList rendererInstallCommand(const QString& python, const QString& folder)
{
    // The requirements go along as text: a resource is no file that pip could read.
    return { python, QStringLiteral("-I"), QStringLiteral("-c"),
        resourceText("install_renderer.py"), folder, QStringLiteral("--text"),
        resourceText("renderer-requirements.txt") };
}

QStringList rendererServiceArguments(const Renderer& renderer)
{
    return { QStringLiteral("-I"), QStringLiteral("-c"), resourceText("luxcore_service.py"),
        renderer.folder };
}

} // namespace lux
