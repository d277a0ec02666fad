// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbrickparam.h"

#include <QString>

/// How far the link types of values are above the host's types, which they stand for. The sums are
/// stored in files, and the host uses none of these numbers itself.
const int linkTypeOffset = 1008;

/// What a link carries. Inputs and outputs can be linked when their types are equal.
enum LinkType {
    NoLink = 0, ///< a settings row
    MaterialLink = linkTypeOffset - 1,
    VolumeLink = linkTypeOffset,
    FloatLink = linkTypeOffset + DzBrickParam::FloatType,
    ColorLink = linkTypeOffset + DzBrickParam::ColorType,
    PointLink = linkTypeOffset + DzBrickParam::PointType,
    VectorLink = linkTypeOffset + DzBrickParam::VectorType,
    NormalLink = linkTypeOffset + DzBrickParam::NormalType,
    MatrixLink = linkTypeOffset + DzBrickParam::MatrixType,
    StringLink = linkTypeOffset + DzBrickParam::StringType,
    FresnelLink ///< a texture of optical constants, for which the host has no type
};

/// The link type that stands for a parameter type: the host's own value types become textures of
/// that type, every other type stays as it is.
inline int linkTypeFor(int paramType)
{
    return paramType <= DzBrickParam::StringType ? paramType + linkTypeOffset : paramType;
}

/// The host's type that a link type stands for; any other number stays as it is.
inline int hostTypeFor(int linkType)
{
    return linkType >= FloatLink && linkType <= StringLink ? linkType - linkTypeOffset : linkType;
}

inline bool isLinkType(int code)
{
    return code >= MaterialLink && code <= FresnelLink;
}

/// The name of a link type as users see it, such as "LuxMaterial"; empty for any other number.
QString linkTypeName(int code);

/// The name of a parameter's type as users see it, "[]" behind it for an array.
QString linkTypeText(const DzBrickParam* param);
