// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenereader.h"

#include "dzdefaultmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"
#include "scenemeshreader.h"
#include "settingsjson.h"

#include <QCoreApplication>
#include <QPair>
#include <QSet>
#include <algorithm>

namespace {

const JsonIndex::Value none = JsonIndex::none;

/// Properties that a document of no size may have; each further one takes this many bytes of it.
/// A definition that many surfaces share is read for each of them.
const qint64 freeChannels = 1000000;
const qint64 bytesPerChannel = 100;

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

} // namespace

const char* const channelsItemType = "studio_material_channels";
const char* const dataItemType = "studio/element_data/simple_data";

JsonIndex::Value extraOf(const JsonIndex& index, JsonIndex::Value element)
{
    const JsonIndex::Value extra = index.find(element, "extra");
    return index.isArray(extra) ? extra : none;
}

JsonIndex::Value extraItem(const JsonIndex& index, JsonIndex::Value element, const char* type)
{
    const JsonIndex::Value extra = extraOf(index, element);
    for (JsonIndex::Value item = index.firstChild(extra); item != none;
         item = index.nextSibling(item, extra))
        if (index.string(index.find(item, "type")) == QLatin1String(type))
            return item;
    return none;
}

bool readDataItem(const JsonIndex& index, JsonIndex::Value item, DzSettings* settings)
{
    const JsonIndex::Value tree = index.find(item, "settings");
    return index.isObject(tree) && settingsFromJson(index.raw(tree), settings, nullptr);
}

DzSceneMaker::DzSceneMaker(const JsonIndex& index, DzWarningList* warnings)
    : m_index(index)
    , m_warnings(warnings)
    , m_images(index)
{
}

DzSceneMaker::~DzSceneMaker()
{
    for (const NodeEntry& entry : m_nodes)
        if (!entry.node->getNodeParent())
            delete entry.node;
}

void DzSceneMaker::warn(Value value, const QString& warning, const QString& remedy)
{
    const QString place = m_warnings->hasRoom() ? m_index.place(value) : QString();
    m_warnings->add({ place, warning, remedy });
}

bool DzSceneMaker::make()
{
    const DzUndoStackLock lock;
    m_nodeLibrary = readLibrary("node_library");
    m_geometryLibrary = readLibrary("geometry_library");
    m_uvLibrary = readLibrary("uv_set_library");
    m_materialLibrary = readLibrary("material_library");
    m_keys.read(m_index);
    makeNodes();
    linkNodes();
    return makeMaterials();
}

DzSceneMaker::Library DzSceneMaker::readLibrary(const char* key)
{
    Library library;
    const Value list = m_index.find(m_index.root(), key);
    if (!m_index.isArray(list))
        return library;
    for (Value entry = m_index.firstChild(list); entry != none;
         entry = m_index.nextSibling(entry, list)) {
        const QString id = m_index.string(m_index.find(entry, "id"));
        if (id.isEmpty())
            warn(entry, text("an entry has no id"), text("nothing can refer to it"));
        else if (library.contains(id))
            warn(entry, text("the id \"%1\" appears twice").arg(id),
                text("the first entry is used"));
        else
            library.insert(id, entry);
    }
    return library;
}

DzSceneMaker::Value DzSceneMaker::definitionOf(const Library& library, Value referrer) const
{
    const QString url = m_index.string(m_index.find(referrer, "url"));
    return isLocalReference(url) ? library.value(referencedId(url), none) : none;
}

// Nodes -------------------------------------------------------------------------------------

void DzSceneMaker::makeNodes()
{
    const Value scene = m_index.find(m_index.root(), "scene");
    const Value nodes = m_index.find(scene, "nodes");
    if (!m_index.isArray(nodes))
        return;
    for (Value node = m_index.firstChild(nodes); node != none;
         node = m_index.nextSibling(node, nodes)) {
        if (m_index.isObject(node))
            makeNode(node);
        else
            warn(node, text("a node is not an object"), text("it is left out"));
    }
}

