// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Prepares the program for running a script. From now on it takes no more memory than the machine
/// can spare, and ends with one line on standard error and exit code 1 when a script wants more, or
/// when the script engine crashes, where nothing can be caught.
void guardAgainstScript();
