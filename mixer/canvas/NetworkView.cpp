// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkView.h"

#include "BrickCatalogue.h"
#include "BrickItem.h"
#include "BrickMenu.h"
#include "BrickSearchPopup.h"
#include "BrickSelection.h"
#include "CanvasGestures.h"
#include "CommandSet.h"
#include "FreePlace.h"
#include "InlineEditor.h"
#include "MiniMap.h"
#include "NetworkCopies.h"
#include "NetworkFrames.h"
#include "NetworkScene.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontMetricsF>
#include <QMenu>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>
#include <QtMath>

#include <algorithm>

namespace {

const qreal gridStep = 20;
const int gridSteps = 5;      ///< a stronger line at each of these
const qreal smallestGrid = 7; ///< pixels between lines
const qreal zoomLimits[] = { 0.02, 4 };
const qreal smallestZoom = 1e-4; ///< for networks that do not fit otherwise
const qreal zoomPerNotch = 1.2;
const qreal zoomMargin = 40;
const qreal reachPixels = 8;
const int miniMapMargin = 8;
const QPointF duplicateOffset(40, 40);
/// Where a new brick is held, in its title.
const QPointF titleGrip(BrickAppearance::defaultWidth / 2, BrickAppearance::titleHeight / 2);
/// No canvas is wider; the view scrolls in it as if there were no end.
const qreal sceneReach = 4 * BrickAppearance::farthestPlace;
/// Room between the view's edge and a brick that is brought into view, in pixels.
const int viewMargin = 16;

/// A brick of the class as it comes.
QSizeF sizeOf(const QString& className)
{
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    return kind ? BrickAppearance::size(kind->sample) : QSizeF();
}

/// Where the pin of a new brick is that `pin` is linked with, seen from the brick's place.
QPointF pinGrip(const QString& className, DzBrickParam* pin)
{
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    const DzBrickParam* fitting = kind ? BrickCatalogue::findFitting(kind->sample, pin) : nullptr;
    return fitting ? BrickAppearance::pinOffset(kind->sample, fitting) : QPointF();
}

bool isAnyFramed(const QVector<DzShaderBrick*>& bricks)
{
    return std::any_of(bricks.begin(), bricks.end(),
        [](const DzShaderBrick* brick) { return BrickAppearance::frameNumber(brick) != 0; });
}

QRectF wideBox(const QRectF& box)
{
    return box.adjusted(-zoomMargin, -zoomMargin, zoomMargin, zoomMargin);
}

/// The zoom at which a box fits.
qreal fitOf(const QSizeF& box, const QSizeF& room)
{
    return qMin(room.width() / box.width(), room.height() / box.height());
}

/// How far a stretch has to go to lie within another; with its beginning when it is too long.
int wayInto(int first, int last, int from, int to)
{
    if (first < from || last - first > to - from)
        return from - first;
    return qMin(0, to - last);
}

/// The same for a box, which keeps off the edges.
QPoint wayInto(const QRect& box, const QRect& room)
{
    const QRect inner = room.adjusted(viewMargin, viewMargin, -viewMargin, -viewMargin);
    return QPoint(wayInto(box.left(), box.right(), inner.left(), inner.right()),
        wayInto(box.top(), box.bottom(), inner.top(), inner.bottom()));
}

} // namespace

NetworkView::NetworkView(NetworkEdit* edit, BrickSelection* selection, QWidget* parent)
    : QGraphicsView(parent)
    , m_edit(edit)
    , m_selection(selection)
    , m_scene(new NetworkScene(edit, selection, this))
    , m_miniMap(nullptr)
    , m_keyboard(this)
{
    setScene(m_scene);
    setObjectName(QStringLiteral("networkView"));
    setAccessibleName(tr("Network canvas"));
    setFrameShape(QFrame::NoFrame);
    setSceneRect(-sceneReach, -sceneReach, 2 * sceneReach, 2 * sceneReach);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setTransformationAnchor(NoAnchor);
    setResizeAnchor(NoAnchor);
    // The whole at once: painting through a ragged clip costs more than it saves.
    setViewportUpdateMode(FullViewportUpdate);
    setOptimizationFlags(DontSavePainterState | DontAdjustForAntialiasing);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    m_miniMap = new MiniMap(this);
    makeActions();
    updateStyle();
    connect(selection, &BrickSelection::selectionChanged, this, &NetworkView::updateActions);
    connect(m_scene, &NetworkScene::layoutChanged, this, &NetworkView::updateActions);
    connect(
        QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &NetworkView::noteClipboard);
    updateActions();
    zoomToAll();
}

NetworkView::~NetworkView()
{
    m_gesture.reset();
}

// Commands.

void NetworkView::addCommand(Command command, const QString& text, const QKeySequence& shortcut,
    const QString& tip, void (NetworkView::*run)())
{
    auto* action = new QAction(text, this);
    action->setShortcut(shortcut);
    // Keys without Ctrl belong to the canvas alone.
    action->setShortcutContext(Qt::WidgetShortcut);
    CommandSet::explain(action, tip);
    connect(action, &QAction::triggered, this, [this, run] {
        // Bricks that went are selected no more.
        m_scene->flush();
        (this->*run)();
    });
    addAction(action);
    m_actions[command] = action;
}

void NetworkView::addAlignment(
    Command command, const QString& text, const QString& tip, Alignment alignment)
{
    auto* action = new QAction(text, this);
    CommandSet::explain(action, tip);
    connect(action, &QAction::triggered, this,
        [this, alignment] { alignBricks(m_edit, m_selection->getBricks(), alignment); });
    addAction(action);
    m_actions[command] = action;
}

