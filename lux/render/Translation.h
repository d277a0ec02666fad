// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Inputs.h"
#include "PropertyText.h"
#include "Terms.h"

#include <QSet>
#include <QStringList>

namespace lux {

/// What the translation of a text works on and writes to.
struct Translation {
    PropertyText properties;
    TextureNames textures;
    /// What is drawn otherwise than the renderer would, a sentence each, in the text's order.
    QStringList notes;
    /// Where image names that are not absolute begin.
    QString imageFolder;
    /// Begins every name that is made, so that scenes that are edited live get new ones each time.
    QByteArray prefix;

    QByteArray newName();
    /// Tells of what is not exact in a statement.
    void note(const Statement& statement, const QString& text);

private:
    int m_names = 0;
    QSet<QString> m_said; // only asked, never walked
};

/// Adds the texture that the statement defines. Kinds that the renderer does not know are left out
/// with a note, so that whoever refers to them takes its default, as there.
void translateTexture(const Statement& statement, Translation* translation);

} // namespace lux
