// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QHash>
#include <QPair>
#include <QPointer>
#include <QString>
#include <QVector>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// A placeholder of the text and what stands behind it.
struct TextPlaceholder {
    QString name; ///< empty for a locked value, which has none as long as it is locked
    QPointer<DzShaderBrick> brick;
    QPointer<DzProperty> property;
};

/// A mapped property whose map the text does not carry.
struct UnwrittenMap {
    QPointer<DzShaderBrick> brick;
    QPointer<DzProperty> property;
};

/// How the text is to be written.
struct NetworkTextForm {
    bool literalValues = true; ///< values rather than placeholders for those that are not locked
    bool mapFiles = false;     ///< image maps as the names of their files
    /// Where relative names of images are meant from: they are written as absolute ones. Empty
    /// leaves names as the network has them.
    QString imageFolder = QString();
};

/// A brick's own part of the text, in characters.
struct TextStatement {
    int begin;
    int length;
    QPointer<DzShaderBrick> brick;
};

/// The renderer's text of a network, as its root brick tells it when asked by name: the mixer
/// knows no class of a plug-in.
struct NetworkText {
    QString text;
    QVector<TextPlaceholder> placeholders;
    QVector<UnwrittenMap> unwrittenMaps;
    /// In order of their places; none overlaps another.
    QVector<TextStatement> statements;
    /// Why there is no text, in one line; empty when there is.
    QString error;

    /// The brick whose statement holds the character, null when there is none.
    DzShaderBrick* brickAt(int position) const;
};

/// The text of a network.
NetworkText textOf(const IDzBrickUser* user, const NetworkTextForm& form);
