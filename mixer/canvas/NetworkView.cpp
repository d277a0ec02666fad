// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkView.h"

#include "BrickItem.h"
#include "BrickSelection.h"
#include "CanvasGestures.h"
#include "CanvasMenu.h"
#include "CanvasTips.h"
#include "CommandSet.h"
#include "InlineEditor.h"
#include "MiniMap.h"
#include "NetworkCopies.h"
#include "NetworkFrames.h"
#include "NetworkScene.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QMenu>
#include <QPainter>
#include <QToolTip>
#include <QtMath>

namespace {

const int gridSteps = 5;      ///< a stronger line at each of these
const qreal smallestGrid = 7; ///< pixels between lines
const qreal reachPixels = 8;
const int smallestEditor = 120;
/// No canvas is wider; the view moves over it as if there were no end.
const qreal sceneReach = 4 * BrickAppearance::farthestPlace;

} // namespace

NetworkView::NetworkView(NetworkEdit* edit, BrickSelection* selection, QWidget* parent)
    : ZoomView(sceneReach, parent)
    , m_edit(edit)
    , m_selection(selection)
    , m_scene(new NetworkScene(edit, selection, this))
    , m_keyboard(this)
    , m_search(this)
    , m_drops(this)
{
    setScene(m_scene);
    setObjectName(QStringLiteral("networkView"));
    setAccessibleName(tr("Network canvas"));
    setFrameShape(QFrame::NoFrame);
    // The whole at once: painting through a ragged clip costs more than it saves.
    setViewportUpdateMode(FullViewportUpdate);
    setOptimizationFlags(DontSavePainterState | DontAdjustForAntialiasing);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    auto* miniMap = new MiniMap(this);
    miniMap->show();
    setOverlay(miniMap);
    updateStyle();
    connect(selection, &BrickSelection::selectionChanged, this, &NetworkView::refreshCommands);
    connect(m_scene, &NetworkScene::layoutChanged, this, &NetworkView::refreshCommands);
    connect(
        QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &NetworkView::noteClipboard);
    zoomToAll();
}

NetworkView::~NetworkView()
{
    m_gesture.reset();
}

// Commands.

void NetworkView::setCommands(CommandSet* commands)
{
    m_commands = commands;
    commands->installOn(this);
    refreshCommands();
}

const CommandSet* NetworkView::getCommands() const
{
    return m_commands;
}

void NetworkView::refreshCommands()
{
    if (m_commands)
        m_commands->refresh(Command::Canvas);
}

/// Sees whether the clipboard can be pasted. Other programs' texts are asked for only while this
/// one is used: they may be long, or their program may not answer.
void NetworkView::noteClipboard()
{
    if (!isVisible() || !isActiveWindow())
        return;
    m_canPaste = mayPaste(QGuiApplication::clipboard()->text());
    refreshCommands();
}

void NetworkView::rebuild()
{
    cancelGesture();
    m_keyboard.leaveRow();
    m_scene->rebuild();
    refreshCommands();
    zoomToAll();
}

void NetworkView::searchBrick()
{
    // The search would take the release of the button.
    if (isBusy())
        return;
    if (DzBrickParam* pin = m_keyboard.getPin())
        m_search.openFor(pin, getMousePlace());
    else
        m_search.open(getMousePlace());
}

bool NetworkView::isMiniMapShown() const
{
    return !getOverlay()->isHidden();
}

void NetworkView::setMiniMapShown(bool isShown)
{
    getOverlay()->setVisible(isShown);
    emit miniMapShown(isShown);
}

// Editing in place.

void NetworkView::startEditor(
    const QString& text, const QRectF& box, const std::function<void(const QString&)>& commit)
{
    if (m_editor)
        m_editor->commit();
    QRect place = mapFromScene(box).boundingRect();
    place.setWidth(qMax(place.width(), smallestEditor));
    m_editor = new InlineEditor(text, place, viewport());
    connect(m_editor, &InlineEditor::committed, this, commit);
}

void NetworkView::editTitle(DzShaderBrick* brick)
{
    const BrickItem* item = m_scene->getItem(brick);
    if (!item)
        return;
    const QPointer<DzShaderBrick> guarded(brick);
    const QRectF box(item->pos(), QSizeF(item->getSize().width(), BrickAppearance::titleHeight));
    startEditor(brick->getBrickTitle(), box, [this, guarded](const QString& text) {
        if (guarded)
            m_edit->setTitle(guarded, text);
    });
}

