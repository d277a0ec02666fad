// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class QPointF;
struct CanvasHit;

/// What a tool tip says about that which is at a place of the scene, as plain text; empty where
/// there is nothing to say.
QString canvasTip(const CanvasHit& hit, const QPointF& place);
