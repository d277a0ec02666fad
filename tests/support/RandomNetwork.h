// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "VireoBrickUser.h"

#include <QtGlobal>

/// Fills an empty brick user with a network that depends on nothing but `seed`: bricks of any
/// class around a root, values, locks, maps, custom inputs, numbered pairs and links of all kinds.
void buildRandomNetwork(VireoBrickUser* user, quint32 seed);
