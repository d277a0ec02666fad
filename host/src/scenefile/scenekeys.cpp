// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenekeys.h"

#include "scenereference.h"

#include <QStringList>
#include <algorithm>

namespace {

typedef JsonIndex::Value Value;
const Value none = JsonIndex::none;

const QLatin1Char slash('/');

/// The node of NODE#..., which may have a scheme before it and a file behind it; empty for any.
QString nodeOf(const QString& address)
{
    const QString scheme = QStringLiteral("://");
    const int schemeEnd = address.indexOf(scheme);
    const QString path = schemeEnd < 0 ? address : address.mid(schemeEnd + scheme.size());
    const QString node = path.section(QLatin1Char(':'), 0, 0).section(slash, -1);
    return node == QLatin1String("@selection") ? QString() : decodedReference(node);
}

SceneKeys::Aspect aspectOf(const QString& path)
{
    if (path == QLatin1String("value"))
        return SceneKeys::ValueAspect;
    if (path == QLatin1String("image_file"))
        return SceneKeys::ImageFileAspect;
    return path == QLatin1String("image") ? SceneKeys::ImageAspect : SceneKeys::OtherAspect;
}

/// Reads NODE#materials/SURFACE:?PATH, the parts percent-encoded; false for any other address.
bool readAddress(const QString& url, SceneKeys::Entry* entry)
{
    const QString materials = QStringLiteral("materials");
    const int hash = url.indexOf(QLatin1Char('#'));
    const int question = url.indexOf(QLatin1Char('?'), hash);
    if (hash < 0 || question < 0)
        return false;
    QString asset = url.mid(hash + 1, question - hash - 1);
    if (asset.endsWith(QLatin1Char(':')))
        asset.chop(1);
    if (asset != materials && !asset.startsWith(materials + slash))
        return false;
    entry->node = nodeOf(url.left(hash));
    entry->surface = decodedReference(asset.section(slash, 1));
    const QString list = QStringLiteral("extra/studio_material_channels/channels/");
    QString path = url.mid(question + 1);
    entry->channel.isListed = path.startsWith(list);
    if (entry->channel.isListed)
        path.remove(0, list.size());
    entry->channel.name = decodedReference(path.section(slash, 0, 0));
    entry->aspect = aspectOf(path.section(slash, 1));
    return !entry->channel.name.isEmpty();
}

/// The key at time 0 of an animation.
Value startKey(const JsonIndex& index, Value animation)
{
    const Value keys = index.find(animation, "keys");
    if (!index.isArray(keys))
        return none;
    for (Value key = index.firstChild(keys); key != none; key = index.nextSibling(key, keys)) {
        double parts[2] = { -1, 0 };
        if (index.numbers(key, parts, 2) >= 2 && parts[0] == 0)
            return key;
        const Value time = index.isArray(key) ? index.firstChild(key) : none;
        if (index.isNumber(time) && index.number(time) == 0 && keyItem(index, key) != none)
            return key;
    }
    return none;
}

} // namespace

JsonIndex::Value keyItem(const JsonIndex& index, JsonIndex::Value key)
{
    const Value time = index.isArray(key) ? index.firstChild(key) : none;
    return time == none ? none : index.nextSibling(time, key);
}

bool keyNumber(const JsonIndex& index, JsonIndex::Value key, double* number)
{
    double parts[2] = { 0, 0 };
    if (index.numbers(key, parts, 2) >= 2) {
        *number = parts[1];
        return true;
    }
    const Value item = keyItem(index, key);
    *number = index.number(item);
    return index.isNumber(item);
}

void SceneKeys::read(const JsonIndex& index)
{
    const Value scene = index.find(index.root(), "scene");
    const Value animations = index.find(scene, "animations");
    if (!index.isArray(animations))
        return;
    for (Value animation = index.firstChild(animations); animation != none;
         animation = index.nextSibling(animation, animations)) {
        Entry entry;
        entry.animation = animation;
        if (!readAddress(index.string(index.find(animation, "url")), &entry))
            continue;
        entry.key = startKey(index, animation);
        auto& places = entry.channel.isListed ? m_listed : m_named;
        places[entry.channel.name][entry.surface][entry.node].push_back(m_entries.size());
        m_entries.push_back(std::move(entry));
    }
}

std::vector<std::size_t> SceneKeys::find(
    const SurfaceName& surface, const ChannelName& channel) const
{
    Numbers found;
    const Places& channels = channel.isListed ? m_listed : m_named;
    const auto surfaces = channels.constFind(channel.name);
    if (surfaces == channels.constEnd())
        return found;
    const auto take = [&found](const Numbers& entries) {
        found.insert(found.end(), entries.begin(), entries.end());
    };
    QStringList names { QString(), surface.surface };
    names.removeDuplicates();
    QStringList nodes { QString(), surface.nodeId, surface.nodeName };
    nodes.removeDuplicates();
    for (const QString& name : qAsConst(names)) {
        const QHash<QString, Numbers> entries = surfaces->value(name);
        if (surface.isAnywhere)
            std::for_each(entries.begin(), entries.end(), take);
        else
            for (const QString& node : qAsConst(nodes))
                take(entries.value(node));
    }
    // The order of the document, whatever that of the places.
    std::sort(found.begin(), found.end());
    return found;
}

ChannelKeys SceneKeys::keysOf(const std::vector<std::size_t>& entries) const
{
    ChannelKeys keys;
    for (const std::size_t i : entries) {
        const Entry& entry = m_entries[i];
        if (entry.key == none)
            continue;
        if (entry.aspect == ValueAspect)
            keys.value = entry.key;
        else if (entry.aspect == ImageFileAspect)
            keys.imageFile = entry.key;
        else if (entry.aspect == ImageAspect)
            keys.image = entry.key;
    }
    return keys;
}
