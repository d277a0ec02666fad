// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkCopies.h"

#include "BrickAppearance.h"
#include "FreePlace.h"
#include "NetworkEdit.h"
#include "NetworkFrames.h"
#include "StoredNetworks.h"
#include "dzbrickparam.h"
#include "dzbrickuserfile.h"
#include "dzforeachlink.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QCoreApplication>
#include <QRectF>
#include <algorithm>
#include <functional>
#include <memory>

namespace {

typedef DzTSharedPointer<DzShaderBrick> BrickPtr;
using BrickAppearance::position;

/// No text from the clipboard beyond this is looked at, in letters.
const int longestPaste = 64 * 1024 * 1024;

QString tr(const char* text, int count = -1)
{
    return QCoreApplication::translate("NetworkCopies", text, nullptr, count);
}

void setError(QString* error, const QString& text)
{
    if (error)
        *error = text;
}

/// The bricks of a network that was read, taken out of it, and the links that they had.
struct LooseBricks {
    QVector<BrickPtr> bricks;
    QVector<BrickLink> links;
    int unusableCount = 0;
};

LooseBricks takeApart(IDzBrickUser* network)
{
    LooseBricks loose;
    QList<uint> ids;
    network->getBrickIDs(ids);
    for (const uint id : qAsConst(ids)) {
        DzShaderBrick* brick = network->getBrick(id);
        // Only loading puts in what no module offers; adding it as a user would is refused.
        if (!network->canUseBrick(brick)) {
            ++loose.unusableCount;
            continue;
        }
        loose.bricks.append(brick);
        forEachInputLink(brick, [&](DzBrickParam* input, DzBrickParam* output) {
            if (network->canUseBrick(output->getTopBrickOwner()))
                loose.links.append(BrickLink { output, input });
        });
    }
    network->deleteAllBricks();
    return loose;
}

QVector<DzShaderBrick*> addCopies(NetworkEdit* edit, const QString& text, const QString& caption,
    const std::function<QPointF(const QRectF& box)>& offsetFor, QString* error)
{
    QVector<DzShaderBrick*> added;
    setError(error, QString());
    IDzBrickUser* user = edit->getUser();
    const QString trimmed = text.size() > longestPaste ? QString() : text.trimmed();
    if (!user || trimmed.isEmpty()) {
        setError(error, tr("There is no network to paste."));
        return added;
    }
    LooseBricks loose;
    {
        const DzUndoStackLock lock;
        const std::unique_ptr<IDzBrickUser> network(user->createBrickUser());
        DzBrickUserFile file;
        if (!file.loadText(trimmed.toUtf8(), tr("the clipboard"), network.get())) {
            setError(error, tr("The clipboard holds no network: %1").arg(file.getError()));
            return added;
        }
        // While the bricks still have their links, which say how they are arranged.
        DzNetworkLayout::arrangeUnplaced(network.get());
        loose = takeApart(network.get());
    }
    if (loose.unusableCount > 0)
        setError(error,
            loose.unusableCount == 1
                ? tr("A brick of unknown class cannot be copied and was left out.")
                : tr("%n bricks of unknown class cannot be copied and were left out.",
                    loose.unusableCount));
    else if (loose.bricks.isEmpty())
        setError(error, tr("The network to paste has no bricks."));
    QVector<DzShaderBrick*> bricks;
    for (const BrickPtr& brick : qAsConst(loose.bricks))
        bricks.append(brick);
    renumberFrames(*edit, bricks);
    const QPointF offset = offsetFor(BrickAppearance::box(bricks));
    DzUndoStackHold hold;
    for (DzShaderBrick* brick : qAsConst(bricks)) {
        BrickAppearance::setPosition(brick, position(brick) + offset);
        if (user->addBrick(brick) != 0)
            added.append(brick);
    }
    // After the bricks, so that undoing takes the links away before them.
    for (const BrickLink& link : qAsConst(loose.links))
        link.input->addConnection(link.output);
    hold.accept(caption);
    return added;
}

} // namespace

QString copyBricks(const NetworkEdit& edit, const QVector<DzShaderBrick*>& bricks)
{
    const IDzBrickUser* user = edit.getUser();
    if (!user || bricks.isEmpty())
        return QString();
    QList<uint> ids;
    for (const DzShaderBrick* brick : bricks)
        ids.append(brick->getBrickID());
    std::sort(ids.begin(), ids.end());
    return QString::fromUtf8(DzBrickUserFile().saveText(user, ids));
}

bool mayPaste(const QString& text)
{
    return text.size() <= longestPaste
        && text.contains(QLatin1Char('"') + networkKey() + QLatin1Char('"'));
}

QVector<DzShaderBrick*> pasteBricks(
    NetworkEdit* edit, const QString& text, const QPointF& place, QString* error)
{
    const auto toFreePlace = [edit, place](const QRectF& box) {
        const QPointF wanted = place - box.center() + box.topLeft();
        return findFreePlaceNear(*edit, wanted, box.size()) - box.topLeft();
    };
    return addCopies(edit, text, tr("Paste"), toFreePlace, error);
}

QVector<DzShaderBrick*> duplicateBricks(
    NetworkEdit* edit, const QVector<DzShaderBrick*>& bricks, const QPointF& offset, QString* error)
{
    return addCopies(
        edit, copyBricks(*edit, bricks), tr("Duplicate"),
        [offset](const QRectF&) { return offset; }, error);
}