void NetworkView::makeActions()
{
    m_actions.resize(CommandCount);
    makeEditActions();
    makeSelectActions();
    makeBrickActions();
    makeFrameActions();
    makePlaceActions();
    makeLookActions();
}

void NetworkView::makeEditActions()
{
    addCommand(AddBrickCommand, tr("&Add Brick…"), QKeySequence(Qt::CTRL | Qt::Key_Space),
        tr("Search for a brick and add it where the mouse is"), &NetworkView::addFromSearch);
    addCommand(InsertBrickCommand, tr("&Insert Brick into Wire…"),
        QKeySequence(Qt::CTRL | Qt::Key_I),
        tr("Search for a brick and put it into the wire of the pin that the keyboard is on"),
        &NetworkView::insertFromSearch);
    addCommand(CutCommand, tr("Cu&t"), QKeySequence::Cut,
        tr("Take the selected bricks away and put them on the clipboard"), &NetworkView::cutBricks);
    addCommand(CopyCommand, tr("&Copy"), QKeySequence::Copy,
        tr("Put the selected bricks and the links among them on the clipboard"),
        &NetworkView::copyBricks);
    addCommand(PasteCommand, tr("&Paste"), QKeySequence::Paste,
        tr("Add the bricks on the clipboard where the mouse is"), &NetworkView::pasteBricks);
    addCommand(DuplicateCommand, tr("D&uplicate"), QKeySequence(Qt::CTRL | Qt::Key_D),
        tr("Add copies of the selected bricks and of the links among them"),
        &NetworkView::duplicateBricks);
    addCommand(DeleteCommand, tr("&Delete"), QKeySequence(Qt::Key_Delete),
        tr("Delete the selected bricks and their links"), &NetworkView::deleteBricks);
    addCommand(DeleteReconnectCommand, tr("Delete and &Reconnect"),
        QKeySequence(Qt::CTRL | Qt::Key_Delete),
        tr("Delete the selected bricks and link what they fed with what fed them"),
        &NetworkView::deleteAndReconnect);
}

void NetworkView::makeSelectActions()
{
    addCommand(SelectAllCommand, tr("Select &All"), QKeySequence::SelectAll,
        tr("Select all bricks of the network"), &NetworkView::selectAll);
    addCommand(SelectUpstreamCommand, tr("Select &Upstream"),
        QKeySequence(Qt::SHIFT | Qt::Key_Left),
        tr("Select also whatever feeds the selected bricks"), &NetworkView::selectUpstream);
    addCommand(SelectDownstreamCommand, tr("Select &Downstream"),
        QKeySequence(Qt::SHIFT | Qt::Key_Right),
        tr("Select also whatever the selected bricks feed"), &NetworkView::selectDownstream);
    addCommand(KeepSelectedCommand, tr("&Keep Selected"), QKeySequence(Qt::SHIFT | Qt::Key_Space),
        tr("Keep the selection while the arrow keys go to further bricks; again lets the brick go"),
        &NetworkView::keepSelected);
}

void NetworkView::makeBrickActions()
{
    addCommand(RenameCommand, tr("Change &Title…"), QKeySequence(Qt::Key_F2),
        tr("Change the title of the brick that was selected last"), &NetworkView::rename);
    addCommand(HideParamsCommand, tr("&Hide or Show Parameters"), QKeySequence(Qt::Key_H),
        tr("Hide the rows of the selected bricks that have no link, or show them again"),
        &NetworkView::toggleParams);
    addCommand(WiderCommand, tr("&Wider"), QKeySequence(Qt::ALT | Qt::Key_Right),
        tr("Make the selected bricks wider"), &NetworkView::widen);
    addCommand(NarrowerCommand, tr("&Narrower"), QKeySequence(Qt::ALT | Qt::Key_Left),
        tr("Make the selected bricks narrower"), &NetworkView::narrow);
}

void NetworkView::makeFrameActions()
{
    addCommand(FrameCommand, tr("&Frame Bricks…"), QKeySequence(Qt::CTRL | Qt::Key_G),
        tr("Put a frame with a title around the selected bricks"), &NetworkView::frameSelection);
    addCommand(UnframeCommand, tr("Take out of &Frame"),
        QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_G),
        tr("Take the selected bricks out of their frames"), &NetworkView::unframeSelection);
    addCommand(FrameTitleCommand, tr("Change Frame T&itle…"), QKeySequence(Qt::SHIFT | Qt::Key_F2),
        tr("Change the title of the frame around the brick that was selected last"),
        &NetworkView::editCurrentFrameTitle);
    addCommand(RemoveFrameCommand, tr("Remove Fra&me"),
        QKeySequence(Qt::CTRL | Qt::ALT | Qt::Key_G),
        tr("Remove the frame around the brick that was selected last, and keep its bricks"),
        &NetworkView::removeCurrentFrame);
}

