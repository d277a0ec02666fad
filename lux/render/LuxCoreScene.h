// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SceneText.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace lux {

struct LuxCoreOptions {
    /// Where image names that are not absolute begin.
    QString imageFolder;
    /// Begins every name that is made: letters and digits.
    QByteArray prefix = "vireo";
};

/// The mesh settings of a surface that change its shape.
struct MeshSettings {
    int subdivisions = 0;
    /// A float texture's LuxCore name; empty without one.
    QByteArray displacement;
    double displacementScale = 0.1;
    double displacementOffset = 0;
    bool smoothsNormals = true;
};

/// A material of the renderer's text as LuxCore's properties.
struct LuxCoreMaterial {
    /// Textures, volumes and materials, each before what refers to it.
    QByteArray properties;
    /// LuxCore's name of the material that the text puts on the surface: of the last NamedMaterial,
    /// else of the last material. Empty when the text has none.
    QByteArray name;
    MeshSettings mesh;
    /// What is drawn otherwise than LuxRender would, a sentence each, in the text's order.
    QStringList notes;
};

/// Translates a material's text by the renderer's rules. What LuxCore lacks is put together from
/// other types where that is exact, else drawn alike and named in the notes. A text with errors
/// gives what could be read.
LuxCoreMaterial luxCoreMaterial(const SceneText& text, const LuxCoreOptions& options);

} // namespace lux
