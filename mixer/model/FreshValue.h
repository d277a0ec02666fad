// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

class DzProperty;

/// The same value of a new brick of the class; null when new ones do not have it. Owned by the
/// catalogue.
const DzProperty* freshValueOf(const DzProperty* property);

/// True for a value that is as a new brick of the class has it. Not the same as its being the
/// default: a value may start with another one.
bool isFreshValue(const DzProperty* property);
