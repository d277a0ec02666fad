// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The line that separates the sections of the text that readers see.
QString exportSeparator();

/// The two sections of a network's text as readers see them, each under its heading.
///
/// It joins text and knows nothing of bricks, so that a brick can tell its own text as well.
struct ExportText {
    ExportText(const QString& materialText, const QString& meshText);

    QString text;
    // Where the sections stand in it, in characters.
    int materialBegin;
    int meshBegin;
};
