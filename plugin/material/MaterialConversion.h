// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>

class VireoBrickUser;

/// Puts a network on every selected surface of the scene, as one undo step: its text, the values
/// that the text refers to, and the network itself. Without a selected surface a message tells so.
void applyToSelectedMaterials(VireoBrickUser* user);

/// A new brick user for every selected surface: from the network that it keeps, or from its type
/// and properties. The caller owns them.
QList<VireoBrickUser*> convertSelectedMaterials();
