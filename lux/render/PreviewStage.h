// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LuxCoreScene.h"
#include "StageMesh.h"

#include <QSize>

namespace lux {

/// What wears the material: a ball on a checkered floor under a window and the sky, or another
/// shape in its place.
class PreviewStage
{
public:
    /// The ball.
    PreviewStage();

    /// Words for shapes: "ball", "cube", "plane", "cloth".
    static QStringList shapes();
    /// Takes one of these shapes, or the mesh of an .obj file. On failure false, with the reason in
    /// `error`.
    bool setShape(const QString& shape, QString* error);

    /// The name of the object that wears the material.
    static QByteArray objectName() { return "Shape"; }

    /// LuxCore's scene: camera, light, floor, and the shape in the material.
    QByteArray scene(const LuxCoreMaterial& material, const QSize& size) const;
    /// LuxCore's settings: two image pipelines, the second one denoised; as many threads.
    QByteArray config(const QSize& size, int threads) const;

private:
    QByteArray shape(const LuxCoreMaterial& material) const;

    StageMesh m_mesh;
};

/// The size that pictures may have.
constexpr int maximumPictureSide = 8192;

} // namespace lux
