// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzproperty.h"
#include "dztexture.h"

/// A property with a numeric value, limits, and, when mappable, an image map.
class DzNumericProperty : public DzProperty
{
    Q_OBJECT

public:
    DzNumericProperty(const QString& name, bool canAnimate, bool isUserProperty);
    ~DzNumericProperty() override;

    bool isNumeric() const override { return true; }

    Q_INVOKABLE bool isMappable() const { return m_mappable; }
    /// Taking the mappability away clears the map.
    Q_INVOKABLE void setIsMappable(bool mappable);
    /// The map, null when there is none.
    Q_INVOKABLE DzTexture* getMapValue() const { return m_map; }
    /// True when there is a map with a file name.
    Q_INVOKABLE bool isMapped() const;
    /// Sets the map, as a user would; an empty name clears it. False when the property is not
    /// mappable or is locked.
    Q_INVOKABLE bool setMap(const QString& filename);
    Q_INVOKABLE bool setMap(const DzTexture* texture);
    Q_INVOKABLE void clearMap() { setMap(QString()); }

    /// A clamped property holds values within its limits only.
    Q_INVOKABLE bool isClamped() const { return m_clamped; }
    Q_INVOKABLE void setIsClamped(bool clamped);

    Q_INVOKABLE virtual double getDoubleValue() const = 0;
    Q_INVOKABLE virtual void setDoubleValue(double value) = 0;
    Q_INVOKABLE virtual double getDoubleDefaultValue() const = 0;

    void getAttributes(DzPropertySettings* settings) const override;
    bool isDescribedLike(const DzProperty* other) const override;
    bool readAttribute(const SettingsTree& settings, const QString& key) override;

signals:
    void mapChanged();
    void isMappableChanged();
    void clampedChanged(bool clamped);
    void minMaxChanged();

protected:
    void takeFrom(const DzProperty* other) override;
    /// Makes a change of limits, clamping or default, with one undo item for all that follows.
    virtual void changeLimits(const std::function<void()>& change) = 0;
    /// Switches clamping without bringing anything within the limits.
    void restoreClamped(bool clamped);
    /// Brings value and default within the limits after clamping was switched on or they changed.
    virtual void applyClamping() = 0;
    /// Writes limits, value and default between the numeric members and the map.
    virtual void getValueAttributes(DzPropertySettings* settings) const = 0;
    /// Copies the value of a property of the same class.
    virtual void copyValueFrom(const DzNumericProperty* other) = 0;
    void assignAll(const DzProperty* model) override;

private:
    void assignMap(const DzTexturePtr& map);
    void assignMappable(bool mappable, const DzTexturePtr& map);
    void assignClamped(bool clamped);

    DzTexturePtr m_map;
    bool m_mappable = false;
    bool m_clamped = false;
};
