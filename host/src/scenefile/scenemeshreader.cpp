// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenemeshreader.h"

#include "dzfacetmesh.h"
#include "dzwarning.h"
#include "scenereference.h"

#include <QCoreApplication>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

const JsonIndex::Value none = JsonIndex::none;

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

float toFloat(double number)
{
    const double high = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::max(-high, std::min(high, number)));
}

/// The number as an index below `count`; -1 when it is none.
int toIndex(double number, int count)
{
    return number >= 0 && number < count && number == std::floor(number) ? static_cast<int>(number)
                                                                         : -1;
}

} // namespace

SceneMeshReader::SceneMeshReader(
    const JsonIndex& index, const QHash<QString, Value>& uvLibrary, DzWarningList* warnings)
    : m_index(index)
    , m_uvLibrary(uvLibrary)
    , m_warnings(warnings)
{
}

void SceneMeshReader::warn(Value value, const QString& warning, const QString& remedy)
{
    const QString place = m_warnings->hasRoom() ? m_index.place(value) : QString();
    m_warnings->add({ place, warning, remedy });
}

std::shared_ptr<DzFacetMesh> SceneMeshReader::read(Value geometry, const QString& uvSet)
{
    auto mesh = std::make_shared<DzFacetMesh>();
    readVertices(geometry, mesh.get());
    readSurfaceNames(geometry, mesh.get());
    const std::vector<int> facetOf = readFacets(geometry, mesh.get());
    const QString byDefault = m_index.string(m_index.find(geometry, "default_uv_set"));
    for (const QString& reference : { byDefault, uvSet }) {
        const Value set
            = isLocalReference(reference) ? m_uvLibrary.value(referencedId(reference), none) : none;
        if (set == none)
            continue;
        readUvs(set, facetOf, mesh.get());
        break;
    }
    return mesh;
}

void SceneMeshReader::readVertices(Value geometry, DzFacetMesh* mesh)
{
    const Value values = m_index.find(m_index.find(geometry, "vertices"), "values");
    if (!m_index.isArray(values))
        return;
    int numBad = 0;
    for (Value value = m_index.firstChild(values); value != none;
         value = m_index.nextSibling(value, values)) {
        double parts[3] = { 0, 0, 0 };
        // A bad vertex keeps its number, so that the faces still mean the others.
        if (m_index.numbers(value, parts, 3) != 3)
            ++numBad;
        mesh->vertices.push_back({ toFloat(parts[0]), toFloat(parts[1]), toFloat(parts[2]) });
    }
    mesh->vertices.shrink_to_fit();
    if (numBad > 0)
        warn(values, text("%1 vertices are not three numbers").arg(numBad),
            text("they are put at 0"));
}

void SceneMeshReader::readSurfaceNames(Value geometry, DzFacetMesh* mesh)
{
    const Value values = m_index.find(m_index.find(geometry, "polygon_material_groups"), "values");
    if (!m_index.isArray(values))
        return;
    for (Value value = m_index.firstChild(values); value != none;
         value = m_index.nextSibling(value, values))
        mesh->surfaces.append(m_index.string(value));
}

/// Returns, per polygon of the file, its face; -1 for one that was left out.
std::vector<int> SceneMeshReader::readFacets(Value geometry, DzFacetMesh* mesh)
{
    std::vector<int> facetOf;
    const Value values = m_index.find(m_index.find(geometry, "polylist"), "values");
    if (!m_index.isArray(values))
        return facetOf;
    const int numBefore = 2; // face group and material group stand before the corners
    for (Value value = m_index.firstChild(values); value != none;
         value = m_index.nextSibling(value, values)) {
        double numbers[6] = { 0, 0, 0, 0, 0, 0 };
        const int numCorners = m_index.numbers(value, numbers, 6) - numBefore;
        DzFacet facet;
        bool isUsable = numCorners == 3 || numCorners == 4;
        for (int i = 0; isUsable && i < numCorners; ++i) {
            facet.vertices[i] = toIndex(numbers[i + numBefore], mesh->getNumVertices());
            isUsable = facet.vertices[i] >= 0;
        }
        facet.surface = toIndex(numbers[1], mesh->getNumSurfaces());
        facetOf.push_back(isUsable ? mesh->getNumFacets() : -1);
        if (isUsable)
            mesh->facets.push_back(facet);
    }
    mesh->facets.shrink_to_fit();
    const int numBad = static_cast<int>(facetOf.size()) - mesh->getNumFacets();
    if (numBad > 0)
        warn(values, text("%1 faces do not have three or four corners that exist").arg(numBad),
            text("they are left out"));
    return facetOf;
}

void SceneMeshReader::readUvs(Value uvSet, const std::vector<int>& facetOf, DzFacetMesh* mesh)
{
    const Value values = m_index.find(m_index.find(uvSet, "uvs"), "values");
    if (!m_index.isArray(values))
        return;
    for (Value value = m_index.firstChild(values); value != none;
         value = m_index.nextSibling(value, values)) {
        double parts[2] = { 0, 0 };
        m_index.numbers(value, parts, 2);
        mesh->uvs.push_back({ toFloat(parts[0]), toFloat(parts[1]) });
    }
    mesh->uvs.shrink_to_fit();
    const int numUvs = mesh->getNumUvs();
    for (DzFacet& facet : mesh->facets)
        for (int i = 0; i < facet.getNumCorners(); ++i)
            facet.uvs[i] = facet.vertices[i] < numUvs ? facet.vertices[i] : -1;
    const Value exceptions = m_index.find(uvSet, "polygon_vertex_indices");
    if (!m_index.isArray(exceptions))
        return;
    int numBad = 0;
    for (Value value = m_index.firstChild(exceptions); value != none;
         value = m_index.nextSibling(value, exceptions)) {
        double parts[3] = { -1, -1, -1 };
        m_index.numbers(value, parts, 3);
        const int polygon = toIndex(parts[0], static_cast<int>(facetOf.size()));
        const int uv = toIndex(parts[2], numUvs);
        const int facetIndex = polygon < 0 ? -1 : facetOf[static_cast<std::size_t>(polygon)];
        bool isUsed = false;
        if (facetIndex >= 0 && uv >= 0) {
            DzFacet& facet = mesh->facets[static_cast<std::size_t>(facetIndex)];
            for (int i = 0; i < facet.getNumCorners(); ++i) {
                if (facet.vertices[i] != parts[1])
                    continue;
                facet.uvs[i] = uv;
                isUsed = true;
            }
        }
        numBad += isUsed ? 0 : 1;
    }
    if (numBad > 0)
        warn(exceptions,
            text("%1 entries do not name a corner and a coordinate that exist").arg(numBad),
            text("they are left out"));
}
