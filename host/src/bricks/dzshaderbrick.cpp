// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzshaderbrick.h"

#include "brickkepttrees.h"
#include "dzbrickparam.h"
#include "dzproperty.h"
#include "dzshaderstring.h"
#include "dzundostack.h"
#include "idzbrickuser.h"
#include "keptmembers.h"
#include "networkkeys.h"

#include <QPointer>
#include <QSet>

/// The adding or removing of a parameter; owns the parameter while it is off the brick.
class DzBrickParamItem : public DzUndoItem
{
public:
    DzBrickParamItem(DzShaderBrick* brick, DzBrickParam* param, int index, bool added)
        : m_brick(brick)
        , m_param(param)
        , m_index(index)
        , m_added(added)
        , m_owned(!added)
    {
    }
    ~DzBrickParamItem() override
    {
        if (m_owned)
            delete m_param;
    }

    void undo() override { set(!m_added); }
    void redo() override { set(m_added); }

private:
    void set(bool present)
    {
        if (!m_brick || !m_param || m_owned != present)
            return;
        if (present)
            // Others may have gone meanwhile without undo.
            m_brick->attach(qMin(m_index, m_brick->getNumParameters()), m_param);
        else
            m_brick->detach(m_param);
        m_owned = !present;
    }

    QPointer<DzShaderBrick> m_brick;
    QPointer<DzBrickParam> m_param;
    int m_index;
    bool m_added;
    bool m_owned;
};

namespace {

const QString& brickTitleKey()
{
    static const QString key = QStringLiteral("BrickTitle");
    return key;
}

/// A change to a brick is a user's only once the brick is in somebody's network.
bool isRecorded(const DzShaderBrick* brick)
{
    return brick->getBrickUser() && dzUndoStack && dzUndoStack->canPushItems();
}

/// One half of a loop search: all bricks that feed a brick, or all that it feeds, bit by bit.
class Reach
{
public:
    enum Way { Upstream, Downstream };

    Reach(const DzShaderBrick* start, Way way)
        : m_way(way)
    {
        m_open.append(start);
    }

    bool isDone() const { return m_open.isEmpty(); }

    /// Goes one brick further. `visit` is told each brick that is met, once or more.
    template <typename Visit>
    void step(const Visit& visit)
    {
        const DzShaderBrick* brick = m_open.takeLast();
        for (int i = 0; i < brick->getNumParameters(); ++i) {
            const DzBrickParam* param = brick->getParameter(i);
            if (param->isOutput() != (m_way == Downstream))
                continue;
            for (int k = 0; k < param->getNumConnections(); ++k) {
                const DzShaderBrick* next = param->getConnection(k)->getTopBrickOwner();
                if (visit(next))
                    m_open.append(next);
            }
        }
    }

private:
    Way m_way;
    QVector<const DzShaderBrick*> m_open;
};

} // namespace

DzShaderBrick::DzShaderBrick()
{
}

DzShaderBrick::~DzShaderBrick()
{
    DzUndoStackLock lock;
    if (m_user)
        m_user->forgetBrick(this);
    for (DzBrickParam* param : qAsConst(m_params))
        param->removeAllConnections();
    const QVector<DzBrickParam*> params = m_params;
    m_params.clear();
    for (DzBrickParam* param : params) {
        param->m_brick = nullptr;
        delete param;
    }
}

bool DzShaderBrick::addParameter(DzBrickParam* param)
{
    return insertParameter(m_params.size(), param);
}

bool DzShaderBrick::insertParameter(int index, DzBrickParam* param)
{
    if (!param || param->m_brick)
        return false;
    const int place = index < 0 || index > m_params.size() ? m_params.size() : index;
    attach(place, param);
    if (isRecorded(this))
        dzUndoStack->push(new DzBrickParamItem(this, param, place, true), tr("Add Parameter"));
    return true;
}