void DzSceneMaker::makeNode(Value value)
{
    const Value definition = definitionOf(m_nodeLibrary, value);
    const auto member = [&](const char* key) {
        const QString own = m_index.string(m_index.find(value, key));
        return own.isEmpty() ? m_index.string(m_index.find(definition, key)) : own;
    };
    const QString id = m_index.string(m_index.find(value, "id"));
    const QString name = member("name");
    auto* node = new DzNode(name.isEmpty() ? id : name);
    const QString label = member("label");
    node->setLabel(label.isEmpty() ? node->getName() : label);
    const int nodeIndex = static_cast<int>(m_nodes.size());
    const QString parent = m_index.string(m_index.find(value, "parent"));
    m_nodes.push_back(
        { node, id, isLocalReference(parent) ? referencedId(parent) : QString(), value });
    if (m_nodeIds.contains(id))
        warn(value, text("the id \"%1\" appears twice").arg(id), text("the first node is used"));
    else
        m_nodeIds.insert(id, nodeIndex);
    readData(node, definition);
    readData(node, value);
    makeShapes(value, nodeIndex);
}

void DzSceneMaker::linkNodes()
{
    std::vector<int> parents;
    for (const NodeEntry& entry : m_nodes) {
        const int parent = entry.parent.isEmpty() ? -1 : m_nodeIds.value(entry.parent, -1);
        if (parent < 0 && !entry.parent.isEmpty())
            warn(entry.value, text("the parent \"%1\" is not in the file").arg(entry.parent),
                text("the node stands alone"));
        parents.push_back(parent);
    }
    cutCircles(&parents);
    for (std::size_t i = 0; i < m_nodes.size(); ++i)
        if (parents[i] >= 0)
            m_nodes[static_cast<std::size_t>(parents[i])].node->attachChild(m_nodes[i].node);
}

/// Walks up from every node that was not reached yet: whoever meets its own walk closes a circle.
void DzSceneMaker::cutCircles(std::vector<int>* parents)
{
    std::vector<int> walkOf(parents->size(), -1);
    for (int first = 0; first < static_cast<int>(parents->size()); ++first) {
        int node = first;
        while (node >= 0 && walkOf[static_cast<std::size_t>(node)] < 0) {
            walkOf[static_cast<std::size_t>(node)] = first;
            int& parent = (*parents)[static_cast<std::size_t>(node)];
            if (parent >= 0 && walkOf[static_cast<std::size_t>(parent)] == first) {
                const NodeEntry& entry = m_nodes[static_cast<std::size_t>(node)];
                warn(entry.value, text("the parents of \"%1\" form a loop").arg(entry.id),
                    text("the node stands alone"));
                parent = -1;
            }
            node = parent;
        }
    }
}

void DzSceneMaker::makeShapes(Value node, int nodeIndex)
{
    const Value geometries = m_index.find(node, "geometries");
    if (!m_index.isArray(geometries))
        return;
    for (Value geometry = m_index.firstChild(geometries); geometry != none;
         geometry = m_index.nextSibling(geometry, geometries))
        if (m_index.isObject(geometry))
            makeShape(geometry, nodeIndex);
}

void DzSceneMaker::makeShape(Value geometry, int nodeIndex)
{
    const QString url = m_index.string(m_index.find(geometry, "url"));
    QString id = m_index.string(m_index.find(geometry, "id"));
    if (id.isEmpty())
        id = referencedId(url);
    auto* shape = new DzShape(id);
    const QString label = m_index.string(m_index.find(geometry, "label"));
    shape->setLabel(label.isEmpty() ? id : label);
    shape->setMeshReference(url);
    DzNode* node = m_nodes[static_cast<std::size_t>(nodeIndex)].node;
    if (!node->getObject())
        node->setObject(new DzObject(node->getName()));
    node->getObject()->addShape(shape);
    if (m_shapeIds.contains(id))
        warn(geometry, text("the id \"%1\" appears twice").arg(id), text("the first mesh is used"));
    else
        m_shapeIds.insert(id, static_cast<int>(m_shapes.size()));
    m_shapes.push_back({ shape, nodeIndex });
}

// Meshes ------------------------------------------------------------------------------------

std::shared_ptr<const DzFacetMesh> DzSceneMaker::meshOf(Value geometry, const QString& uvSet)
{
    std::shared_ptr<const DzFacetMesh>& mesh = m_meshes[geometry];
    if (!mesh)
        mesh = SceneMeshReader(m_index, m_uvLibrary, m_warnings).read(geometry, uvSet);
    return mesh;
}

// Materials ---------------------------------------------------------------------------------

