// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickparam.h"

#include "brickaccess.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "idzbrickuser.h"
#include "paramaddress.h"
#include "propertyaccess.h"
#include "settingstree.h"

#include <functional>

namespace {

/// A parameter for messages.
QString nameOf(const DzBrickParam* param)
{
    const DzShaderBrick* brick = param->getTopBrickOwner();
    return brick ? brick->getBrickTitle() + QLatin1Char('/') + param->getName() : param->getName();
}

void refuseLink(const DzBrickParam* a, const DzBrickParam* b)
{
    DzUndoStack::refuse(
        DzBrickParam::tr("%1 and %2 cannot be linked any more").arg(nameOf(a), nameOf(b)));
}

/// The making or removing of one link.
class LinkItem : public DzUndoItem
{
public:
    LinkItem(DzBrickParam* a, DzBrickParam* b, int slotA, int slotB, bool made)
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
        if (!a || !b) {
            if (linked)
                DzUndoStack::refuse(
                    DzBrickParam::tr("an input or output that it linked is not there any more"));
            return;
        }
        const bool isLinked = a->isConnectedTo(b);
        if (!linked && !isLinked)
            return;
        // One that is there already goes to its old place in the order.
        if (isLinked)
            DzBrickParam::Access::unlink(a, b);
        if (!linked)
            return;
        if (!DzBrickParam::Access::mayBeLinked(a, b)
            || !DzBrickParam::Access::link(a, b, m_slotA, m_slotB))
            refuseLink(a, b);
    }

    ParamAddress m_a;
    ParamAddress m_b;
    int m_slotA;
    int m_slotB;
    bool m_made;
};

/// A change of a parameter's own, as a pair of closures.
class ParamItem : public DzUndoItem
{
public:
    typedef std::function<void(DzBrickParam*)> Change;

    ParamItem(DzBrickParam* param, const Change& undo, const Change& redo)
        : m_param(param)
        , m_undo(undo)
        , m_redo(redo)
    {
    }

    void undo() override { run(m_undo); }
    void redo() override { run(m_redo); }

private:
    void run(const Change& change)
    {
        if (DzBrickParam* param = m_param.find())
            change(param);
        else
            DzUndoStack::refuse(DzBrickParam::tr("the input it changed is not there any more"));
    }

    ParamAddress m_param;
    Change m_undo;
    Change m_redo;
};

/// Keeps a parameter, and with it its properties, for an undo step.
class CarrierAddress : public DzPropertyCarrier::Address
{
public:
    explicit CarrierAddress(DzBrickParam* param)
        : m_param(param)
    {
    }

private:
    ParamAddress m_param;
};

/// The brick that takes the undo item of a change of a link; null when nobody does. An open journal
/// takes it whichever end it is at.
DzShaderBrick* recorderOf(const DzBrickParam* a, const DzBrickParam* b)
{
    DzShaderBrick* brick = a->getTopBrickOwner();
    DzShaderBrick* other = b->getTopBrickOwner();
    if (other && DzShaderBrick::Access::journal(other))
        return other;
    return brick && brick->isRecorded() ? brick : nullptr;
}

bool isOfUnknownBrick(const DzBrickParam* param)
{
    return qobject_cast<const DzUnknownBrick*>(param->getTopBrickOwner()) != nullptr;
}

quint64 lastSerial = 0;

// Signals carry these also where only their names are known.
const int paramType = qRegisterMetaType<DzBrickParam*>("DzBrickParam*");
const int propertyType = qRegisterMetaType<DzProperty*>("DzProperty*");
const int brickType = qRegisterMetaType<DzShaderBrick*>("DzShaderBrick*");

} // namespace

namespace {

/// Fewer dead places than this are not worth closing up.
const int deadLinksWorthCompacting = 16;

} // namespace

DzBrickParam::DzBrickParam(Direction direction)
    : m_serial(++lastSerial)
    , m_direction(direction)
{
    Q_UNUSED(paramType);
    Q_UNUSED(propertyType);
    Q_UNUSED(brickType);
}

DzBrickParam::~DzBrickParam()
{
    for (int slot = m_links.size() - 1; slot >= 0; --slot)
        if (m_links.at(slot).peer)
            unlinkSlot(slot);
    if (DzShaderBrick* brick = m_brick ? m_brick : m_formerBrick)
        DzShaderBrick::Access::forget(brick, this);
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
    const QString before = m_label;
    if (label == before)
        return;
    assignLabel(label);
    if (m_brick && m_brick->isRecorded())
        m_brick->pushUndoItem(new ParamItem(
                                  this, [=](DzBrickParam* p) { p->assignLabel(before); },
                                  [=](DzBrickParam* p) { p->assignLabel(label); }),
            tr("Rename %1").arg(before));
}

