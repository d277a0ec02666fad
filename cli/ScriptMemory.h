// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// From now on the program takes no more memory than the machine has, and ends with one line on
/// standard error and exit code 1 when a script wants more.
void limitScriptMemory();
