// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenewriter.h"

#include "dzmaterial.h"
#include "dzproperty.h"
#include "dzsimpleelementdata.h"
#include "settingsjson.h"

#include <QCoreApplication>
#include <QSet>
#include <algorithm>
#include <cstring>

namespace {

const JsonIndex::Value none = JsonIndex::none;

/// The members of a channel in the host's order.
const char* const memberOrder[] = { "id", "type", "name", "label", "auto_follow", "visible",
    "locked", "value", "current_value", "min", "max", "clamped", "display_as_percent", "step_size",
    "color_blend_mode", "default_image_gamma", "mappable", "invalid_without_map", "enum_values",
    "file_type", "file_display_text", "file_filter", "needs_node", "node", "image", "image_file",
    "image_modification" };

QString text(const char* source)
{
    return QCoreApplication::translate("DzSceneFile", source);
}

bool isKey(const char* key, const char* other)
{
    return std::strcmp(key, other) == 0;
}

int rankOf(const char* key)
{
    int rank = 0;
    for (const char* member : memberOrder) {
        if (isKey(member, key))
            return rank;
        ++rank;
    }
    return -1;
}

/// What a surface's own entry says where the definition says the opposite and the host's form
/// would be to say nothing.
QByteArray explicitToken(const char* key, const QByteArray& token)
{
    if (!token.isEmpty())
        return token;
    if (isKey(key, "visible"))
        return QByteArrayLiteral("true");
    const bool isSwitch = isKey(key, "locked") || isKey(key, "clamped") || isKey(key, "mappable");
    return isSwitch ? QByteArrayLiteral("false") : QByteArray();
}

/// The image file that a property shows: its value or its map.
const QString& fileOf(const ChannelState& state)
{
    return state.type == ChannelState::Image ? state.text : state.map;
}

JsonPiece dataPiece(const DzSimpleElementData* data)
{
    JsonPiece item = JsonPiece::object();
    item.add("type", '"' + QByteArray(dataItemType) + '"');
    item.add("name", jsonStringToken(data->getName()));
    item.add("settings", jsonPieceOf(*data->getSettings()));
    return item;
}

JsonPiece channelsPiece(const std::vector<JsonPiece>& channels)
{
    JsonPiece list = JsonPiece::array();
    for (const JsonPiece& channel : channels)
        list.addItem(channel);
    JsonPiece item = JsonPiece::object();
    item.add("type", '"' + QByteArray(channelsItemType) + '"');
    item.add("channels", list);
    return item;
}

} // namespace

DzSceneWriter::DzSceneWriter(const JsonIndex& index, const SurfaceRecords& surfaces,
    const SceneKeys& keys, DzWarningList* warnings)
    : m_index(index)
    , m_surfaces(surfaces)
    , m_warnings(warnings)
    , m_editor(index)
    , m_keys(index, keys, surfaces, &m_editor)
{
    Value before = none;
    for (const SurfaceRecord& surface : surfaces) {
        if (surface.instance == none || surface.instance != before)
            ++m_numUses[surface.definition];
        before = surface.instance;
    }
}

void DzSceneWriter::warn(
    const SurfaceRecord& surface, const QString& warning, const QString& remedy)
{
    const QString place = m_warnings->hasRoom() ? m_index.place(surface.instance) : QString();
    m_warnings->add({ place, warning, remedy });
}

void DzSceneWriter::fail(
    const SurfaceRecord& surface, const QString& warning, const QString& remedy)
{
    m_incomplete.insert(numberOf(surface));
    warn(surface, warning, remedy);
}

QVector<DzMaterial*> DzSceneWriter::getIncomplete() const
{
    // What one entry cannot hold is missing for all of its surfaces.
    std::set<Value> entries;
    for (const std::size_t number : m_incomplete)
        entries.insert(m_surfaces[number].instance);
    entries.erase(none);
    QVector<DzMaterial*> materials;
    for (std::size_t i = 0; i < m_surfaces.size(); ++i)
        if (m_incomplete.count(i) > 0 || entries.count(m_surfaces[i].instance) > 0)
            materials.append(m_surfaces[i].material);
    return materials;
}

