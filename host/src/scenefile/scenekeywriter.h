// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonlayout.h"
#include "scenereader.h"

#include <map>
#include <vector>

/// Brings the keys at time 0 of changed properties up to date, so that a reader of the document
/// finds the new values.
///
/// A key may hold for many surfaces. It is changed or taken out when they all want the same;
/// otherwise each that wants something else gets an animation of its own behind the others.
class SceneKeyWriter
{
public:
    SceneKeyWriter(const JsonIndex& index, const SceneKeys& keys, const SurfaceRecords& surfaces,
        JsonEditor* editor);

    /// A property has this value now.
    void setValue(std::size_t surface, const ChannelName& channel, const QByteArray& token);
    /// A property has this map, none for an empty name.
    void setMap(std::size_t surface, const ChannelName& channel, const QString& file);
    /// The surface has the property no more.
    void drop(std::size_t surface, const ChannelName& channel);

    /// Makes the changes. Returns the surfaces whose keys could not be written, since no address
    /// tells them from others.
    std::vector<std::size_t> finish();

private:
    enum Action : quint8 { Set, MakeFile, Remove, Drop };
    struct Wish {
        std::size_t surface;
        Action action;
        QByteArray token;

        bool isSame(const Wish& other) const
        {
            return action == other.action && token == other.token;
        }
    };

    std::vector<std::size_t> entriesOf(std::size_t surface, const ChannelName& channel) const;
    void wish(std::size_t entry, const Wish& wish);
    bool hasOtherUsers(const SceneKeys::Entry& entry, const std::vector<Wish>& wishes) const;
    void change(const SceneKeys::Entry& entry, const Wish& wish);
    void setKey(JsonIndex::Value key, const QByteArray& token);
    bool addOwn(const SceneKeys::Entry& entry, const Wish& wish);
    QString addressOf(std::size_t surface) const;

    const JsonIndex& m_index;
    const SceneKeys& m_keys;
    const SurfaceRecords& m_surfaces;
    JsonEditor* m_editor;
    JsonIndex::Value m_animations;
    std::map<std::size_t, std::vector<Wish>> m_wishes; ///< by entry
};
