// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "TextureMapping.h"

#include <QCoreApplication>
#include <cmath>

namespace lux {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double radians = pi / 180;

/// Row and column of three by four; the last row of a placement is 0 0 0 1.
typedef double Rows[3][4];

/// From the left: first `inner`, then `outer`.
void multiply(const Rows& outer, const Rows& inner, Rows* product)
{
    Rows result;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            result[row][column] = column == 3 ? outer[row][3] : 0;
            for (int i = 0; i < 3; ++i)
                result[row][column] += outer[row][i] * inner[i][column];
        }
    }
    std::copy(&result[0][0], &result[0][0] + 12, &(*product)[0][0]);
}

/// A turn about an axis: 0 is x, 1 y, 2 z.
void turn(int axis, double degrees, Rows* rows)
{
    const double sine = std::sin(degrees * radians);
    const double cosine = std::cos(degrees * radians);
    Rows rotation = { { 1, 0, 0, 0 }, { 0, 1, 0, 0 }, { 0, 0, 1, 0 } };
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    rotation[a][a] = cosine;
    rotation[a][b] = -sine;
    rotation[b][a] = sine;
    rotation[b][b] = cosine;
    multiply(rotation, *rows, rows);
}

QByteArray matrixText(const Matrix& matrix)
{
    return propertyNumbers(std::vector<double>(matrix.begin(), matrix.end()));
}

/// Places of the renderer, and what LuxCore calls them. Both are asked for points: of the world, of
/// the object, or of the mesh's coordinates.
struct Coordinates {
    const char* word;
    const char* mapping;
};
const Coordinates coordinates[] = {
    { "global", "globalmapping3d" },
    { "local", "localmapping3d" },
    { "uv", "uvmapping3d" },
};

} // namespace

Matrix textureMatrix(const Rgb& translate, const Rgb& rotate, const Rgb& scale)
{
    Rows rows
        = { { 1, 0, 0, -translate[0] }, { 0, 1, 0, -translate[1] }, { 0, 0, 1, -translate[2] } };
    turn(2, rotate[2], &rows);
    turn(1, rotate[1], &rows);
    turn(0, rotate[0], &rows);
    Matrix matrix {};
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            matrix[static_cast<std::size_t>(column * 4 + row)]
                = rows[row][column] / (scale[static_cast<std::size_t>(row)]);
    matrix[15] = 1;
    return matrix;
}

bool isCollapsed(const Inputs& inputs)
{
    const Rgb scale = inputs.vector("scale", { { 1, 1, 1 } });
    return scale[0] == 0 || scale[1] == 0 || scale[2] == 0;
}

bool writeSolidMapping(const Statement& statement, Translation* translation,
    PropertyText::Thing* texture, const Rgb& offset)
{
    const Inputs inputs(statement, translation->textures);
    const bool collapsed = isCollapsed(inputs);
    const std::string word = inputs.string("coordinates", "global");
    const char* mapping = nullptr;
    for (const Coordinates& row : coordinates)
        if (word == row.word)
            mapping = row.mapping;
    if (!mapping) {
        mapping = coordinates[0].mapping;
        translation->note(statement,
            QCoreApplication::translate(
                "LuxCore", "its coordinates \"%1\" are drawn as global ones")
                .arg(QString::fromStdString(word)));
    }
    if (collapsed)
        translation->note(statement,
            QCoreApplication::translate("LuxCore",
                "its scale has a 0, which stretches it endlessly: it is drawn at a scale of 1"));
    Matrix matrix = textureMatrix(inputs.vector("translate", { { 0, 0, 0 } }),
        inputs.vector("rotate", { { 0, 0, 0 } }),
        collapsed ? Rgb { { 1, 1, 1 } } : inputs.vector("scale", { { 1, 1, 1 } }));
    for (std::size_t i = 0; i < 3; ++i)
        matrix[12 + i] += offset[i];
    texture->set("mapping.type", mapping).set("mapping.transformation", matrixText(matrix));
    return !collapsed;
}

SurfaceMapping::SurfaceMapping(const Statement& statement, const TextureNames& textures)
{
    const Inputs inputs(statement, textures);
    m_kind = inputs.string("mapping", "uv");
    if (m_kind != "planar" && m_kind != "spherical" && m_kind != "cylindrical")
        m_kind = "uv"; // As the renderer does with a word that it does not know.
    m_uscale = m_kind == "planar" ? 1 : inputs.number("uscale", 1);
    m_vscale = m_kind == "planar" || m_kind == "cylindrical" ? 1 : inputs.number("vscale", 1);
    m_udelta = inputs.number("udelta", 0);
    m_vdelta = inputs.number("vdelta", 0);
    m_v1 = inputs.vector("v1", { { 1, 0, 0 } });
    m_v2 = inputs.vector("v2", { { 0, 1, 0 } });
}

