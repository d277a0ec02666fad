// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scenereader.h"

#include <QByteArray>
#include <vector>

/// Gives surfaces that share one entry of a document, for it names several groups, entries of
/// their own where they were changed in different ways.
///
/// Returns false when none need any. Otherwise `text` is the document with these entries, in which
/// all surfaces are as they were read, and `order` tells which record each of its surfaces was.
/// `text` is null when it gets too large.
bool splitSurfaces(const JsonIndex& index, const SurfaceRecords& surfaces, QByteArray* text,
    std::vector<std::size_t>* order);
