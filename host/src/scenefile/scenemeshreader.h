// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonindex.h"

#include <QHash>
#include <memory>
#include <vector>

class DzFacetMesh;
class DzWarningList;

/// Reads the meshes of a document. What cannot be used is left out with a warning; faces, vertices
/// and coordinates that are good keep their meaning.
class SceneMeshReader
{
public:
    typedef JsonIndex::Value Value;

    /// `uvLibrary` holds the sets of coordinates by their ids. Nothing is owned.
    SceneMeshReader(
        const JsonIndex& index, const QHash<QString, Value>& uvLibrary, DzWarningList* warnings);

    /// The mesh of an entry of the geometry_library. `uvSet` refers to the coordinates that are
    /// used where the mesh names none of its own.
    std::shared_ptr<DzFacetMesh> read(Value geometry, const QString& uvSet);

private:
    void warn(Value value, const QString& text, const QString& remedy);
    void readVertices(Value geometry, DzFacetMesh* mesh);
    void readSurfaceNames(Value geometry, DzFacetMesh* mesh);
    std::vector<int> readFacets(Value geometry, DzFacetMesh* mesh);
    void readUvs(Value uvSet, const std::vector<int>& facetOf, DzFacetMesh* mesh);

    const JsonIndex& m_index;
    const QHash<QString, Value>& m_uvLibrary;
    DzWarningList* m_warnings;
};
