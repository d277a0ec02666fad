// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string_view>

namespace lux {

/// The words that begin a statement. `Loose` stands for parameters without one.
enum class Keyword : std::uint8_t {
    Accelerator,
    AreaLightSource,
    AttributeBegin,
    AttributeEnd,
    Camera,
    ConcatTransform,
    CoordSysTransform,
    CoordinateSystem,
    Exterior,
    Film,
    Identity,
    Include,
    Interior,
    LightGroup,
    LightSource,
    LookAt,
    MakeNamedMaterial,
    MakeNamedVolume,
    Material,
    MotionBegin,
    MotionEnd,
    MotionInstance,
    NamedMaterial,
    ObjectBegin,
    ObjectEnd,
    ObjectInstance,
    PixelFilter,
    PortalInstance,
    PortalShape,
    Renderer,
    ReverseOrientation,
    Rotate,
    Sampler,
    Scale,
    SearchPath,
    Shape,
    SurfaceIntegrator,
    Texture,
    Transform,
    TransformBegin,
    TransformEnd,
    Translate,
    Volume,
    VolumeIntegrator,
    WorldBegin,
    WorldEnd,
    Loose,
};

/// What follows a keyword: `head` is read letter by letter, "s" a string, "n" a number, "a" an
/// array of numbers; then parameters, if it takes any.
struct StatementForm {
    std::string_view word;
    std::string_view head;
    bool takesParameters;
};

const StatementForm& formOf(Keyword keyword);

/// The keyword that a word is; false when it is none. Capitals count.
bool findKeyword(std::string_view word, Keyword* keyword);

} // namespace lux
