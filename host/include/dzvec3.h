// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Three single-precision components.
class DzVec3
{
public:
    DzVec3() {}
    DzVec3(float x, float y, float z)
        : m_x(x)
        , m_y(y)
        , m_z(z)
    {
    }

    bool operator==(const DzVec3& other) const
    {
        return m_x == other.m_x && m_y == other.m_y && m_z == other.m_z;
    }
    bool operator!=(const DzVec3& other) const { return !(*this == other); }

    float m_x = 0;
    float m_y = 0;
    float m_z = 0;
};
