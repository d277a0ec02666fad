// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonindex.h"
#include "jsontext.h"

#include <QByteArray>
#include <QString>
#include <map>
#include <utility>
#include <vector>

class DzSettings;

/// A number as the host prints it, with seven digits. A single-precision number that these do not
/// hold gets as many as it needs; what is no number becomes 0, an infinite one the largest.
QByteArray jsonNumberToken(double number);
/// A number with seven digits, whether they hold it or not.
QByteArray jsonRoundedToken(double number);
QByteArray jsonBooleanToken(bool value);

/// A new piece of JSON: a finished token, or an object or array of pieces.
struct JsonPiece {
    enum Kind { Token, Object, Array };

    static JsonPiece token(const QByteArray& text);
    static JsonPiece object();
    static JsonPiece array();
    /// Adds a member; returns this.
    JsonPiece& add(const char* key, JsonPiece value);
    JsonPiece& add(const char* key, const QByteArray& tokenText);
    JsonPiece& addItem(JsonPiece value);

    Kind kind = Token;
    QByteArray text; ///< of a Token
    /// Members and items; keys are tokens and empty in an array.
    std::vector<std::pair<QByteArray, JsonPiece>> children;
};

/// The object that the host's files hold for a settings tree, which fits into JSON.
JsonPiece jsonPieceOf(const DzSettings& settings);

/// How a text is laid out: its indentation, line ends and the sign between key and value.
struct JsonStyle {
    QByteArray unit = "\t";
    QByteArray lineEnd = "\n"; ///< empty in a text without lines
    QByteArray separator = " : ";

    static JsonStyle of(const JsonIndex& index);
    bool hasLines() const { return !lineEnd.isEmpty(); }
    /// The piece's text; its lines but the first begin with `indent`.
    QByteArray write(const JsonPiece& piece, const QByteArray& indent) const;
    QByteArray inlineText(const JsonPiece& piece) const;
};

/// Gathers changes to a text and makes the new one, in which everything else is as it was. Changes
/// inside of something that is removed go with it.
class JsonEditor
{
public:
    explicit JsonEditor(const JsonIndex& index);

    bool isEmpty() const { return m_edits.empty() && m_containers.empty(); }
    /// Puts a token in a value's place.
    void replace(JsonIndex::Value value, const QByteArray& token);
    /// Puts a new piece in a value's place.
    void replace(JsonIndex::Value value, const JsonPiece& piece);
    /// Takes a value out of its array or object.
    void remove(JsonIndex::Value value, JsonIndex::Value parent);
    /// Puts a piece behind a child, at the beginning for `none`. `key` is null in an array.
    void insertAfter(
        JsonIndex::Value parent, JsonIndex::Value child, const char* key, const JsonPiece& piece);
    void append(JsonIndex::Value parent, const char* key, const JsonPiece& piece);
    /// True when nothing of the array or object would be left.
    bool becomesEmpty(JsonIndex::Value parent) const;
    /// True for an array or object that was empty before this program put something in: two blanks
    /// stand before what had been between its signs. Emptied again it gets its old bytes.
    bool wasEmptyOnce(JsonIndex::Value parent) const;

    /// The new text; null when it is too large.
    QByteArray apply();

private:
    struct Edit {
        int begin;
        int end;
        QByteArray text;
    };
    struct Insertion {
        JsonIndex::Value after;
        QByteArray text;
    };
    struct Container {
        std::vector<JsonIndex::Value> removed; ///< in any order
        std::vector<Insertion> inserted;
    };

    bool beginsLine(int offset) const;
    QByteArray lineIndent(int offset) const;
    /// Indentation of a container's children; `isInline` when they stand in one line.
    QByteArray childIndent(JsonIndex::Value parent, bool* isInline) const;
    void finish(JsonIndex::Value parent, const Container& container);
    /// What stands between the last child, or the opening sign, and the closing one.
    QByteArray tailOf(JsonIndex::Value parent) const;
    void fillEmpty(JsonIndex::Value parent, const std::vector<Insertion>& inserted);
    void addEdit(int begin, int end, const QByteArray& text);

    const JsonIndex& m_index;
    JsonStyle m_style;
    std::vector<Edit> m_edits;
    std::map<JsonIndex::Value, Container> m_containers;
};
