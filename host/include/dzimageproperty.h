// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzproperty.h"
#include "dztexture.h"

/// An image. It cannot be animated; unset is its default.
class DzImageProperty : public DzProperty
{
    Q_OBJECT

public:
    DzImageProperty(const QString& name, bool isUserProperty);
    ~DzImageProperty() override;

    /// The image, null when unset.
    Q_INVOKABLE DzTexture* getValue() const { return m_value; }
    /// File name of the image, empty when unset.
    Q_INVOKABLE QString getFilename() const;
    /// Sets the image by file name, an empty one unsets it; false when the property is locked.
    Q_INVOKABLE bool setValue(const QString& filename);
    Q_INVOKABLE bool setValue(const DzTexture* texture);

    bool currentValueIsDefaultValue() const override { return getFilename().isEmpty(); }
    void resetToDefault() override { setValue(QString()); }
    QString getValueText() const override { return getFilename(); }
    bool setValueText(const QString& text, QString* error) override;
    void getAttributes(DzPropertySettings* settings) const override;
    void writeValue(SettingsTree* settings) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

protected:
    void takeFrom(const DzProperty* other) override;
    DzProperty* createSimilar() const override;
    void assignAll(const DzProperty* model) override;

private:
    void assignValue(const DzTexturePtr& value);

    DzTexturePtr m_value;
};
