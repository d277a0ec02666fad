// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QColor>
#include <QIcon>

/// Small icons that are drawn as lines in the colour of text, at any size and in any theme.
namespace LineIcon {

enum Name {
    Lock,
    Unlock,
    Reset,
    Image,
    Link,
    Folder,
    Copy,
    Save,
    Open,
    New,
    Apply,
    FromScene,
    Undo,
    Redo,
    Warning,
    Search,
    Plus
};

QIcon make(Name name);

/// A dot in a colour of its own, or only its ring.
QIcon makeDot(const QColor& color, bool isRing);

} // namespace LineIcon