void NetworkView::makePlaceActions()
{
    addCommand(ArrangeCommand, tr("Auto-A&rrange"), QKeySequence(Qt::CTRL | Qt::Key_L),
        tr("Arrange the bricks so that what feeds stands on the left; several selected ones alone"),
        &NetworkView::arrange);
    addAlignment(AlignLeftCommand, tr("Align &Left"),
        tr("Line the selected bricks up by their left edges"), AlignLeft);
    addAlignment(AlignRightCommand, tr("Align &Right"),
        tr("Line the selected bricks up by their right edges"), AlignRight);
    addAlignment(AlignTopCommand, tr("Align &Top"),
        tr("Line the selected bricks up by their upper edges"), AlignTop);
    addAlignment(AlignBottomCommand, tr("Align &Bottom"),
        tr("Line the selected bricks up by their lower edges"), AlignBottom);
    addAlignment(AlignHorizontalCentresCommand, tr("Align &Centres in a Column"),
        tr("Line the selected bricks up by their middles, one above the other"),
        AlignHorizontalCentres);
    addAlignment(AlignVerticalCentresCommand, tr("Align Centres in a &Row"),
        tr("Line the selected bricks up by their middles, side by side"), AlignVerticalCentres);
    addAlignment(DistributeHorizontallyCommand, tr("Distribute &Horizontally"),
        tr("Make the gaps between the selected bricks equal, from left to right"),
        DistributeHorizontally);
    addAlignment(DistributeVerticallyCommand, tr("Distribute &Vertically"),
        tr("Make the gaps between the selected bricks equal, from top to bottom"),
        DistributeVertically);
}

void NetworkView::makeLookActions()
{
    addCommand(ZoomToSelectionCommand, tr("Zoom to &Selection"), QKeySequence(Qt::Key_F),
        tr("Show the selected bricks as large as they fit"), &NetworkView::zoomToSelection);
    addCommand(ZoomToAllCommand, tr("Zoom to &All"), QKeySequence(Qt::Key_A),
        tr("Show the whole network as large as it fits"), &NetworkView::zoomToAll);
    m_actions[ZoomToAllCommand]->setShortcuts(
        { QKeySequence(Qt::Key_A), QKeySequence(Qt::Key_Home) });
    addCommand(ZoomInCommand, tr("Zoom &In"), QKeySequence::ZoomIn, tr("Show the network larger"),
        &NetworkView::zoomIn);
    addCommand(ZoomOutCommand, tr("Zoom &Out"), QKeySequence::ZoomOut,
        tr("Show the network smaller"), &NetworkView::zoomOut);
    addCommand(ZoomToOneCommand, tr("&Original Size"), QKeySequence(Qt::CTRL | Qt::Key_0),
        tr("Show bricks at the size that their text is made for"), &NetworkView::zoomToOne);
    addCommand(SnapToGridCommand, tr("Snap to &Grid"), QKeySequence(),
        tr("Have dragged bricks stop at the lines of the grid"), &NetworkView::refresh);
    m_actions[SnapToGridCommand]->setCheckable(true);
    addCommand(ShowMiniMapCommand, tr("Mini-&Map"), QKeySequence(Qt::Key_M),
        tr("Show a small picture of the whole network in the corner"), &NetworkView::toggleMiniMap);
    m_actions[ShowMiniMapCommand]->setCheckable(true);
    m_actions[ShowMiniMapCommand]->setChecked(true);
}

void NetworkView::updateActions()
{
    for (int i = 0; i < CommandCount; ++i)
        m_actions.at(i)->setEnabled(canRun(Command(i)));
}

bool NetworkView::canRun(Command command) const
{
    if (command == AddBrickCommand)
        return m_edit->getUser();
    if (command == PasteCommand)
        return m_edit->getUser() && m_canPaste;
    if (command == SelectAllCommand || command == ArrangeCommand || command == ZoomToAllCommand)
        return !m_scene->getItems().isEmpty();
    if (command == FrameTitleCommand || command == RemoveFrameCommand)
        return currentFrame() != 0;
    if (command == UnframeCommand)
        return isAnyFramed(m_selection->getBricks());
    if (command >= AlignLeftCommand && command <= DistributeVerticallyCommand)
        return m_selection->size() >= 2;
    return command >= ZoomToSelectionCommand || !m_selection->isEmpty();
}

/// Sees whether the clipboard can be pasted. Other programs' texts are asked for only while this
/// one is used: they may be long, or their program may not answer.
void NetworkView::noteClipboard()
{
    if (!isVisible() || !isActiveWindow())
        return;
    m_canPaste = mayPaste(QGuiApplication::clipboard()->text());
    m_actions.at(PasteCommand)->setEnabled(canRun(PasteCommand));
}

/// True while a button of the mouse is held down for something.
bool NetworkView::isBusy() const
{
    return m_gesture || m_isPanning;
}

void NetworkView::addFromSearch()
{
    // The search would take the release of the button.
    if (!isBusy())
        openSearch(placeForNew(), m_keyboard.getPin());
}

void NetworkView::insertFromSearch()
{
    if (isBusy())
        return;
    DzBrickParam* pin = m_keyboard.getPin();
    DzBrickParam* peer = pin ? pin->getConnection(0) : nullptr;
    if (!peer) {
        emit statusMessage(tr("Go to a linked pin first: Up and Down walk the rows."));
        return;
    }
    openInsertSearch(pin->isOutput() ? BrickLink { pin, peer } : BrickLink { peer, pin });
}

void NetworkView::cutBricks()
{
    copyBricks();
    deleteBricks();
}