bool DzShaderBrick::deleteParam(DzBrickParam* param)
{
    if (!param || param->m_brick != this)
        return false;
    if (!isRecorded(this)) {
        DzUndoStackLock lock;
        param->removeAllConnections();
        detach(param);
        delete param;
        return true;
    }
    DzUndoStackHold hold;
    param->removeAllConnections();
    const int index = detach(param);
    dzUndoStack->push(new DzBrickParamItem(this, param, index, false), QString());
    hold.accept(tr("Remove Parameter"));
    return true;
}

bool DzShaderBrick::deleteParamByName(const QString& name)
{
    return deleteParam(findParameterByName(name));
}

void DzShaderBrick::attach(int index, DzBrickParam* param)
{
    m_params.insert(index, param);
    param->m_brick = this;
    emit paramAdded(this);
}

int DzShaderBrick::detach(DzBrickParam* param)
{
    const int index = findParameterIndex(param);
    m_params.remove(index);
    param->m_brick = nullptr;
    emit paramRemoved(this);
    return index;
}

void DzShaderBrick::forget(DzBrickParam* param)
{
    detach(param);
}

DzBrickParam* DzShaderBrick::findParameterByName(const QString& name) const
{
    for (DzBrickParam* param : m_params)
        if (param->getName() == name)
            return param;
    return nullptr;
}

DzBrickParam* DzShaderBrick::findParameterByLabel(const QString& label) const
{
    for (DzBrickParam* param : m_params)
        if (param->getLabel() == label)
            return param;
    return nullptr;
}

DzBrickParam* DzShaderBrick::findParameterByArg(const QString& arg) const
{
    for (DzBrickParam* param : m_params)
        for (int i = 0; i < param->getNumArgs(); ++i)
            if (param->getArg(i) == arg)
                return param;
    return nullptr;
}

int DzShaderBrick::findParameterIndex(const DzBrickParam* param) const
{
    // From the end: removing many goes backwards.
    return m_params.lastIndexOf(const_cast<DzBrickParam*>(param));
}

bool DzShaderBrick::changeParamIndex(DzBrickParam* param, int index)
{
    const int from = findParameterIndex(param);
    if (from < 0 || index < 0 || index >= m_params.size())
        return false;
    m_params.move(from, index);
    return true;
}

void DzShaderBrick::setParameterOrder(const QVector<DzBrickParam*>& order)
{
    QVector<DzBrickParam*> listed;
    QSet<DzBrickParam*> isListed;
    for (DzBrickParam* param : order) {
        if (param && param->m_brick == this && !isListed.contains(param)) {
            isListed.insert(param);
            listed.append(param);
        }
    }
    int next = 0;
    for (DzBrickParam*& place : m_params)
        if (isListed.contains(place))
            place = listed.at(next++);
}

void DzShaderBrick::addScopedParam(int type, const QString& name, int)
{
    ScopedParam scoped;
    scoped.type = type;
    scoped.name = name;
    m_scoped.append(scoped);
}

void DzShaderBrick::addRequiredParam(int type, const QString& name)
{
    ScopedParam required;
    required.type = type;
    required.name = name;
    m_required.append(required);
}

bool DzShaderBrick::providesParam(const QString& name, int type) const
{
    for (const ScopedParam& scoped : m_scoped)
        if (scoped.type == type && scoped.name == name)
            return true;
    return false;
}

bool DzShaderBrick::providesParams(const DzShaderBrick* other, const DzBrickParam*) const
{
    for (const ScopedParam& required : other->m_required)
        if (!providesParam(required.name, required.type))
            return false;
    return true;
}

bool DzShaderBrick::canBeFedBy(const DzShaderBrick* source) const
{
    if (!source || source == this)
        return false;
    // Both ends search towards each other, one brick in turn: whichever side is small ends the
    // search, and in a network that is built link by link one side mostly is.
    static quint64 searches = 0;
    const quint64 search = ++searches;
    bool isLoop = false;
    const auto visitor = [&isLoop, search](const DzShaderBrick* goal, Reach::Way way) {
        return [&isLoop, search, goal, way](const DzShaderBrick* brick) {
            isLoop = isLoop || brick == goal;
            const bool isNew = brick->m_visits[way] != search;
            brick->m_visits[way] = search;
            return isNew;
        };
    };
    Reach above(source, Reach::Upstream);
    Reach below(this, Reach::Downstream);
    const auto visitAbove = visitor(this, Reach::Upstream);
    const auto visitBelow = visitor(source, Reach::Downstream);
    while (!isLoop && !above.isDone() && !below.isDone()) {
        above.step(visitAbove);
        if (!isLoop && !above.isDone())
            below.step(visitBelow);
    }
    return !isLoop;
}

