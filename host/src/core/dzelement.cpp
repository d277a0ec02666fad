// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzelement.h"

#include "dzproperty.h"
#include "dzundostack.h"
#include "elementaccess.h"
#include "propertyaccess.h"

#include <QPointer>
#include <memory>

namespace {

/// Below this many properties a search is cheaper than an index.
const int manyProperties = 100;

/// A new name or label of an element: undo and redo exchange the text that is there for the other.
class TextItem : public DzUndoItem
{
public:
    /// Gives the element a text and returns the one it had.
    typedef QString (*Exchange)(DzElement* element, const QString& text);

    TextItem(DzElement* element, const QString& before, Exchange exchange)
        : m_element(element)
        , m_other(before)
        , m_exchange(exchange)
    {
    }

    void undo() override { swap(); }
    void redo() override { swap(); }

private:
    void swap()
    {
        if (m_element)
            m_other = m_exchange(m_element, m_other);
    }

    QPointer<DzElement> m_element;
    QString m_other;
    Exchange m_exchange;
};

QString exchangeName(DzElement* element, const QString& name)
{
    const QString before = element->getName();
    element->setName(name);
    return before;
}

QString exchangeLabel(DzElement* element, const QString& label)
{
    const QString before = element->getLabel();
    element->setLabel(label);
    return before;
}

/// The adding or removing of a data item; owns the item while it is off the element. It finds the
/// item by name, since one that was given back to a caller returns as a copy.
class DataItem : public DzUndoItem
{
public:
    /// `removed` is what undoing puts back; null for an item that was added.
    DataItem(DzElement* element, const QString& name, int index, DzElementData* removed)
        : m_element(element)
        , m_name(name)
        , m_index(index)
        , m_added(!removed)
        , m_owned(removed)
    {
    }

    void undo() override { set(!m_added); }
    void redo() override { set(m_added); }

private:
    void set(bool present)
    {
        if (!m_element)
            return;
        if (present)
            putOn();
        else
            takeOff();
    }
    void putOn()
    {
        if (!m_owned || m_element->addDataItem(m_owned.get()) != DZ_NO_ERROR)
            return;
        m_owned.release();
        // Those that stood behind the item go behind it again.
        for (int behind = m_element->getNumDataItems() - 1 - m_index; behind > 0; --behind) {
            DzElementData* item = m_element->getDataItem(m_index);
            m_element->removeDataItem(item);
            m_element->addDataItem(item);
        }
    }
    void takeOff()
    {
        DzElementData* item = m_element->findDataItem(m_name);
        if (item && m_element->removeDataItem(item) == DZ_NO_ERROR)
            m_owned.reset(item);
    }

    QPointer<DzElement> m_element;
    QString m_name;
    int m_index;
    bool m_added;
    std::unique_ptr<DzElementData> m_owned;
};

/// The adding or removing of a property; owns the property while it is off the element.
class PropertyListItem : public DzUndoItem
{
    typedef DzElement::Access Access;

public:
    PropertyListItem(DzElement* element, DzProperty* property, int index, bool added)
        : m_element(element)
        , m_property(property)
        , m_index(index)
        , m_added(added)
        , m_owned(!added)
    {
    }
    ~PropertyListItem() override
    {
        if (m_owned)
            delete m_property;
    }

    void undo() override { set(!m_added); }
    void redo() override { set(m_added); }

private:
    void set(bool present)
    {
        if (!m_element || !m_property || m_owned != present)
            return;
        // Changes that left no undo item may have taken the name or shortened the list.
        if (present && m_element->findProperty(m_property->getName()))
            return;
        if (present)
            Access::attach(m_element, qMin(m_index, m_element->getNumProperties()), m_property);
        else
            Access::detach(m_element, m_property);
        m_owned = !present;
    }

    QPointer<DzElement> m_element;
    QPointer<DzProperty> m_property;
    int m_index;
    bool m_added;
    bool m_owned;
};

} // namespace

DzElement::DzElement(const QString& name)
    : DzBase(name)
{
}

DzElement::~DzElement()
{
    const QVector<DzProperty*> properties = m_properties;
    m_properties.clear();
    m_propertyIndex.clear();
    for (DzProperty* property : properties) {
        DzProperty::Access::setOwner(property, nullptr);
        delete property;
    }
    qDeleteAll(m_dataItems);
}

bool DzElement::isRecorded() const
{
    return dzUndoStack && dzUndoStack->canPushItems();
}

void DzElement::pushUndoItem(DzUndoItem* item, const QString& caption)
{
    dzUndoStack->push(item, caption);
}

void DzElement::setName(const QString& name)
{
    const QString before = getName();
    if (name == before)
        return;
    DzBase::setName(name);
    if (!before.isEmpty() && isRecorded())
        pushUndoItem(new TextItem(this, before, exchangeName), tr("Rename"));
}