void NetworkView::copyBricks()
{
    const QString text = ::copyBricks(*m_edit, m_selection->getBricks());
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void NetworkView::pasteBricks()
{
    QString error;
    const QVector<DzShaderBrick*> pasted
        = ::pasteBricks(m_edit, QGuiApplication::clipboard()->text(), placeForNew(), &error);
    if (!pasted.isEmpty())
        m_selection->set(pasted);
    if (!error.isEmpty())
        emit statusMessage(error);
}

void NetworkView::duplicateBricks()
{
    QString error;
    const QVector<DzShaderBrick*> copies
        = ::duplicateBricks(m_edit, m_selection->getBricks(), duplicateOffset, &error);
    if (!copies.isEmpty())
        m_selection->set(copies);
    if (!error.isEmpty())
        emit statusMessage(error);
}

void NetworkView::remove(bool reconnect)
{
    const QVector<DzShaderBrick*> bricks = m_selection->getBricks();
    m_selection->clear();
    m_edit->deleteBricks(bricks, reconnect);
}

void NetworkView::deleteBricks()
{
    remove(false);
}

void NetworkView::deleteAndReconnect()
{
    remove(true);
}

void NetworkView::selectAll()
{
    m_selection->set(m_edit->getBricks());
}

void NetworkView::selectUpstream()
{
    m_selection->set(withUpstream(m_selection->getBricks()));
}

void NetworkView::selectDownstream()
{
    m_selection->set(withDownstream(m_selection->getBricks()));
}

void NetworkView::keepSelected()
{
    m_keyboard.toggleKept();
}

void NetworkView::rename()
{
    if (DzShaderBrick* brick = m_selection->getCurrent())
        editTitle(brick);
}

void NetworkView::toggleParams()
{
    if (const DzShaderBrick* brick = m_selection->getCurrent())
        m_edit->setHidesParams(m_selection->getBricks(), !BrickAppearance::hidesParams(brick));
}

void NetworkView::widen()
{
    m_edit->changeWidth(m_selection->getBricks(), gridStep);
}

void NetworkView::narrow()
{
    m_edit->changeWidth(m_selection->getBricks(), -gridStep);
}

void NetworkView::frameSelection()
{
    const int frame = frameBricks(m_edit, m_selection->getBricks(), tr("Frame"));
    if (frame != 0)
        editFrameTitle(frame);
}

void NetworkView::unframeSelection()
{
    removeFromFrames(m_edit, m_selection->getBricks());
}

/// The frame around the current brick, 0 for none.
int NetworkView::currentFrame() const
{
    const DzShaderBrick* brick = m_selection->getCurrent();
    return brick ? BrickAppearance::frameNumber(brick) : 0;
}

void NetworkView::editCurrentFrameTitle()
{
    editFrameTitle(currentFrame());
}

void NetworkView::removeCurrentFrame()
{
    removeFrame(m_edit, currentFrame());
}

/// Several selected bricks are arranged alone.
void NetworkView::arrange()
{
    const bool isPart = m_selection->size() > 1;
    m_edit->arrange(isPart ? m_selection->getBricks() : QVector<DzShaderBrick*>());
    if (!isPart)
        zoomToAll();
}

void NetworkView::rebuild()
{
    cancelGesture();
    m_keyboard.leaveRow();
    m_scene->rebuild();
    updateActions();
    zoomToAll();
}

void NetworkView::refresh()
{
    viewport()->update();
}

void NetworkView::toggleMiniMap()
{
    m_miniMap->setVisible(m_actions.at(ShowMiniMapCommand)->isChecked());
}

/// Ctrl and an arrow move the selection by one step of the grid.
void NetworkView::nudge(int key)
{
    QPointF step;
    if (key == Qt::Key_Left || key == Qt::Key_Right)
        step.setX(key == Qt::Key_Left ? -gridStep : gridStep);
    else
        step.setY(key == Qt::Key_Up ? -gridStep : gridStep);
    QVector<NetworkEdit::Move> moves;
    for (DzShaderBrick* brick : m_selection->getBricks())
        moves.append(NetworkEdit::Move { brick, BrickAppearance::position(brick) + step });
    m_edit->moveBricks(moves);
}

// Searching and editing in place.

QPointF NetworkView::placeForNew() const
{
    if (m_isMouseInside)
        return mapToScene(m_mouse);
    return getVisibleBox().center();
}

void NetworkView::startSearch(BrickSearchPopup* search, const QPointF& place, const BrickAdder& add)
{
    delete m_search;
    m_search = search;
    connect(m_search, &BrickSearchPopup::chosen, this, [=](const QString& className) {
        QString error;
        if (DzShaderBrick* brick = add(className, &error))
            m_selection->set({ brick });
        else if (!error.isEmpty())
            emit statusMessage(error);
    });
    m_search->popupAt(viewport()->mapToGlobal(mapFromScene(place)));
}

void NetworkView::openSearch(const QPointF& place, DzBrickParam* pin)
{
    if (!pin) {
        startSearch(new BrickSearchPopup(m_edit, tr("Add a brick"), nullptr, this), place,
            [=](const QString& className, QString* error) {
                return m_edit->addBrick(
                    className, broughtIntoView(place, sizeOf(className)), error);
            });
        return;
    }
    const QPointer<DzBrickParam> guarded(pin);
    const auto accepts = [guarded](const DzShaderBrick* sample) {
        return guarded && BrickCatalogue::findFitting(sample, guarded);
    };
    startSearch(new BrickSearchPopup(
                    m_edit, tr("Add what fits %1").arg(pin->getTypeString()), accepts, this),
        place, [=](const QString& className, QString* error) {
            if (!guarded)
                return static_cast<DzShaderBrick*>(nullptr);
            const QPointF grip = pinGrip(className, guarded);
            return m_edit->addBrickLinked(
                className, broughtIntoView(place - grip, sizeOf(className)) + grip, guarded, error);
        });
}

void NetworkView::openInsertSearch(const BrickLink& link)
{
    const BrickItem* source = m_scene->getItem(link.output->getTopBrickOwner());
    const BrickItem* target = m_scene->getItem(link.input->getTopBrickOwner());
    if (!source || !target)
        return;
    const QPointF middle = (source->pinPlace(link.output) + target->pinPlace(link.input)) / 2;
    const QPointer<DzBrickParam> output(link.output);
    const QPointer<DzBrickParam> input(link.input);
    const auto wire = [output, input] { return BrickLink { output, input }; };
    const auto accepts
        = [wire](const DzShaderBrick* sample) { return canInsertOnLink(sample, wire()); };
    startSearch(new BrickSearchPopup(m_edit, tr("Put into the wire"), accepts, this), middle,
        [=](const QString& className, QString* error) {
            return m_edit->addBrickOnLink(className, placeOnWire(className, middle), wire(), error);
        });
}

/// The place nearest to the wanted one where a brick of this size is wholly in view.
QPointF NetworkView::broughtIntoView(const QPointF& place, const QSizeF& size) const
{
    const QRect box = mapFromScene(QRectF(place, size)).boundingRect();
    const QPointF way = QPointF(wayIntoView(box)) / getZoom();
    return way.isNull() ? place : QPointF((place + way).toPoint());
}

/// Where a brick that is put into a wire there hides no other.
QPointF NetworkView::placeOnWire(const QString& className, const QPointF& place) const
{
    const QSizeF size = sizeOf(className);
    return findFreePlaceNear(*m_edit, broughtIntoView((place - titleGrip).toPoint(), size), size);
}

QRect NetworkView::editorPlace(const QRectF& box) const
{
    QRect place = mapFromScene(box).boundingRect();
    place.setWidth(qMax(place.width(), 120));
    return place;
}

void NetworkView::startEditor(
    const QString& text, const QRectF& box, const std::function<void(const QString&)>& commit)
{
    if (m_editor)
        m_editor->commit();
    m_editor = new InlineEditor(text, editorPlace(box), viewport());
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

void NetworkView::setBadge(DzShaderBrick* brick, const QString& text)
{
    m_scene->setBadge(brick, text);
}

void NetworkView::clearBadges()
{
    m_scene->clearBadges();
}

// Zoom and places.

void NetworkView::zoomAt(const QPointF& place, qreal factor)
{
    const qreal lowest = qMin(zoomLimits[0], getZoom());
    const qreal wanted = qBound(lowest, getZoom() * factor, zoomLimits[1]);
    const QPointF before = mapFromScene(place);
    setTransform(QTransform::fromScale(wanted, wanted));
    const QPointF after = mapFromScene(place);
    const QPoint off = (after - before).toPoint();
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + off.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + off.y());
    m_miniMap->update();
    emit zoomChanged(wanted);
}

void NetworkView::zoomTo(const QRectF& box)
{
    fitInto(viewport()->rect(), box);
    if (isUnderMiniMap(mapFromScene(box).boundingRect()))
        fitInto(roomFor(wideBox(box).size()), box);
    emit zoomChanged(getZoom());
}

/// Shows a box of the scene as large as it fits in the middle of a part of the view.
void NetworkView::fitInto(const QRect& room, const QRectF& box)
{
    // Nobody wants to see a single brick fill the screen.
    const qreal zoom = qBound(smallestZoom, fitOf(wideBox(box).size(), room.size()), qreal(1));
    setTransform(QTransform::fromScale(zoom, zoom));
    goTo(box.center() + (QRectF(viewport()->rect()).center() - QRectF(room).center()) / zoom);
}

bool NetworkView::isUnderMiniMap(const QRect& box) const
{
    return !m_miniMap->isHidden() && m_miniMap->geometry().intersects(box);
}

/// The part of the view beside or above the mini-map, whichever shows a box of this shape larger;
/// the whole view when it is hardly larger than the mini-map.
QRect NetworkView::roomFor(const QSizeF& shape) const
{
    const QRect all = viewport()->rect();
    if (m_miniMap->isHidden())
        return all;
    QRect beside = all;
    beside.setRight(m_miniMap->x() - 1);
    QRect above = all;
    above.setBottom(m_miniMap->y() - 1);
    const QRect room = fitOf(shape, beside.size()) > fitOf(shape, above.size()) ? beside : above;
    const bool isWorthIt = room.width() > all.width() / 2 && room.height() > all.height() / 2;
    return isWorthIt ? room : all;
}

/// How far a box of the view has to go to be wholly in view and not under the mini-map.
QPoint NetworkView::wayIntoView(const QRect& box) const
{
    const QRect all = viewport()->rect();
    const QPoint way = all.contains(box) ? QPoint() : wayInto(box, all);
    return isUnderMiniMap(box.translated(way)) ? wayInto(box, roomFor(box.size())) : way;
}

void NetworkView::zoomToSelection()
{
    if (!m_selection->isEmpty())
        zoomTo(m_scene->boxOf(m_selection->getBricks()));
}

void NetworkView::zoomToAll()
{
    zoomTo(m_scene->boxOfAll());
}

void NetworkView::zoomIn()
{
    zoomAt(getVisibleBox().center(), zoomPerNotch);
}

void NetworkView::zoomOut()
{
    zoomAt(getVisibleBox().center(), 1 / zoomPerNotch);
}

void NetworkView::zoomToOne()
{
    zoomAt(getVisibleBox().center(), 1 / getZoom());
}

void NetworkView::goTo(const QPointF& place)
{
    centerOn(place);
    m_miniMap->update();
}

void NetworkView::showBrick(const DzShaderBrick* brick)
{
    m_scene->flush();
    const BrickItem* item = m_scene->getItem(brick);
    if (!item)
        return;
    const QPoint way
        = wayIntoView(mapFromScene(QRectF(item->pos(), item->getSize())).boundingRect());
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
}

QRectF NetworkView::getVisibleBox() const
{
    return mapToScene(viewport()->rect()).boundingRect();
}

bool NetworkView::isSnappingToGrid() const
{
    return m_actions.at(SnapToGridCommand)->isChecked();
}

QPointF NetworkView::snapped(const QPointF& place) const
{
    return QPointF(
        qRound(place.x() / gridStep) * gridStep, qRound(place.y() / gridStep) * gridStep);
}

qreal NetworkView::getReach() const
{
    return reachPixels / getZoom();
}

// Gestures.

void NetworkView::mousePressEvent(QMouseEvent* event)
{
    m_mouse = event->pos();
    m_isMouseInside = true;
    if (m_gesture) {
        // Another button takes the gesture back.
        cancelGesture();
        return;
    }
    m_keyboard.leaveRow();
    const bool isPan = event->button() == Qt::MiddleButton
        || (event->button() == Qt::LeftButton && m_isSpaceDown);
    if (isPan) {
        m_isPanning = true;
        m_panStart = event->pos();
        viewport()->setCursor(Qt::ClosedHandCursor);
    } else if (event->button() == Qt::RightButton && (event->modifiers() & Qt::ControlModifier)) {
        m_gesture.reset(new CutGesture(this, mapToScene(event->pos())));
    } else if (event->button() == Qt::RightButton) {
        m_isMenuDue = true;
    } else if (event->button() == Qt::LeftButton) {
        beginGesture(event);
    }
}

void NetworkView::beginGesture(QMouseEvent* event)
{
    const QPointF place = mapToScene(event->pos());
    const CanvasHit hit = m_scene->hit(place, getReach());
    switch (hit.kind) {
    case CanvasHit::Pin:
        beginWire(hit.param, place);
        break;
    case CanvasHit::Grip:
        m_gesture.reset(new WidthGesture(this, hit.item->getBrick()));
        break;
    case CanvasHit::Row:
    case CanvasHit::Title:
        beginMove(place, hit.item->getBrick(), event->modifiers());
        break;
    case CanvasHit::FrameTitle:
        selectFrame(hit.frame);
        m_gesture.reset(new MoveGesture(this, place, nullptr));
        break;
    case CanvasHit::Wire:
    case CanvasHit::Nothing:
        m_gesture.reset(new BoxGesture(this, place, event->modifiers()));
        break;
    }
}

void NetworkView::beginWire(DzBrickParam* pin, const QPointF& place)
{
    BrickLink picked;
    DzBrickParam* from = pin;
    if (pin->isInput() && pin->getNumConnections() > 0) {
        picked.input = pin;
        picked.output = pin->getConnection(pin->getNumConnections() - 1);
        from = picked.output;
    }
    m_gesture.reset(new WireGesture(this, from, picked, place));
}

void NetworkView::beginMove(
    const QPointF& place, DzShaderBrick* brick, Qt::KeyboardModifiers modifiers)
{
    if (modifiers & Qt::ShiftModifier) {
        m_selection->toggle(brick);
        if (!m_selection->contains(brick))
            return;
    } else if (!m_selection->contains(brick)) {
        m_selection->set({ brick });
    }
    m_gesture.reset(new MoveGesture(this, place, modifiers & Qt::ShiftModifier ? nullptr : brick));
}

void NetworkView::selectFrame(int frame)
{
    m_selection->set(findFrame(*m_edit, frame).bricks);
}

void NetworkView::mouseMoveEvent(QMouseEvent* event)
{
    m_mouse = event->pos();
    m_isMouseInside = true;
    if (event->buttons() == Qt::NoButton) {
        // Another window took the release.
        m_isPanning = false;
        m_isMenuDue = false;
        cancelGesture();
    }
    if (m_isPanning) {
        const QPoint way = event->pos() - m_panStart;
        m_panStart = event->pos();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way.x());
        verticalScrollBar()->setValue(verticalScrollBar()->value() - way.y());
    } else if (m_gesture) {
        m_gesture->move(mapToScene(event->pos()), event->modifiers());
    } else {
        updateCursor(mapToScene(event->pos()));
    }
}

