// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenekeywriter.h"

#include "dzmaterial.h"
#include "scenereference.h"

#include <algorithm>

namespace {

typedef JsonIndex::Value Value;
const Value none = JsonIndex::none;

QByteArray fileToken(const QString& file)
{
    return jsonStringToken(imageReference(file));
}

/// An array of numbers with another second one.
QByteArray withSecond(const QByteArray& array, const QByteArray& token)
{
    const int comma = array.indexOf(',');
    int begin = comma + 1;
    while (isJsonBlank(array.at(begin)))
        ++begin;
    int end = begin;
    while (isJsonWordCharacter(array.at(end)))
        ++end;
    return array.left(begin) + token + array.mid(end);
}

} // namespace

SceneKeyWriter::SceneKeyWriter(const JsonIndex& index, const SceneKeys& keys,
    const SurfaceRecords& surfaces, JsonEditor* editor)
    : m_index(index)
    , m_keys(keys)
    , m_surfaces(surfaces)
    , m_editor(editor)
    , m_animations(index.find(index.find(index.root(), "scene"), "animations"))
{
}

std::vector<std::size_t> SceneKeyWriter::entriesOf(
    std::size_t surface, const ChannelName& channel) const
{
    return m_keys.find(m_surfaces[surface].name, channel);
}

void SceneKeyWriter::wish(std::size_t entry, const Wish& wish)
{
    m_wishes[entry].push_back(wish);
}

void SceneKeyWriter::setValue(
    std::size_t surface, const ChannelName& channel, const QByteArray& token)
{
    for (const std::size_t i : entriesOf(surface, channel)) {
        const SceneKeys::Entry& entry = m_keys.entries()[i];
        if (entry.aspect == SceneKeys::ValueAspect && entry.key != none)
            wish(i, { surface, Set, token });
    }
}

void SceneKeyWriter::setMap(std::size_t surface, const ChannelName& channel, const QString& file)
{
    const std::vector<std::size_t> entries = entriesOf(surface, channel);
    const bool hasFileKey = m_keys.keysOf(entries).imageFile != none;
    // Where there is no entry beside the keys, the key is all that there is of the map.
    const bool hasEntry
        = m_surfaces[surface].instance != none || m_surfaces[surface].definition != none;
    for (const std::size_t i : entries) {
        const SceneKeys::Entry& entry = m_keys.entries()[i];
        if (entry.key == none)
            continue;
        if (entry.aspect == SceneKeys::ImageFileAspect && !file.isEmpty())
            wish(i, { surface, Set, fileToken(file) });
        else if (entry.aspect == SceneKeys::ImageFileAspect)
            wish(i, { surface, hasEntry ? Remove : Set, QByteArrayLiteral("\"\"") });
        else if (entry.aspect == SceneKeys::ImageAspect && file.isEmpty())
            wish(i, { surface, Set, QByteArrayLiteral("null") });
        else if (entry.aspect == SceneKeys::ImageAspect && !hasFileKey)
            wish(i, { surface, MakeFile, fileToken(file) });
    }
}

void SceneKeyWriter::drop(std::size_t surface, const ChannelName& channel)
{
    for (const std::size_t i : entriesOf(surface, channel))
        wish(i, { surface, Drop, QByteArray() });
}

/// True when a surface that wants nothing of the key still has what the key is for.
bool SceneKeyWriter::hasOtherUsers(
    const SceneKeys::Entry& entry, const std::vector<Wish>& wishes) const
{
    return std::any_of(entry.users.begin(), entry.users.end(), [&](const SceneKeys::User& user) {
        const bool wants = std::any_of(wishes.begin(), wishes.end(),
            [&](const Wish& one) { return one.surface == user.surface; });
        if (wants)
            return false;
        const DzMaterial* material = m_surfaces[user.surface].material;
        // What stands in the document of a surface that left the scene stays.
        return !material || material->getNumShapes() == 0 || material->findProperty(user.property);
    });
}

