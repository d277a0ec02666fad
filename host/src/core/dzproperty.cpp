// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzproperty.h"

#include "dzbrickparam.h"
#include "dzelement.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "paramaddress.h"
#include "settingstree.h"

#include <QPointer>

namespace {

/// A change of one property, as a pair of closures.
class PropertyItem : public DzUndoItem
{
public:
    typedef std::function<void(DzProperty*)> Change;

    PropertyItem(DzProperty* property, const char* kind, const Change& undo, const Change& redo)
        : m_property(property)
        , m_kind(kind)
        , m_undo(undo)
        , m_redo(redo)
    {
        DzBrickParam* param = property->getBrickParam();
        if (!param)
            return;
        m_param = ParamAddress(param);
        while (m_index < param->getNumProperties() && param->getProperty(m_index) != property)
            ++m_index;
    }

    void undo() override { run(m_undo); }
    void redo() override { run(m_redo); }
    bool mergeWith(DzUndoItem* later) override
    {
        auto* same = dynamic_cast<PropertyItem*>(later);
        if (!same || same->m_property != m_property || same->m_kind != m_kind)
            return false;
        m_redo = std::move(same->m_redo);
        return true;
    }

private:
    void run(const Change& change)
    {
        if (!m_property) {
            DzBrickParam* param = m_param.find();
            m_property = param ? param->getProperty(m_index) : nullptr;
        }
        if (m_property)
            change(m_property);
    }

    QPointer<DzProperty> m_property;
    ParamAddress m_param;
    int m_index = 0;    // among the parameter's properties
    const char* m_kind; // compared by address: each kind is one literal of one call
    Change m_undo;
    Change m_redo;
};

} // namespace

DzProperty::DzProperty(const QString& name, bool canAnimate, bool isUserProperty)
    : DzBase(name)
    , m_label(name)
    , m_userProperty(isUserProperty)
    , m_canAnimate(canAnimate)
{
}

DzProperty::~DzProperty()
{
    if (m_owner)
        m_owner->forget(this);
    emit propertyDeleted(this);
}

void DzProperty::setName(const QString& name)
{
    if (m_owner && !m_owner->renameProperty(this, name))
        return;
    DzBase::setName(name);
}

DzElement* DzProperty::getOwner() const
{
    return m_param ? m_param->getTopBrickOwner() : m_owner;
}

bool DzProperty::isRecorded() const
{
    return dzUndoStack && dzUndoStack->canPushItems() && getOwner();
}

void DzProperty::record(
    const char* kind, const QString& caption, const Change& undo, const Change& redo)
{
    dzUndoStack->push(new PropertyItem(this, kind, undo, redo), caption);
}

void DzProperty::notifyValueChanged()
{
    emit currentValueChanged();
    if (m_param)
        emit m_param->propertyChanged(this);
}

void DzProperty::setLabel(const QString& label)
{
    if (label == m_label)
        return;
    const QString before = m_label;
    assignLabel(label);
    if (isRecorded())
        record(
            "label", tr("Rename %1").arg(before), [=](DzProperty* p) { p->assignLabel(before); },
            [=](DzProperty* p) { p->assignLabel(label); });
}

void DzProperty::assignLabel(const QString& label)
{
    m_label = label;
    emit labelChanged(label);
}

void DzProperty::setPath(const QString& path)
{
    if (path == m_path)
        return;
    const QString before = m_path;
    assignPath(path);
    if (isRecorded())
        record(
            "path", tr("Move %1").arg(m_label), [=](DzProperty* p) { p->assignPath(before); },
            [=](DzProperty* p) { p->assignPath(path); });
}

void DzProperty::assignPath(const QString& path)
{
    m_path = path;
    emit pathChanged(path);
}

void DzProperty::setHidden(bool hidden)
{
    if (hidden == m_hidden)
        return;
    assignHidden(hidden);
    if (isRecorded())
        record(
            "hidden", hidden ? tr("Hide %1").arg(m_label) : tr("Show %1").arg(m_label),
            [=](DzProperty* p) { p->assignHidden(!hidden); },
            [=](DzProperty* p) { p->assignHidden(hidden); });
}

void DzProperty::assignHidden(bool hidden)
{
    m_hidden = hidden;
    emit hiddenChanged(hidden);
}

