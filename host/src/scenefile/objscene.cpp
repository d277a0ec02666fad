// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "objscene.h"

#include "dzfacetmesh.h"
#include "dzfilewriter.h"
#include "jsonlayout.h"
#include "scenechannel.h"
#include "scenereader.h"

#include <QColor>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <cmath>
#include <istream>
#include <limits>
#include <streambuf>
#include <tiny_obj_loader.h>

namespace {

/// Vertices, coordinates and faces that one mesh may have of each.
const std::size_t mostElements = 20000000;
const qint64 largestMaterialFile = 64 << 20;

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

/// Lets a stream read bytes without copying them.
class ByteBuffer : public std::streambuf
{
public:
    explicit ByteBuffer(const QByteArray& data)
    {
        char* begin = const_cast<char*>(data.constData()); // a reading stream leaves them alone
        setg(begin, begin, begin + data.size());
    }
};

/// Reads the material files that an .obj names, from the folder that it is in.
class MaterialFiles : public tinyobj::MaterialReader
{
public:
    MaterialFiles(const QString& path, DzWarningList* warnings)
        : m_path(path)
        , m_warnings(warnings)
    {
    }

    bool operator()(const std::string& name, std::vector<tinyobj::material_t>* materials,
        std::map<std::string, int>* indices, std::string*, std::string*) override
    {
        const QString file
            = QFileInfo(m_path).dir().filePath(QFile::decodeName(name.c_str()).trimmed());
        if (!isBesideMesh(file)) {
            m_warnings->add({ QString(),
                text("the material file %1 is not a plain file beside the mesh or below").arg(file),
                text("it is not read; copy it there") });
            return false;
        }
        QByteArray data;
        QString error;
        if (!dzReadFile(file, largestMaterialFile, &data, &error)) {
            m_warnings->add({ QString(), error, QString() });
            return false;
        }
        ByteBuffer buffer(data);
        std::istream stream(&buffer);
        std::string warning;
        std::string problem;
        tinyobj::LoadMtl(indices, materials, &stream, &warning, &problem);
        m_materials = *materials;
        return true;
    }

    /// The material of this index, null when there is none.
    const tinyobj::material_t* find(int index) const
    {
        const bool isThere = index >= 0 && index < static_cast<int>(m_materials.size());
        return isThere ? &m_materials[static_cast<std::size_t>(index)] : nullptr;
    }

private:
    /// A mesh comes from anywhere: it must not make us read pipes, devices or others' files. A file
    /// that is not there is no danger and gets the usual message.
    bool isBesideMesh(const QString& file) const
    {
        const QFileInfo info(file);
        if (!info.exists() && !info.isSymLink())
            return true;
        const QString folder = QFileInfo(QFileInfo(m_path).absolutePath()).canonicalFilePath();
        return info.isFile() && info.canonicalFilePath().startsWith(folder + QLatin1Char('/'));
    }

    QString m_path;
    DzWarningList* m_warnings;
    std::vector<tinyobj::material_t> m_materials;
};

/// Receives the parser's events and makes a mesh of them. Faces with more corners than a mesh
/// takes become several.
class MeshBuilder
{
public:
    bool read(const QByteArray& obj, MaterialFiles* materials)
    {
        tinyobj::callback_t callbacks;
        callbacks.vertex_cb = [](void* self, float x, float y, float z, float) {
            static_cast<MeshBuilder*>(self)->addVertex(x, y, z);
        };
        callbacks.texcoord_cb = [](void* self, float u, float v, float) {
            static_cast<MeshBuilder*>(self)->addUv(u, v);
        };
        callbacks.index_cb = [](void* self, tinyobj::index_t* corners, int count) {
            static_cast<MeshBuilder*>(self)->addFace(corners, count);
        };
        callbacks.usemtl_cb = [](void* self, const char* name, int material) {
            static_cast<MeshBuilder*>(self)->useSurface(QString::fromUtf8(name), material);
        };
        ByteBuffer buffer(obj);
        std::istream stream(&buffer);
        std::string warning;
        std::string problem;
        return tinyobj::LoadObjWithCallback(stream, callbacks, this, materials, &warning, &problem);
    }

