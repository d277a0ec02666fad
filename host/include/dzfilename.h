// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>

/// Lets file names be any bytes: those that are no UTF-8 become single surrogates in texts, which
/// no UTF-8 stands for, and the same bytes again in file names. A program calls this once, at its
/// start; all that Qt takes for text of the system is UTF-8 from then on.
void dzUseByteFileNames();

/// The text as it can be shown on one line: control characters, line ends, marks that turn the
/// direction of writing and bytes that are no text are escaped ("\n", "\x1b", "\u202e").
QString dzShownText(const QString& text);
/// The same for a name, cut to a length that a person still reads.
QString dzShownName(const QString& name);
