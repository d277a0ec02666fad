// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Translation.h"

namespace lux {

/// Sixteen numbers, column after column, as LuxCore takes them.
typedef std::array<double, 16> Matrix;

/// The matrix that brings a point of the world to where a solid texture is asked: moved by
/// "translate", turned by "rotate" about z, y and x in degrees, divided by "scale".
Matrix textureMatrix(const Rgb& translate, const Rgb& rotate, const Rgb& scale);

/// Writes "mapping" of a solid texture from "coordinates", "translate", "rotate" and "scale".
/// `offset` is added to the asked point. False if the placement collapses the texture to a point,
/// which a "scale" of 0 does.
bool writeSolidMapping(const Statement& statement, Translation* translation,
    PropertyText::Thing* texture, const Rgb& offset = Rgb { { 0, 0, 0 } });
/// True if a "scale" is 0 and nothing of the pattern is left.
bool isCollapsed(const Inputs& inputs);

/// A texture that lies on the surface by "mapping", "uscale", "vscale", "udelta" and "vdelta":
/// `write` makes the texture itself and its placement is given to it. The result is the texture to
/// use, which for placements that LuxCore lacks is another one around it.
class SurfaceMapping
{
public:
    SurfaceMapping(const Statement& statement, const TextureNames& textures);

    /// True for a plain placement by the mesh's coordinates.
    bool isUv() const { return m_kind == "uv"; }
    double uscale() const { return m_uscale; }
    double vscale() const { return m_vscale; }
    double udelta() const { return m_udelta; }
    double vdelta() const { return m_vdelta; }

    /// The placement of the texture itself.
    void write(PropertyText::Thing* texture) const;
    /// What to use in place of the texture that was written so.
    QByteArray wrapped(const QByteArray& texture, Translation* translation) const;

private:
    QByteArray sphereCoordinate(Translation* translation, const QByteArray& position) const;
    QByteArray turnCoordinate(Translation* translation) const;

    std::string m_kind;
    double m_uscale = 1;
    double m_vscale = 1;
    double m_udelta = 0;
    double m_vdelta = 0;
    Rgb m_v1;
    Rgb m_v2;
};

} // namespace lux
