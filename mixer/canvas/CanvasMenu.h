// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class NetworkView;
class QMenu;
class QPointF;

/// The menu of what is at a place of the scene: a brick, which is selected with it, a wire, a
/// frame's title or nothing. A child of the view.
QMenu* makeCanvasMenu(NetworkView* view, const QPointF& place);
