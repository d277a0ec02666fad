// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasCommands.h"

#include "BrickAlignment.h"
#include "BrickAppearance.h"
#include "BrickSelection.h"
#include "CanvasSearch.h"
#include "CommandSet.h"
#include "NetworkCopies.h"
#include "NetworkEdit.h"
#include "NetworkFrames.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>

struct CanvasCommands::Row {
    const char* id;
    QString text;
    CommandKeys keys;
    QString tip;
    bool (*canRun)(const NetworkView& view);
    void (*run)(NetworkView& view);
    /// For switches.
    bool (*isOn)(const NetworkView& view) = nullptr;
};

namespace {

const QPointF duplicateOffset(40, 40);

// When commands can run.

bool always(const NetworkView&)
{
    return true;
}

bool hasNetwork(const NetworkView& view)
{
    return view.getEdit()->getUser();
}

bool hasBricks(const NetworkView& view)
{
    return !view.getNetworkScene()->getItems().isEmpty();
}

bool hasSelection(const NetworkView& view)
{
    return !view.getSelection()->isEmpty();
}

bool hasSeveralSelected(const NetworkView& view)
{
    return view.getSelection()->size() >= 2;
}

bool canPaste(const NetworkView& view)
{
    return hasNetwork(view) && view.canPaste();
}

/// The frame around the current brick, 0 for none.
int currentFrame(const NetworkView& view)
{
    const DzShaderBrick* brick = view.getSelection()->getCurrent();
    return brick ? BrickAppearance::frameNumber(brick) : 0;
}

bool hasCurrentFrame(const NetworkView& view)
{
    return currentFrame(view) != 0;
}

bool hasFramedSelected(const NetworkView& view)
{
    const QVector<DzShaderBrick*>& bricks = view.getSelection()->getBricks();
    return std::any_of(bricks.begin(), bricks.end(),
        [](const DzShaderBrick* brick) { return BrickAppearance::frameNumber(brick) != 0; });
}

// What they do.

void addBrick(NetworkView& view)
{
    view.searchBrick();
}

void insertBrick(NetworkView& view)
{
    // The search would take the release of the button.
    if (view.isBusy())
        return;
    DzBrickParam* pin = view.getKeyboard()->getPin();
    DzBrickParam* peer = pin ? pin->getConnection(0) : nullptr;
    if (peer)
        view.getSearch()->openInto(
            pin->isOutput() ? BrickLink { pin, peer } : BrickLink { peer, pin });
    else
        emit view.statusMessage(
            NetworkView::tr("Go to a linked pin first: Up and Down walk the rows."));
}

void copy(NetworkView& view)
{
    const QString text = copyBricks(*view.getEdit(), view.getSelection()->getBricks());
    if (!text.isEmpty())
        QGuiApplication::clipboard()->setText(text);
}

void removeBricks(NetworkView& view, bool reconnect)
{
    const QVector<DzShaderBrick*> bricks = view.getSelection()->getBricks();
    view.getSelection()->clear();
    view.getEdit()->deleteBricks(bricks, reconnect);
}

void deleteBricks(NetworkView& view)
{
    removeBricks(view, false);
}

void deleteAndReconnect(NetworkView& view)
{
    removeBricks(view, true);
}

void cutBricks(NetworkView& view)
{
    copy(view);
    deleteBricks(view);
}

void selectAdded(NetworkView& view, const QVector<DzShaderBrick*>& added, const QString& error)
{
    if (!added.isEmpty())
        view.getSelection()->set(added);
    if (!error.isEmpty())
        emit view.statusMessage(error);
}

void paste(NetworkView& view)
{
    QString error;
    const QVector<DzShaderBrick*> added = pasteBricks(
        view.getEdit(), QGuiApplication::clipboard()->text(), view.getMousePlace(), &error);
    selectAdded(view, added, error);
}

void duplicate(NetworkView& view)
{
    QString error;
    const QVector<DzShaderBrick*> added = duplicateBricks(
        view.getEdit(), view.getSelection()->getBricks(), duplicateOffset, &error);
    selectAdded(view, added, error);
}

void selectAll(NetworkView& view)
{
    view.getSelection()->set(view.getEdit()->getBricks());
}

void selectUpstream(NetworkView& view)
{
    view.getSelection()->set(withUpstream(view.getSelection()->getBricks()));
}

void selectDownstream(NetworkView& view)
{
    view.getSelection()->set(withDownstream(view.getSelection()->getBricks()));
}

void keepSelected(NetworkView& view)
{
    view.getKeyboard()->toggleKept();
}

void rename(NetworkView& view)
{
    if (DzShaderBrick* brick = view.getSelection()->getCurrent())
        view.editTitle(brick);
}

void toggleParams(NetworkView& view)
{
    const BrickSelection* selection = view.getSelection();
    if (const DzShaderBrick* brick = selection->getCurrent())
        view.getEdit()->setHidesParams(
            selection->getBricks(), !BrickAppearance::hidesParams(brick));
}

void widen(NetworkView& view)
{
    view.getEdit()->changeWidth(view.getSelection()->getBricks(), NetworkView::gridStep);
}

void narrow(NetworkView& view)
{
    view.getEdit()->changeWidth(view.getSelection()->getBricks(), -NetworkView::gridStep);
}

void frame(NetworkView& view)
{
    const int added
        = frameBricks(view.getEdit(), view.getSelection()->getBricks(), NetworkView::tr("Frame"));
    if (added != 0)
        view.editFrameTitle(added);
}

void unframe(NetworkView& view)
{
    removeFromFrames(view.getEdit(), view.getSelection()->getBricks());
}

void editFrameTitle(NetworkView& view)
{
    view.editFrameTitle(currentFrame(view));
}

void removeCurrentFrame(NetworkView& view)
{
    removeFrame(view.getEdit(), currentFrame(view));
}

/// Several selected bricks are arranged alone.
void arrange(NetworkView& view)
{
    const bool isPart = hasSeveralSelected(view);
    view.getEdit()->arrange(isPart ? view.getSelection()->getBricks() : QVector<DzShaderBrick*>());
    if (!isPart)
        view.zoomToAll();
}

template <Alignment alignment>
void align(NetworkView& view)
{
    alignBricks(view.getEdit(), view.getSelection()->getBricks(), alignment);
}

void zoomToSelection(NetworkView& view)
{
    if (hasSelection(view))
        view.zoomTo(view.getNetworkScene()->boxOf(view.getSelection()->getBricks()));
}

void zoomToAll(NetworkView& view)
{
    view.zoomToAll();
}

void zoomIn(NetworkView& view)
{
    view.zoomIn();
}

void zoomOut(NetworkView& view)
{
    view.zoomOut();
}

void zoomToOne(NetworkView& view)
{
    view.zoomToOne();
}

void toggleSnap(NetworkView& view)
{
    view.setSnappingToGrid(!view.isSnappingToGrid());
}

bool isSnapping(const NetworkView& view)
{
    return view.isSnappingToGrid();
}

void toggleMiniMap(NetworkView& view)
{
    view.setMiniMapShown(!view.isMiniMapShown());
}

bool isMiniMapShown(const NetworkView& view)
{
    return view.isMiniMapShown();
}

} // namespace