void DzShaderBrick::removeAllConnections()
{
    DzUndoStackHold hold;
    for (DzBrickParam* param : qAsConst(m_params))
        param->removeAllConnections();
    hold.accept(tr("Unlink %1").arg(getBrickTitle()));
}

void DzShaderBrick::removeForeignConnections()
{
    for (DzBrickParam* param : qAsConst(m_params)) {
        for (int i = param->getNumConnections() - 1; i >= 0; --i) {
            DzBrickParam* peer = param->getConnection(i);
            const IDzBrickUser* user = peer->getTopBrickOwner()->getBrickUser();
            if (m_user && user && user != m_user)
                param->removeConnection(peer);
        }
    }
}

void DzShaderBrick::notifyConnectionsChanged()
{
    if (m_user)
        m_user->invalidateSets();
    emit connectionsChanged();
}

QString DzShaderBrick::getBrickTitle() const
{
    return m_brickSettings.getStringValue(brickTitleKey(), getPreferredName());
}

void DzShaderBrick::setBrickTitle(const QString& title)
{
    if (title == getBrickTitle())
        return;
    m_brickSettings.setStringValue(brickTitleKey(), title);
    emit brickTitleChanged(title);
}

DzShaderString* DzShaderBrick::getBrickClassShaderCode() const
{
    return new DzShaderString;
}

DzShaderString* DzShaderBrick::getShaderCodeCall(const QStringList&) const
{
    return new DzShaderString;
}

void DzShaderBrick::getAttributes(DzSettings* settings) const
{
    if (getNumProperties() > 0) {
        SettingsTree* properties
            = settings->tree()->setSettingsValue(NetworkKeys::brickProperties());
        DzKeptMembers::begin(properties, m_kept ? m_kept->properties.get() : nullptr);
        for (int i = 0; i < getNumProperties(); ++i) {
            const DzProperty* property = getProperty(i);
            DzKeptMembers::writeProperty(
                properties->setSettingsValue(property->getName()), property, nullptr);
        }
        DzKeptMembers::end(properties);
    }
    settings->tree()->setSettingsValue(NetworkKeys::brickSettings(), *m_brickSettings.tree());
}

DzElement* DzShaderBrick::setAttributes(const DzSettings* settings)
{
    if (!settings)
        return this;
    DzUndoStackLock lock;
    const SettingsTree& tree = *settings->tree();
    if (const SettingsTree* properties = tree.getSettingsValue(NetworkKeys::brickProperties()))
        readBrickProperties(*properties);
    if (const SettingsTree* stored = tree.getSettingsValue(NetworkKeys::brickSettings()))
        *m_brickSettings.tree() = *stored;
    return this;
}

void DzShaderBrick::readBrickProperties(const SettingsTree& settings)
{
    for (int i = 0; i < settings.getNumValues(); ++i) {
        const QString name = settings.getKey(i);
        const SettingsTree* members = settings.getSettingsValue(name);
        if (DzProperty* property = findProperty(name))
            if (members)
                DzKeptMembers::readProperty(
                    property, *members, FilePlace { QString(), name, QString() });
    }
    const auto understood = [&](const QString& name) { return findProperty(name) != nullptr; };
    std::unique_ptr<SettingsTree> kept
        = DzKeptMembers::rememberTrees(settings, understood, understood, getPreferredName());
    if (kept && !m_kept)
        m_kept.reset(new KeptTrees);
    if (m_kept)
        m_kept->properties = std::move(kept);
}
