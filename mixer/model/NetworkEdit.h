// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NetworkLinks.h"
#include "dznetworklayout.h"

#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QString>
#include <QVector>
#include <functional>

class DzBrickParam;
class DzElement;
class DzShaderBrick;
class IDzBrickUser;

/// What users do to the bricks of one network, each as one step on the application's undo stack;
/// wires, frames and copies have functions of their own. It follows changes that others make, too:
/// bricks that scripts add without a place get one.
class NetworkEdit : public QObject
{
    Q_OBJECT

public:
    /// The brick user is not owned and may go first. All who show a network share one edit, whose
    /// signals tell of what the host has no signals for.
    explicit NetworkEdit(IDzBrickUser* user, QObject* parent = nullptr);

    /// Null when the brick user is gone.
    IDzBrickUser* getUser() const;
    /// All bricks, ascending by number.
    QVector<DzShaderBrick*> getBricks() const;
    /// The links among all bricks, in the order of the inputs.
    QVector<BrickLink> getLinks() const;

    // Bricks.
    /// Adds a new brick with its top left corner at `position`. Null, with the reason in `error`,
    /// when the class is no brick or this user refuses it.
    DzShaderBrick* addBrick(
        const QString& className, const QPointF& position, QString* error = nullptr);
    /// The same with the first parameter that fits linked to `pin`, and placed so that this
    /// parameter's pin comes to `position`.
    DzShaderBrick* addBrickLinked(const QString& className, const QPointF& position,
        DzBrickParam* pin, QString* error = nullptr);
    /// The same put into a wire; null also when it does not fit there.
    DzShaderBrick* addBrickOnLink(const QString& className, const QPointF& position,
        const BrickLink& link, QString* error = nullptr);
    /// Puts a brick of the network into a wire; with a `position` it is moved there in the same
    /// step.
    bool insertOnLink(
        DzShaderBrick* brick, const BrickLink& link, const QPointF* position = nullptr);
    /// With `reconnect` whatever the bricks fed is linked with what fed them, as far as it fits.
    void deleteBricks(const QVector<DzShaderBrick*>& bricks, bool reconnect = false);
    /// An empty title brings the preferred name back.
    void setTitle(DzShaderBrick* brick, const QString& title);
    void setHidesParams(const QVector<DzShaderBrick*>& bricks, bool hides);
    void setWidth(DzShaderBrick* brick, qreal width);
    /// Makes the bricks wider, or narrower for less than nothing, as far as bricks may be.
    void changeWidth(const QVector<DzShaderBrick*>& bricks, qreal by);

    // Places.
    typedef DzNetworkLayout::Place Move;
    /// What a step that moves these is called.
    static QString moveCaption(const QVector<Move>& moves);
    void moveBricks(const QVector<Move>& moves);
    /// Arranges the bricks in layers, about where they are; all when `bricks` is empty.
    void arrange(const QVector<DzShaderBrick*>& bricks);
    /// Arranges, once and without undo, the bricks whose settings ask for it and those that nobody
    /// has placed. To be called after loading; true when a brick was moved.
    bool arrangeUnplaced();
    /// Where the next bricks that come without a place are put.
    void setPlaceHint(const QPointF& place);

    // Settings.
    typedef std::function<void(DzShaderBrick*)> BrickChange;
    /// Changes the brick settings of bricks and tells everybody; leaves undo items, in a hold of
    /// the caller's.
    void changeSettings(const QVector<DzShaderBrick*>& bricks, const BrickChange& change);

signals:
    void bricksMoved(const QVector<DzShaderBrick*>& bricks);
    /// Size, shown rows or frame changed.
    void brickSettingsChanged(DzShaderBrick* brick);

private slots:
    void placeNewBrick(DzShaderBrick* brick);

private:
    friend class BrickMoveItem;
    friend class BrickSettingsItem;

    DzShaderBrick* makeBrick(const QString& className, QString* error) const;

    IDzBrickUser* m_user;
    QPointer<DzElement> m_element; ///< goes with the user, which is no QObject itself
    QPointF m_placeHint;
    int m_placedCount = 0;
};
