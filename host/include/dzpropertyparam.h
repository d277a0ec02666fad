// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"

/// A parameter over one property.
class DzPropertyParam : public DzBrickParam
{
    Q_OBJECT

public:
    DzPropertyParam();
    /// Deletes the property.
    ~DzPropertyParam() override;

    /// Sets the property, taking ownership, with the argument names of its value and its map.
    void setProperty(DzProperty* property, const QString& arg, const QString& mapArg);
    void setDirection(int direction) { changeDirection(direction); }

    QString getArg(int index) const override;
    Q_INVOKABLE QString getMapArg() const { return m_mapArg; }
    int getNumProperties() const override { return m_property ? 1 : 0; }
    DzProperty* getProperty(int index) const override;
    int getPropertyMapToken(int index) const override;
    QString getStringValue(int index) const override;
    int getType() const override;
    bool canConnect(DzBrickParam* other) const override;

protected:
    void nameFollowed(const QString& before) override;

private:
    DzProperty* m_property = nullptr;
    QString m_arg;
    QString m_mapArg;
    int m_type = UnknownType;
};
