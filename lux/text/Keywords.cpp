// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Keywords.h"

#include <algorithm>
#include <iterator>

namespace lux {

namespace {

// In the order of the enumeration, which is that of the letters: words are found by halving.
constexpr StatementForm forms[] = {
    { "Accelerator", "s", true },
    { "AreaLightSource", "s", true },
    { "AttributeBegin", "", false },
    { "AttributeEnd", "", false },
    { "Camera", "s", true },
    { "ConcatTransform", "a", false },
    { "CoordSysTransform", "s", false },
    { "CoordinateSystem", "s", false },
    { "Exterior", "s", false },
    { "Film", "s", true },
    { "Identity", "", false },
    { "Include", "s", false },
    { "Interior", "s", false },
    { "LightGroup", "s", true },
    { "LightSource", "s", true },
    { "LookAt", "nnnnnnnnn", false },
    { "MakeNamedMaterial", "s", true },
    { "MakeNamedVolume", "ss", true },
    { "Material", "s", true },
    { "MotionBegin", "a", false },
    { "MotionEnd", "", false },
    { "MotionInstance", "snns", false },
    { "NamedMaterial", "s", false },
    { "ObjectBegin", "s", false },
    { "ObjectEnd", "", false },
    { "ObjectInstance", "s", false },
    { "PixelFilter", "s", true },
    { "PortalInstance", "s", false },
    { "PortalShape", "s", true },
    { "Renderer", "s", true },
    { "ReverseOrientation", "", false },
    { "Rotate", "nnnn", false },
    { "Sampler", "s", true },
    { "Scale", "nnn", false },
    { "SearchPath", "s", false },
    { "Shape", "s", true },
    { "SurfaceIntegrator", "s", true },
    { "Texture", "sss", true },
    { "Transform", "a", false },
    { "TransformBegin", "", false },
    { "TransformEnd", "", false },
    { "Translate", "nnn", false },
    { "Volume", "s", true },
    { "VolumeIntegrator", "s", true },
    { "WorldBegin", "", false },
    { "WorldEnd", "", false },
};

constexpr StatementForm looseForm = { "", "", true };

} // namespace

const StatementForm& formOf(Keyword keyword)
{
    return keyword == Keyword::Loose ? looseForm : forms[static_cast<std::size_t>(keyword)];
}

bool findKeyword(std::string_view word, Keyword* keyword)
{
    const auto* const found = std::lower_bound(std::begin(forms), std::end(forms), word,
        [](const StatementForm& form, std::string_view sought) { return form.word < sought; });
    if (found == std::end(forms) || found->word != word)
        return false;
    *keyword = static_cast<Keyword>(found - std::begin(forms));
    return true;
}

} // namespace lux
