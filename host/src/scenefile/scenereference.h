// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// The plain text of a reference or of a part of it. A percent sign stands for a byte before two
/// hexadecimal digits and for itself elsewhere: some programs write names as they are.
QString decodedReference(const QString& reference);
/// A part of a reference in which everything but letters, digits and `- . _` is escaped.
QString encodedReference(const QString& text);

/// A plain file name as the host's documents refer to it, and back.
QString imageReference(const QString& filename);
QString imageFilename(const QString& reference);

/// "#id" of a reference: the id, decoded; empty when it has none.
QString referencedId(const QString& reference);
/// True for a reference into the same document.
bool isLocalReference(const QString& reference);
