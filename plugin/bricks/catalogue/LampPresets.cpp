// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "LampPresets.h"

QStringList lampPresets()
{
    // Networks store a lamp's place in this list: none may move. The renderer's words are spelt so.
    // clang-format off
    static const char* const names[] = {
        "Alcohol", "AntiInsect", "Ar", "BLAU", "BLNG", "BLP", "Butane",
        "Candle", "CarbonArc", "Cd", "CFL27K", "CFL4K", "CFL6K", "CL42053", "CobaltGlass",
        "Daylight", "FeCo", "FL37K", "FLAV17K", "FLAV8K", "FLBL", "FLBLB", "FLD2",
        "GaPb", "GreenLaser", "GroLux", "GRUN",
        "HPM2", "HPMFL1", "HPMFL2", "HPMFL2Glow", "HPMFLCL42053", "HPMFLCobaltGlass",
        "HPMFLRedGlass", "HPMSB", "HPMSBFL", "HPS", "HPX",
        "Incandescent1", "LCDS", "LEDB", "LPM2", "LPS",
        "MHD", "MHN", "MHSc", "MHWWD", "MPS",
        "Ne", "NeKrFL", "NeXeFL1", "NeXeFL2", "OliveOil", "PLANTA", "Rb", "RedGlass", "RedLaser",
        "SHPS", "SS1", "SS2", "TV", "UVA", "Welsbach", "Xe", "XeI", "Zn",
    };
    // clang-format on
    QStringList presets;
    for (const char* name : names)
        presets << QLatin1String(name);
    return presets;
}
