// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

namespace lux {

/// LuxCore's Python package, as it was found.
struct Renderer {
    QString python; ///< the interpreter; empty when there is none
    QString folder; ///< where the package lies; empty when it is not installed

    bool isThere() const { return !python.isEmpty() && !folder.isEmpty(); }
    /// In one line what is missing and what to do; empty when all is there.
    QString problem() const;
};

/// Looks for it in the folder that VIREO_RENDERER names, beside the program's data, and in the
/// user's data folder, in this order. VIREO_PYTHON names another interpreter.
Renderer findRenderer();

/// Where the user's own is installed to.
QString userRendererFolder();
/// What is fetched and what it takes on disk, in megabytes.
constexpr int rendererDownloadSize = 95;
constexpr int rendererDiskSize = 145;

/// The program and arguments that install the package into a folder.
QStringList rendererInstallCommand(const QString& python, const QString& folder);
/// The arguments that run the render service on the package of a folder, after the interpreter.
QStringList rendererServiceArguments(const Renderer& renderer);

} // namespace lux
