// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SurfaceProperties.h"

#include "NetworkPersistence.h"
#include "dzmaterial.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "dzsimpleelementdata.h"
#include "dzundostack.h"

bool isRenderProperty(const QString& name)
{
    return name.startsWith(RenderNames::prefix());
}

bool isAppliedProperty(const QString& name)
{
    return name.startsWith(RenderNames::publishedPrefix()) || name == RenderNames::materialText()
        || name == RenderNames::meshText();
}

void removeAnyProperty(DzMaterial* material, DzProperty* property)
{
    property->setIsUserProperty(true);
    material->removeProperty(property);
}

void stripSurface(DzMaterial* material)
{
    for (int i = material->getNumProperties() - 1; i >= 0; --i)
        if (isAppliedProperty(material->getProperty(i)->getName()))
            removeAnyProperty(material, material->getProperty(i));
    if (DzElementData* item = material->findDataItem(StoredKeys::dataItem()))
        material->deleteDataItem(item);
}

void stripSelectedSurfaces()
{
    const QVector<DzSurface> surfaces = dzScene->getSelectedSurfaces();
    DzUndoStackHold hold;
    for (int i = 0; i < surfaces.size(); ++i)
        stripSurface(surfaces.at(i).material);
    hold.accept(QLatin1String("Take Off Network"));
}
