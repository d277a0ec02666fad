// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// From now on a program that runs out of memory, where nobody catches std::bad_alloc, ends with
/// the line `message` on standard error and exit code 1 instead of by a signal. `message` ends with
/// a line end and stays the caller's; a later call replaces it.
void dzReportOutOfMemory(const char* message);

/// Ends the program as dzReportOutOfMemory() promises it. Neither takes memory nor returns.
[[noreturn]] void dzEndOutOfMemory();