void NetworkView::editFrameTitle(int frame)
{
    const BrickFrame known = findFrame(*m_edit, frame);
    if (!known.bricks.isEmpty())
        startEditor(known.title, m_scene->frameTitleBox(frame),
            [this, frame](const QString& text) { setFrameTitle(m_edit, frame, text); });
}

// Places.

void NetworkView::zoomToAll()
{
    zoomTo(m_scene->boxOfAll());
}

void NetworkView::showBrick(const DzShaderBrick* brick)
{
    m_scene->flush();
    if (const BrickItem* item = m_scene->getItem(brick))
        showBox(QRectF(item->pos(), item->getSize()));
}

QPointF NetworkView::snapped(const QPointF& place)
{
    return QPointF(
        qRound(place.x() / gridStep) * gridStep, qRound(place.y() / gridStep) * gridStep);
}

qreal NetworkView::getReach() const
{
    return reachPixels / getZoom();
}

void NetworkView::scrollContentsBy(int dx, int dy)
{
    ZoomView::scrollContentsBy(dx, dy);
    m_edit->setPlaceHint(getVisibleBox().center());
}

// Mouse.

void NetworkView::mousePressEvent(QMouseEvent* event)
{
    if (m_gesture) {
        // Another button takes the gesture back.
        cancelGesture();
        return;
    }
    m_keyboard.leaveRow();
    if (panPress(event))
        return;
    const QPointF place = mapToScene(event->pos());
    if (event->button() == Qt::LeftButton)
        m_gesture = beginGesture(this, place, event->modifiers());
    else if (event->button() == Qt::RightButton && (event->modifiers() & Qt::ControlModifier))
        m_gesture = std::make_unique<CutGesture>(this, place);
    else if (event->button() == Qt::RightButton)
        m_isMenuDue = true;
}

void NetworkView::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() == Qt::NoButton) {
        // Another window took the release.
        m_isMenuDue = false;
        cancelGesture();
    }
    if (panMove(event))
        return;
    if (m_gesture)
        m_gesture->move(mapToScene(event->pos()), event->modifiers());
    else
        updateCursor();
}

void NetworkView::mouseReleaseEvent(QMouseEvent* event)
{
    if (panRelease(event))
        return;
    const QPointF place = mapToScene(event->pos());
    if (m_isMenuDue && event->button() == Qt::RightButton) {
        m_isMenuDue = false;
        openMenu(place);
        return;
    }
    if (!m_gesture)
        return;
    // Finishing may open windows or change the network: by then the gesture is over.
    const std::unique_ptr<CanvasGesture> gesture = std::move(m_gesture);
    gesture->finish(place, event->modifiers());
    endGesture();
}

void NetworkView::endGesture()
{
    m_gesture.reset();
    viewport()->update();
}

bool NetworkView::cancelGesture()
{
    if (!m_gesture)
        return false;
    m_gesture->cancel();
    endGesture();
    return true;
}

void NetworkView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPointF place = mapToScene(event->pos());
    const CanvasHit hit = m_scene->hit(place, getReach());
    const bool isPress = event->button() != Qt::LeftButton || isSpaceDown() || isBusy();
    // Where nothing is to be opened, a second quick press is a press like any other.
    if (isPress || hit.kind == CanvasHit::Pin || hit.kind == CanvasHit::Wire)
        mousePressEvent(event);
    else if (hit.kind == CanvasHit::Row)
        activateRow(hit.item->getRows().at(hit.row));
    else if (hit.item)
        editTitle(hit.item->getBrick());
    else if (hit.kind == CanvasHit::FrameTitle)
        editFrameTitle(hit.frame);
    else
        m_search.open(place);
}

/// An output has no value.
void NetworkView::activateRow(const BrickAppearance::Row& row)
{
    DzProperty* property = row.param ? row.param->getProperty(0) : row.property;
    if (row.kind != BrickAppearance::Row::Output && property)
        emit valueActivated(property);
}

Qt::CursorShape NetworkView::cursorAt(const QPointF& place)
{
    switch (m_scene->hit(place, getReach()).kind) {
    case CanvasHit::Pin:
        return Qt::CrossCursor;
    case CanvasHit::Grip:
        return Qt::SizeHorCursor;
    default:
        return Qt::ArrowCursor;
    }
}

// Keys.

