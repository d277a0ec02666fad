// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenesplit.h"

#include "dzmaterial.h"
#include "dzproperty.h"
#include "dzsimpleelementdata.h"

#include <algorithm>

namespace {

typedef JsonIndex::Value Value;
const Value none = JsonIndex::none;

bool isSameAsRead(const SurfaceRecord& one, const SurfaceRecord& other)
{
    return std::equal(one.channels.begin(), one.channels.end(), other.channels.begin(),
        other.channels.end(), [](const ChannelRecord& a, const ChannelRecord& b) {
            return a.name == b.name && a.state == b.state;
        });
}

const DzSettings* settingsOf(const DzElementData* data)
{
    auto* simple = qobject_cast<const DzSimpleElementData*>(data);
    return simple ? simple->getSettings() : nullptr;
}

bool hasSameData(const DzMaterial* one, const DzMaterial* other)
{
    if (one->getNumDataItems() != other->getNumDataItems())
        return false;
    for (int i = 0; i < one->getNumDataItems(); ++i) {
        const DzSettings* settings = settingsOf(one->getDataItem(i));
        const DzSettings* others = settingsOf(other->findDataItem(one->getDataItem(i)->getName()));
        if (!settings || !others || !settings->isEqual(*others))
            return false;
    }
    return true;
}

bool hasSameProperties(const DzMaterial* one, const DzMaterial* other)
{
    if (one->getNumProperties() != other->getNumProperties())
        return false;
    for (const DzProperty* property : one->getPropertyList()) {
        const DzProperty* found = other->findProperty(property->getName());
        if (!found || !(ChannelState::of(property) == ChannelState::of(found)))
            return false;
    }
    return true;
}

/// True when one entry can tell of both surfaces.
bool canShareEntry(const SurfaceRecord& one, const SurfaceRecord& other)
{
    // A surface that left the scene keeps its entry as it is.
    const auto isThere = [](const SurfaceRecord& surface) {
        return surface.material && surface.material->getNumShapes() > 0;
    };
    if (!isThere(one) || !isThere(other))
        return isThere(one) == isThere(other);
    return isSameAsRead(one, other) && hasSameProperties(one.material, other.material)
        && hasSameData(one.material, other.material);
}

/// True when a surface has what was read of it and nothing else; its data are not looked at.
bool isUnchanged(const SurfaceRecord& surface)
{
    const DzMaterial* material = surface.material;
    if (!material || material->getNumShapes() == 0)
        return true;
    return material->getNumProperties() == static_cast<int>(surface.channels.size())
        && std::all_of(
            surface.channels.begin(), surface.channels.end(), [&](const ChannelRecord& channel) {
                const DzProperty* property = material->findProperty(channel.name);
                return property && ChannelState::of(property) == channel.state;
            });
}

typedef std::vector<std::vector<std::size_t>> Classes;

/// The surfaces of one entry, those together that can share it.
Classes classesOf(const SurfaceRecords& surfaces, std::size_t begin, std::size_t end)
{
    Classes classes;
    bool isOneEntry = true;
    for (std::size_t i = begin; i < end && isOneEntry; ++i)
        isOneEntry = isUnchanged(surfaces[i])
            && (!surfaces[i].material || !surfaces[begin].material
                || hasSameData(surfaces[begin].material, surfaces[i].material));
    for (std::size_t i = begin; i < end; ++i) {
        const auto place = std::find_if(classes.begin(), classes.end(), [&](const auto& members) {
            return isOneEntry || canShareEntry(surfaces[members.front()], surfaces[i]);
        });
        if (place == classes.end())
            classes.push_back({ i });
        else
            place->push_back(i);
    }
    return classes;
}

/// Writes the new entries.
class EntrySplitter
{
public:
    EntrySplitter(const JsonIndex& index, const SurfaceRecords& surfaces)
        : m_index(index)
        , m_surfaces(surfaces)
        , m_editor(index)
        , m_materials(index.find(index.find(index.root(), "scene"), "materials"))
    {
    }

    void split(const Classes& classes)
    {
        const Value entry = m_surfaces[classes.front().front()].instance;
        const Value groups = m_index.find(entry, "groups");
        m_editor.replace(groups, namesToken(classes.front()));
        for (std::size_t i = 1; i < classes.size(); ++i) {
            QByteArray copy = m_index.raw(entry);
            // From behind, so that the places before stay.
            const Value id = m_index.find(entry, "id");
            const bool isIdFirst = id == none || id < groups;
            if (!isIdFirst)
                replaceIn(&copy, entry, id, newId(id));
            replaceIn(&copy, entry, groups, namesToken(classes[i]));
            if (isIdFirst && id != none)
                replaceIn(&copy, entry, id, newId(id));
            m_editor.insertAfter(m_materials, entry, nullptr, JsonPiece::token(copy));
        }
    }
    QByteArray apply() { return m_editor.apply(); }

private:
    QByteArray namesToken(const std::vector<std::size_t>& members) const
    {
        QByteArray token = "[";
        for (const std::size_t member : members)
            token += (token.size() == 1 ? " " : ", ")
                + jsonStringToken(m_surfaces[member].name.surface);
        return token + " ]";
    }
    void replaceIn(QByteArray* copy, Value entry, Value value, const QByteArray& token) const
    {
        copy->replace(m_index.begin(value) - m_index.begin(entry),
            m_index.end(value) - m_index.begin(value), token);
    }
    /// An id that does not stand in the document.
    QByteArray newId(Value id)
    {
        const QString before = m_index.string(id);
        QByteArray token;
        do {
            token = jsonStringToken(
                before + QLatin1Char('-') + QString::number(++m_lastNumber[before]));
        } while (m_index.text().contains(token));
        return token;
    }

    const JsonIndex& m_index;
    const SurfaceRecords& m_surfaces;
    JsonEditor m_editor;
    Value m_materials;
    QHash<QString, int> m_lastNumber;
};

} // namespace

bool splitSurfaces(const JsonIndex& index, const SurfaceRecords& surfaces, QByteArray* text,
    std::vector<std::size_t>* order)
{
    EntrySplitter splitter(index, surfaces);
    bool isSplit = false;
    order->clear();
    for (std::size_t begin = 0; begin < surfaces.size();) {
        std::size_t end = begin + 1;
        while (end < surfaces.size() && surfaces[begin].instance != none
            && surfaces[end].instance == surfaces[begin].instance)
            ++end;
        const Classes classes
            = end == begin + 1 ? Classes { { begin } } : classesOf(surfaces, begin, end);
        if (classes.size() > 1) {
            splitter.split(classes);
            isSplit = true;
        }
        for (const auto& members : classes)
            order->insert(order->end(), members.begin(), members.end());
        begin = end;
    }
    if (isSplit)
        *text = splitter.apply();
    return isSplit;
}
