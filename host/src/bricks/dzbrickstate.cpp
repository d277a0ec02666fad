// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickstate.h"

#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "paramaddress.h"
#include "paramkeys.h"
#include "settingstree.h"

#include <vector>

namespace {

struct PropertyState {
    explicit PropertyState(const DzProperty* property)
        : name(property->getName())
    {
        property->getAttributes(&settings);
        settings.setBoolValue(QStringLiteral("ForceSetUser"), true);
        // Written only when there is a map: going back to none has to say so.
        const QString mapKey = QStringLiteral("MapImage");
        if (!settings.hasKey(mapKey))
            settings.setStringValue(mapKey, QString());
        if (const SettingsTree* members = DzKeptMembers::keptOf(property))
            kept.reset(new SettingsTree(*members));
    }

    void restore(DzProperty* property) const
    {
        property->setAttributes(&settings);
        DzKeptMembers::setKept(property, kept.get());
    }

    QString name;
    DzPropertySettings settings;
    std::unique_ptr<SettingsTree> kept;
};

struct LinkState {
    ParamAddress peer;
    DzBrickParam* peerThen;
    int peerSlot;
};

struct ParamState {
    QString key;
    QString label;
    std::unique_ptr<SettingsTree> kept;
    std::vector<PropertyState> properties;
    std::vector<LinkState> links;
};

bool sameProperties(const std::vector<PropertyState>& a, const std::vector<PropertyState>& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!a[i].settings.isEqual(b[i].settings))
            return false;
    return true;
}

bool sameLinks(const std::vector<LinkState>& a, const std::vector<LinkState>& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (a[i].peerThen != b[i].peerThen)
            return false;
    return true;
}

bool sameParam(const ParamState& a, const ParamState& b)
{
    return a.key == b.key && a.label == b.label && sameProperties(a.properties, b.properties)
        && sameLinks(a.links, b.links);
}

/// One change of a brick's state.
class StateItem : public DzUndoItem
{
public:
    StateItem(DzShaderBrick* brick, std::unique_ptr<DzBrickState> before,
        std::unique_ptr<DzBrickState> after)
        : m_brick(brick)
        , m_before(std::move(before))
        , m_after(std::move(after))
    {
    }

    void undo() override { restore(*m_before); }
    void redo() override { restore(*m_after); }

private:
    void restore(const DzBrickState& state)
    {
        if (m_brick)
            state.restore(m_brick);
    }

    QPointer<DzShaderBrick> m_brick;
    std::unique_ptr<DzBrickState> m_before;
    std::unique_ptr<DzBrickState> m_after;
};

} // namespace

struct DzBrickState::Data {
    DzSettings attributes;
    std::vector<PropertyState> properties;
    std::vector<ParamState> params;
};

DzBrickState::DzBrickState(const DzShaderBrick* brick)
    : m_data(new Data)
{
    brick->getAttributes(&m_data->attributes);
    // Properties are held one by one below; the canvas is nobody's business here.
    m_data->attributes.removeValue(NetworkKeys::brickProperties());
    m_data->attributes.removeValue(NetworkKeys::brickSettings());
    for (const DzProperty* property : brick->getPropertyList())
        m_data->properties.emplace_back(property);
    const ParamKeys keys(brick);
    for (int i = 0; i < keys.size(); ++i) {
        const DzBrickParam* param = keys.param(i);
        ParamState state;
        state.key = keys.key(i);
        state.label = param->getLabel();
        if (const SettingsTree* members = DzKeptMembers::keptOf(param))
            state.kept.reset(new SettingsTree(*members));
        for (int k = 0; k < param->getNumProperties(); ++k)
            state.properties.emplace_back(param->getProperty(k));
        for (int k = 0; k < param->getNumConnections(); ++k) {
            DzBrickParam* peer = param->getConnection(k);
            state.links.push_back(LinkState { ParamAddress(peer), peer, param->getPeerSlot(k) });
        }
        m_data->params.push_back(std::move(state));
    }
}

DzBrickState::~DzBrickState()
{
}

bool DzBrickState::operator==(const DzBrickState& other) const
{
    if (!m_data->attributes.isEqual(other.m_data->attributes)
        || !sameProperties(m_data->properties, other.m_data->properties)
        || m_data->params.size() != other.m_data->params.size())
        return false;
    for (size_t i = 0; i < m_data->params.size(); ++i)
        if (!sameParam(m_data->params[i], other.m_data->params[i]))
            return false;
    return true;
}

void DzBrickState::restore(DzShaderBrick* brick) const
{
    DzUndoStackLock lock;
    // Properties first: they may make and remove inputs.
    for (const PropertyState& state : m_data->properties)
        if (DzProperty* property = brick->findProperty(state.name))
            state.restore(property);
    brick->setAttributes(&m_data->attributes);
    const ParamKeys keys(brick);
    QVector<DzBrickParam*> order;
    for (const ParamState& state : m_data->params) {
        DzBrickParam* param = keys.find(state.key);
        if (!param)
            continue;
        order.append(param);
        param->setLabel(state.label);
        DzKeptMembers::setKept(param, state.kept.get());
        for (int k = 0;
             k < param->getNumProperties() && k < static_cast<int>(state.properties.size()); ++k)
            state.properties[static_cast<size_t>(k)].restore(param->getProperty(k));
        QVector<DzBrickParam::PeerPlace> peers;
        for (const LinkState& link : state.links) {
            ParamAddress peer = link.peer;
            if (DzBrickParam* found = peer.find())
                peers.append(DzBrickParam::PeerPlace { found, link.peerSlot });
        }
        param->setConnections(peers);
    }
    brick->setParameterOrder(order);
}

DzBrickStateHold::DzBrickStateHold(DzShaderBrick* brick)
    : m_brick(brick)
    , m_before(new DzBrickState(brick))
{
    if (dzUndoStack)
        dzUndoStack->lock();
}

DzBrickStateHold::~DzBrickStateHold()
{
    if (!m_before)
        return;
    if (m_brick)
        m_before->restore(m_brick);
    if (dzUndoStack)
        dzUndoStack->unlock();
}

void DzBrickStateHold::accept(const QString& caption)
{
    if (!m_before)
        return;
    if (dzUndoStack)
        dzUndoStack->unlock();
    std::unique_ptr<DzBrickState> before = std::move(m_before);
    if (!m_brick || !dzUndoStack || !dzUndoStack->canPushItems())
        return;
    std::unique_ptr<DzBrickState> after(new DzBrickState(m_brick));
    if (*after != *before)
        dzUndoStack->push(new StateItem(m_brick, std::move(before), std::move(after)), caption);
}
