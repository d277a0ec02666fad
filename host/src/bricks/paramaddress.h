// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"

#include <QPointer>

/// A parameter as an undo step knows it. While there is an address of it, a parameter that is taken
/// off its brick stays in memory, so that the very same one comes back: a step never meets another
/// of the same name.
class ParamAddress
{
public:
    ParamAddress() {}
    explicit ParamAddress(DzBrickParam* param) { set(param); }
    ParamAddress(const ParamAddress& other) { set(other.m_param); }
    ParamAddress& operator=(const ParamAddress& other);
    ~ParamAddress() { release(); }

    /// The parameter, on a brick or off; null when it is gone.
    DzBrickParam* get() const { return m_param; }
    /// The parameter if it is on a brick.
    DzBrickParam* find() const { return m_param && m_param->getTopBrickOwner() ? get() : nullptr; }
    bool operator==(const ParamAddress& other) const { return m_param == other.m_param; }

private:
    void set(DzBrickParam* param);
    void release();

    QPointer<DzBrickParam> m_param;
};
