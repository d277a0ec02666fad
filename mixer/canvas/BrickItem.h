// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickAppearance.h"
#include "ProblemLevel.h"

#include <QColor>
#include <QGraphicsItem>
#include <QObject>
#include <QPainterPath>
#include <QVector>
#include <memory>

class BrickItem;
class NetworkScene;
struct CanvasStyle;

/// A wire as it is drawn; it belongs to the brick that it feeds. Lengths in scene coordinates.
struct CanvasWire {
    DzBrickParam* output = nullptr;
    DzBrickParam* input = nullptr;
    BrickItem* source = nullptr;
    int inputRow = -1;
    QPointF from;
    QPointF to;
    QRectF bounds;
    QColor color;
};

/// The curve of a wire, from an output to an input.
QPainterPath wirePath(const QPointF& from, const QPointF& to);
/// A point of the curve, from 0 at the output to 1 at the input.
QPointF wirePoint(const QPointF& from, const QPointF& to, qreal part);
/// A box that holds the curve with its pen.
QRectF wireBounds(const QPointF& from, const QPointF& to);

/// One brick on the canvas: it paints title, rows and pins by itself, and with less detail the
/// smaller it is shown.
class BrickItem : public QGraphicsItem
{
public:
    enum { Type = UserType + 1 };

    BrickItem(NetworkScene* scene, DzShaderBrick* brick);

    DzShaderBrick* getBrick() const { return m_brick; }
    QSizeF getSize() const { return m_size; }
    const QVector<BrickAppearance::Row>& getRows() const { return m_rows; }
    const QVector<CanvasWire>& getWires() const { return m_wires; }
    /// Where the wire of a row ends, in scene coordinates.
    QPointF inputPlace(int row) const;
    /// Row of a parameter, -1 when it is not shown.
    int rowOf(const DzBrickParam* param) const;
    /// Row under a place in item coordinates, -1 above and below the rows.
    int rowAt(const QPointF& place) const;
    /// Where a parameter's pin is, in scene coordinates; the title's side when it is not shown.
    QPointF pinPlace(const DzBrickParam* param) const;

    QString getBadge() const { return m_badge; }
    /// A sign in the title with a text of its own; none for an empty text.
    void setBadge(const QString& text, ProblemLevel level = ProblemLevel::Warns);
    /// Where the badge is drawn, in item coordinates.
    QRectF badgeBox() const;
    void setSelected(bool isSelected);

    // QGraphicsItem
    int type() const override { return Type; }
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

private:
    friend class NetworkScene;

    /// What is painted in a row; made when the brick is first painted in detail.
    struct RowText {
        QString label;
        QString value;
        QColor pin;
        QColor swatch; ///< invalid for a row that is no colour
        bool isLinked;
        bool isLocked;
    };

    void connectToBrick();
    void connectToRows();
    /// Forgets parameters; rows are made again before anything needs them.
    void dropRows();
    void makeRows();
    void makeWires();
    void dropTexts();
    void makeTexts();
    RowText makeText(const BrickAppearance::Row& row) const;
    QColor titleBarColor() const;
    void paintFar(QPainter* painter, const CanvasStyle& style, qreal detail) const;
    void paintBody(QPainter* painter, const CanvasStyle& style) const;
    void paintBadge(QPainter* painter, const CanvasStyle& style) const;
    void paintTitle(QPainter* painter, const CanvasStyle& style) const;
    void paintRow(QPainter* painter, const CanvasStyle& style, int row) const;
    void paintPins(QPainter* painter, const CanvasStyle& style, int first, int last) const;
    int firstRowIn(const QRectF& box) const;
    int lastRowIn(const QRectF& box) const;

    NetworkScene* m_scene;
    DzShaderBrick* m_brick;
    QObject m_context;                     ///< ends the connections with the item
    std::unique_ptr<QObject> m_rowContext; ///< ends those to rows when rows change
    QVector<BrickAppearance::Row> m_rows;
    QVector<RowText> m_texts;
    QString m_title;
    QVector<CanvasWire> m_wires;
    QString m_badge;
    ProblemLevel m_badgeLevel = ProblemLevel::Warns;
    QSizeF m_size;
    QColor m_barColor;
    bool m_rowsDirty = true;
    bool m_wiresDirty = true;
    bool m_textsDirty = true;
    bool m_isSelected = false;
    int m_index = -1;      ///< in the scene's list of items
    int m_dirtyIndex = -1; ///< in its list of what is to be brought up to date; -1 when not there
};
