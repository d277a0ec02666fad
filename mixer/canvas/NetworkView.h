// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickAlignment.h"
#include "BrickAppearance.h"
#include "CanvasKeyboard.h"
#include "NetworkEdit.h"

#include <QGraphicsView>
#include <QPointer>
#include <QVector>
#include <functional>
#include <memory>

class BrickSearchPopup;
class BrickSelection;
class CanvasGesture;
class InlineEditor;
class MiniMap;
class NetworkScene;
class QMenu;

/// The canvas on which a network is built.
///
/// Mouse: drag a pin to link, a linked input to take its wire; drop a wire in the void to add what
/// fits, with Shift on an input to keep the links it has. Drag a brick to move the selection, a
/// loose one onto a wire to insert it. Drag in the void to select with a box (Shift adds, Ctrl
/// removes), Ctrl and the right button to cut wires, the middle button or Space to pan, the wheel
/// to zoom. A double click changes what it hits: a title or a value. Keys: see CanvasKeyboard and
/// the commands.
class NetworkView : public QGraphicsView
{
    Q_OBJECT

public:
    /// Edit and selection are not owned and outlive the view.
    NetworkView(NetworkEdit* edit, BrickSelection* selection, QWidget* parent = nullptr);
    ~NetworkView() override;

    enum Command {
        AddBrickCommand,
        InsertBrickCommand,
        CutCommand,
        CopyCommand,
        PasteCommand,
        DuplicateCommand,
        DeleteCommand,
        DeleteReconnectCommand,
        SelectAllCommand,
        SelectUpstreamCommand,
        SelectDownstreamCommand,
        KeepSelectedCommand,
        RenameCommand,
        HideParamsCommand,
        WiderCommand,
        NarrowerCommand,
        FrameCommand,
        UnframeCommand,
        FrameTitleCommand,
        RemoveFrameCommand,
        ArrangeCommand,
        AlignLeftCommand,
        AlignRightCommand,
        AlignTopCommand,
        AlignBottomCommand,
        AlignHorizontalCentresCommand,
        AlignVerticalCentresCommand,
        DistributeHorizontallyCommand,
        DistributeVerticallyCommand,
        ZoomToSelectionCommand,
        ZoomToAllCommand,
        ZoomInCommand,
        ZoomOutCommand,
        ZoomToOneCommand,
        SnapToGridCommand,
        ShowMiniMapCommand,
        CommandCount
    };
    /// The command, with text and shortcut, for menus and tool bars; owned by the view. It is
    /// enabled when it can do something.
    QAction* getAction(Command command) const { return m_actions.at(command); }

    NetworkScene* getNetworkScene() const { return m_scene; }
    NetworkEdit* getEdit() const { return m_edit; }
    BrickSelection* getSelection() const { return m_selection; }

    /// Makes everything anew, after loading.
    void rebuild();
    /// Opens the search for a brick that is added at a place of the scene and, with a pin, linked.
    void openSearch(const QPointF& place, DzBrickParam* pin = nullptr);
    /// Opens the search for a brick that is put into the wire.
    void openInsertSearch(const BrickLink& link);
    /// Opens the menu of what is there, at a place of the scene.
    void openMenu(const QPointF& place);
    void editTitle(DzShaderBrick* brick);
    void editFrameTitle(int frame);
    /// A sign in the brick's title with the text as tool tip; no text takes it away.
    void setBadge(DzShaderBrick* brick, const QString& text);
    void clearBadges();

    qreal getZoom() const { return transform().m11(); }
    /// Zooms with the place of the scene staying where it is on the screen.
    void zoomAt(const QPointF& place, qreal factor);
    /// As large as it fits, clear of the mini-map.
    void zoomTo(const QRectF& box);
    void zoomToSelection();
    void zoomToAll();
    /// Brings a place of the scene to the middle.
    void goTo(const QPointF& place);
    /// Scrolls as little as needed to have the whole brick in view, and not at all when it is.
    void showBrick(const DzShaderBrick* brick);
    /// The part of the scene that is in view.
    QRectF getVisibleBox() const;
    bool isSnappingToGrid() const;
    QPointF snapped(const QPointF& place) const;
    /// How near to a thing the mouse must be, in scene coordinates.
    qreal getReach() const;

