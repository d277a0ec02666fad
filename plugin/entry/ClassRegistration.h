// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class DzPlugin;

/// Adds a factory for every class that the host may make by name, in the order in which it lists
/// them.
void registerClasses(DzPlugin* plugin);
