// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What a brick's writeCode() tells of the statement that it wrote.
struct CodeResult {
    /// The numbers belong to the interface of writeCode(), which code outside of this tree may call
    /// through the base class; 1 to 5 mean nothing here.
    enum Kind { NothingKind = 0, TextureKind = 6, MaterialKind = 7, VolumeKind = 8 };

    CodeResult()
        : kind(NothingKind)
        , aux(0)
    {
        for (int i = 0; i < 4; ++i)
            values[i] = 0;
    }

    int kind;
    // Nothing in this tree reads the two: they are for callers that want the colour and not its
    // text.
    /// Number of components in `values` that mean a colour: 3 or 1; 0 for bricks without one.
    int aux;
    /// Red, green, blue (a float three times) and 1, filled by the colour constant and the image
    /// maps; zeros for all other bricks.
    double values[4];
    /// The name of the statement; for the root brick, the text of the mesh section.
    QString name;
};