    /// Paints a line of text in a box beside a place of the scene.
    void paintHint(
        QPainter* painter, const QPointF& place, const QString& text, bool isRefusal) const;

signals:
    /// One line for the window's status bar.
    void statusMessage(const QString& text);
    /// The user pressed Return on a brick.
    void brickActivated(DzShaderBrick* brick);
    /// The user double-clicked a row that shows this value.
    void valueActivated(DzProperty* property);
    void zoomChanged(qreal zoom);

protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    void makeActions();
    void makeEditActions();
    void makeSelectActions();
    void makeBrickActions();
    void makeFrameActions();
    void makePlaceActions();
    void makeLookActions();
    void addCommand(Command command, const QString& text, const QKeySequence& shortcut,
        const QString& tip, void (NetworkView::*run)());
    void addAlignment(
        Command command, const QString& text, const QString& tip, Alignment alignment);
    void updateActions();
    bool canRun(Command command) const;
    void noteClipboard();
    void updateStyle();
    void placeMiniMap();

    bool isBusy() const;
    void addFromSearch();
    void insertFromSearch();
    typedef std::function<DzShaderBrick*(const QString& className, QString* error)> BrickAdder;
    void startSearch(BrickSearchPopup* search, const QPointF& place, const BrickAdder& add);
    void cutBricks();
    void copyBricks();
    void pasteBricks();
    void duplicateBricks();
    void deleteBricks();
    void deleteAndReconnect();
    void remove(bool reconnect);
    void selectAll();
    void selectUpstream();
    void selectDownstream();
    void rename();
    void keepSelected();
    void toggleParams();
    void widen();
    void narrow();
    void frameSelection();
    void unframeSelection();
    int currentFrame() const;
    void editCurrentFrameTitle();
    void removeCurrentFrame();
    void arrange();
    void zoomIn();
    void zoomOut();
    void zoomToOne();
    void toggleMiniMap();
    void refresh();
    void nudge(int key);

    void beginGesture(QMouseEvent* event);
    void beginWire(DzBrickParam* pin, const QPointF& place);
    void beginMove(const QPointF& place, DzShaderBrick* brick, Qt::KeyboardModifiers modifiers);
    void endGesture();
    bool cancelGesture();
    void selectFrame(int frame);
    void showToolTip(const QPoint& place, const QPoint& globalPlace);
    QString toolTipFor(const QPointF& place);
    void updateCursor(const QPointF& place);
    void openMenuWith(QMenu* menu, const QPointF& place);
    void fillBrickMenu(QMenu* menu);
    void fillWireMenu(QMenu* menu, const BrickLink& link);
    void fillFrameMenu(QMenu* menu, int frame);
    void fillVoidMenu(QMenu* menu, const QPointF& place);
    void addCommands(QMenu* menu, const QVector<Command>& commands);
    /// Where new things go: the mouse, or the middle when it is elsewhere.
    QPointF placeForNew() const;
    QString droppedClass(const QDropEvent* event) const;
    BrickLink wireFor(const QString& className, const QPointF& place) const;
    QPointF broughtIntoView(const QPointF& place, const QSizeF& size) const;
    QPointF placeOnWire(const QString& className, const QPointF& place) const;
    void fitInto(const QRect& room, const QRectF& box);
    bool isUnderMiniMap(const QRect& box) const;
    QRect roomFor(const QSizeF& shape) const;
    QPoint wayIntoView(const QRect& box) const;
    void activateRow(const BrickAppearance::Row& row);
    QRect editorPlace(const QRectF& box) const;
    void startEditor(
        const QString& text, const QRectF& box, const std::function<void(const QString&)>& commit);

    NetworkEdit* m_edit;
    BrickSelection* m_selection;
    NetworkScene* m_scene;
    MiniMap* m_miniMap;
    QVector<QAction*> m_actions;
    std::unique_ptr<CanvasGesture> m_gesture;
    CanvasKeyboard m_keyboard;
    QPointer<BrickSearchPopup> m_search;
    QPointer<InlineEditor> m_editor;
    QPoint m_mouse;
    bool m_isMouseInside = false;
    bool m_canPaste = false;
    bool m_isPanning = false;
    bool m_isSpaceDown = false;
    bool m_isMenuDue = false;
    QPoint m_panStart;
};
