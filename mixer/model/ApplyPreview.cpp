// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ApplyPreview.h"

#include "ElementLabel.h"
#include "dzmaterial.h"
#include "dzscene.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

QVector<DzMaterial*> selectedSurfaces()
{
    QVector<DzMaterial*> selected;
    for (const DzSurface& surface : dzScene->getSelectedSurfaces())
        selected.append(surface.material);
    return selected;
}

QVector<SurfacePreview> previewApply(IDzBrickUser* user)
{
    const QVector<DzMaterial*> surfaces = selectedSurfaces();
    QVector<DzElementSnapshot> before;
    for (const DzMaterial* surface : surfaces)
        before.append(DzElementSnapshot(surface));
    QVector<SurfacePreview> result;
    // Without accept() the hold takes everything back.
    const DzUndoStackHold hold;
    user->applyToScene();
    for (int i = 0; i < surfaces.size(); ++i) {
        const DzMaterial* surface = surfaces.at(i);
        result.append(SurfacePreview {
            labelOf(surface), before.at(i).changesTo(DzElementSnapshot(surface)) });
    }
    return result;
}
