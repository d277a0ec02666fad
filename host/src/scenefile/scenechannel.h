// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonindex.h"
#include "jsonlayout.h"
#include "scenekeys.h"
#include "scenereference.h"

#include <QHash>
#include <QStringList>
#include <QVector>

class DzProperty;

/// What a scene file knows of a property, for comparing it with what was read.
struct ChannelState {
    enum Type : quint8 { Float, Int, Bool, Enum, Color, String, File, Image, Unknown };

    Type type = Unknown;
    bool hidden = false;
    bool locked = false;
    bool user = false;
    bool mappable = false;
    bool clamped = false;
    int fileType = 0;
    double value = 0;        ///< a colour's is its packed form
    double defaultValue = 0; ///< likewise
    double min = 0;
    double max = 0;
    double step = 0;
    QString label;
    QString path;        ///< begins with a slash
    QString text;        ///< value of a string, file or image
    QString defaultText; ///< its default
    QString filter;
    QString map;
    QStringList items;

    /// State of a property; type Unknown when scene files have no form for its class.
    static ChannelState of(const DzProperty* property);
    bool operator==(const ChannelState& other) const;
    bool isNumeric() const { return type <= Color; }
    bool hasLimits() const { return type == Float || type == Int; }
};

/// A property's entry in a document: the definition's and the surface's own, either may be absent.
struct ChannelPlaces {
    JsonIndex::Value definition = JsonIndex::none; ///< { "channel", "group", ... }
    JsonIndex::Value instance = JsonIndex::none;
    ChannelKeys keys; ///< what they say counts first
};

/// The entries of the image_library by their ids.
class LayeredImages
{
public:
    explicit LayeredImages(const JsonIndex& index);
    /// File name of an image's lowest layer; empty when there is none.
    QString file(const QString& reference) const;
    bool hasSeveralLayers(const QString& reference) const;

private:
    struct Image {
        QString file;
        bool hasSeveralLayers = false;
    };

    QHash<QString, Image> m_images;
};

/// What could not be taken from a channel as it is.
struct ChannelProblems {
    QString value;          ///< of its value; empty for none
    bool isLayered = false; ///< its map has more layers than the one that is used
};

/// Makes the property that the entries and keys describe together; null when they describe none
/// that is known here.
DzProperty* propertyFromChannel(const JsonIndex& index, const ChannelPlaces& places,
    const LayeredImages& images, ChannelProblems* problems);
/// Makes a property of keys alone: of the type that their values have.
DzProperty* propertyFromKeys(const JsonIndex& index, const QString& name, const ChannelKeys& keys,
    const LayeredImages& images, ChannelProblems* problems);

/// Name of a channel's property: "name" where there is one, else "id".
QString channelPropertyName(const JsonIndex& index, const ChannelPlaces& places);
/// The "channel" object of an entry, `none` without one.
JsonIndex::Value channelOf(const JsonIndex& index, JsonIndex::Value entry);

/// A member of a channel; an empty token stands for one that is not written.
struct ChannelMember {
    const char* key;
    QByteArray token;
};
/// All members of a property's full channel behind "label".
QVector<ChannelMember> channelMembers(const ChannelState& state);
/// Tokens of value and default.
QByteArray channelValueToken(const ChannelState& state);
QByteArray channelDefaultToken(const ChannelState& state);
QByteArray channelTypeToken(const ChannelState& state);

/// A full entry. The map is left out for `withMap` false.
JsonPiece fullChannelEntry(const QString& name, const ChannelState& state, bool withMap);
/// An entry { "channel": { id, type, current_value, image_file } } of a surface.
JsonPiece instanceChannelEntry(
    const QByteArray& idToken, const QByteArray& typeToken, const ChannelState& state);