void NetworkView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_isPanning) {
        m_isPanning = false;
        updateCursor(mapToScene(event->pos()));
        return;
    }
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
    const bool isPress = event->button() != Qt::LeftButton || m_isSpaceDown || isBusy();
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
        openSearch(place);
}

/// An output has no value.
void NetworkView::activateRow(const BrickAppearance::Row& row)
{
    DzProperty* property = row.param ? row.param->getProperty(0) : row.property;
    if (row.kind != BrickAppearance::Row::Output && property)
        emit valueActivated(property);
}

void NetworkView::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->angleDelta();
    if (event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) {
        QScrollBar* bar
            = event->modifiers() & Qt::ShiftModifier ? horizontalScrollBar() : verticalScrollBar();
        bar->setValue(bar->value() - (turn.y() ? turn.y() : turn.x()));
    } else if (turn.y() != 0) {
        zoomAt(mapToScene(event->position().toPoint()), qPow(zoomPerNotch, turn.y() / 120.0));
    }
    event->accept();
}

void NetworkView::updateCursor(const QPointF& place)
{
    if (m_isSpaceDown) {
        viewport()->setCursor(Qt::OpenHandCursor);
        return;
    }
    const CanvasHit hit = m_scene->hit(place, getReach());
    if (hit.kind == CanvasHit::Pin)
        viewport()->setCursor(Qt::CrossCursor);
    else if (hit.kind == CanvasHit::Grip)
        viewport()->setCursor(Qt::SizeHorCursor);
    else
        viewport()->setCursor(Qt::ArrowCursor);
}

