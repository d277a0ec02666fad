// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzplugin.h"
#include "dzversion.h"

#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))