    DzFacetMesh mesh;
    std::vector<int> materialOf; ///< per surface, -1 for none
    int numBadFaces = 0;
    int numBadVertices = 0;
    bool isTooLarge = false;

private:
    static float finite(float number) { return std::isfinite(number) ? number : 0; }
    bool hasRoom(std::size_t size)
    {
        isTooLarge = isTooLarge || size >= mostElements;
        return !isTooLarge;
    }
    void addVertex(float x, float y, float z)
    {
        if (!std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
            ++numBadVertices;
        if (hasRoom(mesh.vertices.size()))
            mesh.vertices.push_back({ finite(x), finite(y), finite(z) });
    }
    void addUv(float u, float v)
    {
        if (hasRoom(mesh.uvs.size()))
            mesh.uvs.push_back({ finite(u), finite(v) });
    }
    void useSurface(const QString& name, int material)
    {
        const QString surface
            = name.trimmed().isEmpty() ? QStringLiteral("default") : name.trimmed();
        const auto known = m_surfaceIndex.constFind(surface);
        if (known != m_surfaceIndex.constEnd()) {
            m_surface = known.value();
            return;
        }
        m_surface = mesh.surfaces.size();
        m_surfaceIndex.insert(surface, m_surface);
        mesh.surfaces.append(surface);
        materialOf.push_back(material);
    }
    /// The file counts from 1, and backwards from -1 for the last one so far; 0 stands for none.
    static int resolved(int number, std::size_t count)
    {
        const qint64 size = static_cast<qint64>(count);
        const qint64 index = number > 0 ? qint64(number) - 1 : size + number;
        return number != 0 && index >= 0 && index < size ? static_cast<int>(index) : -1;
    }
    void addFace(const tinyobj::index_t* corners, int count)
    {
        bool isUsable = count >= 3;
        for (int i = 0; i < count && isUsable; ++i)
            isUsable = resolved(corners[i].vertex_index, mesh.vertices.size()) >= 0;
        if (!isUsable) {
            ++numBadFaces;
            return;
        }
        if (m_surface < 0)
            useSurface(QString(), -1);
        if (count <= 4)
            addFacet(corners, 0, count - 1);
        else
            for (int last = 2; last < count; ++last)
                addFacet(corners, last - 2, last);
    }
    /// A facet of the first corner and those behind `before` up to `last`.
    void addFacet(const tinyobj::index_t* corners, int before, int last)
    {
        DzFacet facet;
        facet.surface = m_surface;
        setCorner(&facet, 0, corners[0]);
        for (int i = before + 1; i <= last; ++i)
            setCorner(&facet, i - before, corners[i]);
        if (hasRoom(mesh.facets.size()))
            mesh.facets.push_back(facet);
    }
    void setCorner(DzFacet* facet, int corner, const tinyobj::index_t& index) const
    {
        facet->vertices[corner] = resolved(index.vertex_index, mesh.vertices.size());
        facet->uvs[corner] = resolved(index.texcoord_index, mesh.uvs.size());
    }

    QHash<QString, int> m_surfaceIndex;
    int m_surface = -1;
};

// The document ------------------------------------------------------------------------------

JsonPiece stringPiece(const QString& value)
{
    return JsonPiece::token(jsonStringToken(value));
}

QByteArray referenceToken(const QString& id)
{
    return "\"#" + id.toUtf8().toPercentEncoding(QByteArray(), "~") + '"';
}

/// Writes the document. Lists of numbers are too many for pieces: they are written as they come.
class ObjDocument
{
public:
    ObjDocument(const QString& path, const MeshBuilder& builder, const MaterialFiles& materials)
        : m_path(path)
        , m_mesh(builder.mesh)
        , m_materialOf(builder.materialOf)
        , m_materials(materials)
        , m_base(plainId(QFileInfo(path).completeBaseName()))
        , m_geometry(newId(m_base))
        , m_uvs(newId(QStringLiteral("UVs")))
        , m_geometryInstance(newId(m_base))
        , m_node(newId(m_base))
        , m_nodeInstance(newId(m_base))
    {
        for (const QString& surface : m_mesh.surfaces)
            m_definitions.append(newId(plainId(surface)));
        for (const QString& surface : m_mesh.surfaces)
            m_instances.append(newId(plainId(surface)));
    }

