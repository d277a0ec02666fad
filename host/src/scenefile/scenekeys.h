// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonindex.h"

#include <QHash>
#include <QString>
#include <vector>

/// The keys at time 0 that hold for one property: each is an array [ 0, value, ... ].
struct ChannelKeys {
    JsonIndex::Value value = JsonIndex::none;
    JsonIndex::Value imageFile = JsonIndex::none;
    JsonIndex::Value image = JsonIndex::none;

    bool hasImage() const { return imageFile != JsonIndex::none || image != JsonIndex::none; }
};

/// What a key holds: the value behind its time. `none` in an array of numbers only.
JsonIndex::Value keyItem(const JsonIndex& index, JsonIndex::Value key);
/// The number that a key holds; false when it holds none.
bool keyNumber(const JsonIndex& index, JsonIndex::Value key, double* number);

/// How animations name a surface.
struct SurfaceName {
    QString nodeId;
    QString nodeName;
    QString surface;
    bool isAnywhere = false; ///< the document does not tell its node: any name may be the node's
};

/// How animations name a property of a surface.
struct ChannelName {
    QString name;         ///< the id of a channel in the list, the key of one that is a member
    bool isListed = true; ///< in the list of channels
};

/// The animations of a document that are about properties of surfaces.
///
/// Presets keep their values there, as keys at time 0, and a scene may: such a value counts before
/// the ones of definition and surface. Where several animations are about one property, the last
/// one counts.
class SceneKeys
{
public:
    enum Aspect : quint8 { ValueAspect, ImageFileAspect, ImageAspect, OtherAspect };

    /// A property that a key was read into.
    struct User {
        std::size_t surface; ///< index of its record
        QString property;
    };
    struct Entry {
        JsonIndex::Value animation = JsonIndex::none;
        JsonIndex::Value key = JsonIndex::none; ///< at time 0; `none` without
        Aspect aspect = OtherAspect;
        QString node;    ///< empty for any
        QString surface; ///< empty for any
        ChannelName channel;
        std::vector<User> users;
    };

    void read(const JsonIndex& index);

    const std::vector<Entry>& entries() const { return m_entries; }
    /// The entries for a property, in the document's order.
    std::vector<std::size_t> find(const SurfaceName& surface, const ChannelName& channel) const;
    ChannelKeys keysOf(const std::vector<std::size_t>& entries) const;
    void addUser(std::size_t entry, const User& user) { m_entries[entry].users.push_back(user); }

private:
    typedef std::vector<std::size_t> Numbers;
    /// By channel, then surface, then node.
    typedef QHash<QString, QHash<QString, QHash<QString, Numbers>>> Places;

    std::vector<Entry> m_entries;
    Places m_listed;
    Places m_named;
};
