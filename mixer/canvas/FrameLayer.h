// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QGraphicsItem>
#include <QString>
#include <QVector>

class DzShaderBrick;
class NetworkScene;

/// Paints the frames, behind wires and bricks.
class FrameLayer : public QGraphicsItem
{
public:
    explicit FrameLayer(NetworkScene* scene);

    /// Fits the frames to their bricks as they are shown now.
    void rebuild();
    /// Number of the frame whose title is there, or that holds the place; 0 for none.
    int titleAt(const QPointF& place) const;
    int frameAt(const QPointF& place) const;
    /// Where a frame's title is; empty for a frame that is not there.
    QRectF titleBox(int frame) const;
    QRectF box() const;

    // QGraphicsItem
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    struct Shown {
        int number;
        QString title;
        QRectF box;
    };
    static QRectF titleBox(const Shown& frame);

    NetworkScene* m_scene;
    QVector<Shown> m_frames;
};
