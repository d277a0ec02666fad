// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "NetworkScene.h"

#include <QPainterPath>
#include <QPointer>
#include <memory>

class NetworkView;

/// Something that a user does with a button of the mouse held down. Places are in scene
/// coordinates. Whatever it works on may be deleted meanwhile, by a script for example.
class CanvasGesture
{
public:
    explicit CanvasGesture(NetworkView* view);
    virtual ~CanvasGesture();

    virtual void move(const QPointF& place, Qt::KeyboardModifiers modifiers) = 0;
    /// The button was released.
    virtual void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) = 0;
    /// Takes back whatever was shown.
    virtual void cancel() {}
    /// Paints what belongs to the gesture above everything else.
    virtual void paint(QPainter*) const {}

protected:
    NetworkScene* scene() const;
    NetworkEdit* edit() const;

    NetworkView* m_view;
};

/// Drags a wire from a pin. `picked`, when not null, is a wire whose end was taken off an input.
class WireGesture : public CanvasGesture
{
public:
    WireGesture(
        NetworkView* view, DzBrickParam* from, const BrickLink& picked, const QPointF& place);
    ~WireGesture() override;

    void move(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter* painter) const override;

private:
    DzBrickParam* targetAt(const QPointF& place) const;
    BrickLink picked() const;
    void drop(DzBrickParam* target, LinkMode mode);

    QPointer<DzBrickParam> m_from;
    QPointer<DzBrickParam> m_pickedInput;
    QPointer<DzBrickParam> m_target;
    QPointF m_place;
    QString m_refusal;
};

/// Moves the selected bricks; a single loose brick can be dropped on a wire.
class MoveGesture : public CanvasGesture
{
public:
    /// A click without a move leaves `clicked` alone in the selection.
    MoveGesture(NetworkView* view, const QPointF& place, DzShaderBrick* clicked);

    void move(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void cancel() override;

private:
    QVector<NetworkEdit::Move> movedTo(const QPointF& offset) const;
    void drop(const QVector<NetworkEdit::Move>& moves, const QPointF& place);

    struct Start {
        QPointer<DzShaderBrick> brick;
        QPointF place;
    };
    QVector<Start> m_starts;
    QPointF m_start;
    QPointF m_offset;
    QPointer<DzShaderBrick> m_clicked;
    bool m_isMoving = false;
    bool m_canInsert = false;
};

/// Selects what a box reaches over.
class BoxGesture : public CanvasGesture
{
public:
    BoxGesture(NetworkView* view, const QPointF& place, Qt::KeyboardModifiers modifiers);
    ~BoxGesture() override;

    void move(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void cancel() override;
    void paint(QPainter* painter) const override;

private:
    /// What was selected before and is still there.
    QVector<DzShaderBrick*> before() const;

    QVector<QPointer<DzShaderBrick>> m_before;
    QPointF m_start;
    QPointF m_end;
    bool m_isRemoving;
};

/// Cuts the wires that a line crosses.
class CutGesture : public CanvasGesture
{
public:
    CutGesture(NetworkView* view, const QPointF& place);

    void move(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter* painter) const override;

private:
    QVector<QPointF> m_path;
};

/// Changes the width of a brick.
class WidthGesture : public CanvasGesture
{
public:
    WidthGesture(NetworkView* view, DzShaderBrick* brick);

    void move(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void finish(const QPointF& place, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter* painter) const override;

private:
    QPointer<DzShaderBrick> m_brick;
    qreal m_width;
};

/// What begins with the left button pressed at a place; it may change the selection. Null when
/// nothing begins.
std::unique_ptr<CanvasGesture> beginGesture(
    NetworkView* view, const QPointF& place, Qt::KeyboardModifiers modifiers);
