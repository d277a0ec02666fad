// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzmaterial.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzscene.h"
#include "dzscenefile.h"
#include "dzshape.h"
#include "dzundostack.h"

#include <gtest/gtest.h>

/// A scene that was opened from a text.
class OpenedScene
{
public:
    explicit OpenedScene(const QByteArray& text)
    {
        EXPECT_TRUE(file.loadText(text, QStringLiteral("test.duf"), &scene))
            << file.getError().toStdString();
    }
    DzMaterial* surface(int index) const
    {
        const QVector<DzSurface> surfaces = scene.getSurfaces();
        EXPECT_LT(index, surfaces.size());
        return index < surfaces.size() ? surfaces.at(index).material : nullptr;
    }
    DzMaterial* surface(const char* name) const
    {
        for (const DzSurface& surface : scene.getSurfaces())
            if (surface.material->getName() == QString::fromUtf8(name))
                return surface.material;
        ADD_FAILURE() << name;
        return nullptr;
    }
    QString warnings() const { return file.getWarnings().join(QLatin1Char('\n')); }

    DzUndoStackLock lock;
    DzScene scene;
    DzSceneFile file;
};

template <typename Property>
Property* propertyIn(DzMaterial* material, const char* name)
{
    auto* property = qobject_cast<Property*>(
        material ? material->findProperty(QString::fromUtf8(name)) : nullptr);
    EXPECT_NE(property, nullptr) << name;
    return property;
}
