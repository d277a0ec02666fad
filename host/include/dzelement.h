// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"
#include "dzelementdata.h"
#include "dzerror.h"
#include "dzsimpleelementdata.h"

#include <QHash>
#include <QVector>

class DzProperty;
class DzSettings;
class DzUndoItem;

/// An object with properties, data items and attributes.
class DzElement : public DzBase
{
    Q_OBJECT
    Q_PROPERTY(QString label READ getLabel WRITE setLabel NOTIFY labelChanged)

public:
    explicit DzElement(const QString& name = QString());
    /// Deletes the properties and data items.
    ~DzElement() override;

    /// Naming an element anew is a user's change; giving it its first name is none.
    void setName(const QString& name) override;
    Q_INVOKABLE QString getLabel() const { return m_label; }
    Q_INVOKABLE virtual DzError setLabel(const QString& label);

    /// Adds a property and takes ownership. Names are unique within one element: a property whose
    /// name is taken is refused and stays the caller's.
    Q_INVOKABLE DzError addProperty(DzProperty* property);
    Q_INVOKABLE DzError insertProperty(int index, DzProperty* property);
    /// Removes and deletes a user property; any other is refused.
    Q_INVOKABLE DzError removeProperty(DzProperty* property);
    Q_INVOKABLE DzError removeProperty(const QString& name);
    Q_INVOKABLE int getNumProperties() const { return m_properties.size(); }
    Q_INVOKABLE DzProperty* getProperty(int index) const { return m_properties.value(index); }
    Q_INVOKABLE DzProperty* findProperty(const QString& name) const;
    Q_INVOKABLE QVector<DzProperty*> getPropertyList() const { return m_properties; }

    /// Adds a data item and takes ownership; refused when one of the same name is there.
    Q_INVOKABLE DzError addDataItem(DzElementData* item);
    /// Takes the item off and gives it back to the caller.
    Q_INVOKABLE DzError removeDataItem(DzElementData* item);
    Q_INVOKABLE DzError deleteDataItem(DzElementData* item);
    Q_INVOKABLE DzElementData* findDataItem(const QString& name) const;
    Q_INVOKABLE int getNumDataItems() const { return m_dataItems.size(); }
    Q_INVOKABLE DzElementData* getDataItem(int index) const { return m_dataItems.value(index); }

    /// Copies label, and the values of properties that both have, from another element.
    Q_INVOKABLE virtual void copyFrom(const DzElement* other);
    /// Writes what the element needs to be made again.
    Q_INVOKABLE virtual void getAttributes(DzSettings* settings) const;
    /// Reads what getAttributes() wrote; returns this, or null when the settings are unusable.
    Q_INVOKABLE virtual DzElement* setAttributes(const DzSettings* settings);

    /// True when a change of the element or of something it owns is to leave an undo item now.
    virtual bool isRecorded() const;
    /// True when an item is to come before the change and not after it: what follows from the
    /// change then comes behind it, and is taken back before it.
    virtual bool isRecordedFirst() const { return false; }
    /// Takes the undo item of such a change, and owns it from now on.
    virtual void pushUndoItem(DzUndoItem* item, const QString& caption);

    /// For the host's own sources.
    struct Access;

signals:
    void labelChanged(const QString& label);
    void propertyAdded(DzProperty* property);
    void propertyRemoved(DzProperty* property);
    void propertyListChanged();

private:
    void attach(int index, DzProperty* property);
    /// Takes the property off the list without deleting it; returns the index it had.
    int detach(DzProperty* property);
    /// Notes a property's coming name; false when another property has it.
    bool renameProperty(DzProperty* property, const QString& name);

    QString m_label;
    QVector<DzProperty*> m_properties;
    mutable QHash<QString, DzProperty*> m_propertyIndex;
    QVector<DzElementData*> m_dataItems;
};
