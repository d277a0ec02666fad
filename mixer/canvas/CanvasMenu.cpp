// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasMenu.h"

#include "BrickItem.h"
#include "BrickMenu.h"
#include "BrickSelection.h"
#include "CanvasCommands.h"
#include "CanvasSearch.h"
#include "CommandSet.h"
#include "NetworkFrames.h"
#include "NetworkLinks.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "dzbrickparam.h"

#include <QMenu>
#include <QPointer>

namespace {

/// A menu and what its entries work on.
class CanvasMenu
{
    Q_DECLARE_TR_FUNCTIONS(CanvasMenu)

public:
    CanvasMenu(NetworkView* view, QMenu* menu)
        : m_view(view)
        , m_menu(menu)
    {
    }

    void addBrickPart();
    void addWirePart(const BrickLink& link);
    void addFramePart(int frame);
    void addVoidPart(const QPointF& place);

private:
    void fill(QMenu* menu, const char* ids) const
    {
        if (const CommandSet* commands = m_view->getCommands())
            commands->fill(menu, ids);
    }

    NetworkView* m_view;
    QMenu* m_menu;
};

void CanvasMenu::addBrickPart()
{
    fill(m_menu,
        "| rename hideParams wider narrower | cut copy duplicate | selectUpstream "
        "selectDownstream");
    QMenu* alignments = m_menu->addMenu(tr("A&lign"));
    alignments->setEnabled(m_view->getSelection()->size() >= 2);
    fill(alignments, CanvasCommands::alignments());
    fill(m_menu, "frame unframe frameTitle removeFrame | delete deleteReconnect");
}

void CanvasMenu::addWirePart(const BrickLink& link)
{
    NetworkView* view = m_view;
    const QPointer<DzBrickParam> output(link.output);
    const QPointer<DzBrickParam> input(link.input);
    m_menu->addAction(tr("&Delete Wire"), view, [output, input] {
        if (output && input)
            unlinkPins(output, input);
    });
    m_menu->addAction(tr("&Insert Brick…"), view, [view, output, input] {
        if (output && input)
            view->getSearch()->openInto(BrickLink { output, input });
    });
    m_menu->addSeparator();
}

void CanvasMenu::addFramePart(int frame)
{
    NetworkView* view = m_view;
    m_menu->addAction(tr("Change &Title…"), view, [view, frame] { view->editFrameTitle(frame); });
    m_menu->addAction(tr("&Select Its Bricks"), view,
        [view, frame] { view->getSelection()->set(findFrame(*view->getEdit(), frame).bricks); });
    m_menu->addAction(
        tr("&Remove the Frame"), view, [view, frame] { removeFrame(view->getEdit(), frame); });
    m_menu->addSeparator();
}

void CanvasMenu::addVoidPart(const QPointF& place)
{
    NetworkView* view = m_view;
    QAction* add = m_menu->addAction(
        tr("&Add Brick…"), view, [view, place] { view->getSearch()->open(place); });
    if (const CommandSet* commands = view->getCommands())
        for (const QAction* command : commands->findAll("addBrick"))
            add->setShortcut(command->shortcut());
    fill(m_menu, "paste selectAll | arrange zoomToAll zoomToSelection | snapToGrid showMiniMap");
}

} // namespace

QMenu* makeCanvasMenu(NetworkView* view, const QPointF& place)
{
    const CanvasHit hit = view->getNetworkScene()->hit(place, view->getReach());
    if (hit.item) {
        DzShaderBrick* brick = hit.item->getBrick();
        if (!view->getSelection()->contains(brick))
            view->getSelection()->set({ brick });
        auto* menu = new BrickMenu(brick, view);
        CanvasMenu(view, menu).addBrickPart();
        return menu;
    }
    auto* menu = new QMenu(view);
    CanvasMenu parts(view, menu);
    if (hit.kind == CanvasHit::Wire)
        parts.addWirePart(hit.link);
    else if (hit.kind == CanvasHit::FrameTitle)
        parts.addFramePart(hit.frame);
    parts.addVoidPart(place);
    return menu;
}
