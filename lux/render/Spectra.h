// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

namespace lux {

/// Values at ascending wavelengths, in nanometres.
struct Spectrum {
    std::vector<double> wavelengths;
    std::vector<double> values;
};

/// A body that glows at so many kelvin, 1 at its brightest visible wavelength.
Spectrum blackBodySpectrum(double temperature);
/// A bell around a wavelength; `width` is its standard deviation, both in nanometres.
Spectrum gaussianSpectrum(double wavelength, double width, double energy);
/// A sine over the wavelengths, between 0 and `energy`.
Spectrum frequencySpectrum(double frequency, double phase, double energy);
/// Values at even steps from `start` to `end`.
Spectrum regularSpectrum(double start, double end, const std::vector<double>& data);
/// Pairs, put in order; what has no partner is left out.
Spectrum irregularSpectrum(const std::vector<double>& wavelengths, const std::vector<double>& data);

} // namespace lux
