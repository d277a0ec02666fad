// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Document.h"
#include "Terms.h"

#include <QString>
#include <map>
#include <string>
#include <vector>

namespace lux {

/// The textures that were defined so far. As in the renderer, each kind has names of its own and
/// the last definition of a name wins.
struct TextureNames {
    std::map<std::string, Term> floats;
    std::map<std::string, Term> colors;
    std::map<std::string, FresnelTerm> fresnels;
};

/// Reads the parameters of a statement as the renderer does: by type and name, the last of equal
/// ones, a texture before a value, and a default where neither is there or fits.
class Inputs
{
public:
    Inputs(const Statement& statement, const TextureNames& textures)
        : m_statement(statement)
        , m_textures(textures)
    {
    }

    /// Values that take no texture.
    double number(const char* name, double fallback) const;
    int integer(const char* name, int fallback) const;
    bool flag(const char* name, bool fallback) const;
    std::string string(const char* name, const char* fallback) const;
    Rgb vector(const char* name, const Rgb& fallback) const;
    std::vector<double> numbers(const char* name) const;
    Rgb color(const char* name, const Rgb& fallback) const;

    /// A value or a texture.
    Term floatTerm(const char* name, double fallback) const;
    Term colorTerm(const char* name, const Rgb& fallback) const;
    Term colorTerm(const char* name, double gray) const
    {
        return colorTerm(name, Rgb { { gray, gray, gray } });
    }
    FresnelTerm fresnelTerm(const char* name, double fallback) const;
    /// True if a texture of this name is named, whether it exists or not.
    bool hasTexture(const char* name) const;

private:
    /// The place of the last parameter of this type and name; -1 without one.
    int find(ParameterType type, const char* name) const;
    std::vector<double> numbers(ParameterType type, const char* name) const;
    Rgb triple(ParameterType type, const char* name, const Rgb& fallback) const;
    std::string text(ParameterType type, const char* name, const char* fallback) const;
    std::string textureName(const char* name) const;

    Statement m_statement;
    const TextureNames& m_textures;
};

} // namespace lux
