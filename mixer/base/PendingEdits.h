// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Takes what is still being typed into a field as entered: call it before anything that reads
/// networks as a whole, such as saving. The keyboard stays where it is.
void commitPendingEdits();