void DzBrickParam::assignLabel(const QString& label)
{
    if (label == m_label)
        return;
    m_label = label;
    emit labelChanged();
}

void DzBrickParam::setName(const QString& name)
{
    const QString before = getName();
    if (name == before)
        return;
    assignName(name);
    if (m_brick && m_brick->isRecorded())
        m_brick->pushUndoItem(new ParamItem(
                                  this, [=](DzBrickParam* p) { p->assignName(before); },
                                  [=](DzBrickParam* p) { p->assignName(name); }),
            tr("Rename %1").arg(m_label));
}

void DzBrickParam::assignName(const QString& name)
{
    const QString before = getName();
    if (!m_brick || name == before) {
        DzBase::setName(name);
        return;
    }
    const QString arg = getArg(0);
    DzBase::setName(name);
    nameFollowed(before);
    if (getArg(0) == arg)
        return;
    if (!m_isRenamed)
        m_originalArg = arg;
    m_isRenamed = getArg(0) != m_originalArg;
}

void DzBrickParam::nameFollowed(const QString&)
{
}

DzElement* DzBrickParam::getCarrierOwner() const
{
    return m_brick;
}

std::unique_ptr<DzPropertyCarrier::Address> DzBrickParam::makeAddress()
{
    return std::unique_ptr<Address>(new CarrierAddress(this));
}

void DzBrickParam::carriedPropertyChanged(DzProperty* property)
{
    emit propertyChanged(property);
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
    DzProperty::Access::setCarrier(property, this, this);
}

/// What holds for a link whatever the bricks are.
bool DzBrickParam::mayMeet(const DzBrickParam* other) const
{
    if (!isInput() || !other->isOutput() || !m_brick || !other->m_brick
        || other->m_brick == m_brick)
        return false;
    const IDzBrickUser* user = m_brick->getBrickUser();
    const IDzBrickUser* otherUser = other->m_brick->getBrickUser();
    if (user && otherUser && user != otherUser)
        return false;
    return m_brick->canBeFedBy(other->m_brick);
}

bool DzBrickParam::canConnect(DzBrickParam* other) const
{
    if (!other || other == this || !m_brick || !other->m_brick)
        return false;
    if (isOutput())
        return other->isInput() && other->canConnect(const_cast<DzBrickParam*>(this));
    return isInput() && other->isOutput() && m_brick->providesParams(other->m_brick, this)
        && mayMeet(other);
}

bool DzBrickParam::mayBeLinked(const DzBrickParam* other) const
{
    if (isOfUnknownBrick(this) || isOfUnknownBrick(other))
        return isOutput() ? other->mayMeet(this) : mayMeet(other);
    return canConnect(const_cast<DzBrickParam*>(other));
}

bool DzBrickParam::addConnection(DzBrickParam* other)
{
    if (!canConnect(other) || isConnectedTo(other) || !link(other))
        return false;
    if (DzShaderBrick* recorder = recorderOf(this, other))
        recorder->pushUndoItem(new LinkItem(this, other, -1, -1, true), tr("Link Bricks"));
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
    int slot = 0;
    for (const PeerPlace& place : peers) {
        if (mayBeLinked(place.peer) && link(place.peer, slot, place.slot))
            ++slot;
        else
            refuseLink(this, place.peer);
    }
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
    if (DzShaderBrick* recorder = recorderOf(this, other)) {
        // Places without gaps, so that they hold when the link comes back.
        compactLinks();
        other->compactLinks();
        const int live = findSlot(other);
        const int otherLive = m_links.at(live).peerSlot;
        unlinkSlot(live);
        recorder->pushUndoItem(
            new LinkItem(this, other, live, otherLive, false), tr("Unlink Bricks"));
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

bool DzBrickParam::link(DzBrickParam* other, int slot, int otherSlot)
{
    const DzBrickParam* input = isOutput() ? other : this;
    const DzBrickParam* output = isOutput() ? this : other;
    if (!letFeed(output->m_brick, input->m_brick))
        return false;
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
    return true;
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
        DzShaderBrick::Access::tellConnectionsChanged(m_brick);
}