bool DzSceneWriter::isEditable(const SurfaceRecord& surface) const
{
    return surface.definition != none && !surface.isShared;
}

QByteArray DzSceneWriter::write()
{
    Value before = none;
    for (const SurfaceRecord& surface : m_surfaces) {
        // Surfaces of one entry were changed alike; the first tells of all but their keys.
        const bool isFirst = surface.instance == none || surface.instance != before;
        if (!surface.material || surface.material->getNumShapes() == 0)
            warn(surface, text("this surface is no longer in the scene"),
                text("its entries stay as they are"));
        else if (isFirst)
            writeSurface(surface);
        else
            writeOnlyKeys(surface);
        before = surface.instance;
    }
    removeSharedEntries();
    for (const std::size_t surface : m_keys.finish())
        fail(m_surfaces[surface],
            text("values of this surface are keyed for several at once, and another has its name"),
            text("their keys stay"));
    for (const Value element : m_touched)
        tidyExtra(element);
    return m_editor.isEmpty() ? m_index.text() : m_editor.apply();
}

std::size_t DzSceneWriter::numberOf(const SurfaceRecord& surface) const
{
    return static_cast<std::size_t>(&surface - m_surfaces.data());
}

void DzSceneWriter::writeSurface(const SurfaceRecord& surface)
{
    m_added = Additions();
    writeProperties(surface);
    writeData(surface);
    addToExtra(surface, surface.definition, m_added.definition, {});
    addToExtra(surface, surface.instance, m_added.instance, m_added.data);
}

// Properties --------------------------------------------------------------------------------

void DzSceneWriter::writeProperties(const SurfaceRecord& surface)
{
    int numKnown = 0;
    for (const ChannelRecord& channel : surface.channels) {
        const DzProperty* property = surface.material->findProperty(channel.name);
        if (!property) {
            removeChannel(surface, channel);
            continue;
        }
        ++numKnown;
        const ChannelState now = ChannelState::of(property);
        if (now == channel.state)
            continue;
        if (now.type == channel.state.type) {
            changeChannel(surface, channel, now);
        } else {
            removeChannel(surface, channel);
            addProperty(surface, property);
        }
    }
    if (numKnown == surface.material->getNumProperties())
        return;
    QSet<QString> known;
    for (const ChannelRecord& channel : surface.channels)
        known.insert(channel.name);
    for (const DzProperty* property : surface.material->getPropertyList())
        if (!known.contains(property->getName()))
            addProperty(surface, property);
}

void DzSceneWriter::addProperty(const SurfaceRecord& surface, const DzProperty* property)
{
    const ChannelState state = ChannelState::of(property);
    const QString name = property->getName();
    if (state.type == ChannelState::Unknown) {
        fail(surface, text("scene files have no form for the property \"%1\"").arg(name),
            text("it is not saved"));
        return;
    }
    // Keys may be left of a property that the surface had before.
    writeKeys(surface, { name, true }, state, nullptr);
    if (!isEditable(surface)) {
        m_added.instance.push_back(fullChannelEntry(name, state, true));
        return;
    }
    m_added.definition.push_back(fullChannelEntry(name, state, false));
    if (!state.map.isEmpty())
        m_added.instance.push_back(
            instanceChannelEntry(jsonStringToken(name), channelTypeToken(state), state));
}

/// Brings keys to the value and map of `now`, where these are others than `before`; null for all.
void DzSceneWriter::writeKeys(const SurfaceRecord& surface, const ChannelName& address,
    const ChannelState& now, const ChannelState* before)
{
    const auto valueOf = [&](const ChannelState& state) {
        if (state.type != ChannelState::Image)
            return channelValueToken(state);
        const QString file = fileOf(state);
        return file.isEmpty() ? QByteArrayLiteral("null") : jsonStringToken(imageReference(file));
    };
    const QByteArray value = valueOf(now);
    if (!before || value != valueOf(*before))
        m_keys.setValue(numberOf(surface), address, value);
    const QString file = fileOf(now);
    if (!before || file != fileOf(*before))
        m_keys.setMap(numberOf(surface), address, file);
}

