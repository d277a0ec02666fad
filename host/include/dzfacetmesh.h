// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// A face: three or four corners, each with a vertex and a place on the texture.
struct DzFacet {
    int vertices[4] = { -1, -1, -1, -1 }; ///< the last is -1 in a triangle
    int uvs[4] = { -1, -1, -1, -1 };      ///< -1 where there is none
    int surface = -1;                     ///< index of the surface's name, -1 for none

    int getNumCorners() const { return vertices[3] < 0 ? 3 : 4; }
    bool isQuad() const { return vertices[3] >= 0; }
};

/// Faces with named surfaces. Every index in a face is one of the mesh's.
class DzFacetMesh
{
public:
    struct Vertex {
        float x, y, z; ///< centimetres, y up
    };
    struct Uv {
        float u, v;
    };

    int getNumVertices() const { return static_cast<int>(vertices.size()); }
    int getNumFacets() const { return static_cast<int>(facets.size()); }
    int getNumUvs() const { return static_cast<int>(uvs.size()); }
    int getNumSurfaces() const { return surfaces.size(); }
    QString getSurfaceName(int index) const { return surfaces.value(index); }
    bool isEmpty() const { return facets.empty() && vertices.empty(); }

    std::vector<Vertex> vertices;
    std::vector<Uv> uvs;
    std::vector<DzFacet> facets;
    QStringList surfaces;
};
