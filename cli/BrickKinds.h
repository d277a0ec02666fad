// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickBase.h"
#include "dzrefcounteditem.h"

#include <QString>
#include <QVector>

typedef DzTSharedPointer<VireoBrickBase> BrickPtr;

/// A fresh brick of a class; null when no module offers it or it is not a brick.
BrickPtr makeBrick(const QString& className);
/// A fresh brick of every class that the loaded modules offer, in order of registration.
QVector<BrickPtr> makeAllBricks();
/// The word for a brick's kind: "root", "material", "volume", "float", "color" or "fresnel".
QString brickKind(const VireoBrickBase* brick);