void DzSceneWriter::writeOnlyKeys(const SurfaceRecord& surface)
{
    QSet<QString> known;
    for (const ChannelRecord& channel : surface.channels) {
        known.insert(channel.name);
        const DzProperty* property = surface.material->findProperty(channel.name);
        if (property)
            writeKeys(surface, channel.address, ChannelState::of(property), &channel.state);
        else
            m_keys.drop(numberOf(surface), channel.address);
    }
    for (const DzProperty* property : surface.material->getPropertyList())
        if (!known.contains(property->getName()))
            writeKeys(surface, { property->getName(), true }, ChannelState::of(property), nullptr);
}

void DzSceneWriter::changeChannel(
    const SurfaceRecord& surface, const ChannelRecord& channel, const ChannelState& now)
{
    writeKeys(surface, channel.address, now, &channel.state);
    const QVector<ChannelMember> before = channelMembers(channel.state);
    const QVector<ChannelMember> after = channelMembers(now);
    Changes changes;
    bool isMapChanged = false;
    for (int i = 0; i < after.size(); ++i) {
        if (after.at(i).token == before.at(i).token)
            continue;
        if (isKey(after.at(i).key, "image_file"))
            isMapChanged = true;
        else
            changes.push_back({ after.at(i).key, after.at(i).token });
    }
    const ChannelPlaces& places = channel.places;
    if (places.definition == none && places.instance == none) {
        tellUnkeyed(surface, channel.name, changes);
        return;
    }
    const bool inDefinition = isEditable(surface) && places.definition != none;
    const Value home = inDefinition ? places.definition : places.instance;
    if (home == none) {
        addOverlay(channel, changes, now);
        return;
    }
    // Members of an entry that lies over another are said in full.
    const bool isOverlay = !inDefinition && places.definition != none;
    const Value homeChannel = channelOf(m_index, home);
    const Value other = home == places.instance ? none : channelOf(m_index, places.instance);
    for (const Change& change : changes) {
        setMember(homeChannel, change.key,
            isOverlay ? explicitToken(change.key, change.token) : change.token);
        if (m_index.find(other, change.key) != none)
            setMember(other, change.key, explicitToken(change.key, change.token));
        else if (isKey(change.key, "current_value") && m_index.find(other, "value") != none)
            setMember(other, change.key, change.token);
    }
    changeEntry(home, channel.state, now);
    if (isMapChanged)
        changeMap(surface, channel, now);
}

/// A surface of which the document has nothing but keys has no place for anything but values.
void DzSceneWriter::tellUnkeyed(
    const SurfaceRecord& surface, const QString& name, const Changes& changes)
{
    const bool isValueOnly = std::all_of(changes.begin(), changes.end(), [](const Change& change) {
        return isKey(change.key, "current_value") || isKey(change.key, "mappable");
    });
    if (!isValueOnly)
        fail(surface,
            text("of the property \"%1\" the document has nothing but its value").arg(name),
            text("only that is saved"));
}

/// A new entry of the surface for a definition that must stay as it is.
void DzSceneWriter::addOverlay(
    const ChannelRecord& channel, const Changes& changes, const ChannelState& now)
{
    const Value definition = channelOf(m_index, channel.places.definition);
    JsonPiece members = JsonPiece::object();
    members.add("id", m_index.raw(m_index.find(definition, "id")));
    members.add("type", m_index.raw(m_index.find(definition, "type")));
    bool hasValue = false;
    for (const Change& change : changes) {
        const QByteArray token = explicitToken(change.key, change.token);
        hasValue = hasValue || isKey(change.key, "current_value");
        if (!token.isEmpty())
            members.add(change.key, token);
    }
    const QByteArray value = channelValueToken(now);
    if (!hasValue && !value.isEmpty())
        members.add("current_value", value);
    const QString& file = fileOf(now);
    if (!file.isEmpty())
        members.add("image_file", jsonStringToken(imageReference(file)));
    else if (!fileOf(channel.state).isEmpty())
        members.add("image", QByteArrayLiteral("null"));
    JsonPiece entry = JsonPiece::object();
    if (now.user && !channel.state.user)
        entry.add("user_property", QByteArrayLiteral("true"));
    entry.add("channel", members);
    if (now.path != channel.state.path)
        entry.add("group", jsonStringToken(now.path));
    m_added.instance.push_back(entry);
}

