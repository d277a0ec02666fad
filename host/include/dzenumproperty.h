// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzintproperty.h"

#include <QStringList>

/// One of a list of texts; the value is the item's index.
class DzEnumProperty : public DzIntProperty
{
    Q_OBJECT

public:
    DzEnumProperty(const QString& name, bool canAnimate, bool isUserProperty);

    /// Adds an item, at the end for index -1, and returns its index; -1 for a text that is there.
    Q_INVOKABLE int addItem(const QString& text, int index = -1);
    Q_INVOKABLE int getNumItems() const { return m_items.size(); }
    /// Text of item `index`, empty when there is none.
    Q_INVOKABLE QString getItem(int index) const { return m_items.value(index); }
    /// Index of a text, -1 when there is none.
    Q_INVOKABLE int findItemString(const QString& text) const { return m_items.indexOf(text); }

    /// Text of the current item, empty without items.
    Q_INVOKABLE QString getStringValue() const { return m_items.value(getValue()); }
    /// Selects the item with this text; false when there is none.
    Q_INVOKABLE bool setValueFromString(const QString& text);
    Q_INVOKABLE QString getDefaultStringValue() const { return m_items.value(getDefaultValue()); }

    QString getValueText() const override { return getStringValue(); }
    /// Takes an item's text or its index.
    bool setValueText(const QString& text, QString* error) override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

signals:
    void itemListChanged();

protected:
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;
    /// The nearest item index.
    int admissible(int value) const override;

private:
    QStringList m_items;
};