DzError DzElement::setLabel(const QString& label)
{
    if (label == m_label)
        return DZ_NO_ERROR;
    const QString before = m_label;
    m_label = label;
    emit labelChanged(label);
    if (isRecorded())
        pushUndoItem(new TextItem(this, before, exchangeLabel), tr("Rename"));
    return DZ_NO_ERROR;
}

DzError DzElement::addProperty(DzProperty* property)
{
    return insertProperty(m_properties.size(), property);
}

DzError DzElement::insertProperty(int index, DzProperty* property)
{
    if (!property || DzProperty::Access::hasOwner(property))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (findProperty(property->getName()))
        return DZ_REFUSED_ERROR;
    const int place = index < 0 || index > m_properties.size() ? m_properties.size() : index;
    attach(place, property);
    if (isRecorded())
        pushUndoItem(new PropertyListItem(this, property, place, true), tr("Add Property"));
    return DZ_NO_ERROR;
}

DzError DzElement::removeProperty(DzProperty* property)
{
    if (!property || DzProperty::Access::owner(property) != this)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (!property->isUserProperty())
        return DZ_REFUSED_ERROR;
    const int index = detach(property);
    if (isRecorded())
        pushUndoItem(new PropertyListItem(this, property, index, false), tr("Remove Property"));
    else
        delete property;
    return DZ_NO_ERROR;
}

DzError DzElement::removeProperty(const QString& name)
{
    return removeProperty(findProperty(name));
}

DzProperty* DzElement::findProperty(const QString& name) const
{
    if (m_properties.size() <= manyProperties) {
        // From the end, where what was added last is looked for most. Most names differ in length
        // already, which needs no call.
        for (int i = m_properties.size() - 1; i >= 0; --i) {
            const QString& other = m_properties.at(i)->getName();
            if (other.size() == name.size() && other == name)
                return m_properties.at(i);
        }
        return nullptr;
    }
    if (m_propertyIndex.isEmpty())
        for (DzProperty* property : m_properties)
            m_propertyIndex.insert(property->getName(), property);
    return m_propertyIndex.value(name);
}

void DzElement::attach(int index, DzProperty* property)
{
    m_properties.insert(index, property);
    if (!m_propertyIndex.isEmpty())
        m_propertyIndex.insert(property->getName(), property);
    DzProperty::Access::setOwner(property, this);
    emit propertyAdded(property);
    emit propertyListChanged();
}

int DzElement::detach(DzProperty* property)
{
    // From the end: removing many goes backwards.
    const int index = m_properties.lastIndexOf(property);
    m_properties.remove(index);
    m_propertyIndex.remove(property->getName());
    DzProperty::Access::setOwner(property, nullptr);
    emit propertyRemoved(property);
    emit propertyListChanged();
    return index;
}

bool DzElement::renameProperty(DzProperty* property, const QString& name)
{
    DzProperty* holder = findProperty(name);
    if (holder && holder != property)
        return false;
    m_propertyIndex.clear();
    return true;
}

DzError DzElement::addDataItem(DzElementData* item)
{
    if (!item || DzElementData::Access::owner(item))
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    if (findDataItem(item->getName()))
        return DZ_REFUSED_ERROR;
    m_dataItems.append(item);
    DzElementData::Access::owner(item) = this;
    if (isRecorded())
        pushUndoItem(
            new DataItem(this, item->getName(), m_dataItems.size() - 1, nullptr), tr("Add Data"));
    return DZ_NO_ERROR;
}

DzError DzElement::removeDataItem(DzElementData* item)
{
    if (!item || DzElementData::Access::owner(item) != this)
        return DZ_ILLEGAL_ARGUMENT_ERROR;
    const int index = m_dataItems.indexOf(item);
    m_dataItems.remove(index);
    DzElementData::Access::owner(item) = nullptr;
    // The caller may delete the item, so that undoing puts a copy back.
    if (isRecorded())
        pushUndoItem(
            new DataItem(this, item->getName(), index, item->duplicate()), tr("Remove Data"));
    return DZ_NO_ERROR;
}

DzError DzElement::deleteDataItem(DzElementData* item)
{
    const DzError error = removeDataItem(item);
    if (error == DZ_NO_ERROR)
        delete item;
    return error;
}

DzElementData* DzElement::findDataItem(const QString& name) const
{
    for (DzElementData* item : m_dataItems)
        if (item->getName() == name)
            return item;
    return nullptr;
}

void DzElement::copyFrom(const DzElement* other)
{
    if (!other || other == this)
        return;
    {
        // Like the values, the label is copied without an undo item.
        const DzUndoStackLock lock;
        setLabel(other->getLabel());
    }
    for (const DzProperty* source : other->m_properties)
        if (DzProperty* own = findProperty(source->getName()))
            DzProperty::Access::take(own, source);
}

void DzElement::getAttributes(DzSettings*) const
{
}

DzElement* DzElement::setAttributes(const DzSettings*)
{
    return this;
}
