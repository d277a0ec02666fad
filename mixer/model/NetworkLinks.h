// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QVector>

class DzBrickParam;
class DzShaderBrick;

/// A wire: an output and an input that it feeds.
struct BrickLink {
    DzBrickParam* output = nullptr;
    DzBrickParam* input = nullptr;

    bool isNull() const { return !output || !input; }
    bool operator==(const BrickLink& other) const
    {
        return output == other.output && input == other.input;
    }
};

enum LinkMode {
    ReplaceLinks, ///< the links that the input has are removed
    AddLink
};

/// The two as a wire, whichever order they come in.
BrickLink inOrder(DzBrickParam* a, DzBrickParam* b);

// What users do to wires, each as one step on the application's undo stack. The ends may be given
// in either order.

/// Why these two cannot be linked, as one line; empty when they can.
QString linkRefusal(DzBrickParam* a, DzBrickParam* b);
bool linkPins(DzBrickParam* a, DzBrickParam* b, LinkMode mode = ReplaceLinks);
bool unlinkPins(DzBrickParam* a, DzBrickParam* b);
void unlinkAll(DzBrickParam* param);
/// Takes the input's end of a wire to another input.
bool moveLink(const BrickLink& link, DzBrickParam* input, LinkMode mode = ReplaceLinks);
void cutLinks(const QVector<BrickLink>& links);
/// True when the brick has an input for the wire's output and an output for its input.
bool canInsertOnLink(const DzShaderBrick* brick, const BrickLink& link);

// Parts of larger steps: they leave undo items, in a hold of the caller's.

bool joinPins(DzBrickParam* output, DzBrickParam* input, LinkMode mode);
/// Puts the brick into the wire.
bool joinInto(DzShaderBrick* brick, const BrickLink& link);
/// Whatever the brick feeds is fed by the first of the brick's sources that fits.
void joinAround(DzShaderBrick* brick);
