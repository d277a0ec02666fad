// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class AutosaveStore;
class DocumentController;
class QWidget;
class SceneController;

/// Offers what was left when the program ended without warning, networks and scenes. Returns how
/// many were opened.
int offerRestore(
    AutosaveStore* store, DocumentController* documents, SceneController* scene, QWidget* window);
