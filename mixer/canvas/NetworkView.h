// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "BrickAppearance.h"
#include "CanvasDrops.h"
#include "CanvasKeyboard.h"
#include "CanvasSearch.h"
#include "NetworkEdit.h"
#include "ZoomView.h"

#include <QPointer>
#include <functional>
#include <memory>

class BrickSelection;
class CanvasGesture;
class CommandSet;
class InlineEditor;
class MiniMap;
class NetworkScene;

/// The canvas on which a network is built.
///
/// Mouse: drag a pin to link, a linked input to take its wire; drop a wire in the void to add what
/// fits, with Shift on an input to keep the links it has. Drag a brick to move the selection, a
/// loose one onto a wire to insert it. Drag in the void to select with a box (Shift adds, Ctrl
/// removes), Ctrl and the right button to cut wires; see ZoomView for moving the view. A double
/// click changes what it hits: a title or a value. Keys: see CanvasKeyboard and CanvasCommands.
class NetworkView : public ZoomView
{
    Q_OBJECT

public:
    /// Between two lines of the grid, in scene coordinates.
    static constexpr qreal gridStep = 20;

    /// Edit and selection are not owned and outlive the view.
    NetworkView(NetworkEdit* edit, BrickSelection* selection, QWidget* parent = nullptr);
    ~NetworkView() override;

    /// Gives the canvas keys and menus, and has the commands asked again when something changes
    /// here. Not owned; a canvas without commands has none of these.
    void setCommands(CommandSet* commands);
    const CommandSet* getCommands() const;

    NetworkScene* getNetworkScene() const { return m_scene; }
    NetworkEdit* getEdit() const { return m_edit; }
    BrickSelection* getSelection() const { return m_selection; }
    CanvasKeyboard* getKeyboard() { return &m_keyboard; }
    CanvasSearch* getSearch() { return &m_search; }

    /// Makes everything anew, after loading.
    void rebuild();
    /// Searches for a brick where the mouse is, which is linked with the pin that the keyboard is
    /// on.
    void searchBrick();
    void editTitle(DzShaderBrick* brick);
    void editFrameTitle(int frame);
    void zoomToAll();
    /// Scrolls as little as needed to have the whole brick in view, and not at all when it is.
    void showBrick(const DzShaderBrick* brick);

    /// True while a button of the mouse is held down for something.
    bool isBusy() const { return m_gesture || isPanning(); }
    /// True when the clipboard holds bricks.
    bool canPaste() const { return m_canPaste; }
    bool isSnappingToGrid() const { return m_isSnapping; }
    void setSnappingToGrid(bool isSnapping) { m_isSnapping = isSnapping; }
    static QPointF snapped(const QPointF& place);
    bool isMiniMapShown() const;
    void setMiniMapShown(bool isShown);
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
    void miniMapShown(bool isShown);

protected:
    Qt::CursorShape cursorAt(const QPointF& place) override;
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    void noteClipboard();
    void refreshCommands();
    void updateStyle();
    void openMenu(const QPointF& place);
    void endGesture();
    bool cancelGesture();
    void activateRow(const BrickAppearance::Row& row);
    void startEditor(
        const QString& text, const QRectF& box, const std::function<void(const QString&)>& commit);

    NetworkEdit* m_edit;
    BrickSelection* m_selection;
    NetworkScene* m_scene;
    QPointer<CommandSet> m_commands;
    std::unique_ptr<CanvasGesture> m_gesture;
    CanvasKeyboard m_keyboard;
    CanvasSearch m_search;
    CanvasDrops m_drops;
    QPointer<InlineEditor> m_editor;
    bool m_canPaste = false;
    bool m_isSnapping = false;
    bool m_isMenuDue = false;
};
