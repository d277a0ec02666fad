// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzdefaultbrickuser.h"

#include "brickaccess.h"
#include "dzbrickset.h"
#include "dzelement.h"
#include "dzforeachlink.h"
#include "dzundostack.h"
#include "networkreader.h"
#include "networkwriter.h"
#include "paramaddress.h"
#include "settingstree.h"
#include "useraccess.h"

#include <QPointer>

namespace {

/// The coming or going of a brick; holds a share of the brick.
class MembershipItem : public DzUndoItem
{
public:
    MembershipItem(DzDefaultBrickUser* user, DzShaderBrick* brick, uint id, bool added)
        : m_element(user->getBrickUserElement())
        , m_user(user)
        , m_generation(Access::generation(*user))
        , m_brick(brick)
        , m_id(id)
        , m_added(added)
    {
        if (added)
            forEachLinkOf(brick, [this](DzBrickParam* param, DzBrickParam* peer) {
                m_links.append({ ParamAddress(param), ParamAddress(peer) });
            });
    }

    void undo() override { set(!m_added); }
    void redo() override { set(m_added); }

private:
    typedef DzDefaultBrickUser::Access Access;

    void set(bool present)
    {
        // After loading it is another network: bricks of the old one stay away.
        if (!m_element || Access::generation(*m_user) != m_generation)
            return;
        const bool isPresent = m_brick->getBrickUser() == m_user;
        if (present == isPresent)
            return;
        if (present) {
            Access::attach(*m_user, m_brick, m_id);
            Access::tellRestored(*m_user, m_brick);
        } else {
            removeLaterLinks();
            Access::detach(*m_user, m_brick);
            Access::tellRemoved(*m_user, m_brick);
        }
    }

    template <typename Visit>
    static void forEachLinkOf(const DzShaderBrick* brick, const Visit& visit)
    {
        forEachInputLink(brick, visit);
        forEachOutputLink(brick, visit);
    }
    /// Links that were made without undo since the brick came go with it.
    void removeLaterLinks()
    {
        typedef QPair<DzBrickParam*, DzBrickParam*> Ends;
        QVector<Ends> later;
        forEachLinkOf(m_brick, [&](DzBrickParam* param, DzBrickParam* peer) {
            for (const auto& link : qAsConst(m_links))
                if (link.first.get() == param && link.second.get() == peer)
                    return;
            later.append(Ends(param, peer));
        });
        for (const Ends& ends : qAsConst(later))
            ends.first->removeConnection(ends.second);
    }

    QPointer<DzElement> m_element; // goes with the user, which is no QObject itself
    DzDefaultBrickUser* m_user;
    int m_generation;
    DzTSharedPointer<DzShaderBrick> m_brick;
    uint m_id;
    bool m_added;
    /// Of a brick that came: those that it brought along.
    QVector<QPair<ParamAddress, ParamAddress>> m_links;
};

} // namespace

DzDefaultBrickUser::DzDefaultBrickUser()
    : m_identifier(QUuid::createUuid())
{
}

DzDefaultBrickUser::~DzDefaultBrickUser()
{
    for (DzBrickSet* set : qAsConst(m_sets))
        set->unref();
    const QList<DzShaderBrick*> bricks = m_bricks.values();
    for (DzShaderBrick* brick : bricks)
        detach(brick);
}

uint DzDefaultBrickUser::addBrick(DzShaderBrick* brick)
{
    if (!brick || brick->getBrickUser() || !canUseBrick(brick))
        return 0;
    DzUndoStackHold hold;
    attach(brick, takeNextID());
    brick->removeForeignConnections();
    if (dzUndoStack && dzUndoStack->canPushItems())
        dzUndoStack->push(new MembershipItem(this, brick, brick->getBrickID(), true), QString());
    hold.accept(DzElement::tr("Add %1").arg(brick->getPreferredName()));
    return brick->getBrickID();
}

void DzDefaultBrickUser::attach(DzShaderBrick* brick, uint id)
{
    // A brick that comes back may find its number taken by what was loaded meanwhile.
    if (m_bricks.contains(id))
        id = takeNextID();
    brick->ref();
    m_bricks.insert(id, brick);
    m_nextID = qMax(m_nextID, id + 1);
    const uint before = brick->getBrickID();
    DzShaderBrick::Access::setMembership(brick, this, id);
    invalidateSets();
    if (before != id)
        emit brick->brickIDChanged(static_cast<int>(before));
}

