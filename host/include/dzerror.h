// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Result of operations that can fail; DZ_NO_ERROR on success.
typedef int DzError;

enum DzErrorCode {
    DZ_NO_ERROR = 0,
    DZ_ILLEGAL_ARGUMENT_ERROR = 1, ///< a null or unsuitable argument
    DZ_REFUSED_ERROR = 2           ///< the object does not allow this change
};
