// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QStringList>

/// The lamps whose spectrum the renderer knows, in the order in which their numbers are stored.
QStringList lampPresets();
