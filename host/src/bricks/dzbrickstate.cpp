// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzbrickstate.h"

#include "brickaccess.h"
#include "brickjournal.h"
#include "dzundostack.h"
#include "paramaddress.h"
#include "propertyaccess.h"

#include <QSet>
#include <vector>

namespace {

std::unique_ptr<SettingsTree> copyOf(const SettingsTree* tree)
{
    return std::unique_ptr<SettingsTree>(tree ? new SettingsTree(*tree) : nullptr);
}

struct PropertyState {
    explicit PropertyState(const DzProperty* property)
        : name(property->getName())
        , description(DzProperty::Access::describe(property))
    {
    }

    QString name;
    DzProperty::Access::Description description;
};

struct LinkState {
    ParamAddress peer;
    int peerSlot;
};

struct ParamState {
    explicit ParamState(DzBrickParam* parameter)
        : param(parameter)
        , name(parameter->getName())
        , label(parameter->getLabel())
        , kept(copyOf(DzBrickParam::Access::kept(const_cast<const DzBrickParam*>(parameter))))
    {
        for (int i = 0; i < parameter->getNumProperties(); ++i)
            properties.emplace_back(parameter->getProperty(i));
        for (int i = 0; i < parameter->getNumConnections(); ++i)
            links.push_back(LinkState { ParamAddress(parameter->getConnection(i)),
                DzBrickParam::Access::peerSlot(parameter, i) });
    }

    ParamAddress param;
    QString name;
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
        if (!a[i].description.settings.isEqual(b[i].description.settings))
            return false;
    return true;
}

bool sameLinks(const std::vector<LinkState>& a, const std::vector<LinkState>& b)
{
    if (a.size() != b.size())
        return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (!(a[i].peer == b[i].peer))
            return false;
    return true;
}

bool sameParam(const ParamState& a, const ParamState& b)
{
    return a.param == b.param && a.name == b.name && a.label == b.label
        && sameProperties(a.properties, b.properties) && sameLinks(a.links, b.links);
}

/// Brings exactly these parameters onto the brick, in this order.
void restoreList(DzShaderBrick* brick, const std::vector<ParamState>& params)
{
    QVector<DzBrickParam*> wanted;
    QSet<const DzBrickParam*> isWanted;
    for (const ParamState& state : params) {
        DzBrickParam* param = state.param.get();
        if (!param || (param->getTopBrickOwner() && param->getTopBrickOwner() != brick)) {
            DzUndoStack::refuse(
                DzShaderBrick::tr("the input %1 is not there any more").arg(state.name));
            continue;
        }
        wanted.append(param);
        isWanted.insert(param);
    }
    for (int i = brick->getNumParameters() - 1; i >= 0; --i)
        if (!isWanted.contains(brick->getParameter(i)))
            brick->deleteParam(brick->getParameter(i));
    for (DzBrickParam* param : qAsConst(wanted))
        if (!param->getTopBrickOwner())
            brick->addParameter(param);
    brick->setParameterOrder(wanted);
}

void restoreParam(DzBrickParam* param, const ParamState& state)
{
    DzBrickParam::Access::setName(param, state.name);
    DzBrickParam::Access::setLabel(param, state.label);
    DzBrickParam::Access::kept(param) = copyOf(state.kept.get());
    const int count = qMin(param->getNumProperties(), static_cast<int>(state.properties.size()));
    for (int i = 0; i < count; ++i)
        DzProperty::Access::assign(
            param->getProperty(i), state.properties[static_cast<size_t>(i)].description);
    QVector<DzBrickParam::Access::PeerPlace> peers;
    for (const LinkState& link : state.links)
        if (DzBrickParam* peer = link.peer.find())
            peers.append(DzBrickParam::Access::PeerPlace { peer, link.peerSlot });
    DzBrickParam::Access::setConnections(param, peers);
}

} // namespace

struct DzBrickState::Data {
    std::vector<PropertyState> properties;
    std::vector<ParamState> params;
};

DzBrickState::DzBrickState(const DzShaderBrick* brick)
    : m_data(new Data)
{
    for (const DzProperty* property : brick->getPropertyList())
        m_data->properties.emplace_back(property);
    for (int i = 0; i < brick->getNumParameters(); ++i)
        m_data->params.emplace_back(brick->getParameter(i));
}

DzBrickState::~DzBrickState()
{
}

bool DzBrickState::operator==(const DzBrickState& other) const
{
    if (!sameProperties(m_data->properties, other.m_data->properties)
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
    // The parameters first, so that properties that make and remove inputs find them as they are
    // to be; and again, for those that have come since.
    restoreList(brick, m_data->params);
    for (const PropertyState& state : m_data->properties)
        if (DzProperty* property = brick->findProperty(state.name))
            DzProperty::Access::assign(property, state.description);
    restoreList(brick, m_data->params);
    for (const ParamState& state : m_data->params)
        if (DzBrickParam* param = state.param.find())
            restoreParam(param, state);
}

DzBrickStateHold::DzBrickStateHold(DzShaderBrick* brick)
    : m_brick(brick)
    , m_journal(new BrickJournal)
    , m_outer(DzShaderBrick::Access::journal(brick))
{
    DzShaderBrick::Access::setJournal(brick, m_journal.get());
    if (dzUndoStack)
        dzUndoStack->lock();
}

DzBrickStateHold::~DzBrickStateHold()
{
    if (!m_journal)
        return;
    std::unique_ptr<BrickJournal> journal = close();
    journal->undo();
    if (dzUndoStack)
        dzUndoStack->unlock();
}

std::unique_ptr<BrickJournal> DzBrickStateHold::close()
{
    if (m_brick)
        DzShaderBrick::Access::setJournal(m_brick, m_outer);
    return std::move(m_journal);
}

void DzBrickStateHold::accept(const QString& caption)
{
    if (!m_journal)
        return;
    std::unique_ptr<BrickJournal> journal = close();
    if (dzUndoStack)
        dzUndoStack->unlock();
    if (m_brick && !journal->isEmpty() && m_brick->isRecorded())
        m_brick->pushUndoItem(journal.release(), caption);
}
