// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ProblemFinder.h"

class DzBrickParam;
class NetworkEdit;

/// What is offered to a user, such as "Set index to 1.5".
QString remedyText(const Problem& problem, const lux::Remedy& remedy);

/// The input that a remedy links something to, which the user chooses; null for other remedies.
DzBrickParam* inputToLink(const Problem& problem, const lux::Remedy& remedy);

/// The same remedies of all problems of this one's rule, each with its own brick: those that one
/// step can do without asking for anything.
QVector<Problem> alikeOf(
    const Problem& problem, const lux::Remedy& remedy, const QVector<Problem>& all);

/// Does for each of the problems what its own remedy of this kind says, as one undo step. `file` is
/// the one that the user chose. False, with the reason in `error`, when nothing could be done;
/// locked values stay as they are.
bool applyRemedy(NetworkEdit* edit, const QVector<Problem>& problems, const lux::Remedy& remedy,
    const QString& file, QString* error);
