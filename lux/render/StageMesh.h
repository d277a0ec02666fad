// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <array>
#include <vector>

namespace lux {

/// Triangles with a normal and mesh coordinates at each corner point. Lists of equal length but for
/// `triangles`; normals and coordinates may be empty.
struct StageMesh {
    typedef std::array<float, 3> Point;
    typedef std::array<float, 2> Coordinate;

    std::vector<Point> points;
    std::vector<Point> normals;
    std::vector<Coordinate> coordinates;
    std::vector<std::array<int, 3>> triangles;
};

/// A ball of radius 1 at (0 0 1), 48 by 24 segments, u along the equator and v from the lowest
/// point up.
StageMesh ballMesh();
/// A cube of height 1.6 that stands on its face, a little turned; images stand upright on its
/// sides.
StageMesh cubeMesh();
/// An upright square of 2 by 2 that leans back a little.
StageMesh planeMesh();
/// A cloth that hangs in folds.
StageMesh clothMesh();
/// The triangles of an .obj file, brought to a height or width of 2 and put on the ground. On
/// failure false, with file, cause and what to do in `error`.
bool readStageMesh(const QString& path, StageMesh* mesh, QString* error);

/// Cuts each triangle into four, so many times, as long as there are not more than `maximum`.
StageMesh subdivided(const StageMesh& mesh, int times, std::size_t maximum = 600 * 1000);

} // namespace lux
