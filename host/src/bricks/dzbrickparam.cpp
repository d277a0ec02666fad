// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickparam.h"

#include "dzproperty.h"
#include "dzsettings.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"
#include "paramaddress.h"
#include "settingstree.h"

/// The making or removing of one link.
class DzBrickLinkItem : public DzUndoItem
{
public:
    DzBrickLinkItem(DzBrickParam* a, DzBrickParam* b, int slotA, int slotB, bool made)
        : m_a(a)
        , m_b(b)
        , m_slotA(slotA)
        , m_slotB(slotB)
        , m_made(made)
    {
    }

    void undo() override { set(!m_made); }
    void redo() override { set(m_made); }

private:
    void set(bool linked)
    {
        DzBrickParam* a = m_a.find();
        DzBrickParam* b = m_b.find();
        if (!a || !b || a->isConnectedTo(b) == linked)
            return;
        if (linked)
            a->link(b, m_slotA, m_slotB);
        else
            a->unlinkSlot(a->findSlot(b));
    }

    ParamAddress m_a;
    ParamAddress m_b;
    int m_slotA;
    int m_slotB;
    bool m_made;
};

namespace {

/// Fewer dead places than this are not worth closing up.
const int deadLinksWorthCompacting = 16;

} // namespace

DzBrickParam::DzBrickParam(Direction direction)
    : m_direction(direction)
{
}

DzBrickParam::~DzBrickParam()
{
    for (int slot = m_links.size() - 1; slot >= 0; --slot)
        if (m_links.at(slot).peer)
            unlinkSlot(slot);
    if (m_brick)
        m_brick->forget(this);
}

QString DzBrickParam::typeToString(ParamType type)
{
    static const char* const names[] = { "", "float", "color", "point", "vector", "normal",
        "matrix", "string", "boolean", "integer" };
    if (type < 0 || type > IntegerType)
        return QString();
    return QString::fromLatin1(names[type]);
}

void DzBrickParam::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    emit labelChanged();
}

QString DzBrickParam::getArg(int index) const
{
    return index == 0 ? getName() : QString();
}

DzBrickParam::ParamType DzBrickParam::getArgType(int) const
{
    return getType();
}

DzBrickParam::ParamType DzBrickParam::getTypeForToken(int) const
{
    return getType();
}

QString DzBrickParam::getStringValue(int) const
{
    return QString();
}

