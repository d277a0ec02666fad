// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "StageMesh.h"

#include "dzfilewriter.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <map>
#include <sstream>
#include <tiny_obj_loader.h>

namespace lux {

namespace {

constexpr float pi = 3.14159265358979f;
constexpr qint64 maximumFileSize = 1024 * 1024 * 1024;

/// A grid of points over (0 1) by (0 1), each given by `place`, with smooth normals of the surface.
template <typename Place>
StageMesh gridMesh(int columns, int rows, Place place)
{
    StageMesh mesh;
    for (int row = 0; row <= rows; ++row) {
        for (int column = 0; column <= columns; ++column) {
            const float u = static_cast<float>(column) / static_cast<float>(columns);
            const float v = static_cast<float>(row) / static_cast<float>(rows);
            StageMesh::Point normal;
            mesh.points.push_back(place(u, v, &normal));
            mesh.normals.push_back(normal);
            mesh.coordinates.push_back({ { u, v } });
        }
    }
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            const int a = row * (columns + 1) + column;
            const int b = a + columns + 1;
            mesh.triangles.push_back({ { a, b, b + 1 } });
            mesh.triangles.push_back({ { a, b + 1, a + 1 } });
        }
    }
    return mesh;
}

StageMesh::Point normalized(const StageMesh::Point& point)
{
    const float length = std::sqrt(point[0] * point[0] + point[1] * point[1] + point[2] * point[2]);
    if (!(length > 0))
        return { { 0, 0, 1 } };
    return { { point[0] / length, point[1] / length, point[2] / length } };
}

StageMesh::Point crossed(const StageMesh::Point& a, const StageMesh::Point& b)
{
    return { { a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0] } };
}

StageMesh::Point between(const StageMesh::Point& a, const StageMesh::Point& b)
{
    return { { b[0] - a[0], b[1] - a[1], b[2] - a[2] } };
}

void append(StageMesh* mesh, const StageMesh& part)
{
    const int first = static_cast<int>(mesh->points.size());
    mesh->points.insert(mesh->points.end(), part.points.begin(), part.points.end());
    mesh->normals.insert(mesh->normals.end(), part.normals.begin(), part.normals.end());
    mesh->coordinates.insert(
        mesh->coordinates.end(), part.coordinates.begin(), part.coordinates.end());
    for (const auto& triangle : part.triangles)
        mesh->triangles.push_back(
            { { triangle[0] + first, triangle[1] + first, triangle[2] + first } });
}

/// To the middle of the ground, as large as the ball.
void fit(StageMesh* mesh)
{
    StageMesh::Point low = mesh->points.front();
    StageMesh::Point high = low;
    for (const StageMesh::Point& point : mesh->points) {
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }
    const float size = std::max({ high[0] - low[0], high[1] - low[1], high[2] - low[2] });
    const float scale = size > 0 ? 2 / size : 1;
    for (StageMesh::Point& point : mesh->points) {
        point[0] = (point[0] - (low[0] + high[0]) / 2) * scale;
        point[1] = (point[1] - (low[1] + high[1]) / 2) * scale;
        point[2] = (point[2] - low[2]) * scale;
    }
}

/// Normals of the faces where the file has none.
void addNormals(StageMesh* mesh)
{
    mesh->normals.assign(mesh->points.size(), { { 0, 0, 0 } });
    for (const auto& triangle : mesh->triangles) {
        const auto& a = mesh->points[static_cast<std::size_t>(triangle[0])];
        const auto& b = mesh->points[static_cast<std::size_t>(triangle[1])];
        const auto& c = mesh->points[static_cast<std::size_t>(triangle[2])];
        const StageMesh::Point normal = crossed(between(a, b), between(a, c));
        for (const int corner : triangle)
            for (std::size_t i = 0; i < 3; ++i)
                mesh->normals[static_cast<std::size_t>(corner)][i] += normal[i];
    }
    for (StageMesh::Point& normal : mesh->normals)
        normal = normalized(normal);
}

} // namespace

