// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkLinks.h"

#include "BrickAppearance.h"
#include "dzbrickparam.h"
#include "dzforeachlink.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "idzbrickuser.h"

#include <QCoreApplication>

namespace {

QString tr(const char* text, int count = -1)
{
    return QCoreApplication::translate("NetworkLinks", text, nullptr, count);
}

bool canLink(DzBrickParam* output, DzBrickParam* input)
{
    return output->isOutput() && input->isInput() && input->canConnect(output);
}

QString nameOf(const DzBrickParam* param)
{
    const QString label = param->getLabel();
    return label.isEmpty() ? param->getName() : label;
}

} // namespace

BrickLink inOrder(DzBrickParam* a, DzBrickParam* b)
{
    if (a && b && !a->isOutput() && b->isOutput())
        std::swap(a, b);
    BrickLink link;
    link.output = a;
    link.input = b;
    return link;
}

QString linkRefusal(DzBrickParam* a, DzBrickParam* b)
{
    // The host only says that it refuses: the first of its rules that does not hold is the reason.
    const BrickLink link = inOrder(a, b);
    if (link.isNull() || !link.output->getTopBrickOwner() || !link.input->getTopBrickOwner())
        return tr("There is nothing to link.");
    const DzShaderBrick* source = link.output->getTopBrickOwner();
    const DzShaderBrick* target = link.input->getTopBrickOwner();
    if (link.output->isOutput() && link.input->isOutput())
        return tr("Both are outputs: a wire leads from an output to an input.");
    if (!link.output->isOutput()) {
        const DzBrickParam* row = link.output->isInput() ? link.input : link.output;
        return row->isInput() ? tr("Both are inputs: a wire leads from an output to an input.")
                              : tr("%1 is a setting: it takes no wire.").arg(nameOf(row));
    }
    if (!link.input->isInput())
        return tr("%1 is a setting: it takes no wire.").arg(nameOf(link.input));
    if (source == target)
        return tr("A brick cannot feed itself.");
    if (link.input->isConnectedTo(link.output))
        return tr("These two are linked already.");
    if (link.input->canConnect(link.output))
        return QString();
    if (source->getBrickUser() && target->getBrickUser()
        && source->getBrickUser() != target->getBrickUser())
        return tr("The bricks are in different networks.");
    if (qobject_cast<const DzUnknownBrick*>(source) || qobject_cast<const DzUnknownBrick*>(target))
        return tr("A brick of an unknown class takes no new wires.");
    if (!target->canBeFedBy(source))
        return tr("This would close a loop: %1 feeds %2 already.")
            .arg(BrickAppearance::titleText(target), BrickAppearance::titleText(source));
    const QString given = link.output->getTypeString();
    const QString taken = link.input->getTypeString();
    if (given != taken)
        return tr("%1 takes %2, and this is %3.").arg(nameOf(link.input), taken, given);
    return tr("%1 takes no wire from %2.").arg(nameOf(link.input), source->getBrickTitle());
}

bool joinPins(DzBrickParam* output, DzBrickParam* input, LinkMode mode)
{
    // Asked before the old links go: a refusal leaves them.
    if (!canLink(output, input) || input->isConnectedTo(output))
        return false;
    if (mode == ReplaceLinks)
        input->removeAllConnections();
    return input->addConnection(output);
}

bool linkPins(DzBrickParam* a, DzBrickParam* b, LinkMode mode)
{
    const BrickLink link = inOrder(a, b);
    if (link.isNull())
        return false;
    DzUndoStackHold hold;
    const bool isMade = joinPins(link.output, link.input, mode);
    hold.accept(tr("Link %1").arg(nameOf(link.input)));
    return isMade;
}

bool unlinkPins(DzBrickParam* a, DzBrickParam* b)
{
    const BrickLink link = inOrder(a, b);
    if (link.isNull())
        return false;
    DzUndoStackHold hold;
    const bool isRemoved = link.input->removeConnection(link.output);
    hold.accept(tr("Unlink %1").arg(nameOf(link.input)));
    return isRemoved;
}

void unlinkAll(DzBrickParam* param)
{
    DzUndoStackHold hold;
    param->removeAllConnections();
    hold.accept(tr("Unlink %1").arg(nameOf(param)));
}

bool moveLink(const BrickLink& link, DzBrickParam* input, LinkMode mode)
{
    if (link.isNull() || !input || input == link.input || input->isConnectedTo(link.output)
        || !canLink(link.output, input))
        return false;
    DzUndoStackHold hold;
    link.input->removeConnection(link.output);
    const bool isMade = joinPins(link.output, input, mode);
    if (isMade)
        hold.accept(tr("Move Link to %1").arg(nameOf(input)));
    return isMade;
}

void cutLinks(const QVector<BrickLink>& links)
{
    DzUndoStackHold hold;
    for (const BrickLink& link : links)
        link.input->removeConnection(link.output);
    hold.accept(links.size() == 1 ? tr("Cut Wire") : tr("Cut %n Wires", links.size()));
}

namespace {

/// The brick's first parameters that fit between the ends of a wire; null ends where none does.
BrickLink endsForLink(const DzShaderBrick* brick, const BrickLink& link)
{
    BrickLink ends;
    for (int i = 0; i < brick->getNumParameters(); ++i) {
        DzBrickParam* param = brick->getParameter(i);
        if (!ends.input && canLink(link.output, param))
            ends.input = param;
        if (!ends.output && canLink(param, link.input))
            ends.output = param;
    }
    return ends;
}

} // namespace

bool canInsertOnLink(const DzShaderBrick* brick, const BrickLink& link)
{
    return !link.isNull() && brick != link.output->getTopBrickOwner()
        && brick != link.input->getTopBrickOwner() && !endsForLink(brick, link).isNull();
}

bool joinInto(DzShaderBrick* brick, const BrickLink& link)
{
    const BrickLink ends = endsForLink(brick, link);
    if (ends.isNull())
        return false;
    link.input->removeConnection(link.output);
    // Other wires to the same input have nothing to do with this one.
    return joinPins(link.output, ends.input, ReplaceLinks)
        && joinPins(ends.output, link.input, AddLink);
}

void joinAround(DzShaderBrick* brick)
{
    QVector<DzBrickParam*> sources;
    QVector<BrickLink> outgoing;
    forEachOutputLink(brick, [&](DzBrickParam* output, DzBrickParam* input) {
        outgoing.append(BrickLink { output, input });
    });
    forEachInputLink(brick, [&](DzBrickParam*, DzBrickParam* source) {
        if (!sources.contains(source))
            sources.append(source);
    });
    for (const BrickLink& link : qAsConst(outgoing)) {
        link.input->removeConnection(link.output);
        for (DzBrickParam* source : qAsConst(sources))
            if (canLink(source, link.input)) {
                link.input->addConnection(source);
                break;
            }
    }
}