void DzDefaultBrickUser::detach(DzShaderBrick* brick)
{
    m_bricks.remove(brick->getBrickID());
    DzShaderBrick::Access::setMembership(brick, nullptr, 0);
    invalidateSets();
    brick->unref();
}

bool DzDefaultBrickUser::deleteBrick(uint id)
{
    return deleteBrick(getBrick(id));
}

bool DzDefaultBrickUser::deleteBrick(DzShaderBrick* brick)
{
    if (!brick || brick->getBrickUser() != this)
        return false;
    const DzTSharedPointer<DzShaderBrick> alive(brick);
    const uint id = brick->getBrickID();
    DzUndoStackHold hold;
    brick->removeAllConnections();
    detach(brick);
    brickWasRemoved(brick);
    if (dzUndoStack && dzUndoStack->canPushItems())
        dzUndoStack->push(new MembershipItem(this, brick, id, false), QString());
    hold.accept(DzElement::tr("Delete %1").arg(brick->getBrickTitle()));
    return true;
}

void DzDefaultBrickUser::deleteAllBricks()
{
    DzUndoStackHold hold;
    const QList<uint> ids = m_bricks.keys();
    for (const uint id : ids)
        deleteBrick(id);
    hold.accept(DzElement::tr("Delete All Bricks"));
}

bool DzDefaultBrickUser::moveBrick(uint id, IDzBrickUser* newOwner)
{
    DzShaderBrick* brick = getBrick(id);
    if (!brick || !newOwner || newOwner == this || !newOwner->canUseBrick(brick))
        return false;
    const DzTSharedPointer<DzShaderBrick> alive(brick);
    DzUndoStackHold hold;
    detach(brick);
    brickWasRemoved(brick);
    if (dzUndoStack && dzUndoStack->canPushItems())
        dzUndoStack->push(new MembershipItem(this, brick, id, false), QString());
    // Joining the new owner removes the links to bricks that stayed.
    newOwner->addBrick(brick);
    hold.accept(DzElement::tr("Move %1").arg(brick->getBrickTitle()));
    return true;
}

void DzDefaultBrickUser::forgetBrick(DzShaderBrick* brick)
{
    m_bricks.remove(brick->getBrickID());
    invalidateSets();
    brickWasRemoved(brick);
}

int DzDefaultBrickUser::getNumBrickSets() const
{
    if (!m_setsValid) {
        for (DzBrickSet* set : qAsConst(m_sets))
            set->unref();
        m_sets.clear();
        for (DzShaderBrick* brick : m_bricks) {
            if (brick->type() == DzBrickSet::None)
                continue;
            auto* set = new DzBrickSet(brick, const_cast<DzDefaultBrickUser*>(this));
            set->ref();
            m_sets.append(set);
        }
        m_setsValid = true;
    }
    return m_sets.size();
}

void DzDefaultBrickUser::removeSet(DzBrickSet* set)
{
    if (m_sets.removeOne(set))
        set->unref();
}

void DzDefaultBrickUser::invalidateSets()
{
    m_setsValid = false;
    if (m_updatesIdentifier)
        m_identifier = QUuid::createUuid();
}

void DzDefaultBrickUser::brickIDChanged(int)
{
    invalidateSets();
}

void DzDefaultBrickUser::resolvePropertyOwnership(DzShaderBrick* brick)
{
    if (brick && brick->getBrickUser() == this)
        invalidateSets();
}

DzBrickSet* DzDefaultBrickUser::getBrickSet(int index) const
{
    return index >= 0 && index < getNumBrickSets() ? m_sets.at(index) : nullptr;
}

void DzDefaultBrickUser::getAttributesHelper(
    DzSettings* settings, const QList<uint>& ids, QHash<const DzShaderBrick*, QString>* names) const
{
    DzNetworkWriter(*this).write(settings->tree(), ids, names);
}

void DzDefaultBrickUser::setAttributesHelper(
    const DzSettings* settings, QHash<QString, DzShaderBrick*>* createdBricks)
{
    DzUndoStackLock lock;
    deleteAllBricks();
    ++m_generation;
    DzNetworkReader reader(*this);
    reader.read(*settings->tree());
    if (createdBricks)
        *createdBricks = reader.createdBricks();
}