bool NetworkView::event(QEvent* event)
{
    // Tab finds a brick; Shift+Tab leaves the canvas.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && !(key->modifiers() & ~Qt::KeypadModifier)) {
            searchBrick();
            return true;
        }
    }
    // What was copied elsewhere meanwhile.
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        noteClipboard();
    return ZoomView::event(event);
}

void NetworkView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape) {
        if (!cancelGesture() && !m_keyboard.cancel()) {
            m_keyboard.leaveRow();
            m_selection->clear();
        }
    } else if (m_gesture || !m_keyboard.keyPress(event)) {
        ZoomView::keyPressEvent(event);
    }
}

// Menus and tool tips.

void NetworkView::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse's menu comes when the button is released, for it may be the start of a cut.
    // No menu may take the release of a button that is held down.
    if (event->reason() == QContextMenuEvent::Mouse || isBusy())
        return;
    const BrickItem* item = m_scene->getItem(m_selection->getCurrent());
    openMenu(item ? item->pos() + QPointF(12, BrickAppearance::titleHeight / 2) : getMousePlace());
}

void NetworkView::openMenu(const QPointF& place)
{
    QMenu* menu = makeCanvasMenu(this, place);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(viewport()->mapToGlobal(mapFromScene(place)));
}

bool NetworkView::viewportEvent(QEvent* event)
{
    if (m_drops.handle(event))
        return true;
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const QPointF place = mapToScene(help->pos());
        const QString text
            = m_gesture ? QString() : canvasTip(m_scene->hit(place, getReach()), place);
        // Texts come from files: they are never taken for rich text.
        QToolTip::showText(
            help->globalPos(), text.toHtmlEscaped().replace('\n', "<br>"), viewport());
        return true;
    }
    // Others may ask for a picture before the scene had its turn.
    if (event->type() == QEvent::Paint)
        m_scene->bringUpToDate();
    return ZoomView::viewportEvent(event);
}

// Painting.

void NetworkView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        updateStyle();
    ZoomView::changeEvent(event);
}

void NetworkView::updateStyle()
{
    m_scene->setStyle(CanvasStyle(palette()));
    setBackgroundBrush(m_scene->getStyle().canvas);
}

void NetworkView::drawBackground(QPainter* painter, const QRectF& rect)
{
    const CanvasStyle& style = m_scene->getStyle();
    painter->fillRect(rect, style.canvas);
    qreal step = gridStep;
    while (step * getZoom() < smallestGrid)
        step *= gridSteps;
    QVector<QLineF> lines;
    for (qreal x = qFloor(rect.left() / step) * step; x <= rect.right(); x += step)
        lines.append(QLineF(x, rect.top(), x, rect.bottom()));
    for (qreal y = qFloor(rect.top() / step) * step; y <= rect.bottom(); y += step)
        lines.append(QLineF(rect.left(), y, rect.right(), y));
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setPen(QPen(style.grid, 0));
    // See WireLayer::paint().
    painter->setClipRect(rect);
    painter->drawLines(lines);
    painter->setClipping(false);
}

void NetworkView::drawForeground(QPainter* painter, const QRectF&)
{
    if (m_gesture)
        m_gesture->paint(painter);
}

void NetworkView::paintHint(
    QPainter* painter, const QPointF& place, const QString& text, bool isRefusal) const
{
    const CanvasStyle& style = m_scene->getStyle();
    painter->save();
    // In pixels, whatever the zoom: it is read, not looked at.
    const QPointF anchor = painter->transform().map(place) + QPointF(16, 18);
    painter->resetTransform();
    painter->setFont(style.font);
    const QFontMetricsF metrics(style.font);
    QRectF box(anchor, QSizeF(metrics.horizontalAdvance(text) + 16, metrics.height() + 8));
    // Inside the window.
    const QRectF window = viewport()->rect();
    box.moveRight(qMin(box.right(), window.right() - 4));
    box.moveBottom(qMin(box.bottom(), window.bottom() - 4));
    painter->setRenderHint(QPainter::Antialiasing, true);
    painter->setPen(QPen(isRefusal ? style.refusal : style.border, 1.2));
    painter->setBrush(style.hint);
    painter->drawRoundedRect(box, 4, 4);
    painter->setPen(style.hintText);
    painter->drawText(box, Qt::AlignCenter | Qt::TextSingleLine, text);
    painter->restore();
}
