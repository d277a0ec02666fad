// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

class DzElement;

/// The key under which the host keeps a brick user's bricks and links, in files and settings.
QString networkKey();

/// True when an item of data that travels with the element holds a network, whoever put it there.
bool keepsNetwork(const DzElement* element);