StageMesh ballMesh()
{
    StageMesh mesh = gridMesh(48, 24, [](float u, float v, StageMesh::Point* normal) {
        const float around = 2 * pi * u;
        const float down = pi * v;
        *normal = { { std::sin(down) * std::cos(around), std::sin(down) * std::sin(around),
            std::cos(down) } };
        return StageMesh::Point { { (*normal)[0], (*normal)[1], (*normal)[2] + 1 } };
    });
    for (StageMesh::Coordinate& coordinate : mesh.coordinates)
        coordinate[1] = 1 - coordinate[1];
    return mesh;
}

StageMesh cubeMesh()
{
    const float half = 0.8f;
    const float turn = 0.5f;
    StageMesh mesh;
    // Each face by its normal and the direction of v; u is what stands upright on both.
    const std::array<StageMesh::Point, 2> faces[] = { { { { { 0, -1, 0 } }, { { 0, 0, 1 } } } },
        { { { { 1, 0, 0 } }, { { 0, 0, 1 } } } }, { { { { 0, 1, 0 } }, { { 0, 0, 1 } } } },
        { { { { -1, 0, 0 } }, { { 0, 0, 1 } } } }, { { { { 0, 0, 1 } }, { { 0, 1, 0 } } } },
        { { { { 0, 0, -1 } }, { { 0, -1, 0 } } } } };
    const auto turned = [&](const StageMesh::Point& point) {
        return StageMesh::Point { { point[0] * std::cos(turn) - point[1] * std::sin(turn),
            point[0] * std::sin(turn) + point[1] * std::cos(turn), point[2] } };
    };
    for (const auto& face : faces) {
        const StageMesh::Point side = crossed(face[1], face[0]);
        append(&mesh, gridMesh(1, 1, [&](float u, float v, StageMesh::Point* normal) {
            *normal = turned(face[0]);
            StageMesh::Point point;
            for (std::size_t i = 0; i < 3; ++i)
                point[i] = half * (face[0][i] + (2 * u - 1) * side[i] + (1 - 2 * v) * face[1][i]);
            point = turned(point);
            point[2] += half;
            return point;
        }));
    }
    return mesh;
}

StageMesh planeMesh()
{
    const float lean = 0.2f;
    return gridMesh(1, 1, [&](float u, float v, StageMesh::Point* normal) {
        *normal = { { 0, -std::cos(lean), std::sin(lean) } };
        return StageMesh::Point { { 2 * u - 1, 2 * (1 - v) * std::sin(lean),
            2 * (1 - v) * std::cos(lean) + 0.01f } };
    });
}

StageMesh clothMesh()
{
    const auto place = [](float u, float v) {
        const float fold = 0.16f * (0.35f + v) * std::sin(u * 6 * pi + v);
        return StageMesh::Point { { 2.2f * u - 1.1f, 0.25f * v * v + fold - 0.2f,
            2 * (1 - v) + 0.02f } };
    };
    return gridMesh(96, 48, [&](float u, float v, StageMesh::Point* normal) {
        const float step = 1e-3f;
        const StageMesh::Point point = place(u, v);
        *normal = normalized(
            crossed(between(point, place(u, v + step)), between(point, place(u + step, v))));
        for (float& component : *normal)
            component = -component;
        return point;
    });
}

