// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzBrickParam;

/// What a link carries. Inputs and outputs can be linked when their types are equal.
/// The numbers are stored in files.
enum LinkType {
    MaterialLink = 1007,
    VolumeLink = 1008,
    FloatLink = 1009, ///< a texture of the host's type 1; the following stand for types 2 to 7
    ColorLink = 1010,
    PointLink = 1011,
    VectorLink = 1012,
    NormalLink = 1013,
    MatrixLink = 1014,
    StringLink = 1015,
    FresnelLink = 1016
};

/// The link type that stands for a parameter type: the host's own value types become textures of
/// that type, every other type stays as it is.
inline int linkTypeFor(int paramType)
{
    return paramType <= 7 ? paramType + 1008 : paramType;
}

inline bool isLinkType(int code)
{
    return code >= MaterialLink && code <= FresnelLink;
}

/// The name of a link type as users see it, such as "LuxMaterial"; empty for any other number.
QString linkTypeName(int code);

/// The name of a parameter's type as users see it, "[]" behind it for an array.
QString linkTypeText(const DzBrickParam* param);
