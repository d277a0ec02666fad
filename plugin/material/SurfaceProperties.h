// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzMaterial;
class DzProperty;

/// Names of the properties that reach the renderer. They are part of files.
namespace RenderNames {
/// What all of them begin with.
inline QString prefix()
{
    return QLatin1String("LuxRender_");
}
/// What the published values of a network begin with.
inline QString publishedPrefix()
{
    return QLatin1String("LuxRender_Lm_");
}
/// The two texts that applying puts on a surface.
inline QString materialText()
{
    return QLatin1String("LuxRender_material_extrasettings");
}
inline QString meshText()
{
    return QLatin1String("LuxRender_material_extrasettings_mesh");
}
/// The enumeration of a surface's type, which other programs write.
inline QString materialType()
{
    return QLatin1String("LuxRender_material_type");
}
} // namespace RenderNames

/// True for the properties that reach the renderer.
bool isRenderProperty(const QString& name);
/// True for those of them that applying puts on a surface.
bool isAppliedProperty(const QString& name);

/// Removes a property of a surface, whether users might or not. It can be undone.
void removeAnyProperty(DzMaterial* material, DzProperty* property);

/// Takes off a surface what applying put there: texts, published values and the stored network.
/// Other properties of the renderer stay. It can be undone.
void stripSurface(DzMaterial* material);
/// Does so on every selected surface of the scene, as one undo step.
void stripSelectedSurfaces();
