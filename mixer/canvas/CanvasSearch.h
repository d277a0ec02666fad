// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickSearchPopup.h"
#include "NetworkEdit.h"

#include <QPointer>

class NetworkView;

/// What to tell a user who has just added a root to a network that had one: of several only the
/// last is written. Empty for any other brick.
QString secondRootNotice(const NetworkEdit& edit, const DzShaderBrick* added);

/// Bricks that are found by typing and added to the canvas: somewhere, linked with a pin, or put
/// into a wire. One search is open at a time.
class CanvasSearch
{
public:
    explicit CanvasSearch(NetworkView* view);

    /// For a brick at a place of the scene.
    void open(const QPointF& place);
    /// For a brick that fits the pin and is linked with it, whose pin comes to the place.
    void openFor(DzBrickParam* pin, const QPointF& place);
    /// For a brick that is put into the wire.
    void openInto(const BrickLink& link);

    /// Adds a brick as if it had been found by typing: with the middle of its title at a place, or
    /// near it where it hides no other, and put into the wire when there is one. Null, and a
    /// message, when that fails.
    DzShaderBrick* add(const QString& className, const QPointF& grip, const BrickLink& link);

private:
    typedef std::function<DzShaderBrick*(const QString& className, QString* error)> Adder;
    void start(BrickSearchPopup* popup, const QPointF& place, const Adder& add);
    DzShaderBrick* select(DzShaderBrick* added, const QString& error);
    QPointF freePlace(const QString& className, const QPointF& wanted) const;

    NetworkView* m_view;
    QPointer<BrickSearchPopup> m_popup;
};
