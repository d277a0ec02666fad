// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "PropertyText.h"

#include <array>

namespace lux {

typedef std::array<double, 3> Rgb;

/// What a LuxCore property takes for a texture: the name of one, or a constant.
struct Term {
    Term() = default;
    Term(double value)
        : text(propertyNumber(value))
        , isConstant(true)
        , color { { value, value, value } }
    {
    }
    Term(const Rgb& value)
        : text(propertyNumbers({ value[0], value[1], value[2] }))
        , isConstant(true)
        , color(value)
    {
    }
    static Term named(const QByteArray& name)
    {
        Term term;
        term.text = name;
        return term;
    }

    /// True for this number in all three components.
    bool is(double value) const { return isConstant && color == Rgb { { value, value, value } }; }
    /// A constant's three numbers, which some properties insist on.
    QByteArray triple() const { return propertyNumbers({ color[0], color[1], color[2] }); }

    QByteArray text = "0";
    bool isConstant = false;
    Rgb color = { { 0, 0, 0 } }; ///< of a constant
    /// The image of a normal map, which LuxCore has as a property of materials. Empty in others.
    QByteArray normalImage;
};

/// A fresnel texture: what LuxCore has as one, and always also index and absorption as textures,
/// of which mixes of fresnel textures are made.
struct FresnelTerm {
    FresnelTerm() = default;
    /// A constant index without absorption.
    explicit FresnelTerm(double value)
        : n(value)
        , k(0.0)
        , index(value)
    {
    }

    QByteArray name; ///< of LuxCore's fresnel texture; empty where it has none of the kind
    Term n;
    Term k;
    double index = 1;   ///< at the yellow line of sodium, 587.6 nm, for volumes
    double cauchyB = 0; ///< dispersion in square micrometres: n = A + B / λ²
};

} // namespace lux
