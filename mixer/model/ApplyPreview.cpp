// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "ApplyPreview.h"

#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QSet>

QVector<DzMaterial*> selectedSurfaces()
{
    QVector<DzMaterial*> selected;
    QSet<DzMaterial*> seen;
    for (int i = 0; i < dzScene->getNumNodes(); ++i) {
        const DzObject* object = dzScene->getNode(i)->getObject();
        const DzShape* shape = object ? object->getCurrentShape() : nullptr;
        for (int k = 0; shape && k < shape->getNumSelectedMaterials(); ++k) {
            DzMaterial* material = shape->getSelectedMaterial(k);
            if (seen.contains(material))
                continue;
            seen.insert(material);
            selected.append(material);
        }
    }
    return selected;
}

QVector<SurfaceChanges> previewApply(IDzBrickUser* user)
{
    const QVector<DzMaterial*> surfaces = selectedSurfaces();
    QVector<DzElementSnapshot> before;
    for (const DzMaterial* surface : surfaces)
        before.append(DzElementSnapshot(surface));
    QVector<SurfaceChanges> result;
    // Without accept() the hold takes everything back.
    const DzUndoStackHold hold;
    user->applyToScene();
    for (int i = 0; i < surfaces.size(); ++i) {
        const DzMaterial* surface = surfaces.at(i);
        result.append(SurfaceChanges {
            surface->getLabel().isEmpty() ? surface->getName() : surface->getLabel(),
            before.at(i).changesTo(DzElementSnapshot(surface)) });
    }
    return result;
}
