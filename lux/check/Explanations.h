// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// What every brick and every input of the catalogue is for, in a sentence or two of plain text
/// with unit, useful range and what the renderer does at the ends.
///
/// The sentences stand in `explanations.json`, which is compiled in: one for each class, one for
/// each name of an input, and exceptions where a name means something else in some classes. They
/// are read at the first question and kept; the functions may be called from any thread.
class Explanations
{
public:
    /// What a brick class is for; empty for a class that has no explanation.
    static QString ofBrick(const QString& className);
    /// What an input of a class is for; empty when there is none. A name that ends in a number is
    /// looked up under its pattern too, such as "tex%1", so that all pairs of a band have one.
    /// Inputs that users add themselves are unknown here: do not ask for them, since a name of
    /// theirs may be that of an input of another class.
    static QString ofInput(const QString& className, const QString& inputName);
};