bool DzSceneMaker::makeMaterials()
{
    const Value scene = m_index.find(m_index.root(), "scene");
    const Value materials = m_index.find(scene, "materials");
    if (m_index.isArray(materials)) {
        countDefinitions(materials);
        for (Value material = m_index.firstChild(materials); material != none;
             material = m_index.nextSibling(material, materials)) {
            if (!m_index.isObject(material))
                warn(material, text("a surface is not an object"), text("it is left out"));
            else if (!makeMaterials(material))
                return false;
        }
    }
    if (m_surfaces.empty() && !makeKeyedMaterials())
        return false;
    for (const ShapeEntry& entry : m_shapes) {
        const QString url = entry.shape->getMeshReference();
        const Value geometry
            = isLocalReference(url) ? m_geometryLibrary.value(referencedId(url), none) : none;
        if (geometry != none)
            entry.shape->setMesh(meshOf(geometry, m_uvSetOfGeometry.value(entry.shape->getName())));
    }
    return true;
}

void DzSceneMaker::countDefinitions(Value materials)
{
    for (Value material = m_index.firstChild(materials); material != none;
         material = m_index.nextSibling(material, materials))
        ++m_numUses[definitionOf(m_materialLibrary, material)];
}

/// The names of an entry's surfaces, each once.
QStringList DzSceneMaker::surfaceNames(Value material) const
{
    const Value groups = m_index.find(material, "groups");
    const Value values = m_index.isArray(groups) ? groups : m_index.find(groups, "values");
    QStringList names;
    for (Value group = m_index.isArray(values) ? m_index.firstChild(values) : none; group != none;
         group = m_index.nextSibling(group, values))
        names.append(m_index.string(group));
    names.removeAll(QString());
    names.removeDuplicates();
    if (!names.isEmpty())
        return names;
    const QString id = m_index.string(m_index.find(material, "id"));
    return { id.isEmpty() ? referencedId(m_index.string(m_index.find(material, "url"))) : id };
}

bool DzSceneMaker::makeMaterials(Value value)
{
    const QStringList names = surfaceNames(value);
    return std::all_of(
        names.begin(), names.end(), [&](const QString& name) { return makeMaterial(value, name); });
}

bool DzSceneMaker::makeMaterial(Value value, const QString& name)
{
    SurfaceRecord surface;
    surface.instance = value;
    surface.definition = definitionOf(m_materialLibrary, value);
    surface.isShared = surface.definition != none && m_numUses.value(surface.definition) > 1;
    DzDefaultMaterial* material = DzDefaultMaterial::createBare(name);
    const DzMaterialPtr share(material);
    surface.material = material;
    const QString label = m_index.string(m_index.find(surface.definition, "label"));
    material->setLabel(label.isEmpty() ? name : label);
    const Value kind = m_index.firstChild(extraOf(m_index, value));
    const QString type = m_index.string(m_index.find(kind, "type"));
    if (type.startsWith(QLatin1String("studio/material/")))
        material->setMaterialName(type.section(QLatin1Char('/'), -1));
    const int shape = shapeFor(value);
    nameSurface(&surface, shape);
    surface.name.isAnywhere = !isLocalReference(m_index.string(m_index.find(value, "geometry")));
    if (!readChannels(&surface))
        return false;
    readData(material, surface.definition);
    readData(material, value);
    addMaterial(std::move(surface), shape);
    return true;
}

/// Notes how animations name a surface.
void DzSceneMaker::nameSurface(SurfaceRecord* surface, int shape) const
{
    const int nodeIndex = m_shapes[static_cast<std::size_t>(shape)].node;
    const NodeEntry& node = m_nodes[static_cast<std::size_t>(nodeIndex)];
    surface->name = { node.id, node.node->getName(), surface->material->getName(), false };
}

void DzSceneMaker::addMaterial(SurfaceRecord&& surface, int shape)
{
    m_shapes[static_cast<std::size_t>(shape)].shape->addMaterial(surface.material);
    m_surfaces.push_back(std::move(surface));
}

/// A preset may hold nothing of its surfaces but values.
bool DzSceneMaker::makeKeyedMaterials()
{
    QSet<QPair<QString, QString>> known;
    std::vector<QPair<QString, QString>> places;
    bool isAnySurface = false;
    for (const SceneKeys::Entry& entry : m_keys.entries()) {
        const QPair<QString, QString> place(entry.node, entry.surface);
        isAnySurface = isAnySurface || entry.surface.isEmpty();
        if (entry.surface.isEmpty() || known.contains(place))
            continue;
        known.insert(place);
        places.push_back(place);
    }
    if (places.empty() && isAnySurface)
        places.emplace_back(QString(), QString());
    return std::all_of(places.begin(), places.end(),
        [this](const auto& place) { return makeKeyedMaterial(place.first, place.second); });
}

