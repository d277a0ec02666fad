// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzfacetmesh.h"
#include "dzwarning.h"
#include "scenechannel.h"

#include <QHash>
#include <QPointer>
#include <memory>
#include <vector>

class DzElement;
class DzMaterial;
class DzNode;
class DzScene;
class DzShape;

/// A property as it was read.
struct ChannelRecord {
    QString name;
    ChannelName address; ///< in animations
    ChannelPlaces places;
    ChannelState state;

    /// True for a member of the material itself, not of its list of channels.
    bool isNamed() const { return !address.isListed; }
};

/// A surface as it was read. Those of one entry, which has several groups, stand side by side.
struct SurfaceRecord {
    QPointer<DzMaterial> material;
    JsonIndex::Value instance = JsonIndex::none;
    JsonIndex::Value definition = JsonIndex::none; ///< in this document
    bool isShared = false;                         ///< other entries have the same definition
    SurfaceName name;                              ///< in animations
    std::vector<ChannelRecord> channels;
};

typedef std::vector<SurfaceRecord> SurfaceRecords;

/// The items of a material's, node's or definition's "extra"; `none` without.
JsonIndex::Value extraOf(const JsonIndex& index, JsonIndex::Value element);
/// The first item of this type in an element's "extra".
JsonIndex::Value extraItem(const JsonIndex& index, JsonIndex::Value element, const char* type);
extern const char* const channelsItemType;
extern const char* const dataItemType;

/// Reads a data item's tree; false when it is none.
bool readDataItem(const JsonIndex& index, JsonIndex::Value item, DzSettings* settings);

/// Makes nodes, shapes and materials from a document.
class DzSceneMaker
{
public:
    DzSceneMaker(const JsonIndex& index, DzWarningList* warnings);
    ~DzSceneMaker();

    /// Makes everything, apart from any scene. On failure false and getError().
    bool make();
    /// Puts what was made into a scene in place of what is there.
    void moveTo(DzScene* scene);
    QString getError() const { return m_error; }
    SurfaceRecords takeSurfaces() { return std::move(m_surfaces); }
    SceneKeys takeKeys() { return std::move(m_keys); }

private:
    typedef JsonIndex::Value Value;
    typedef QHash<QString, Value> Library;

    struct NodeEntry {
        DzNode* node;
        QString id;
        QString parent; ///< id, empty for none
        Value value;
    };
    struct ShapeEntry {
        DzShape* shape;
        int node;
    };

    void warn(Value value, const QString& text, const QString& remedy);
    Library readLibrary(const char* key);
    /// The entry that a reference into this document leads to; `none` when it leads elsewhere.
    Value definitionOf(const Library& library, Value referrer) const;

    void makeNodes();
    void makeNode(Value value);
    void makeShapes(Value node, int nodeIndex);
    void makeShape(Value geometry, int nodeIndex);
    void linkNodes();
    void cutCircles(std::vector<int>* parents);

    std::shared_ptr<const DzFacetMesh> meshOf(Value geometry, const QString& uvSet);

    bool makeMaterials();
    void countDefinitions(Value materials);
    QStringList surfaceNames(Value material) const;
    bool makeMaterials(Value value);
    bool makeMaterial(Value value, const QString& name);
    bool makeKeyedMaterials();
    bool makeKeyedMaterial(const QString& node, const QString& name);
    void nameSurface(SurfaceRecord* surface, int shape) const;
    bool countChannels(const SurfaceRecord& surface);
    void addMaterial(SurfaceRecord&& surface, int shape);
    void addKeyedProperties(SurfaceRecord* surface);
    void tellProblems(Value place, const QString& property, const ChannelProblems& problems);
    int shapeFor(Value material);
    int strayShape(const QString& id);
    bool readChannels(SurfaceRecord* surface);
    void collectNamed(Value material, bool isInstance, SurfaceRecord* surface);
    void collectListed(Value material, bool isInstance, SurfaceRecord* surface);
    void collect(Value entry, const QString& id, const ChannelName& address, bool isInstance,
        SurfaceRecord* surface);
    void addProperties(SurfaceRecord* surface);
    void readData(DzElement* element, Value value);

    const JsonIndex& m_index;
    DzWarningList* m_warnings;
    QString m_error;
    LayeredImages m_images;
    SceneKeys m_keys;
    Library m_nodeLibrary;
    Library m_geometryLibrary;
    Library m_uvLibrary;
    Library m_materialLibrary;
    std::vector<NodeEntry> m_nodes;
    QHash<QString, int> m_nodeIds;
    std::vector<ShapeEntry> m_shapes;
    QHash<QString, int> m_shapeIds;
    QHash<Value, std::shared_ptr<const DzFacetMesh>> m_meshes;
    QHash<QString, QString> m_uvSetOfGeometry; ///< of the first surface that names one
    QHash<Value, int> m_numUses;               ///< of a definition of a material
    QHash<QString, std::size_t> m_channelIds;  ///< of the surface that is being read
    SurfaceRecords m_surfaces;
    qint64 m_numChannels = 0;
};