void SurfaceMapping::write(PropertyText::Thing* texture) const
{
    texture->set("mapping.type", "uvmapping2d");
    if (!isUv())
        return;
    texture->set("mapping.uvscale", propertyNumbers({ m_uscale, m_vscale }))
        .set("mapping.uvdelta", propertyNumbers({ m_udelta, m_vdelta }));
}

QByteArray SurfaceMapping::turnCoordinate(Translation* translation) const
{
    // From -1/2 to 1/2 about z, brought to 0 to 1 from the x axis on.
    PropertyText& properties = translation->properties;
    const QByteArray angle = translation->newName();
    properties.thing("textures", angle, "blender_blend")
        .set("progressiontype", "radial")
        .set("mapping.type", "globalmapping3d");
    const QByteArray shifted = translation->newName();
    properties.thing("textures", shifted, "add").set("texture1", angle).set("texture2", 0.5);
    const QByteArray turned = translation->newName();
    properties.thing("textures", turned, "modulo").set("texture", shifted).set("modulo", 1);
    return turned;
}

QByteArray SurfaceMapping::sphereCoordinate(
    Translation* translation, const QByteArray& position) const
{
    PropertyText& properties = translation->properties;
    const QByteArray square = translation->newName();
    properties.thing("textures", square, "dotproduct")
        .set("texture1", position)
        .set("texture2", position);
    const QByteArray length = translation->newName();
    properties.thing("textures", length, "power").set("base", square).set("exponent", 0.5);
    const QByteArray height = translation->newName();
    properties.thing("textures", height, "splitfloat3").set("texture", position).set("channel", 2);
    const QByteArray cosine = translation->newName();
    properties.thing("textures", cosine, "divide").set("texture1", height).set("texture2", length);
    const QByteArray half = translation->newName();
    properties.thing("textures", half, "remap")
        .set("value", cosine)
        .set("sourcemin", -1)
        .set("sourcemax", 1)
        .set("targetmin", 0.0)
        .set("targetmax", 1);
    // LuxCore has no arc cosine: a band whose stops are cosines of even steps.
    const QByteArray angle = translation->newName();
    PropertyText::Thing band = properties.thing("textures", angle, "band");
    band.set("amount", half).set("interpolation", "linear");
    const int steps = 32;
    for (int i = 0; i <= steps; ++i) {
        const double value = 1 - static_cast<double>(i) / steps;
        band.set(
            ("offset" + QByteArray::number(i)).constData(), (1 - std::cos(pi * i / steps)) / 2);
        band.set(("value" + QByteArray::number(i)).constData(), Term(value).triple());
    }
    return angle;
}

QByteArray SurfaceMapping::wrapped(const QByteArray& texture, Translation* translation) const
{
    if (isUv())
        return texture;
    PropertyText& properties = translation->properties;
    const QByteArray position = translation->newName();
    properties.thing("textures", position, "position");

    // Scaled and shifted coordinates from a texture each.
    const auto placed = [&](const QByteArray& coordinate, double scale, double delta) {
        const QByteArray scaled = translation->newName();
        properties.thing("textures", scaled, "scale")
            .set("texture1", coordinate)
            .set("texture2", scale);
        const QByteArray moved = translation->newName();
        properties.thing("textures", moved, "add").set("texture1", scaled).set("texture2", delta);
        return moved;
    };
    const auto along = [&](const Rgb& direction) {
        const QByteArray name = translation->newName();
        properties.thing("textures", name, "dotproduct")
            .set("texture1", position)
            .set("texture2", Term(direction).text);
        return name;
    };
    QByteArray s, t;
    if (m_kind == "planar") {
        s = placed(along(m_v1), 1, m_udelta);
        t = placed(along(m_v2), 1, m_vdelta);
    } else {
        s = placed(turnCoordinate(translation), m_uscale, m_udelta);
        t = m_kind == "spherical"
            ? placed(sphereCoordinate(translation, position), m_vscale, m_vdelta)
            : placed(along({ { 0, 0, 1 } }), -0.5, 0.5 + m_vdelta);
    }

    // The texture is asked at its own coordinates and moved to ours by the difference.
    const QByteArray wanted = translation->newName();
    properties.thing("textures", wanted, "makefloat3")
        .set("texture1", s)
        .set("texture2", t)
        .set("texture3", 0.0);
    const QByteArray own = translation->newName();
    properties.thing("textures", own, "uv").set("mapping.type", "uvmapping2d");
    const QByteArray offset = translation->newName();
    properties.thing("textures", offset, "subtract").set("texture1", wanted).set("texture2", own);
    const QByteArray moved = translation->newName();
    properties.thing("textures", moved, "distort")
        .set("texture", texture)
        .set("offset", offset)
        .set("strength", 1);
    return moved;
}

} // namespace lux
