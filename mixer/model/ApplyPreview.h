// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzelementsnapshot.h"

#include <QString>
#include <QVector>

class DzMaterial;
class IDzBrickUser;

/// What applying a network would change on one surface.
struct SurfacePreview {
    QString surface;
    QVector<DzElementChange> changes;
};

/// The selected surfaces of the scene in its order, each material once.
QVector<DzMaterial*> selectedSurfaces();

/// What applying would change on each selected surface. The scene is as it was afterwards.
QVector<SurfacePreview> previewApply(IDzBrickUser* user);
