// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzshaderbrick.h"

#include "brickaccess.h"
#include "brickjournal.h"
#include "dzforeachlink.h"
#include "dzproperty.h"
#include "dzshaderstring.h"
#include "dzundostack.h"
#include "idzbrickuser.h"
#include "keptmembers.h"
#include "networkkeys.h"
#include "paramaddress.h"
#include "propertyaccess.h"

#include <QPointer>
#include <QSet>

namespace {

const QString& brickTitleKey()
{
    static const QString key = QStringLiteral("BrickTitle");
    return key;
}

/// The adding or removing of a parameter.
class ParamItem : public DzUndoItem
{
public:
    ParamItem(DzShaderBrick* brick, DzBrickParam* param, int index, bool added)
        : m_brick(brick)
        , m_param(param)
        , m_index(index)
        , m_added(added)
    {
    }

    void undo() override { set(!m_added); }
    void redo() override { set(m_added); }

private:
    void set(bool present)
    {
        DzBrickParam* param = m_param.get();
        if (!m_brick || !param) {
            DzUndoStack::refuse(DzShaderBrick::tr("the brick it changed is not there any more"));
            return;
        }
        const DzShaderBrick* holder = param->getTopBrickOwner();
        if (!present) {
            if (holder == m_brick)
                DzShaderBrick::Access::takeOff(m_brick, param);
            return;
        }
        if (!holder)
            DzShaderBrick::Access::putOn(m_brick, m_brick->getNumParameters(), param);
        // Others may have gone meanwhile without undo.
        if (param->getTopBrickOwner() == m_brick)
            DzShaderBrick::Access::move(m_brick, param, m_index);
    }

    QPointer<DzShaderBrick> m_brick;
    ParamAddress m_param;
    int m_index;
    bool m_added;
};

/// The moving of a parameter to another place.
class MoveItem : public DzUndoItem
{
public:
    MoveItem(DzBrickParam* param, int from, int to)
        : m_param(param)
        , m_from(from)
        , m_to(to)
    {
    }

    void undo() override { move(m_from); }
    void redo() override { move(m_to); }

private:
    void move(int index)
    {
        if (DzBrickParam* param = m_param.find())
            DzShaderBrick::Access::move(param->getTopBrickOwner(), param, index);
        else
            DzUndoStack::refuse(DzShaderBrick::tr("the input it moved is not there any more"));
    }

    ParamAddress m_param;
    int m_from;
    int m_to;
};

/// A change of a brick's own, as a pair of closures.
class BrickItem : public DzUndoItem
{
public:
    typedef std::function<void(DzShaderBrick*)> Change;

    BrickItem(DzShaderBrick* brick, const Change& undo, const Change& redo)
        : m_brick(brick)
        , m_undo(undo)
        , m_redo(redo)
    {
    }

    void undo() override { run(m_undo); }
    void redo() override { run(m_redo); }

private:
    void run(const Change& change)
    {
        if (m_brick)
            change(m_brick);
    }

    QPointer<DzShaderBrick> m_brick;
    Change m_undo;
    Change m_redo;
};

} // namespace

DzShaderBrick::DzShaderBrick()
    : m_place(new FeedPlace(this))
{
}

DzShaderBrick::~DzShaderBrick()
{
    DzUndoStackLock lock;
    if (m_user)
        IDzBrickUser::Access::forget(m_user, this);
    for (DzBrickParam* param : qAsConst(m_params))
        param->removeAllConnections();
    const QVector<DzBrickParam*> params = m_params + m_paramsOff;
    m_params.clear();
    m_paramsOff.clear();
    for (DzBrickParam* param : params) {
        DzBrickParam::Access::brick(param) = nullptr;
        DzBrickParam::Access::formerBrick(param) = nullptr;
        delete param;
    }
}

/// While a journal is open, changes are its own, whatever the undo stack takes.
bool DzShaderBrick::isRecorded() const
{
    return m_journal || DzElement::isRecorded();
}

bool DzShaderBrick::isRecordedFirst() const
{
    return m_journal != nullptr;
}

/// A change of the parameters is a user's only once the brick is in somebody's network.
bool DzShaderBrick::isListRecorded() const
{
    return m_journal || (m_user && DzElement::isRecorded());
}

void DzShaderBrick::pushUndoItem(DzUndoItem* item, const QString& caption)
{
    if (m_journal)
        m_journal->add(item);
    else
        DzElement::pushUndoItem(item, caption);
}

bool DzShaderBrick::addParameter(DzBrickParam* param)
{
    return insertParameter(m_params.size(), param);
}

bool DzShaderBrick::insertParameter(int index, DzBrickParam* param)
{
    if (!param || param->getTopBrickOwner())
        return false;
    const int place = index < 0 || index > m_params.size() ? m_params.size() : index;
    putOn(place, param);
    if (isListRecorded())
        pushUndoItem(new ParamItem(this, param, place, true), tr("Add Parameter"));
    return true;
}

