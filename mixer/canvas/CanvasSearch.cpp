// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "CanvasSearch.h"

#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "BrickItem.h"
#include "BrickSelection.h"
#include "FreePlace.h"
#include "NetworkScene.h"
#include "NetworkView.h"
#include "NetworkWalk.h"
#include "dzbrickparam.h"
#include "dzshaderbrick.h"

#include <algorithm>

namespace {

/// Where a new brick is held, in its title.
const QPointF titleGrip(BrickAppearance::defaultWidth / 2, BrickAppearance::titleHeight / 2);

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

} // namespace

QString secondRootNotice(const NetworkEdit& edit, const DzShaderBrick* added)
{
    const QVector<DzShaderBrick*> bricks = edit.getBricks();
    if (!isRoot(added) || std::count_if(bricks.begin(), bricks.end(), isRoot) < 2)
        return QString();
    return NetworkView::tr("The network has another root now, and only the last one is written. "
                           "Undo, or delete the root that you do not want.");
}

CanvasSearch::CanvasSearch(NetworkView* view)
    : m_view(view)
{
}

void CanvasSearch::start(BrickSearchPopup* popup, const QPointF& place, const Adder& add)
{
    delete m_popup;
    m_popup = popup;
    QObject::connect(popup, &BrickSearchPopup::chosen, m_view, [=](const QString& className) {
        QString error;
        DzShaderBrick* added = add(className, &error);
        select(added, error);
    });
    popup->popupAt(m_view->viewport()->mapToGlobal(m_view->mapFromScene(place)));
}

DzShaderBrick* CanvasSearch::select(DzShaderBrick* added, const QString& error)
{
    if (added)
        m_view->getSelection()->set({ added });
    const QString notice = added ? secondRootNotice(*m_view->getEdit(), added) : error;
    if (!notice.isEmpty())
        emit m_view->statusMessage(notice);
    return added;
}

void CanvasSearch::open(const QPointF& place)
{
    auto* popup
        = new BrickSearchPopup(m_view->getEdit(), NetworkView::tr("Add a brick"), nullptr, m_view);
    start(popup, place, [=](const QString& className, QString* error) {
        return m_view->getEdit()->addBrick(className, freePlace(className, place), error);
    });
}

void CanvasSearch::openFor(DzBrickParam* pin, const QPointF& place)
{
    const QPointer<DzBrickParam> guarded(pin);
    const auto accepts = [guarded](const DzShaderBrick* sample) {
        return guarded && BrickCatalogue::findFitting(sample, guarded);
    };
    auto* popup = new BrickSearchPopup(m_view->getEdit(),
        NetworkView::tr("Add what fits %1").arg(pin->getTypeString()), accepts, m_view);
    start(popup, place, [=](const QString& className, QString* error) {
        if (!guarded)
            return static_cast<DzShaderBrick*>(nullptr);
        const QPointF grip = pinGrip(className, guarded);
        return m_view->getEdit()->addBrickLinked(
            className, freePlace(className, place - grip) + grip, guarded, error);
    });
}

void CanvasSearch::openInto(const BrickLink& link)
{
    const NetworkScene* scene = m_view->getNetworkScene();
    const BrickItem* source = scene->getItem(link.output->getTopBrickOwner());
    const BrickItem* target = scene->getItem(link.input->getTopBrickOwner());
    if (!source || !target)
        return;
    const QPointF middle = (source->pinPlace(link.output) + target->pinPlace(link.input)) / 2;
    const QPointer<DzBrickParam> output(link.output);
    const QPointer<DzBrickParam> input(link.input);
    const auto wire = [output, input] { return BrickLink { output, input }; };
    const auto accepts
        = [wire](const DzShaderBrick* sample) { return canInsertOnLink(sample, wire()); };
    auto* popup = new BrickSearchPopup(
        m_view->getEdit(), NetworkView::tr("Put into the wire"), accepts, m_view);
    start(popup, middle, [=](const QString& className, QString* error) {
        return m_view->getEdit()->addBrickOnLink(
            className, freePlace(className, middle - titleGrip), wire(), error);
    });
}

/// The place nearest to the wanted one where a brick of the class is in view and hides no other.
QPointF CanvasSearch::freePlace(const QString& className, const QPointF& wanted) const
{
    const QSizeF size = sizeOf(className);
    const QPointF place = m_view->broughtIntoView(QPointF(wanted.toPoint()), size);
    return findFreePlaceNear(*m_view->getEdit(), place, size, nullptr,
        [&](const QPointF& other) { return m_view->broughtIntoView(other, size) == other; });
}

DzShaderBrick* CanvasSearch::add(
    const QString& className, const QPointF& grip, const BrickLink& link)
{
    NetworkEdit* edit = m_view->getEdit();
    const QPointF place = freePlace(className, grip - titleGrip);
    QString error;
    DzShaderBrick* added = link.isNull() ? edit->addBrick(className, place, &error)
                                         : edit->addBrickOnLink(className, place, link, &error);
    return select(added, error);
}