// Keys.

bool NetworkView::event(QEvent* event)
{
    // Tab finds a brick; Shift+Tab leaves the canvas.
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && !(key->modifiers() & ~Qt::KeypadModifier)) {
            addFromSearch();
            return true;
        }
    }
    // What was copied elsewhere meanwhile.
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::Show)
        noteClipboard();
    return QGraphicsView::event(event);
}

void NetworkView::keyPressEvent(QKeyEvent* event)
{
    const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
    if (event->key() == Qt::Key_Escape) {
        if (!cancelGesture() && !m_keyboard.cancel()) {
            m_keyboard.leaveRow();
            m_selection->clear();
        }
    } else if (event->key() == Qt::Key_Space && !event->modifiers()) {
        if (!event->isAutoRepeat()) {
            m_isSpaceDown = true;
            viewport()->setCursor(Qt::OpenHandCursor);
        }
    } else if (isArrow && event->modifiers() == Qt::ControlModifier) {
        nudge(event->key());
    } else if (m_gesture || !m_keyboard.keyPress(event)) {
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void NetworkView::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_isSpaceDown = false;
        updateCursor(mapToScene(m_mouse));
    } else {
        QAbstractScrollArea::keyReleaseEvent(event);
    }
}

void NetworkView::focusOutEvent(QFocusEvent* event)
{
    m_isSpaceDown = false;
    m_isPanning = false;
    QGraphicsView::focusOutEvent(event);
}