QVector<CanvasCommands::Row> CanvasCommands::editRows()
{
    return {
        { "addBrick", tr("&Add Brick…"), "Ctrl+Space",
            tr("Search for a brick and add it where the mouse is"), hasNetwork, addBrick },
        { "insertBrick", tr("&Insert Brick into Wire…"), "Ctrl+I",
            tr("Search for a brick and put it into the wire of the pin that the keyboard is on"),
            hasSelection, insertBrick },
        { "cut", tr("Cu&t"), { QKeySequence::Cut, "Ctrl+X" },
            tr("Take the selected bricks away and put them on the clipboard"), hasSelection,
            cutBricks },
        { "copy", tr("&Copy"), { QKeySequence::Copy, "Ctrl+C" },
            tr("Put the selected bricks and the links among them on the clipboard"), hasSelection,
            copy },
        { "paste", tr("&Paste"), { QKeySequence::Paste, "Ctrl+V" },
            tr("Add the bricks on the clipboard where the mouse is"), canPaste, paste },
        { "duplicate", tr("D&uplicate"), "Ctrl+D",
            tr("Add copies of the selected bricks and of the links among them"), hasSelection,
            duplicate },
        { "delete", tr("&Delete"), "Del", tr("Delete the selected bricks and their links"),
            hasSelection, deleteBricks },
        { "deleteReconnect", tr("Delete and &Reconnect"), "Ctrl+Del",
            tr("Delete the selected bricks and link what they fed with what fed them"),
            hasSelection, deleteAndReconnect },
    };
}

QVector<CanvasCommands::Row> CanvasCommands::selectRows()
{
    return {
        { "selectAll", tr("Select &All"), { QKeySequence::SelectAll, "Ctrl+A" },
            tr("Select all bricks of the network"), hasBricks, selectAll },
        { "selectUpstream", tr("Select &Upstream"), "Shift+Left",
            tr("Select also whatever feeds the selected bricks"), hasSelection, selectUpstream },
        { "selectDownstream", tr("Select &Downstream"), "Shift+Right",
            tr("Select also whatever the selected bricks feed"), hasSelection, selectDownstream },
        { "keepSelected", tr("&Keep Selected"), "Shift+Space",
            tr("Keep the selection while the arrow keys go to further bricks; again lets the "
               "brick go"),
            hasSelection, keepSelected },
    };
}

