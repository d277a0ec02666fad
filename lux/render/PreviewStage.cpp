// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "PreviewStage.h"

#include "PropertyText.h"

#include <cmath>

namespace lux {

namespace {

/// LuxRender's linear tone mapping of a film of sensitivity 100 that is exposed for 4 seconds
/// through f/2.8, with a gamma of 2.2: .65, 10 and 118 / 255 are its constants.
double brightness()
{
    const double sensitivity = 100;
    const double exposure = 4;
    const double fstop = 2.8;
    return exposure / (fstop * fstop) * sensitivity * 0.65 / 10 * std::pow(118.0 / 255, 2.2);
}

const char stageText[] = R"(scene.camera.type = perspective
scene.camera.lookat.orig = 0 -5.2 2.1
scene.camera.lookat.target = 0 0 0.95
scene.camera.up = 0 0 1
scene.camera.fieldofview = 30
scene.camera.autovolume.enable = 0
scene.lights.Sky.type = constantinfinite
scene.lights.Sky.color = 0.75 0.85 1
scene.lights.Sky.gain = 0.35 0.35 0.35
scene.textures.FloorChecks.type = checkerboard2d
scene.textures.FloorChecks.texture1 = 0.5
scene.textures.FloorChecks.texture2 = 0.15
scene.textures.FloorChecks.mapping.type = uvmapping2d
scene.textures.FloorChecks.mapping.uvscale = 16 16
scene.materials.Floor.type = matte
scene.materials.Floor.kd = FloorChecks
scene.materials.Window.type = matte
scene.materials.Window.kd = 0
scene.materials.Window.emission = 1
scene.materials.Window.emission.gain = 40 40 40
scene.objects.Floor.material = Floor
scene.objects.Floor.vertices = -6 -6 0 6 -6 0 6 6 0 -6 6 0
scene.objects.Floor.faces = 0 1 2 0 2 3
scene.objects.Floor.normals = 0 0 1 0 0 1 0 0 1 0 0 1
scene.objects.Floor.uvs = 0 0 1 0 1 1 0 1
scene.objects.Window.material = Window
scene.objects.Window.vertices = -2.8 -2.1 4.4 -1.6 -3.1 4.4 -2.0 -3.6 3.2 -3.2 -2.6 3.2
scene.objects.Window.faces = 0 1 2 0 2 3
)";

template <typename Lists>
QByteArray flat(const Lists& lists)
{
    QByteArray text;
    for (const auto& list : lists)
        for (const auto value : list)
            text += propertyNumber(static_cast<double>(value)) + ' ';
    return text;
}

} // namespace

PreviewStage::PreviewStage()
    : m_mesh(ballMesh())
{
}

QStringList PreviewStage::shapes()
{
    return { QStringLiteral("ball"), QStringLiteral("cube"), QStringLiteral("plane"),
        QStringLiteral("cloth") };
}

bool PreviewStage::setShape(const QString& shape, QString* error)
{
    switch (shapes().indexOf(shape)) {
    case 0:
        m_mesh = ballMesh();
        return true;
    case 1:
        m_mesh = cubeMesh();
        return true;
    case 2:
        m_mesh = planeMesh();
        return true;
    case 3:
        m_mesh = clothMesh();
        return true;
    default:
        StageMesh mesh;
        if (!readStageMesh(shape, &mesh, error))
            return false;
        m_mesh = std::move(mesh);
        return true;
    }
}

QByteArray PreviewStage::shape(const LuxCoreMaterial& material) const
{
    PropertyText text;
    const MeshSettings& settings = material.mesh;
    const bool isDisplaced = settings.subdivisions > 0 && !settings.displacement.isEmpty();
    // Displacement moves points only: fine enough that what the texture shows comes out.
    const int extraCuts = 1;
    const StageMesh mesh
        = isDisplaced ? subdivided(m_mesh, settings.subdivisions + extraCuts) : m_mesh;

    PropertyText::Thing points = text.thing("shapes", "ShapePoints", "inlinedmesh");
    points.set("vertices", flat(mesh.points)).set("faces", flat(mesh.triangles));
    if (!mesh.normals.empty())
        points.set("normals", flat(mesh.normals));
    if (!mesh.coordinates.empty())
        points.set("uvs", flat(mesh.coordinates));
    if (isDisplaced)
        text.thing("shapes", "ShapeDisplaced", "displacement")
            .set("source", "ShapePoints")
            .set("map", settings.displacement)
            .set("map.type", "height")
            .set("scale", settings.displacementScale)
            .set("offset", settings.displacementOffset)
            .set("normalsmooth", settings.smoothsNormals ? "1" : "0");
    text.thing("objects", objectName())
        .set("material", material.name)
        .set("shape", isDisplaced ? "ShapeDisplaced" : "ShapePoints");
    return text.text();
}

QByteArray PreviewStage::scene(const LuxCoreMaterial& material, const QSize& size) const
{
    // The shorter side sees 30 degrees. LuxCore's pictures lie a pixel lower than LuxRender's.
    const double shorter = std::min(size.width(), size.height());
    const double x = size.width() / shorter;
    const double y = size.height() / shorter;
    const double pixel = 2 / shorter;
    return stageText + QByteArray("scene.camera.screenwindow = ")
        + propertyNumbers({ -x, x, -y - pixel, y - pixel }) + '\n' + material.properties
        + shape(material);
}

QByteArray PreviewStage::config(const QSize& size, int threads) const
{
    QByteArray text = "renderengine.type = PATHCPU\n"
                      "sampler.type = SOBOL\n"
                      "film.filter.type = BOX\n"
                      "film.filter.width = 0.5\n"
                      // As deep as LuxRender's path integrator goes.
                      "path.pathdepth.total = 10\n"
                      "path.pathdepth.diffuse = 10\n"
                      "path.pathdepth.glossy = 10\n"
                      "path.pathdepth.specular = 10\n";
    const auto set = [&](const QByteArray& key, const QByteArray& value) {
        text += key + " = " + value + '\n';
    };
    set("film.width", QByteArray::number(size.width()));
    set("film.height", QByteArray::number(size.height()));
    set("native.threads.count", QByteArray::number(threads));
    for (const bool isDenoised : { false, true }) {
        const QByteArray pipeline
            = QByteArray("film.imagepipelines.") + (isDenoised ? '1' : '0') + '.';
        int step = 0;
        set(pipeline + QByteArray::number(step) + ".type", "TONEMAP_LINEAR");
        set(pipeline + QByteArray::number(step++) + ".scale", propertyNumber(brightness()));
        if (isDenoised)
            set(pipeline + QByteArray::number(step++) + ".type", "INTEL_OIDN");
        set(pipeline + QByteArray::number(step) + ".type", "GAMMA_CORRECTION");
        set(pipeline + QByteArray::number(step) + ".value", "2.2");
    }
    return text;
}

} // namespace lux
