// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Finding.h"
#include "ProblemLevel.h"

#include <QPointer>
#include <QString>
#include <QVector>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;

/// Something about a network that a person should look at. It changes nothing of the text.
struct Problem {
    enum Kind {
        NoRoot,
        SeveralRoots,
        UnreachableBrick,
        WithoutEffect,
        MissingFile,
        SeveralLinks,
        UnknownBrick,
        UnwritableText,
        NotFinite,
        Rendering ///< what the renderer does with the text
    };

    Kind kind;
    /// The brick that it leads to; null for one of the whole network.
    QPointer<DzShaderBrick> brick;
    /// What is wrong and what to do, in one line.
    QString text;
    /// The value that it is about; null where it is about none.
    QPointer<DzProperty> property = {};
    ProblemLevel level = ProblemLevel::Warns;
    /// The same for all problems of a sort; empty for those that are always told.
    QString rule = {};
    /// What can be done at once, the best first. Parameters are those of the brick.
    QVector<lux::Remedy> remedies = {};
};

/// The problems of a network, in order of its bricks. File names that are not absolute are looked
/// for in `folder` and where the program runs. The cost is that of writing the text twice; each
/// file is asked for once.
QVector<Problem> findProblems(const IDzBrickUser* user, const QString& folder);

/// The longest text that the renderer's format can carry, in bytes.
const int longestWritableText = 1023;

/// True when a text can stand in quotes in the renderer's format. Otherwise `cause` says why not.
bool isWritableText(const QString& text, QString* cause);