void DzProperty::lock(bool locked)
{
    if (locked == m_locked)
        return;
    assignLocked(locked);
    if (isRecorded())
        record(
            "lock", locked ? tr("Lock %1").arg(m_label) : tr("Unlock %1").arg(m_label),
            [=](DzProperty* p) { p->assignLocked(!locked); },
            [=](DzProperty* p) { p->assignLocked(locked); });
}

void DzProperty::assignLocked(bool locked)
{
    m_locked = locked;
    emit lockStateChanged();
    if (m_param)
        emit m_param->propertyChanged(this);
}

void DzProperty::setIsUserProperty(bool isUser)
{
    if (isUser == m_userProperty)
        return;
    assignUserProperty(isUser);
    if (isRecorded())
        record(
            "user", tr("Change %1").arg(m_label),
            [=](DzProperty* p) { p->assignUserProperty(!isUser); },
            [=](DzProperty* p) { p->assignUserProperty(isUser); });
}

void DzProperty::assignUserProperty(bool isUser)
{
    m_userProperty = isUser;
    emit isUserPropertyChanged(isUser);
}

void DzProperty::setCanAnimate(bool canAnimate)
{
    if (canAnimate == m_canAnimate)
        return;
    m_canAnimate = canAnimate;
    emit canAnimateChanged(canAnimate);
}

DzProperty* DzProperty::duplicate() const
{
    DzProperty* copy = createSimilar();
    copy->assignAll(this);
    return copy;
}

void DzProperty::assignAll(const DzProperty* model)
{
    m_label = model->m_label;
    m_path = model->m_path;
    m_hidden = model->m_hidden;
    m_locked = model->m_locked;
    m_userProperty = model->m_userProperty;
    m_canAnimate = model->m_canAnimate;
}

void DzProperty::getAttributes(DzPropertySettings* settings) const
{
    settings->setStringValue(QStringLiteral("Label"), m_label);
    settings->setBoolValue(QStringLiteral("Hidden"), m_hidden);
    settings->setStringValue(QStringLiteral("Path"), m_path);
    settings->setBoolValue(QStringLiteral("UserProperty"), m_userProperty);
    settings->setBoolValue(QStringLiteral("CanAnimate"), m_canAnimate);
    settings->setBoolValue(QStringLiteral("Locked"), m_locked);
}

bool DzProperty::isDescribedLike(const DzProperty* other) const
{
    return m_locked == other->m_locked && m_hidden == other->m_hidden
        && m_userProperty == other->m_userProperty && m_canAnimate == other->m_canAnimate
        && m_label == other->m_label && m_path == other->m_path;
}

void DzProperty::setAttributes(const DzPropertySettings* settings)
{
    if (!settings)
        return;
    const bool forceUser = settings->getBoolValue(QStringLiteral("ForceSetUser"));
    const QString valueKey = QStringLiteral("Value");
    const int count = settings->getNumValues();
    for (int i = 0; i < count; ++i) {
        const QString key = settings->getKey(i);
        if (key == valueKey || (key == QLatin1String("UserProperty") && !forceUser))
            continue;
        readAttribute(*settings->tree(), key);
    }
    // Last, so that limits and items that the settings bring along hold for it.
    readAttribute(*settings->tree(), valueKey);
}

bool DzProperty::readAttribute(const SettingsTree& settings, const QString& key)
{
    const int index = settings.getSettingIndex(key);
    if (index < 0)
        return false;
    const DzSettings::ValueType type = settings.getValueType(index);
    if (type == DzSettings::StringValue) {
        const QString text = settings.getStringValue(key);
        if (key == QLatin1String("Label")) {
            if (text != m_label)
                assignLabel(text);
            return true;
        }
        if (key == QLatin1String("Path")) {
            if (text != m_path)
                assignPath(text);
            return true;
        }
        return false;
    }
    if (type != DzSettings::BoolValue)
        return false;
    const bool on = settings.getBoolValue(key);
    if (key == QLatin1String("Locked")) {
        if (on != m_locked)
            assignLocked(on);
        return true;
    }
    if (key == QLatin1String("Hidden")) {
        if (on != m_hidden)
            assignHidden(on);
        return true;
    }
    if (key == QLatin1String("UserProperty")) {
        setIsUserProperty(on);
        return true;
    }
    if (key == QLatin1String("CanAnimate")) {
        setCanAnimate(on);
        return true;
    }
    return false;
}