bool readStageMesh(const QString& path, StageMesh* mesh, QString* error)
{
    QByteArray text;
    if (!dzReadFile(path, maximumFileSize, &text, error))
        return false;
    tinyobj::ObjReader reader;
    tinyobj::ObjReaderConfig config;
    config.triangulate = true;
    if (!reader.ParseFromString(text.toStdString(), std::string(), config)) {
        *error = QCoreApplication::translate("LuxCore", "cannot read the mesh %1: %2")
                     .arg(path, QString::fromStdString(reader.Error()).simplified());
        return false;
    }
    const tinyobj::attrib_t& all = reader.GetAttrib();
    // A corner of the file is a point, a normal and a coordinate; equal corners are one point here.
    std::map<std::array<int, 3>, int> known;
    bool hasNormals = true;
    for (const tinyobj::shape_t& shape : reader.GetShapes()) {
        for (std::size_t i = 0; i + 2 < shape.mesh.indices.size(); i += 3) {
            std::array<int, 3> triangle;
            for (std::size_t corner = 0; corner < 3; ++corner) {
                const tinyobj::index_t& index = shape.mesh.indices[i + corner];
                const std::array<int, 3> key
                    = { { index.vertex_index, index.normal_index, index.texcoord_index } };
                const auto found = known.emplace(key, static_cast<int>(mesh->points.size()));
                triangle[corner] = found.first->second;
                if (!found.second)
                    continue;
                const auto vertex = static_cast<std::size_t>(index.vertex_index) * 3;
                // Up is y in most such files and z on the stage.
                mesh->points.push_back({ { all.vertices[vertex], -all.vertices[vertex + 2],
                    all.vertices[vertex + 1] } });
                hasNormals = hasNormals && index.normal_index >= 0;
                if (index.normal_index >= 0) {
                    const auto normal = static_cast<std::size_t>(index.normal_index) * 3;
                    mesh->normals.push_back({ { all.normals[normal], -all.normals[normal + 2],
                        all.normals[normal + 1] } });
                } else {
                    mesh->normals.push_back({ { 0, 0, 1 } });
                }
                const auto coordinate = static_cast<std::size_t>(index.texcoord_index) * 2;
                if (index.texcoord_index >= 0)
                    mesh->coordinates.push_back(
                        { { all.texcoords[coordinate], 1 - all.texcoords[coordinate + 1] } });
                else
                    mesh->coordinates.push_back({ { 0, 0 } });
            }
            mesh->triangles.push_back(triangle);
        }
    }
    if (mesh->triangles.empty()) {
        *error = QCoreApplication::translate(
            "LuxCore", "the mesh %1 has no faces: export it again with its faces")
                     .arg(path);
        return false;
    }
    fit(mesh);
    if (!hasNormals)
        addNormals(mesh);
    return true;
}

StageMesh subdivided(const StageMesh& mesh, int times, std::size_t maximum)
{
    StageMesh result = mesh;
    for (int i = 0; i < times && result.triangles.size() * 4 <= maximum; ++i) {
        StageMesh finer = result;
        finer.triangles.clear();
        std::map<std::pair<int, int>, int> middles;
        const auto middle = [&](int a, int b) {
            const auto key = std::minmax(a, b);
            const auto found = middles.emplace(
                std::make_pair(key.first, key.second), static_cast<int>(finer.points.size()));
            if (!found.second)
                return found.first->second;
            const auto first = static_cast<std::size_t>(a);
            const auto second = static_cast<std::size_t>(b);
            StageMesh::Point point, normal;
            for (std::size_t k = 0; k < 3; ++k) {
                point[k] = (finer.points[first][k] + finer.points[second][k]) / 2;
                normal[k] = finer.normals[first][k] + finer.normals[second][k];
            }
            finer.points.push_back(point);
            finer.normals.push_back(normalized(normal));
            finer.coordinates.push_back(
                { { (finer.coordinates[first][0] + finer.coordinates[second][0]) / 2,
                    (finer.coordinates[first][1] + finer.coordinates[second][1]) / 2 } });
            return found.first->second;
        };
        for (const auto& triangle : result.triangles) {
            const int ab = middle(triangle[0], triangle[1]);
            const int bc = middle(triangle[1], triangle[2]);
            const int ca = middle(triangle[2], triangle[0]);
            finer.triangles.push_back({ { triangle[0], ab, ca } });
            finer.triangles.push_back({ { ab, triangle[1], bc } });
            finer.triangles.push_back({ { ca, bc, triangle[2] } });
            finer.triangles.push_back({ { ab, bc, ca } });
        }
        result = std::move(finer);
    }
    return result;
}

} // namespace lux