/// Changes what stands beside the channel.
void DzSceneWriter::changeEntry(Value entry, const ChannelState& before, const ChannelState& now)
{
    if (now.path != before.path) {
        const Value group = m_index.find(entry, "group");
        const JsonPiece path = JsonPiece::token(jsonStringToken(now.path));
        if (group != none)
            m_editor.replace(group, path.text);
        else
            m_editor.insertAfter(entry, m_index.find(entry, "channel"), "group", path);
    }
    if (now.user == before.user)
        return;
    const Value flag = m_index.find(entry, "user_property");
    if (flag != none)
        m_editor.replace(flag, jsonBooleanToken(now.user));
    else
        m_editor.insertAfter(
            entry, none, "user_property", JsonPiece::token(jsonBooleanToken(now.user)));
}

/// Sets a member of a channel, at its place in the host's order; an empty token takes it out.
void DzSceneWriter::setMember(Value channel, const char* key, const QByteArray& token)
{
    if (token.isEmpty()) {
        removeMember(channel, key);
        return;
    }
    const Value member = m_index.find(channel, key);
    if (member != none) {
        m_editor.replace(member, token);
        return;
    }
    const int rank = rankOf(key);
    Value behind = none;
    for (Value child = m_index.firstChild(channel); child != none;
         child = m_index.nextSibling(child, channel))
        if (rankOf(m_index.key(child).toLatin1().constData()) < rank)
            behind = child;
    m_editor.insertAfter(channel, behind, key, JsonPiece::token(token));
}

void DzSceneWriter::removeMember(Value object, const char* key)
{
    const Value member = m_index.find(object, key);
    if (member != none)
        m_editor.remove(member, object);
}

// Maps --------------------------------------------------------------------------------------

void DzSceneWriter::changeMap(
    const SurfaceRecord& surface, const ChannelRecord& channel, const ChannelState& now)
{
    const QString& file = fileOf(now);
    if (file.isEmpty()) {
        clearMap(surface, channel);
        return;
    }
    const QByteArray token = jsonStringToken(imageReference(file));
    const Value definition
        = isEditable(surface) ? channelOf(m_index, channel.places.definition) : none;
    const Value instance = channelOf(m_index, channel.places.instance);
    const bool isDefined = m_index.find(definition, "image_file") != none
        || m_index.find(definition, "image") != none
        || (definition != none && now.type == ChannelState::Image);
    for (const Value place : { instance, isDefined ? definition : none }) {
        if (place == none)
            continue;
        removeMember(place, "image");
        setMember(place, "image_file", token);
    }
    if (instance == none && !isDefined)
        m_added.instance.push_back(instanceChannelEntry(m_index.raw(m_index.find(definition, "id")),
            m_index.raw(m_index.find(definition, "type")), now));
}

void DzSceneWriter::clearMap(const SurfaceRecord& surface, const ChannelRecord& channel)
{
    const Value entry = channel.places.instance;
    const Value instance = channelOf(m_index, entry);
    const bool editable = isEditable(surface);
    if (editable) {
        const Value definition = channelOf(m_index, channel.places.definition);
        removeMember(definition, "image_file");
        removeMember(definition, "image");
        if (definition != none && instance != none && !channel.isNamed()
            && isOnlyMapEntry(entry, definition)) {
            removeEntry(surface.instance, entry, false);
            return;
        }
    }
    if (instance == none)
        return;
    removeMember(instance, "image_file");
    // Without the word a definition that cannot be changed would bring its own map back.
    const bool isOwn = editable || m_index.boolean(m_index.find(entry, "user_property"));
    if (isOwn)
        removeMember(instance, "image");
    else
        setMember(instance, "image", QByteArrayLiteral("null"));
}

/// True for an entry that stands beside the definition's for its map alone: it says no other value.
bool DzSceneWriter::isOnlyMapEntry(Value entry, Value definition) const
{
    if (m_index.countChildren(entry) != 1)
        return false;
    const Value channel = channelOf(m_index, entry);
    const Value value = m_index.find(channel, "current_value");
    const Value current = m_index.find(definition, "current_value");
    const Value defined = current == none ? m_index.find(definition, "value") : current;
    if (value != none && m_index.raw(value) != m_index.raw(defined))
        return false;
    for (Value member = m_index.firstChild(channel); member != none;
         member = m_index.nextSibling(member, channel)) {
        const bool isExpected = m_index.hasKey(member, "id") || m_index.hasKey(member, "type")
            || m_index.hasKey(member, "current_value") || m_index.hasKey(member, "image_file");
        if (!isExpected)
            return false;
    }
    return true;
}

