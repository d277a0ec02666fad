// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The value of a number as people type it: a number, or arithmetic such as "2*0.3+1",
/// "sqrt(2)/2" or "_pi/4". A single decimal comma is read as a point. On failure false, with the
/// cause in `error`; a result that is not finite is a failure.
bool evaluateNumber(const QString& text, double* value, QString* error);
