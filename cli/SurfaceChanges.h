// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SceneSurfaces.h"
#include "dzelementsnapshot.h"

#include <QByteArray>

/// Notes what surfaces are now, to tell later what a command made of them.
class SurfaceChanges
{
public:
    explicit SurfaceChanges(const QVector<Surface>& surfaces);

    /// What changed since, surface by surface: as lines for people, or as JSON.
    QByteArray toText() const;
    QByteArray toJson() const;

private:
    QVector<DzElementChange> changesOf(int index) const;

    QVector<Surface> m_surfaces;
    QVector<DzElementSnapshot> m_before;
};
