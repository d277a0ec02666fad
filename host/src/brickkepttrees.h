// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzsettings.h"
#include "dzshaderbrick.h"

#include <memory>

struct DzShaderBrick::KeptTrees {
    std::unique_ptr<DzSettings> brick;
    std::unique_ptr<DzSettings> attributes;
    std::unique_ptr<DzSettings> properties;
    std::unique_ptr<DzSettings> parameters;
};