// Menus and tool tips.

void NetworkView::contextMenuEvent(QContextMenuEvent* event)
{
    // The mouse's menu comes when the button is released, for it may be the start of a cut.
    // No menu may take the release of a button that is held down.
    if (event->reason() == QContextMenuEvent::Mouse || isBusy())
        return;
    const BrickItem* item = m_scene->getItem(m_selection->getCurrent());
    openMenu(item ? item->pos() + QPointF(12, BrickAppearance::titleHeight / 2) : placeForNew());
}

void NetworkView::openMenu(const QPointF& place)
{
    const CanvasHit hit = m_scene->hit(place, getReach());
    QMenu* menu = nullptr;
    if (hit.item) {
        DzShaderBrick* brick = hit.item->getBrick();
        if (!m_selection->contains(brick))
            m_selection->set({ brick });
        menu = new BrickMenu(brick, this);
        fillBrickMenu(menu);
    } else {
        menu = new QMenu(this);
        if (hit.kind == CanvasHit::Wire)
            fillWireMenu(menu, hit.link);
        else if (hit.kind == CanvasHit::FrameTitle)
            fillFrameMenu(menu, hit.frame);
        fillVoidMenu(menu, place);
    }
    openMenuWith(menu, place);
}

void NetworkView::openMenuWith(QMenu* menu, const QPointF& place)
{
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(viewport()->mapToGlobal(mapFromScene(place)));
}

void NetworkView::addCommands(QMenu* menu, const QVector<Command>& commands)
{
    for (const Command command : commands)
        menu->addAction(getAction(command));
}

void NetworkView::fillBrickMenu(QMenu* menu)
{
    menu->addSeparator();
    addCommands(menu, { RenameCommand, HideParamsCommand, WiderCommand, NarrowerCommand });
    menu->addSeparator();
    addCommands(menu, { CutCommand, CopyCommand, DuplicateCommand });
    menu->addSeparator();
    addCommands(menu, { SelectUpstreamCommand, SelectDownstreamCommand });
    QMenu* alignments = menu->addMenu(tr("A&lign"));
    alignments->setEnabled(m_selection->size() >= 2);
    addCommands(alignments,
        { AlignLeftCommand, AlignRightCommand, AlignTopCommand, AlignBottomCommand,
            AlignHorizontalCentresCommand, AlignVerticalCentresCommand,
            DistributeHorizontallyCommand, DistributeVerticallyCommand });
    addCommands(menu, { FrameCommand, UnframeCommand, FrameTitleCommand, RemoveFrameCommand });
    menu->addSeparator();
    addCommands(menu, { DeleteCommand, DeleteReconnectCommand });
}

void NetworkView::fillWireMenu(QMenu* menu, const BrickLink& link)
{
    const QPointer<DzBrickParam> output(link.output);
    const QPointer<DzBrickParam> input(link.input);
    menu->addAction(tr("&Delete Wire"), this, [this, output, input] {
        if (output && input)
            unlinkPins(output, input);
    });
    menu->addAction(tr("&Insert Brick…"), this, [this, output, input] {
        if (output && input)
            openInsertSearch(BrickLink { output, input });
    });
    menu->addSeparator();
}

void NetworkView::fillFrameMenu(QMenu* menu, int frame)
{
    menu->addAction(tr("Change &Title…"), this, [this, frame] { editFrameTitle(frame); });
    menu->addAction(tr("&Select Its Bricks"), this, [this, frame] { selectFrame(frame); });
    menu->addAction(tr("&Remove the Frame"), this, [this, frame] { removeFrame(m_edit, frame); });
    menu->addSeparator();
}

