// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

/// The text of a LuxRender material file: one object as a script writes it down.
namespace MaterialText {

/// How deep lists and objects may stand in one another.
const int maximumDepth = 100;
/// How many values a text may hold; evaluating that many takes a moment and some 200 MB.
const int maximumValues = 100000;

/// True when the text is nothing but data: objects, lists, strings, numbers and the words for
/// constants, with comments between, within the limits above. Evaluating such a text takes time and
/// memory in proportion to its length; anything else in a file, such as a call or a loop, might
/// never end, fill the memory or overflow the stack, and a script engine cannot always be stopped.
bool isData(const QByteArray& text);

/// Evaluates the text, taken as Latin-1, in a script engine of its own. True when it is data and
/// its value is an object.
bool isObject(const QByteArray& text);

} // namespace MaterialText
