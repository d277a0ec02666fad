// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "CanvasStyle.h"
#include "NetworkEdit.h"
#include "ProblemLevel.h"

#include <QGraphicsScene>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QVector>

class BrickItem;
class BrickSelection;
class DzBrickParam;
class DzShaderBrick;
class FrameLayer;
class WireLayer;

/// How a pin goes with the wire that is being dragged.
enum LinkFit { NoProbe, Fits, NoFit };

/// What is under a place of the canvas.
struct CanvasHit {
    enum Kind { Nothing, Pin, Row, Title, Grip, Wire, FrameTitle };

    Kind kind = Nothing;
    BrickItem* item = nullptr;
    int row = -1;
    DzBrickParam* param = nullptr; ///< of a pin or row, if it has one
    BrickLink link;
    int frame = 0;
};

/// The canvas' items: a brick user's bricks, wires and frames as they are at any time. It follows
/// the signals of the host, whoever makes the changes. What changed is brought up to date before it
/// is painted or asked for; others are told before the next event, or at once by flush().
class NetworkScene : public QGraphicsScene
{
    Q_OBJECT

public:
    NetworkScene(NetworkEdit* edit, BrickSelection* selection, QObject* parent = nullptr);
    ~NetworkScene() override;

    NetworkEdit* getEdit() const { return m_edit; }
    BrickSelection* getSelection() const { return m_selection; }
    const CanvasStyle& getStyle() const { return m_style; }
    void setStyle(const CanvasStyle& style);

    /// Makes everything anew; loading a network emits no signals of its own.
    void rebuild();
    /// Makes of all items what they are to be by now, and tells nobody yet.
    void bringUpToDate();
    /// The same, and tells.
    void flush();

    BrickItem* getItem(const DzShaderBrick* brick) const { return m_itemOf.value(brick); }
    /// From back to front.
    const QVector<BrickItem*>& getItems();
    /// What is there within `reach` of a place.
    CanvasHit hit(const QPointF& place, qreal reach);
    /// The wire within `reach` of a place, other than those of `except`.
    BrickLink hitWire(const QPointF& place, qreal reach, const DzShaderBrick* except = nullptr);
    QVector<DzShaderBrick*> bricksIn(const QRectF& box);
    QVector<BrickLink> wiresAcross(const QVector<QPointF>& path);
    /// What the bricks reach over; empty without bricks.
    QRectF boxOf(const QVector<DzShaderBrick*>& bricks);
    QRectF boxOfAll();
    /// Frame around a place that does not belong to a brick there; 0 when there is none.
    int frameAt(const QPointF& place);
    QRectF frameTitleBox(int frame);

    /// Shows bricks elsewhere while they are dragged, without changing the network.
    void showAt(const QVector<NetworkEdit::Move>& places);
    void bringToFront(const QVector<DzShaderBrick*>& bricks);

    /// Lights up what can be linked with `param` and dims the rest, until endProbe().
    void beginProbe(DzBrickParam* param);
    void endProbe();
    LinkFit getFit(DzBrickParam* param) const;
    bool isDimmed(const BrickItem* item) const;
    /// A wire that is not shown, for it is in the user's hand.
    void setHiddenWire(const BrickLink& link);
    const BrickLink& getHiddenWire() const { return m_hiddenWire; }
    /// A wire that is shown as the place where something goes.
    void setMarkedWire(const BrickLink& link);
    const BrickLink& getMarkedWire() const { return m_markedWire; }

    /// The row that the keyboard is on; -1 with a brick is its title.
    void setFocusRow(DzShaderBrick* brick, int row);
    bool isFocusRow(const BrickItem* item, int row) const;

    void setBadge(
        DzShaderBrick* brick, const QString& text, ProblemLevel level = ProblemLevel::Warns);
    void clearBadges();

signals:
    /// Bricks came, went, moved or changed their size.
    void layoutChanged();

private slots:
    void addItemFor(DzShaderBrick* brick);
    void removeItemOf(DzShaderBrick* brick);
    void flushLater();

private:
    friend class BrickItem;

    /// Has the item brought up to date with the next flush.
    void noteDirty(BrickItem* item);
    void noteLayout();
    void numberItems();
    void dropWiresFrom(const DzShaderBrick* brick);
    void leaveSelection();
    void syncBricks();
    void moveItem(BrickItem* item, const QPointF& place);
    void updateWireEnds(BrickItem* item);
    void updateSelection();
    void followUndo();

    NetworkEdit* m_edit;
    BrickSelection* m_selection;
    CanvasStyle m_style;
    WireLayer* m_wireLayer;
    FrameLayer* m_frameLayer;
    QVector<BrickItem*> m_items; ///< from back to front; null where one went, until getItems()
    bool m_hasGaps = false;
    QHash<const DzShaderBrick*, BrickItem*> m_itemOf;
    QSet<DzShaderBrick*> m_shownSelected;
    QVector<BrickItem*> m_dirty;             ///< null where one went
    QVector<QPointer<DzShaderBrick>> m_gone; ///< selected bricks that went, until the next flush
    bool m_isFlushPending = false;
    bool m_isLayoutDirty = false;
    bool m_isUpdating = false;
    bool m_isTellingDue = false;
    qreal m_topZ = 1;
    QPointer<DzBrickParam> m_probe;
    QSet<const DzShaderBrick*> m_probeLoop; ///< bricks that a wire from the probe would loop to
    mutable QHash<const DzBrickParam*, bool> m_fits;
    mutable QHash<const BrickItem*, bool> m_dimmed;
    BrickLink m_hiddenWire;
    BrickLink m_markedWire;
    QPointer<DzShaderBrick> m_focusBrick;
    int m_focusRow = -1;
};