    QByteArray write()
    {
        m_text = "{\n\t\"file_version\" : \"0.6.0.0\",\n\t\"asset_info\" : ";
        m_text += m_style.write(assetInfo(), "\t");
        writeGeometry();
        writeList("node_library", { nodeDefinition() });
        writeUvSet();
        std::vector<JsonPiece> definitions;
        for (int i = 0; i < m_mesh.getNumSurfaces(); ++i)
            definitions.push_back(materialDefinition(i));
        writeList("material_library", definitions);
        m_text += ",\n\t\"scene\" : " + m_style.write(scene(), "\t") + "\n}";
        return m_text;
    }

private:
    static QString plainId(const QString& name)
    {
        QString id = name;
        id.replace(QLatin1Char('#'), QLatin1Char('_'));
        return id.isEmpty() ? QStringLiteral("mesh") : id;
    }
    /// An id that no other entry has.
    QString newId(const QString& name)
    {
        QString id = name;
        int& number = m_nextNumber[name];
        while (m_ids.contains(id))
            id = name + QLatin1Char('-') + QString::number(++number);
        m_ids.insert(id);
        return id;
    }

    JsonPiece assetInfo() const
    {
        const QDateTime modified = QFileInfo(m_path).lastModified();
        JsonPiece contributor = JsonPiece::object();
        for (const char* key : { "author", "email", "website" })
            contributor.add(key, QByteArrayLiteral("\"\""));
        JsonPiece info = JsonPiece::object();
        info.add(
            "id", stringPiece(QLatin1Char('/') + imageReference(m_base + QLatin1String(".duf"))));
        info.add("type", QByteArrayLiteral("\"scene\""));
        info.add("contributor", contributor);
        info.add("revision", QByteArrayLiteral("\"1.0\""));
        info.add("modified",
            stringPiece(modified.toUTC().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ssZ"))));
        return info;
    }
    void writeList(const char* key, const std::vector<JsonPiece>& entries)
    {
        JsonPiece list = JsonPiece::array();
        for (const JsonPiece& entry : entries)
            list.addItem(entry);
        m_text += ",\n\t\"" + QByteArray(key) + "\" : " + m_style.write(list, "\t");
    }
    void beginValues(const char* key, int count)
    {
        m_text += "\t\t\t\"" + QByteArray(key) + "\" : {\n\t\t\t\t\"count\" : "
            + QByteArray::number(count) + ",\n\t\t\t\t\"values\" : [";
        m_isFirst = true;
    }
    void addValue(const QByteArray& value, const char* indent)
    {
        m_text += m_isFirst ? "\n" : ",\n";
        m_text += indent;
        m_text += value;
        m_isFirst = false;
    }
    void endValues() { m_text += "\n\t\t\t\t]\n\t\t\t},\n"; }
    void addName(const QString& name) { addValue(jsonStringToken(name), "\t\t\t\t\t"); }

    void writeGeometry()
    {
        m_text += ",\n\t\"geometry_library\" : [\n\t\t{\n\t\t\t\"id\" : "
            + jsonStringToken(m_geometry) + ",\n\t\t\t\"name\" : " + jsonStringToken(m_base)
            + ",\n\t\t\t\"type\" : \"polygon_mesh\",\n";
        beginValues("vertices", m_mesh.getNumVertices());
        for (const DzFacetMesh::Vertex& vertex : m_mesh.vertices)
            addValue(
                "[ " + number(vertex.x) + ", " + number(vertex.y) + ", " + number(vertex.z) + " ]",
                "\t\t\t\t\t");
        endValues();
        beginValues("polygon_groups", 1);
        addName(m_base);
        endValues();
        beginValues("polygon_material_groups", m_mesh.getNumSurfaces());
        for (const QString& surface : m_mesh.surfaces)
            addName(surface);
        endValues();
        writeFacets();
        if (hasUvs())
            m_text += "\t\t\t\"default_uv_set\" : " + referenceToken(m_uvs) + ",\n";
        m_text += "\t\t\t\"extra\" : [\n\t\t\t]\n\t\t}\n\t]";
    }
    void writeFacets()
    {
        beginValues("polylist", m_mesh.getNumFacets());
        for (const DzFacet& facet : m_mesh.facets) {
            QByteArray line = "[ 0, " + QByteArray::number(facet.surface);
            for (int i = 0; i < facet.getNumCorners(); ++i)
                line += ", " + QByteArray::number(facet.vertices[i]);
            addValue(line + " ]", "\t\t\t\t\t");
        }
        endValues();
    }
    bool hasUvs() const { return !m_mesh.uvs.empty(); }

    /// The host has a coordinate for each vertex, and others only where a corner differs from it.
    void writeUvSet()
    {
        if (!hasUvs())
            return;
        std::vector<int> uvOf(m_mesh.vertices.size(), -1);
        std::vector<int> extra;
        QHash<QPair<int, int>, int> known;
        QByteArray exceptions;
        for (int polygon = 0; polygon < m_mesh.getNumFacets(); ++polygon) {
            const DzFacet& facet = m_mesh.facets[static_cast<std::size_t>(polygon)];
            for (int i = 0; i < facet.getNumCorners(); ++i)
                placeUv(
                    polygon, facet.vertices[i], facet.uvs[i], &uvOf, &extra, &known, &exceptions);
        }
        m_text += ",\n\t\"uv_set_library\" : [\n\t\t{\n\t\t\t\"id\" : " + jsonStringToken(m_uvs)
            + ",\n\t\t\t\"name\" : \"UVs\",\n\t\t\t\"label\" : \"UVs\",\n\t\t\t\"vertex_count\" : "
            + QByteArray::number(m_mesh.getNumVertices()) + ",\n";
        beginValues("uvs", static_cast<int>(uvOf.size() + extra.size()));
        for (const std::vector<int>* list : { &uvOf, &extra })
            for (const int uv : *list)
                addValue(uvText(uv), "\t\t\t\t\t");
        endValues();
        m_text += "\t\t\t\"polygon_vertex_indices\" : [" + exceptions + "\n\t\t\t]\n\t\t}\n\t]";
    }
    void placeUv(int polygon, int vertex, int uv, std::vector<int>* uvOf, std::vector<int>* extra,
        QHash<QPair<int, int>, int>* known, QByteArray* exceptions) const
    {
        int& first = (*uvOf)[static_cast<std::size_t>(vertex)];
        if (uv < 0 || first == uv)
            return;
        if (first < 0) {
            first = uv;
            return;
        }
        const QPair<int, int> corner(vertex, uv);
        if (!known->contains(corner)) {
            known->insert(corner, m_mesh.getNumVertices() + static_cast<int>(extra->size()));
            extra->push_back(uv);
        }
        *exceptions += (exceptions->isEmpty() ? "\n\t\t\t\t[ " : ",\n\t\t\t\t[ ")
            + QByteArray::number(polygon) + ", " + QByteArray::number(vertex) + ", "
            + QByteArray::number(known->value(corner)) + " ]";
    }
    QByteArray uvText(int uv) const
    {
        if (uv < 0)
            return QByteArrayLiteral("[ 0, 0 ]");
        const DzFacetMesh::Uv& place = m_mesh.uvs[static_cast<std::size_t>(uv)];
        return "[ " + number(place.u) + ", " + number(place.v) + " ]";
    }
    static QByteArray number(float value) { return jsonRoundedToken(static_cast<double>(value)); }

    JsonPiece nodeDefinition() const
    {
        JsonPiece node = JsonPiece::object();
        node.add("id", stringPiece(m_node));
        node.add("name", stringPiece(m_base));
        node.add("type", QByteArrayLiteral("\"node\""));
        node.add("label", stringPiece(m_base));
        return node;
    }
    QString mapPath(const std::string& name) const
    {
        if (name.empty())
            return QString();
        const QString file
            = QString::fromStdString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
        return QDir::cleanPath(QFileInfo(m_path).dir().filePath(file));
    }
    static QRgb colorOf(const tinyobj::material_t* material)
    {
        const auto byte = [](float part) {
            const float steps = 255;
            return part > 0 ? static_cast<int>(std::lround(std::min(part, 1.0f) * steps)) : 0;
        };
        return material ? qRgb(byte(material->diffuse[0]), byte(material->diffuse[1]),
                   byte(material->diffuse[2]))
                        : qRgb(255, 255, 255);
    }
    ChannelState colorState(int surface) const
    {
        const tinyobj::material_t* material
            = m_materials.find(m_materialOf[static_cast<std::size_t>(surface)]);
        ChannelState state;
        state.type = ChannelState::Color;
        state.label = QStringLiteral("Diffuse Color");
        state.path = QStringLiteral("/Base");
        state.mappable = true;
        state.value = state.defaultValue = static_cast<int>(colorOf(material));
        state.map = material ? mapPath(material->diffuse_texname) : QString();
        return state;
    }
    ChannelState opacityState(int surface) const
    {
        const tinyobj::material_t* material
            = m_materials.find(m_materialOf[static_cast<std::size_t>(surface)]);
        ChannelState state;
        state.type = ChannelState::Float;
        state.label = QStringLiteral("Opacity Strength");
        state.path = QStringLiteral("/Base");
        state.mappable = true;
        state.clamped = true;
        state.max = 1;
        state.step = 0.01;
        state.value = state.defaultValue = material ? static_cast<double>(material->dissolve) : 1;
        state.map = material ? mapPath(material->alpha_texname) : QString();
        return state;
    }
    JsonPiece materialDefinition(int surface) const
    {
        JsonPiece channels = JsonPiece::array();
        channels.addItem(
            fullChannelEntry(QStringLiteral("Opacity Strength"), opacityState(surface), false));
        JsonPiece item = JsonPiece::object();
        item.add("type", stringPiece(QLatin1String(channelsItemType)));
        item.add("channels", channels);
        JsonPiece extra = JsonPiece::array();
        extra.addItem(item);
        JsonPiece material = JsonPiece::object();
        material.add("id", stringPiece(m_definitions.at(surface)));
        material.add("diffuse", colorEntry(surface, true));
        material.add("extra", extra);
        return material;
    }
    /// The colour is a member of the material, whose id and name differ.
    JsonPiece colorEntry(int surface, bool isFull) const
    {
        const ChannelState state = colorState(surface);
        JsonPiece channel = JsonPiece::object();
        channel.add("id", QByteArrayLiteral("\"diffuse\""));
        channel.add("type", QByteArrayLiteral("\"color\""));
        channel.add("name", QByteArrayLiteral("\"Diffuse Color\""));
        for (const ChannelMember& member : channelMembers(state)) {
            const bool isMap = qstrcmp(member.key, "image_file") == 0;
            const bool isValue
                = qstrcmp(member.key, "value") == 0 || qstrcmp(member.key, "current_value") == 0;
            if (!member.token.isEmpty() && (isFull ? !isMap : isMap || isValue))
                channel.add(member.key, member.token);
        }
        JsonPiece entry = JsonPiece::object();
        entry.add("channel", channel);
        if (isFull)
            entry.add("group", stringPiece(state.path));
        return entry;
    }
    JsonPiece scene() const
    {
        JsonPiece geometry = JsonPiece::object();
        geometry.add("id", stringPiece(m_geometryInstance));
        geometry.add("url", referenceToken(m_geometry));
        geometry.add("name", stringPiece(m_base));
        geometry.add("label", QByteArrayLiteral("\"shape\""));
        geometry.add("type", QByteArrayLiteral("\"polygon_mesh\""));
        JsonPiece geometries = JsonPiece::array();
        geometries.addItem(geometry);
        JsonPiece node = JsonPiece::object();
        node.add("id", stringPiece(m_nodeInstance));
        node.add("url", referenceToken(m_node));
        node.add("name", stringPiece(m_base));
        node.add("label", stringPiece(m_base));
        node.add("geometries", geometries);
        JsonPiece nodes = JsonPiece::array();
        nodes.addItem(node);
        JsonPiece materials = JsonPiece::array();
        for (int i = 0; i < m_mesh.getNumSurfaces(); ++i)
            materials.addItem(materialInstance(i));
        JsonPiece scene = JsonPiece::object();
        scene.add("nodes", nodes);
        scene.add("materials", materials);
        return scene;
    }
    JsonPiece materialInstance(int surface) const
    {
        JsonPiece groups = JsonPiece::array();
        groups.addItem(stringPiece(m_mesh.surfaces.at(surface)));
        JsonPiece material = JsonPiece::object();
        material.add("id", stringPiece(m_instances.at(surface)));
        material.add("url", referenceToken(m_definitions.at(surface)));
        material.add("geometry", referenceToken(m_geometryInstance));
        material.add("groups", groups);
        material.add("diffuse", colorEntry(surface, false));
        if (hasUvs())
            material.add("uv_set", referenceToken(m_uvs));
        const ChannelState opacity = opacityState(surface);
        if (opacity.map.isEmpty())
            return material;
        JsonPiece channels = JsonPiece::array();
        channels.addItem(instanceChannelEntry("\"Opacity Strength\"", "\"float\"", opacity));
        JsonPiece item = JsonPiece::object();
        item.add("type", stringPiece(QLatin1String(channelsItemType)));
        item.add("channels", channels);
        JsonPiece extra = JsonPiece::array();
        extra.addItem(item);
        material.add("extra", extra);
        return material;
    }

    QString m_path;
    const DzFacetMesh& m_mesh;
    const std::vector<int>& m_materialOf;
    const MaterialFiles& m_materials;
    JsonStyle m_style;
    QHash<QString, int> m_nextNumber;
    QSet<QString> m_ids;
    QString m_base;
    QString m_geometry;
    QString m_uvs;
    QString m_geometryInstance;
    QString m_node;
    QString m_nodeInstance;
    QStringList m_definitions;
    QStringList m_instances;
    QByteArray m_text;
    bool m_isFirst = true;
};

} // namespace

bool sceneFromObj(const QString& path, const QByteArray& obj, QByteArray* document,
    DzWarningList* warnings, QString* error)
{
    MaterialFiles materials(path, warnings);
    MeshBuilder builder;
    if (!builder.read(obj, &materials) || builder.isTooLarge) {
        *error = text("its mesh is larger than a scene can be");
        return false;
    }
    if (builder.mesh.isEmpty()) {
        *error = text("there is no mesh in it");
        return false;
    }
    if (builder.numBadFaces > 0)
        warnings->add({ QString(),
            text("%1 faces do not have three corners that exist").arg(builder.numBadFaces),
            text("they are left out") });
    if (builder.numBadVertices > 0)
        warnings->add({ QString(), text("%1 vertices are not numbers").arg(builder.numBadVertices),
            text("they are put at 0") });
    *document = ObjDocument(path, builder, materials).write();
    return true;
}
