// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Inputs.h"

#include <algorithm>

namespace lux {

int Inputs::find(ParameterType type, const char* name) const
{
    for (int i = m_statement.parameterCount() - 1; i >= 0; --i) {
        const Parameter parameter = m_statement.parameter(i);
        if (parameter.type() == type && parameter.name() == name)
            return i;
    }
    return -1;
}

std::vector<double> Inputs::numbers(ParameterType type, const char* name) const
{
    const int place = find(type, name);
    return place < 0 ? std::vector<double>() : m_statement.parameter(place).numbers();
}

Rgb Inputs::triple(ParameterType type, const char* name, const Rgb& fallback) const
{
    const std::vector<double> values = numbers(type, name);
    return values.size() == 3 ? Rgb { { values[0], values[1], values[2] } } : fallback;
}

std::string Inputs::text(ParameterType type, const char* name, const char* fallback) const
{
    const int place = find(type, name);
    const bool fits = place >= 0 && m_statement.parameter(place).valueCount() == 1;
    return fits ? m_statement.parameter(place).text() : std::string(fallback);
}

double Inputs::number(const char* name, double fallback) const
{
    const std::vector<double> values = numbers(ParameterType::Float, name);
    return values.size() == 1 ? values[0] : fallback;
}

int Inputs::integer(const char* name, int fallback) const
{
    const std::vector<double> values = numbers(ParameterType::Integer, name);
    // Far beyond any count, and safe to convert.
    return values.size() == 1 ? static_cast<int>(std::max(-1e9, std::min(1e9, values[0])))
                              : fallback;
}

bool Inputs::flag(const char* name, bool fallback) const
{
    return text(ParameterType::Bool, name, fallback ? "true" : "false") == "true";
}

std::string Inputs::string(const char* name, const char* fallback) const
{
    return text(ParameterType::String, name, fallback);
}

Rgb Inputs::vector(const char* name, const Rgb& fallback) const
{
    return triple(ParameterType::Vector, name, fallback);
}

std::vector<double> Inputs::numbers(const char* name) const
{
    return numbers(ParameterType::Float, name);
}

Rgb Inputs::color(const char* name, const Rgb& fallback) const
{
    return triple(ParameterType::Color, name, fallback);
}

bool Inputs::hasTexture(const char* name) const
{
    return find(ParameterType::Texture, name) >= 0;
}

std::string Inputs::textureName(const char* name) const
{
    return text(ParameterType::Texture, name, "");
}

Term Inputs::floatTerm(const char* name, double fallback) const
{
    const auto found = m_textures.floats.find(textureName(name));
    return found != m_textures.floats.end() ? found->second : Term(number(name, fallback));
}

Term Inputs::colorTerm(const char* name, const Rgb& fallback) const
{
    const auto found = m_textures.colors.find(textureName(name));
    return found != m_textures.colors.end() ? found->second : Term(color(name, fallback));
}

FresnelTerm Inputs::fresnelTerm(const char* name, double fallback) const
{
    const auto found = m_textures.fresnels.find(textureName(name));
    return found != m_textures.fresnels.end() ? found->second : FresnelTerm(number(name, fallback));
}

} // namespace lux