void NetworkView::fillVoidMenu(QMenu* menu, const QPointF& place)
{
    QAction* add = menu->addAction(tr("&Add Brick…"), this, [this, place] { openSearch(place); });
    add->setShortcut(getAction(AddBrickCommand)->shortcut());
    addCommands(menu, { PasteCommand, SelectAllCommand });
    menu->addSeparator();
    addCommands(menu, { ArrangeCommand, ZoomToAllCommand, ZoomToSelectionCommand });
    menu->addSeparator();
    addCommands(menu, { SnapToGridCommand, ShowMiniMapCommand });
}

QString NetworkView::toolTipFor(const QPointF& place)
{
    const CanvasHit hit = m_scene->hit(place, getReach());
    if (hit.kind == CanvasHit::Wire)
        return tr("%1 feeds %2 of %3 (%4)")
            .arg(BrickAppearance::titleText(hit.link.output->getTopBrickOwner()),
                hit.link.input->getLabel(),
                BrickAppearance::titleText(hit.link.input->getTopBrickOwner()),
                hit.link.output->getTypeString());
    if (!hit.item)
        return QString();
    if (!hit.item->getBadge().isEmpty() && hit.item->badgeBox().contains(place - hit.item->pos()))
        return hit.item->getBadge();
    if (hit.row < 0) {
        const QString description = hit.item->getBrick()->getDescription();
        const QString title = BrickAppearance::titleText(hit.item->getBrick());
        return description.isEmpty() ? title : title + QLatin1Char('\n') + description;
    }
    const BrickAppearance::Row& row = hit.item->getRows().at(hit.row);
    const QString label = BrickAppearance::rowLabel(row);
    const QString value = BrickAppearance::rowValue(row);
    QString text = row.param && row.kind != BrickAppearance::Row::Setting
        ? tr("%1: %2").arg(label, row.param->getTypeString())
        : label;
    if (!value.isEmpty())
        text += QLatin1Char('\n') + value;
    return text;
}

void NetworkView::showToolTip(const QPoint& place, const QPoint& globalPlace)
{
    const QString text = m_gesture ? QString() : toolTipFor(mapToScene(place));
    // Texts come from files: they are never taken for rich text.
    QToolTip::showText(globalPlace,
        text.isEmpty() ? text : text.toHtmlEscaped().replace('\n', "<br>"), viewport());
}

bool NetworkView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        showToolTip(help->pos(), help->globalPos());
        return true;
    }
    // Others may ask for a picture before the scene had its turn.
    if (event->type() == QEvent::Paint)
        m_scene->bringUpToDate();
    if (event->type() == QEvent::Leave)
        m_isMouseInside = false;
    return QGraphicsView::viewportEvent(event);
}

// Bricks that are dragged here.

QString NetworkView::droppedClass(const QDropEvent* event) const
{
    const QMimeData* mime = event->mimeData();
    if (!mime->hasFormat(BrickCatalogue::mimeType()))
        return QString();
    const QString className = QString::fromUtf8(mime->data(BrickCatalogue::mimeType()));
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    const IDzBrickUser* user = m_edit->getUser();
    return kind && user && user->canUseBrick(kind->sample) ? className : QString();
}

void NetworkView::dragEnterEvent(QDragEnterEvent* event)
{
    if (droppedClass(event).isEmpty())
        event->ignore();
    else
        event->acceptProposedAction();
}

void NetworkView::dragMoveEvent(QDragMoveEvent* event)
{
    const QString className = droppedClass(event);
    if (className.isEmpty()) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    m_scene->setMarkedWire(wireFor(className, mapToScene(event->pos())));
}

/// The wire there that a brick of the class can be put into.
BrickLink NetworkView::wireFor(const QString& className, const QPointF& place) const
{
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    const BrickLink link = m_scene->hitWire(place, getReach());
    return canInsertOnLink(kind->sample, link) ? link : BrickLink();
}

void NetworkView::dragLeaveEvent(QDragLeaveEvent*)
{
    m_scene->setMarkedWire(BrickLink());
}

void NetworkView::dropEvent(QDropEvent* event)
{
    const QString className = droppedClass(event);
    m_scene->setMarkedWire(BrickLink());
    if (className.isEmpty()) {
        event->ignore();
        return;
    }
    const BrickLink link = wireFor(className, mapToScene(event->pos()));
    const QPointF place = mapToScene(event->pos());
    QString error;
    DzShaderBrick* brick = link.isNull()
        ? m_edit->addBrick(
            className, broughtIntoView((place - titleGrip).toPoint(), sizeOf(className)), &error)
        : m_edit->addBrickOnLink(className, placeOnWire(className, place), link, &error);
    if (brick)
        m_selection->set({ brick });
    else
        emit statusMessage(error);
    event->acceptProposedAction();
    setFocus();
}

// Painting.

void NetworkView::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        updateStyle();
    QGraphicsView::changeEvent(event);
}

void NetworkView::updateStyle()
{
    m_scene->setStyle(CanvasStyle(palette()));
    setBackgroundBrush(m_scene->getStyle().canvas);
}

void NetworkView::resizeEvent(QResizeEvent* event)
{
    QGraphicsView::resizeEvent(event);
    placeMiniMap();
}

void NetworkView::placeMiniMap()
{
    m_miniMap->move(width() - m_miniMap->width() - miniMapMargin,
        height() - m_miniMap->height() - miniMapMargin);
}

void NetworkView::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    if (m_miniMap)
        m_miniMap->update();
    m_edit->setPlaceHint(getVisibleBox().center());
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
