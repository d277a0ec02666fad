// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Document.h"

#include <QPair>
#include <QString>
#include <QVector>

namespace lux {

/// How bad a finding is, the worst first.
enum class Severity {
    Crash,       ///< the renderer ends
    Refused,     ///< the scene or the statement is not loaded
    Surprising,  ///< valid, and not what the value's name says
    Ignored,     ///< a line is not read
    Portability, ///< another renderer does it differently
};

/// "crash", "refused", "surprising", "ignored", "portability".
QString severityWord(Severity severity);

/// Something that a program can do for the user, as data.
struct Remedy {
    enum Action {
        Set,            ///< give the parameters of `values` these values
        LinkTexture,    ///< link a texture to `parameter`
        LinkMaterial,   ///< link a material to `parameter`
        ChooseFile,     ///< ask for a file for `parameter`
        InsertImageMap, ///< put an image map before `parameter`, with its image
        UseSlashes,     ///< turn the backslashes of `parameter` into slashes
    };

    Action action = Set;
    QString parameter;
    /// Name and value as the text has it: numbers with blanks between them, words without quotes.
    QVector<QPair<QString, QString>> values;
};

/// The remedy's action as data files have it, such as "link a texture".
QString remedyWord(Remedy::Action action);
/// The action of such a word; false if there is none.
bool findRemedy(const QString& word, Remedy::Action* action);

/// What the check has to say of one place.
struct Finding {
    /// The same for all findings of a kind, for "fix all like this" and "never tell me again".
    QString rule;
    Severity severity = Severity::Ignored;
    /// True if nothing is lost as things are: not to be shown unasked.
    bool isQuiet = false;
    /// The statement: its keyword, the name that it defines or uses, and the kind of thing.
    QString keyword;
    QString name;
    QString type;
    /// Empty if the finding is of the whole statement.
    QString parameter;
    QString value;
    /// Which of the scene's documents, where in it.
    int document = 0;
    Span span;
    Place place;
    /// What happens, in an artist's words, and what to do.
    QString sentence;
    QString advice;
    QVector<Remedy> remedies;
    /// Renderer, version and how it is known.
    QString source;
};

} // namespace lux
