// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SceneSurfaces.h"
#include "dzelementsnapshot.h"

#include <QByteArray>

class DzScene;

/// Notes what surfaces of a file are now, to tell later what a command made of them.
class SurfaceChanges
{
public:
    explicit SurfaceChanges(const QVector<Surface>& surfaces);

    /// Compares with the same surfaces of the scene as it is read from the new file.
    void setAfter(const DzScene& scene);
    /// What changed, surface by surface: as lines for people, or as JSON.
    QByteArray toText() const;
    QByteArray toJson() const;

private:
    QVector<Surface> m_surfaces;
    QVector<DzElementSnapshot> m_before;
    QVector<QVector<DzElementChange>> m_changes; ///< by surface
};