std::vector<std::size_t> SceneKeyWriter::finish()
{
    std::vector<std::size_t> unwritten;
    for (const auto& [number, wishes] : m_wishes) {
        const SceneKeys::Entry& entry = m_keys.entries()[number];
        const bool isShared = hasOtherUsers(entry, wishes);
        std::vector<Wish> changes;
        std::copy_if(wishes.begin(), wishes.end(), std::back_inserter(changes),
            [](const Wish& one) { return one.action != Drop; });
        if (changes.empty()) {
            if (!isShared)
                m_editor->remove(entry.animation, m_animations);
            continue;
        }
        const bool isOne = std::all_of(changes.begin(), changes.end(),
            [&](const Wish& one) { return one.isSame(changes.front()); });
        if (!isShared && isOne) {
            change(entry, changes.front());
            continue;
        }
        for (const Wish& one : changes)
            if (!addOwn(entry, one))
                unwritten.push_back(one.surface);
    }
    m_wishes.clear();
    return unwritten;
}

void SceneKeyWriter::change(const SceneKeys::Entry& entry, const Wish& wish)
{
    if (wish.action == Remove) {
        m_editor->remove(entry.animation, m_animations);
        return;
    }
    setKey(entry.key, wish.token);
    if (wish.action != MakeFile)
        return;
    const Value url = m_index.find(entry.animation, "url");
    QByteArray address = m_index.raw(url);
    address.insert(address.size() - 1, "_file");
    m_editor->replace(url, address);
}

void SceneKeyWriter::setKey(JsonIndex::Value key, const QByteArray& token)
{
    const Value item = keyItem(m_index, key);
    if (item != none)
        m_editor->replace(item, token);
    else
        m_editor->replace(key, withSecond(m_index.raw(key), token));
}

/// Adds an animation for one surface; false when no address means that surface alone.
bool SceneKeyWriter::addOwn(const SceneKeys::Entry& entry, const Wish& wish)
{
    const QString address = addressOf(wish.surface);
    if (address.isEmpty())
        return false;
    QString path = entry.channel.isListed
        ? QStringLiteral("extra/studio_material_channels/channels/")
        : QString();
    path += encodedReference(entry.channel.name);
    // Set in place, such a key says "none"; taking the shared one out would take it from others.
    const bool isFile = wish.action != Set || entry.aspect == SceneKeys::ImageFileAspect;
    path += QLatin1String(isFile                     ? "/image_file"
            : entry.aspect == SceneKeys::ImageAspect ? "/image"
                                                     : "/value");
    JsonPiece key = JsonPiece::array();
    key.addItem(JsonPiece::token(QByteArrayLiteral("0")));
    key.addItem(JsonPiece::token(wish.token));
    JsonPiece keys = JsonPiece::array();
    keys.addItem(key);
    JsonPiece animation = JsonPiece::object();
    animation.add("url", jsonStringToken(address + path));
    animation.add("keys", keys);
    m_editor->append(m_animations, nullptr, animation);
    return true;
}

/// "NODE#materials/SURFACE:?" of a surface; empty when other surfaces have the same.
QString SceneKeyWriter::addressOf(std::size_t surface) const
{
    const SurfaceName& wanted = m_surfaces[surface].name;
    const auto count = [&](const auto& isSame) {
        return std::count_if(m_surfaces.begin(), m_surfaces.end(), [&](const SurfaceRecord& other) {
            return other.name.surface == wanted.surface && isSame(other.name);
        });
    };
    const auto answersTo = [](const SurfaceName& name, const QString& node) {
        return name.nodeId == node || name.nodeName == node;
    };
    QString node;
    if (count([](const SurfaceName&) { return true; }) == 1) {
        node = QStringLiteral("@selection");
    } else {
        for (const QString& name : { wanted.nodeId, wanted.nodeName })
            if (node.isEmpty() && !name.isEmpty()
                && count([&](const SurfaceName& other) { return answersTo(other, name); }) == 1)
                node = encodedReference(name);
    }
    if (node.isEmpty() || wanted.surface.isEmpty())
        return QString();
    return QStringLiteral("name://%1#materials/%2:?").arg(node, encodedReference(wanted.surface));
}