// Removing ----------------------------------------------------------------------------------

void DzSceneWriter::removeChannel(const SurfaceRecord& surface, const ChannelRecord& channel)
{
    const ChannelPlaces& places = channel.places;
    if (places.instance != none)
        removeEntry(surface.instance, places.instance, channel.isNamed());
    if (places.definition != none && !surface.isShared)
        removeEntry(surface.definition, places.definition, channel.isNamed());
    else if (places.definition != none)
        removeShared(surface, places.definition,
            channel.isNamed() ? SharedRemoval::Named : SharedRemoval::Listed, channel.name);
    m_keys.drop(numberOf(surface), channel.address);
}

void DzSceneWriter::removeEntry(Value material, Value entry, bool isNamed)
{
    if (isNamed) {
        m_editor.remove(entry, material);
        return;
    }
    m_editor.remove(
        entry, m_index.find(extraItem(m_index, material, channelsItemType), "channels"));
    m_touched.insert(material);
}

void DzSceneWriter::removeShared(
    const SurfaceRecord& surface, Value entry, SharedRemoval::Kind kind, const QString& name)
{
    m_sharedRemovals.insert({ entry, { kind, name, {} } })
        .first->second.surfaces.push_back(&surface);
}

/// An entry of a shared definition goes when all surfaces that have it lost what it stands for.
void DzSceneWriter::removeSharedEntries()
{
    for (const auto& [entry, removal] : m_sharedRemovals) {
        const Value definition = removal.surfaces.front()->definition;
        if (static_cast<int>(removal.surfaces.size()) < m_numUses.value(definition)) {
            for (const SurfaceRecord* surface : removal.surfaces)
                m_incomplete.insert(numberOf(*surface));
            warn(*removal.surfaces.front(),
                (removal.kind == SharedRemoval::Data
                        ? text("the data item \"%1\" is in a definition that other surfaces use")
                        : text("the property \"%1\" is in a definition that other surfaces use"))
                    .arg(removal.name),
                text("it stays; take it off all of them at once"));
        } else if (removal.kind == SharedRemoval::Data) {
            m_editor.remove(entry, extraOf(m_index, definition));
            m_touched.insert(definition);
        } else {
            removeEntry(definition, entry, removal.kind == SharedRemoval::Named);
        }
    }
}

// Data items --------------------------------------------------------------------------------

void DzSceneWriter::writeData(const SurfaceRecord& surface)
{
    for (int i = 0; i < surface.material->getNumDataItems(); ++i) {
        auto* data = qobject_cast<DzSimpleElementData*>(surface.material->getDataItem(i));
        QString problem;
        if (!data || !data->isPersistent())
            continue;
        if (!settingsFitJson(*data->getSettings(), &problem))
            warn(surface, text("the data \"%1\" is not written: %2").arg(data->getName(), problem),
                text("remove levels"));
        else if (!changeData(surface, data))
            m_added.data.push_back(dataPiece(data));
    }
    removeLostData(surface, surface.instance);
    removeLostData(surface, surface.definition);
}

JsonIndex::Value DzSceneWriter::dataItem(Value element, const QString& name) const
{
    const Value extra = extraOf(m_index, element);
    Value found = none;
    // The last of several counts when they are read.
    for (Value item = m_index.firstChild(extra); item != none;
         item = m_index.nextSibling(item, extra))
        if (m_index.string(m_index.find(item, "type")) == QLatin1String(dataItemType)
            && m_index.string(m_index.find(item, "name")) == name)
            found = item;
    return found;
}

