// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzproperty.h"

#include "dzapp.h"
#include "dzelement.h"
#include "dzundostack.h"
#include "elementaccess.h"
#include "settingstree.h"

#include <QPointer>

namespace {

/// A change of one property, as a pair of closures.
class PropertyItem : public DzUndoItem
{
public:
    typedef std::function<void(DzProperty*)> Change;

    PropertyItem(DzProperty* property, std::unique_ptr<DzPropertyCarrier::Address> carrier,
        const char* kind, const Change& undo, const Change& redo)
        : m_property(property)
        , m_carrier(std::move(carrier))
        , m_kind(kind)
        , m_undo(undo)
        , m_redo(redo)
    {
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
        // The element was changed meanwhile without undo: what has another's place now is not
        // what this step was made for.
        if (m_property && m_property->getOwner())
            change(m_property);
        else
            DzUndoStack::refuse(DzProperty::tr("the property it changed is not there any more"));
    }

    QPointer<DzProperty> m_property;
    std::unique_ptr<DzPropertyCarrier::Address> m_carrier;
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
        DzElement::Access::detach(m_owner, this);
    emit propertyDeleted(this);
}

void DzProperty::setName(const QString& name)
{
    const QString before = getName();
    if (name == before || !assignName(name) || !isRecorded())
        return;
    record(
        "name", tr("Rename %1").arg(m_label), [=](DzProperty* p) { p->assignName(before); },
        [=](DzProperty* p) { p->assignName(name); });
}

bool DzProperty::assignName(const QString& name)
{
    if (m_owner && !DzElement::Access::rename(m_owner, this, name))
        return false;
    DzBase::setName(name);
    return true;
}

DzElement* DzProperty::getOwner() const
{
    return m_carrier ? m_carrier->getCarrierOwner() : m_owner;
}

bool DzProperty::isRecorded() const
{
    const DzElement* owner = getOwner();
    return owner && owner->isRecorded();
}

void DzProperty::record(
    const char* kind, const QString& caption, const Change& undo, const Change& redo)
{
    std::unique_ptr<DzPropertyCarrier::Address> carrier;
    if (m_carrier)
        carrier = m_carrier->makeAddress();
    getOwner()->pushUndoItem(new PropertyItem(this, std::move(carrier), kind, undo, redo), caption);
}

void DzProperty::recordAround(const char* kind, const QString& caption,
    const std::function<void()>& change, const Change& undo, const Change& redo)
{
    const bool isFirst = isRecorded() && getOwner()->isRecordedFirst();
    if (isFirst)
        record(kind, caption, undo, redo);
    change();
    if (!isFirst && isRecorded())
        record(kind, caption, undo, redo);
}

DzProperty::Description DzProperty::describe() const
{
    Description all;
    getAttributes(&all.settings);
    all.settings.setBoolValue(QStringLiteral("ForceSetUser"), true);
    // Written only where there is a map: going back to none has to say so.
    const QString mapKey = QStringLiteral("MapImage");
    if (!all.settings.hasKey(mapKey))
        all.settings.setStringValue(mapKey, QString());
    if (m_keptMembers)
        all.kept = std::make_shared<const SettingsTree>(*m_keptMembers);
    return all;
}

void DzProperty::assignDescription(const Description& all)
{
    readSettings(all.settings);
    m_keptMembers.reset(all.kept ? new SettingsTree(*all.kept) : nullptr);
}

void DzProperty::changeDescription(const char* kind, const std::function<void()>& change)
{
    if (!isRecorded()) {
        change();
        return;
    }
    const Description before = describe();
    const auto after = std::make_shared<Description>();
    const QString caption = tr("Change %1").arg(m_label);
    const auto undo = [=](DzProperty* p) { p->assignDescription(before); };
    const auto redo = [=](DzProperty* p) { p->assignDescription(*after); };
    const bool isFirst = getOwner()->isRecordedFirst();
    if (isFirst)
        record(kind, caption, undo, redo);
    change();
    *after = describe();
    if (!isFirst && isRecorded() && !after->settings.isEqual(before.settings))
        record(kind, caption, undo, redo);
}

void DzProperty::notifyValueChanged()
{
    emit currentValueChanged();
    if (m_carrier)
        m_carrier->carriedPropertyChanged(this);
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
    if (m_carrier)
        m_carrier->carriedPropertyChanged(this);
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
    assignCanAnimate(canAnimate);
    if (isRecorded())
        record(
            "animate", tr("Change %1").arg(m_label),
            [=](DzProperty* p) { p->assignCanAnimate(!canAnimate); },
            [=](DzProperty* p) { p->assignCanAnimate(canAnimate); });
}

void DzProperty::assignCanAnimate(bool canAnimate)
{
    m_canAnimate = canAnimate;
    emit canAnimateChanged(canAnimate);
}

void DzProperty::copyFrom(const DzProperty* other)
{
    changeDescription("copy", [=] { takeFrom(other); });
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
    if (settings)
        changeDescription("attributes", [=] { readSettings(*settings); });
}

void DzProperty::readSettings(const DzPropertySettings& settings)
{
    const bool forceUser = settings.getBoolValue(QStringLiteral("ForceSetUser"));
    const QString valueKey = QStringLiteral("Value");
    const int count = settings.getNumValues();
    for (int i = 0; i < count; ++i) {
        const QString key = settings.getKey(i);
        if (key == valueKey || (key == QLatin1String("UserProperty") && !forceUser))
            continue;
        readAttribute(*settings.tree(), key);
    }
    // Last, so that limits and items that the settings bring along hold for it.
    readAttribute(*settings.tree(), valueKey);
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
        if (on != m_userProperty)
            assignUserProperty(on);
        return true;
    }
    if (key == QLatin1String("CanAnimate")) {
        if (on != m_canAnimate)
            assignCanAnimate(on);
        return true;
    }
    return false;
}