bool DzShaderBrick::deleteParam(DzBrickParam* param)
{
    if (!param || param->getTopBrickOwner() != this)
        return false;
    if (isListRecorded()) {
        DzUndoStackHold hold;
        param->removeAllConnections();
        const int index = findParameterIndex(param);
        // Made first: it keeps the parameter.
        auto* item = new ParamItem(this, param, index, false);
        takeOff(param);
        pushUndoItem(item, QString());
        hold.accept(tr("Remove Parameter"));
        return true;
    }
    takeOff(param);
    if (DzBrickParam::Access::numAddresses(param) == 0)
        delete param;
    return true;
}

bool DzShaderBrick::deleteParamByName(const QString& name)
{
    return deleteParam(findParameterByName(name));
}

void DzShaderBrick::putOn(int index, DzBrickParam* param)
{
    if (DzShaderBrick* former = DzBrickParam::Access::formerBrick(param))
        former->m_paramsOff.remove(former->m_paramsOff.lastIndexOf(param));
    DzBrickParam::Access::formerBrick(param) = nullptr;
    m_params.insert(index, param);
    DzBrickParam::Access::brick(param) = this;
    emit paramAdded(this);
}

/// Takes a parameter off, with its links, and keeps it; returns the index it had.
int DzShaderBrick::takeOff(DzBrickParam* param)
{
    if (param->getNumConnections() > 0) {
        const DzUndoStackLock lock;
        param->removeAllConnections();
    }
    const int index = findParameterIndex(param);
    m_params.remove(index);
    DzBrickParam::Access::brick(param) = nullptr;
    DzBrickParam::Access::formerBrick(param) = this;
    m_paramsOff.append(param);
    emit paramRemoved(this);
    return index;
}

void DzShaderBrick::forget(DzBrickParam* param)
{
    const int index = findParameterIndex(param);
    if (index < 0) {
        m_paramsOff.remove(m_paramsOff.lastIndexOf(param));
        return;
    }
    m_params.remove(index);
    emit paramRemoved(this);
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
    if (from == index)
        return true;
    m_params.move(from, index);
    if (isListRecorded())
        pushUndoItem(new MoveItem(param, from, index), tr("Move %1").arg(param->getLabel()));
    return true;
}

void DzShaderBrick::moveParam(DzBrickParam* param, int index)
{
    m_params.move(findParameterIndex(param), qBound(0, index, m_params.size() - 1));
}

void DzShaderBrick::setParameterOrder(const QVector<DzBrickParam*>& order)
{
    QVector<DzBrickParam*> listed;
    QSet<DzBrickParam*> isListed;
    for (DzBrickParam* param : order) {
        if (param && param->getTopBrickOwner() == this && !isListed.contains(param)) {
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
    return letFeed(source, this);
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
    const QString before = getBrickTitle();
    if (title == before)
        return;
    const bool hadOne = m_brickSettings.hasKey(brickTitleKey());
    assignTitle(true, title);
    // A brick of no user is nobody's yet.
    if (isListRecorded())
        pushUndoItem(new BrickItem(
                         this, [=](DzShaderBrick* b) { Access::setTitle(b, hadOne, before); },
                         [=](DzShaderBrick* b) { Access::setTitle(b, true, title); }),
            tr("Rename %1").arg(before));
}

void DzShaderBrick::assignTitle(bool hasOne, const QString& title)
{
    if (hasOne)
        m_brickSettings.setStringValue(brickTitleKey(), title);
    else
        m_brickSettings.removeValue(brickTitleKey());
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
    if (const SettingsTree* stored = tree.getSettingsValue(NetworkKeys::brickSettings())) {
        const DzSettings before(m_brickSettings);
        *m_brickSettings.tree() = *stored;
        if (m_journal) {
            const auto set = [](DzShaderBrick* brick, const DzSettings& brickSettings) {
                *brick->getBrickSettings() = brickSettings;
            };
            const DzSettings after(m_brickSettings);
            m_journal->add(new BrickItem(
                this, [=](DzShaderBrick* brick) { set(brick, before); },
                [=](DzShaderBrick* brick) { set(brick, after); }));
        }
    }
    return this;
}

void DzShaderBrick::readBrickProperties(const SettingsTree& settings)
{
    for (int i = 0; i < settings.getNumValues(); ++i) {
        const QString name = settings.getKey(i);
        const SettingsTree* members = settings.getSettingsValue(name);
        if (DzProperty* property = findProperty(name))
            if (members)
                DzProperty::Access::changeDescription(property, "attributes", [&] {
                    DzKeptMembers::readProperty(
                        property, *members, FilePlace { QString(), name, QString() });
                });
    }
    const auto understood = [&](const QString& name) { return findProperty(name) != nullptr; };
    std::unique_ptr<SettingsTree> kept
        = DzKeptMembers::rememberTrees(settings, understood, understood, getPreferredName());
    if (kept && !m_kept)
        m_kept.reset(new KeptTrees);
    if (m_kept)
        m_kept->properties = std::move(kept);
}