/// Brings a data item's entry up to date; false when it needs a new one.
bool DzSceneWriter::changeData(const SurfaceRecord& surface, const DzSimpleElementData* data)
{
    Value item = dataItem(surface.instance, data->getName());
    const bool isOwn = item != none;
    if (!isOwn)
        item = dataItem(surface.definition, data->getName());
    if (item == none)
        return false;
    DzSettings before;
    const bool isReadable = readDataItem(m_index, item, &before);
    if (isReadable && before.isEqual(*data->getSettings()))
        return true;
    if (!isOwn && !isEditable(surface))
        return false;
    const Value tree = m_index.find(item, "settings");
    if (tree == none)
        m_editor.append(item, "settings", jsonPieceOf(*data->getSettings()));
    else
        m_editor.replace(tree, jsonPieceOf(*data->getSettings()));
    return true;
}

void DzSceneWriter::removeLostData(const SurfaceRecord& surface, Value element)
{
    const Value extra = extraOf(m_index, element);
    for (Value item = m_index.firstChild(extra); item != none;
         item = m_index.nextSibling(item, extra)) {
        if (m_index.string(m_index.find(item, "type")) != QLatin1String(dataItemType))
            continue;
        const QString name = m_index.string(m_index.find(item, "name"));
        DzSettings settings;
        if (surface.material->findDataItem(name) || !readDataItem(m_index, item, &settings))
            continue;
        if (element == surface.definition && surface.isShared) {
            removeShared(surface, item, SharedRemoval::Data, name);
            continue;
        }
        m_editor.remove(item, extra);
        m_touched.insert(element);
    }
}

// Lists of extras ---------------------------------------------------------------------------

void DzSceneWriter::addToExtra(const SurfaceRecord& surface, Value element,
    const std::vector<JsonPiece>& channels, const std::vector<JsonPiece>& data)
{
    if (channels.empty() && data.empty())
        return;
    if (element == none) {
        fail(surface, text("the document has no entry for this surface, only values"),
            text("nothing can be added to it; open a scene or a preset that holds the surface"));
        return;
    }
    const Value extra = extraOf(m_index, element);
    if (extra == none && m_index.find(element, "extra") != none) {
        fail(surface, text("the \"extra\" of this surface is not a list"),
            text("nothing can be added to it"));
        return;
    }
    if (extra == none) {
        JsonPiece list = JsonPiece::array();
        if (!channels.empty())
            list.addItem(channelsPiece(channels));
        for (const JsonPiece& item : data)
            list.addItem(item);
        m_editor.append(element, "extra", list);
        return;
    }
    if (!channels.empty())
        addChannels(surface, element, extra, channels);
    for (const JsonPiece& item : data)
        m_editor.append(extra, nullptr, item);
}

void DzSceneWriter::addChannels(const SurfaceRecord& surface, Value element, Value extra,
    const std::vector<JsonPiece>& channels)
{
    const Value item = extraItem(m_index, element, channelsItemType);
    const Value list = m_index.find(item, "channels");
    if (m_index.isArray(list)) {
        for (const JsonPiece& channel : channels)
            m_editor.append(list, nullptr, channel);
    } else if (list != none) {
        fail(surface, text("the properties of this surface are not a list"),
            text("nothing can be added to them"));
    } else if (item != none) {
        m_editor.append(item, "channels", channelsPiece(channels).children.back().second);
    } else {
        const Value first = m_index.firstChild(extra);
        const QString type = m_index.string(m_index.find(first, "type"));
        const bool isKind = type.startsWith(QLatin1String("studio/material/"));
        m_editor.insertAfter(extra, isKind ? first : none, nullptr, channelsPiece(channels));
    }
}

/// Takes a list of properties, and then the whole list of extras, out once nothing is in it.
void DzSceneWriter::tidyExtra(Value element)
{
    const Value extra = extraOf(m_index, element);
    const Value item = extraItem(m_index, element, channelsItemType);
    const Value list = m_index.find(item, "channels");
    const bool hasOnlyList = m_index.countChildren(item) == 2;
    const bool wasFilled = m_index.firstChild(list) != none;
    if (list != none && wasFilled && hasOnlyList && m_editor.becomesEmpty(list)
        && !m_editor.wasEmptyOnce(list))
        m_editor.remove(item, extra);
    if (m_index.firstChild(extra) != none && m_editor.becomesEmpty(extra)
        && !m_editor.wasEmptyOnce(extra))
        m_editor.remove(extra, element);
}
