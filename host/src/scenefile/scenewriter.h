// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scenekeywriter.h"
#include "scenereader.h"

#include <map>
#include <set>

class DzProperty;
class DzSimpleElementData;

/// Compares surfaces with what was read of them and writes the differences into the document.
class DzSceneWriter
{
public:
    DzSceneWriter(const JsonIndex& index, const SurfaceRecords& surfaces, const SceneKeys& keys,
        DzWarningList* warnings);

    /// The new text: the old one itself when nothing changed, null when it gets too large.
    QByteArray write();
    /// The surfaces of which something could not be written, in the order of their records.
    QVector<DzMaterial*> getIncomplete() const;

private:
    typedef JsonIndex::Value Value;

    /// New entries of one surface.
    struct Additions {
        std::vector<JsonPiece> definition;
        std::vector<JsonPiece> instance;
        std::vector<JsonPiece> data;
    };
    /// A member that has another token than when it was read.
    struct Change {
        const char* key;
        QByteArray token; ///< empty for one that is to go
    };
    typedef std::vector<Change> Changes;
    /// An entry of a shared definition that surfaces no longer have.
    struct SharedRemoval {
        enum Kind { Named, Listed, Data };

        Kind kind;
        QString name;
        std::vector<const SurfaceRecord*> surfaces;
    };

    void warn(const SurfaceRecord& surface, const QString& text, const QString& remedy);
    /// A warning that something of a surface could not be written.
    void fail(const SurfaceRecord& surface, const QString& text, const QString& remedy);
    bool isEditable(const SurfaceRecord& surface) const;
    void writeSurface(const SurfaceRecord& surface);
    void writeProperties(const SurfaceRecord& surface);
    void addProperty(const SurfaceRecord& surface, const DzProperty* property);

    std::size_t numberOf(const SurfaceRecord& surface) const;
    void writeKeys(const SurfaceRecord& surface, const ChannelName& address,
        const ChannelState& now, const ChannelState* before);
    void writeOnlyKeys(const SurfaceRecord& surface);
    void tellUnkeyed(const SurfaceRecord& surface, const QString& name, const Changes& changes);
    void changeChannel(
        const SurfaceRecord& surface, const ChannelRecord& channel, const ChannelState& now);
    void addOverlay(const ChannelRecord& channel, const Changes& changes, const ChannelState& now);
    void changeEntry(Value entry, const ChannelState& before, const ChannelState& now);
    void changeMap(
        const SurfaceRecord& surface, const ChannelRecord& channel, const ChannelState& now);
    void clearMap(const SurfaceRecord& surface, const ChannelRecord& channel);
    void setMember(Value channel, const char* key, const QByteArray& token);
    void removeMember(Value object, const char* key);
    bool isOnlyMapEntry(Value entry, Value definition) const;

    void removeChannel(const SurfaceRecord& surface, const ChannelRecord& channel);
    void removeEntry(Value material, Value entry, bool isNamed);
    void removeShared(
        const SurfaceRecord& surface, Value entry, SharedRemoval::Kind kind, const QString& name);
    void removeSharedEntries();

    void writeData(const SurfaceRecord& surface);
    Value dataItem(Value element, const QString& name) const;
    bool changeData(const SurfaceRecord& surface, const DzSimpleElementData* data);
    void removeLostData(const SurfaceRecord& surface, Value element);

    void addToExtra(const SurfaceRecord& surface, Value element,
        const std::vector<JsonPiece>& channels, const std::vector<JsonPiece>& data);
    void addChannels(const SurfaceRecord& surface, Value element, Value extra,
        const std::vector<JsonPiece>& channels);
    void tidyExtra(Value element);

    const JsonIndex& m_index;
    const SurfaceRecords& m_surfaces;
    DzWarningList* m_warnings;
    JsonEditor m_editor;
    SceneKeyWriter m_keys;
    Additions m_added;
    std::map<Value, SharedRemoval> m_sharedRemovals;
    QHash<Value, int> m_numUses;
    std::set<std::size_t> m_incomplete; ///< surfaces by the numbers of their records
    std::set<Value> m_touched;          ///< elements whose "extra" lost something
};