QVector<CanvasCommands::Row> CanvasCommands::brickRows()
{
    return {
        { "rename", tr("Change &Title…"), "F2",
            tr("Change the title of the brick that was selected last"), hasSelection, rename },
        { "hideParams", tr("&Hide or Show Parameters"), "H",
            tr("Hide the rows of the selected bricks that have no link, or show them again"),
            hasSelection, toggleParams },
        { "wider", tr("&Wider"), "Alt+Right", tr("Make the selected bricks wider"), hasSelection,
            widen },
        { "narrower", tr("&Narrower"), "Alt+Left", tr("Make the selected bricks narrower"),
            hasSelection, narrow },
        { "frame", tr("&Frame Bricks…"), "Ctrl+G",
            tr("Put a frame with a title around the selected bricks"), hasSelection, frame },
        { "unframe", tr("Take out of &Frame"), "Ctrl+Shift+G",
            tr("Take the selected bricks out of their frames"), hasFramedSelected, unframe },
        { "frameTitle", tr("Change Frame T&itle…"), "Shift+F2",
            tr("Change the title of the frame around the brick that was selected last"),
            hasCurrentFrame, editFrameTitle },
        { "removeFrame", tr("Remove Fra&me"), "Ctrl+Alt+G",
            tr("Remove the frame around the brick that was selected last, and keep its bricks"),
            hasCurrentFrame, removeCurrentFrame },
    };
}

QVector<CanvasCommands::Row> CanvasCommands::placeRows()
{
    return {
        { "arrange", tr("Auto-A&rrange"), "Ctrl+L",
            tr("Arrange the bricks so that what feeds stands on the left; several selected ones "
               "alone"),
            hasBricks, arrange },
        { "alignLeft", tr("Align &Left"), {}, tr("Line the selected bricks up by their left edges"),
            hasSeveralSelected, align<AlignLeft> },
        { "alignRight", tr("Align &Right"), {},
            tr("Line the selected bricks up by their right edges"), hasSeveralSelected,
            align<AlignRight> },
        { "alignTop", tr("Align &Top"), {}, tr("Line the selected bricks up by their upper edges"),
            hasSeveralSelected, align<AlignTop> },
        { "alignBottom", tr("Align &Bottom"), {},
            tr("Line the selected bricks up by their lower edges"), hasSeveralSelected,
            align<AlignBottom> },
        { "alignColumn", tr("Align &Centres in a Column"), {},
            tr("Line the selected bricks up by their middles, one above the other"),
            hasSeveralSelected, align<AlignHorizontalCentres> },
        { "alignRow", tr("Align Centres in a &Row"), {},
            tr("Line the selected bricks up by their middles, side by side"), hasSeveralSelected,
            align<AlignVerticalCentres> },
        { "distributeHorizontally", tr("Distribute &Horizontally"), {},
            tr("Make the gaps between the selected bricks equal, from left to right"),
            hasSeveralSelected, align<DistributeHorizontally> },
        { "distributeVertically", tr("Distribute &Vertically"), {},
            tr("Make the gaps between the selected bricks equal, from top to bottom"),
            hasSeveralSelected, align<DistributeVertically> },
    };
}

const char* CanvasCommands::alignments()
{
    return "alignLeft alignRight alignTop alignBottom alignColumn alignRow | "
           "distributeHorizontally distributeVertically";
}

QVector<CanvasCommands::Row> CanvasCommands::lookRows()
{
    return {
        { "zoomToAll", tr("Zoom to &All"), "A; Home",
            tr("Show the whole network as large as it fits"), hasBricks, zoomToAll },
        { "zoomToSelection", tr("Zoom to &Selection"), "F",
            tr("Show the selected bricks as large as they fit"), always, zoomToSelection },
        { "zoomIn", tr("Zoom &In"), { QKeySequence::ZoomIn, "Ctrl++" },
            tr("Show the network larger"), always, zoomIn },
        { "zoomOut", tr("Zoom &Out"), { QKeySequence::ZoomOut, "Ctrl+-" },
            tr("Show the network smaller"), always, zoomOut },
        { "zoomToOne", tr("&Original Size"), "Ctrl+0",
            tr("Show bricks at the size that their text is made for"), always, zoomToOne },
        { "showMiniMap", tr("Mini-&Map"), "M",
            tr("Show a small picture of the whole network in the corner"), always, toggleMiniMap,
            isMiniMapShown },
        { "snapToGrid", tr("Snap to &Grid"), {},
            tr("Have dragged bricks stop at the lines of the grid"), always, toggleSnap,
            isSnapping },
    };
}

void CanvasCommands::addTo(CommandSet* commands, const std::function<NetworkView*()>& current)
{
    const QVector<Row> rows = editRows() + selectRows() + brickRows() + placeRows() + lookRows();
    for (const Row& row : rows) {
        Command command { QString::fromLatin1(row.id), row.text, row.keys, row.tip,
            [current, canRun = row.canRun] {
                const NetworkView* view = current();
                return view && canRun(*view);
            },
            [current, run = row.run] {
                NetworkView* view = current();
                // Bricks that went are selected no more.
                view->getNetworkScene()->flush();
                run(*view);
            } };
        if (row.isOn)
            command.asSwitch([current, isOn = row.isOn] {
                const NetworkView* view = current();
                return view && isOn(*view);
            });
        command.scope = Command::Canvas;
        commands->add(command);
    }
}