bool DzSceneMaker::makeKeyedMaterial(const QString& node, const QString& name)
{
    const DzMaterialPtr material(
        DzDefaultMaterial::createBare(name.isEmpty() ? text("Any surface") : name));
    SurfaceRecord surface;
    surface.material = material;
    const int shape = strayShape(node);
    nameSurface(&surface, shape);
    surface.name.surface = name;
    addKeyedProperties(&surface);
    if (!countChannels(surface))
        return false;
    addMaterial(std::move(surface), shape);
    return true;
}

/// The shape that a surface belongs to; one of its own when the file has none.
int DzSceneMaker::shapeFor(Value material)
{
    const QString reference = m_index.string(m_index.find(material, "geometry"));
    const QString id = referencedId(reference);
    const auto place = m_shapeIds.constFind(id);
    const bool isThere = isLocalReference(reference) && place != m_shapeIds.constEnd();
    if (!isThere && !reference.isEmpty() && !m_shapeIds.contains(id))
        warn(material, text("the mesh \"%1\" of a surface is not in the file").arg(id),
            text("the surface gets a node of its own"));
    const int shape = isThere ? place.value() : strayShape(id);
    const QString uvSet = m_index.string(m_index.find(material, "uv_set"));
    if (isThere && !uvSet.isEmpty() && !m_uvSetOfGeometry.contains(id))
        m_uvSetOfGeometry.insert(id, uvSet);
    return shape;
}

int DzSceneMaker::strayShape(const QString& id)
{
    const auto place = m_shapeIds.constFind(id);
    if (place != m_shapeIds.constEnd())
        return place.value();
    auto* node = new DzNode(id.isEmpty() ? QStringLiteral("Surfaces") : id);
    node->setLabel(node->getName());
    auto* shape = new DzShape(id);
    node->setObject(new DzObject(node->getName()));
    node->getObject()->addShape(shape);
    const int index = static_cast<int>(m_shapes.size());
    m_shapes.push_back({ shape, static_cast<int>(m_nodes.size()) });
    m_nodes.push_back({ node, QString(), QString(), none });
    m_shapeIds.insert(id, index);
    return index;
}

bool DzSceneMaker::readChannels(SurfaceRecord* surface)
{
    m_channelIds.clear();
    const Value sources[] = { surface->definition, surface->instance };
    for (const Value source : sources)
        collectNamed(source, source == surface->instance, surface);
    for (const Value source : sources)
        collectListed(source, source == surface->instance, surface);
    if (!countChannels(*surface))
        return false;
    addProperties(surface);
    return true;
}

bool DzSceneMaker::countChannels(const SurfaceRecord& surface)
{
    m_numChannels += static_cast<qint64>(surface.channels.size());
    if (m_numChannels <= freeChannels + m_index.text().size() / bytesPerChannel)
        return true;
    m_error = m_index.place(surface.instance)
        + text(": the surfaces have more properties than a scene of this size can; give fewer "
               "surfaces the same definition");
    return false;
}

void DzSceneMaker::collectNamed(Value material, bool isInstance, SurfaceRecord* surface)
{
    for (Value member = m_index.firstChild(material); member != none;
         member = m_index.nextSibling(member, material)) {
        const Value channel = channelOf(m_index, member);
        if (channel == none)
            continue;
        const QString id = m_index.string(m_index.find(channel, "id"));
        const QString key = m_index.key(member);
        collect(member, id.isEmpty() ? key : id, { key, false }, isInstance, surface);
    }
}

void DzSceneMaker::collectListed(Value material, bool isInstance, SurfaceRecord* surface)
{
    const Value channels = m_index.find(extraItem(m_index, material, channelsItemType), "channels");
    if (!m_index.isArray(channels))
        return;
    for (Value entry = m_index.firstChild(channels); entry != none;
         entry = m_index.nextSibling(entry, channels)) {
        const QString id = m_index.string(m_index.find(channelOf(m_index, entry), "id"));
        if (id.isEmpty())
            warn(entry, text("a property has no id"), text("it is left out"));
        else
            collect(entry, id, { id, true }, isInstance, surface);
    }
}

void DzSceneMaker::collect(Value entry, const QString& id, const ChannelName& address,
    bool isInstance, SurfaceRecord* surface)
{
    const auto known = m_channelIds.constFind(id);
    if (known == m_channelIds.constEnd()) {
        ChannelRecord record;
        record.address = address;
        (isInstance ? record.places.instance : record.places.definition) = entry;
        m_channelIds.insert(id, surface->channels.size());
        surface->channels.push_back(record);
        return;
    }
    ChannelPlaces& places = surface->channels[known.value()].places;
    Value& place = isInstance ? places.instance : places.definition;
    if (place == none)
        place = entry;
    else
        warn(entry, text("the property \"%1\" appears twice").arg(id),
            text("the first entry is used"));
}

