// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QVector>

class DzShaderBrick;
class NetworkEdit;

enum Alignment {
    AlignLeft,
    AlignRight,
    AlignTop,
    AlignBottom,
    AlignHorizontalCentres,
    AlignVerticalCentres,
    DistributeHorizontally,
    DistributeVertically
};

/// Lines the bricks up, or makes the gaps between them equal, as one step on the undo stack.
void alignBricks(NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, Alignment alignment);