QString DzBrickParam::getEscapedString(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    escaped.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

bool DzBrickParam::needsPrepForCall(int) const
{
    return true;
}

DzProperty* DzBrickParam::getProperty(int) const
{
    return nullptr;
}

int DzBrickParam::getPropertyMapToken(int index) const
{
    return index >= 0 && index < getNumProperties() ? index : -1;
}

QString DzBrickParam::getPropertyPath(int index) const
{
    const DzProperty* property = getProperty(index);
    return property ? property->getPath() : QString();
}

void DzBrickParam::setPropertyPath(int index, const QString& path)
{
    if (DzProperty* property = getProperty(index))
        property->setPath(path);
}

QString DzBrickParam::getTypeString(int) const
{
    const QString name = typeToString(getType());
    return m_isArray ? QStringLiteral("%1[]").arg(name) : name;
}

void DzBrickParam::changeDirection(int direction)
{
    if (direction == m_direction)
        return;
    m_direction = direction;
    emit directionChanged();
    clearInvalidConnections();
}

void DzBrickParam::adoptProperty(DzProperty* property)
{
    property->m_param = this;
}

bool DzBrickParam::canConnect(DzBrickParam* other) const
{
    if (!other || other == this || !m_brick || !other->m_brick)
        return false;
    if (isOutput())
        return other->isInput() && other->canConnect(const_cast<DzBrickParam*>(this));
    if (!isInput() || !other->isOutput() || other->m_brick == m_brick)
        return false;
    const IDzBrickUser* user = m_brick->getBrickUser();
    const IDzBrickUser* otherUser = other->m_brick->getBrickUser();
    if (user && otherUser && user != otherUser)
        return false;
    return m_brick->providesParams(other->m_brick, this) && m_brick->canBeFedBy(other->m_brick);
}

bool DzBrickParam::addConnection(DzBrickParam* other)
{
    if (!canConnect(other) || isConnectedTo(other))
        return false;
    link(other);
    if (dzUndoStack && dzUndoStack->canPushItems())
        dzUndoStack->push(new DzBrickLinkItem(this, other, -1, -1, true), tr("Link Bricks"));
    return true;
}

DzBrickParam* DzBrickParam::getConnection(int index) const
{
    if (m_deadLinks)
        compactLinks();
    return index >= 0 && index < m_links.size() ? m_links.at(index).peer : nullptr;
}

int DzBrickParam::getPeerSlot(int index) const
{
    DzBrickParam* peer = getConnection(index);
    peer->compactLinks();
    return m_links.at(index).peerSlot;
}

void DzBrickParam::setConnections(const QVector<PeerPlace>& peers)
{
    compactLinks();
    bool isSame = peers.size() == m_links.size();
    for (int i = 0; isSame && i < peers.size(); ++i)
        isSame = peers.at(i).peer == m_links.at(i).peer;
    if (isSame)
        return;
    while (!m_links.isEmpty())
        unlinkSlot(m_links.size() - 1);
    for (int i = 0; i < peers.size(); ++i)
        link(peers.at(i).peer, i, peers.at(i).slot);
}

bool DzBrickParam::isConnectedTo(const DzBrickParam* other) const
{
    return other && findSlot(other) >= 0;
}

/// Looks from the end with the shorter list: an output may feed very many inputs.
int DzBrickParam::findSlot(const DzBrickParam* other) const
{
    if (m_links.size() > other->m_links.size()) {
        const int otherSlot = other->findSlot(this);
        return otherSlot < 0 ? -1 : other->m_links.at(otherSlot).peerSlot;
    }
    for (int slot = 0; slot < m_links.size(); ++slot)
        if (m_links.at(slot).peer == other)
            return slot;
    return -1;
}

bool DzBrickParam::removeConnection(DzBrickParam* other)
{
    const int slot = other ? findSlot(other) : -1;
    if (slot < 0)
        return false;
    if (dzUndoStack && dzUndoStack->canPushItems()) {
        // Places without gaps, so that they hold when the link comes back.
        compactLinks();
        other->compactLinks();
        const int live = findSlot(other);
        const int otherLive = m_links.at(live).peerSlot;
        unlinkSlot(live);
        dzUndoStack->push(
            new DzBrickLinkItem(this, other, live, otherLive, false), tr("Unlink Bricks"));
    } else {
        unlinkSlot(slot);
    }
    return true;
}

void DzBrickParam::removeAllConnections()
{
    DzUndoStackHold hold;
    compactLinks();
    for (int slot = m_links.size() - 1; slot >= 0; --slot)
        if (DzBrickParam* peer = m_links.at(slot).peer)
            removeConnection(peer);
    hold.accept(tr("Unlink Bricks"));
}

void DzBrickParam::clearInvalidConnections()
{
    DzUndoStackHold hold;
    compactLinks();
    for (int slot = m_links.size() - 1; slot >= 0; --slot) {
        DzBrickParam* peer = m_links.at(slot).peer;
        if (peer && !canConnect(peer))
            removeConnection(peer);
    }
    hold.accept(tr("Unlink Bricks"));
}

void DzBrickParam::link(DzBrickParam* other, int slot, int otherSlot)
{
    if (slot >= 0 || otherSlot >= 0) {
        compactLinks();
        other->compactLinks();
    }
    const int place = slot < 0 ? m_links.size() : qMin(slot, m_links.size());
    const int otherPlace
        = otherSlot < 0 ? other->m_links.size() : qMin(otherSlot, other->m_links.size());
    insertLink(place, Link { other, otherPlace });
    other->insertLink(otherPlace, Link { this, place });
    notifyConnectionsChanged();
    other->notifyConnectionsChanged();
}

void DzBrickParam::insertLink(int slot, const Link& link)
{
    m_links.insert(slot, link);
    for (int later = slot + 1; later < m_links.size(); ++later) {
        const Link& moved = m_links.at(later);
        if (moved.peer)
            moved.peer->m_links[moved.peerSlot].peerSlot = later;
    }
}

void DzBrickParam::unlinkSlot(int slot)
{
    const Link ends = m_links.at(slot);
    removeLink(slot);
    ends.peer->removeLink(ends.peerSlot);
    notifyConnectionsChanged();
    ends.peer->notifyConnectionsChanged();
}

void DzBrickParam::removeLink(int slot)
{
    if (slot == m_links.size() - 1) {
        m_links.removeLast();
        return;
    }
    m_links[slot].peer = nullptr;
    ++m_deadLinks;
    if (m_deadLinks > deadLinksWorthCompacting && m_deadLinks > m_links.size() / 2)
        compactLinks();
}

void DzBrickParam::compactLinks() const
{
    if (!m_deadLinks)
        return;
    int kept = 0;
    for (int slot = 0; slot < m_links.size(); ++slot) {
        const Link link = m_links.at(slot);
        if (!link.peer)
            continue;
        link.peer->m_links[link.peerSlot].peerSlot = kept;
        m_links[kept++] = link;
    }
    m_links.resize(kept);
    m_deadLinks = 0;
}

void DzBrickParam::notifyConnectionsChanged()
{
    emit connectionsChanged();
    if (m_brick)
        m_brick->notifyConnectionsChanged();
}
