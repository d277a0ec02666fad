// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Spectra.h"

#include <algorithm>
#include <cmath>

namespace lux {

namespace {

// What the renderer takes for visible, and steps fine enough for its curves.
constexpr double firstWavelength = 380;
constexpr double lastWavelength = 720;
constexpr double step = 5;

template <typename Function>
Spectrum sampled(Function value)
{
    Spectrum spectrum;
    for (double wavelength = firstWavelength; wavelength <= lastWavelength; wavelength += step) {
        spectrum.wavelengths.push_back(wavelength);
        spectrum.values.push_back(value(wavelength));
    }
    return spectrum;
}

} // namespace

Spectrum blackBodySpectrum(double temperature)
{
    // Planck's law; hc/k in nanometres and kelvin. Only the shape counts.
    const double hcOverK = 1.438776877e7;
    const double kelvin = std::max(1.0, temperature);
    const auto exponent = [&](double wavelength) { return hcOverK / (wavelength * kelvin); };
    // By logarithms: cold bodies glow less than a double can say.
    const auto brightness = [&](double wavelength) {
        const double power = exponent(wavelength);
        const double denominator = power > 30 ? power : std::log(std::expm1(power));
        return -5 * std::log(wavelength) - denominator;
    };
    Spectrum spectrum = sampled(brightness);
    const double brightest = *std::max_element(spectrum.values.begin(), spectrum.values.end());
    for (double& value : spectrum.values)
        value = std::exp(value - brightest);
    return spectrum;
}

Spectrum gaussianSpectrum(double wavelength, double width, double energy)
{
    const double variance = std::max(1e-6, width * width);
    return sampled([&](double at) {
        const double distance = at - wavelength;
        return energy * std::exp(-distance * distance / (2 * variance));
    });
}

Spectrum frequencySpectrum(double frequency, double phase, double energy)
{
    return sampled([&](double at) { return energy * (std::sin(at * frequency + phase) + 1) / 2; });
}

Spectrum regularSpectrum(double start, double end, const std::vector<double>& data)
{
    Spectrum spectrum;
    if (data.size() < 2 || !(start < end))
        return spectrum;
    for (std::size_t i = 0; i < data.size(); ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(data.size() - 1);
        spectrum.wavelengths.push_back(start + share * (end - start));
    }
    spectrum.values = data;
    return spectrum;
}

Spectrum irregularSpectrum(const std::vector<double>& wavelengths, const std::vector<double>& data)
{
    std::vector<std::pair<double, double>> pairs;
    for (std::size_t i = 0; i < std::min(wavelengths.size(), data.size()); ++i)
        pairs.emplace_back(wavelengths[i], data[i]);
    std::stable_sort(pairs.begin(), pairs.end(),
        [](const auto& left, const auto& right) { return left.first < right.first; });
    Spectrum spectrum;
    for (const auto& pair : pairs) {
        // Two values at one wavelength: the first counts.
        if (!spectrum.wavelengths.empty() && spectrum.wavelengths.back() == pair.first)
            continue;
        spectrum.wavelengths.push_back(pair.first);
        spectrum.values.push_back(pair.second);
    }
    return spectrum;
}

} // namespace lux
