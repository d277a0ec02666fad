// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QString>

/// How much a problem matters, the worst first.
enum class ProblemLevel {
    Stops, ///< the renderer ends, or does not load it
    Warns, ///< the picture is not what one would think
    Notes  ///< something is not read
};

/// The colour of its sign, for a light and for a dark window.
QColor levelColor(ProblemLevel level);

/// What the level means, for those who do not see colours.
QString levelText(ProblemLevel level);
