// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzpropertysettings.h"

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QString>
#include <map>

class DzBrickParam;
class DzIntProperty;
class DzSettings;
class SceneCodeWriter;
class VireoExtPropertyParam;
class VireoTextureBrick;

/// The inputs of a texture with a variable number of them: a property "count" (0 to 10), and that
/// many pairs of a number and a texture, numbered from 1. The numbers are written together as one
/// array.
///
/// Pairs are known by identity: an input that a user gave the name of one is none. They stand
/// after the brick's own inputs, in order of their numbers. Values and links of pairs that stay
/// are kept; those of pairs that go come back with them as long as the brick lives, but never
/// reach a file, a copy or the text.
class NumberedPairs
{
public:
    /// `name` is that of a pair's number without its index: "offset" or "weight". `amountParam`
    /// is written before the pairs and may be null.
    NumberedPairs(VireoTextureBrick* owner, const char* name, VireoExtPropertyParam* amountParam);

    /// Makes the property "count", which belongs to the brick.
    DzIntProperty* createCount();
    /// Takes over "count" from stored attributes, so that the pairs stand before other inputs.
    void readCount(const DzSettings* attributes);
    /// Makes missing pairs up to "count" and removes the pairs above it.
    void matchCount();
    /// Writes the amount, the pairs' textures, then the array of their numbers.
    void write(SceneCodeWriter* writer) const;

private:
    struct Pair {
        QPointer<VireoExtPropertyParam> number;
        QPointer<VireoExtPropertyParam> texture;
    };

    /// What an input that went had to itself.
    struct HeldInput {
        QString label;
        DzPropertySettings property;
        QList<QPointer<DzBrickParam>> sources;
    };
    struct HeldPair {
        HeldInput number;
        HeldInput texture;
    };

    int boundedCount();
    void completePair(int index);
    void removeLastPair();
    bool isOnBrick(const DzBrickParam* param) const;
    VireoExtPropertyParam* createTexture(const char* name) const;
    static HeldInput holdInput(const VireoExtPropertyParam* param);
    void giveBack(const HeldInput& held, VireoExtPropertyParam* param) const;

    VireoTextureBrick* brick;
    QByteArray numberName;
    QPointer<DzIntProperty> count;
    QPointer<VireoExtPropertyParam> amount;
    QList<Pair> pairs;
    int numPairs; ///< those at the front of the list that are on the brick
    /// Of the pairs that "count" took away, by their number.
    std::map<int, HeldPair> heldPairs;
};