void DzSceneMaker::addProperties(SurfaceRecord* surface)
{
    std::vector<ChannelRecord> known;
    for (ChannelRecord& record : surface->channels) {
        const Value place
            = record.places.instance == none ? record.places.definition : record.places.instance;
        const std::vector<std::size_t> keys = m_keys.find(surface->name, record.address);
        record.places.keys = m_keys.keysOf(keys);
        ChannelProblems problems;
        std::unique_ptr<DzProperty> property(
            propertyFromChannel(m_index, record.places, m_images, &problems));
        if (!property)
            continue; // of a kind that is kept in the file only
        record.name = property->getName();
        tellProblems(place, record.name, problems);
        if (surface->material->addProperty(property.get()) != DZ_NO_ERROR) {
            warn(place, text("two properties are named \"%1\"").arg(record.name),
                text("the first is used"));
            continue;
        }
        record.state = ChannelState::of(property.release());
        for (const std::size_t key : keys)
            m_keys.addUser(key, { m_surfaces.size(), record.name });
        known.push_back(std::move(record));
    }
    surface->channels = std::move(known);
}

void DzSceneMaker::tellProblems(
    Value place, const QString& property, const ChannelProblems& problems)
{
    if (!problems.value.isEmpty())
        warn(place,
            text("the property \"%1\" is not as its type says: %2").arg(property, problems.value),
            text("a default is shown"));
    if (problems.isLayered)
        warn(place, text("the map of the property \"%1\" is a layered image").arg(property),
            text("only its lowest layer is used"));
}

/// The properties of a surface of which there are keys and nothing else.
void DzSceneMaker::addKeyedProperties(SurfaceRecord* surface)
{
    QSet<QPair<QString, bool>> known;
    for (std::size_t i = 0; i < m_keys.entries().size(); ++i) {
        const ChannelName address = m_keys.entries()[i].channel;
        const QPair<QString, bool> channel(address.name, address.isListed);
        if (known.contains(channel))
            continue;
        const std::vector<std::size_t> keys = m_keys.find(surface->name, address);
        if (keys.empty())
            continue;
        known.insert(channel);
        ChannelRecord record;
        record.address = address;
        record.places.keys = m_keys.keysOf(keys);
        ChannelProblems problems;
        std::unique_ptr<DzProperty> property(
            propertyFromKeys(m_index, address.name, record.places.keys, m_images, &problems));
        if (!property)
            continue;
        record.name = address.name;
        tellProblems(m_keys.entries()[keys.back()].animation, record.name, problems);
        if (surface->material->addProperty(property.get()) != DZ_NO_ERROR)
            continue;
        record.state = ChannelState::of(property.release());
        for (const std::size_t key : keys)
            m_keys.addUser(key, { m_surfaces.size(), record.name });
        surface->channels.push_back(std::move(record));
    }
}

void DzSceneMaker::readData(DzElement* element, Value value)
{
    const Value extra = extraOf(m_index, value);
    for (Value item = m_index.firstChild(extra); item != none;
         item = m_index.nextSibling(item, extra)) {
        if (m_index.string(m_index.find(item, "type")) != QLatin1String(dataItemType))
            continue;
        const QString name = m_index.string(m_index.find(item, "name"));
        auto data = std::make_unique<DzSimpleElementData>(name, true);
        if (!readDataItem(m_index, item, data->getSettings())) {
            warn(item, text("the data item \"%1\" cannot be read").arg(name),
                text("it is kept as it is"));
            continue;
        }
        // The surface's own item counts before its definition's.
        if (DzElementData* before = element->findDataItem(name))
            element->deleteDataItem(before);
        element->addDataItem(data.release());
    }
}

void DzSceneMaker::moveTo(DzScene* scene)
{
    const DzUndoStackLock lock;
    scene->clear();
    std::vector<DzNode*> nodes;
    for (const NodeEntry& entry : m_nodes)
        nodes.push_back(entry.node);
    m_nodes.clear();
    for (DzNode* node : nodes)
        scene->enlistAlone(node);
    for (DzNode* node : nodes)
        emit scene->nodeAdded(node);
    emit scene->nodeListChanged();
    emit scene->materialListChanged();
    emit scene->sceneLoaded();
}
