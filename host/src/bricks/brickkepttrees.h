// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzshaderbrick.h"
#include "settingstree.h"

#include <memory>

struct DzShaderBrick::KeptTrees {
    std::unique_ptr<SettingsTree> brick;
    std::unique_ptr<SettingsTree> attributes;
    std::unique_ptr<SettingsTree> properties;
    std::unique_ptr<SettingsTree> parameters;
};
