// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

/// Where the values of a JSON text stand. The text stays as it is; values are read from it when
/// they are asked for, so that a large text costs little more than itself.
///
/// A value is told by a number, `none` stands for no value, and every function takes `none`.
class JsonIndex
{
public:
    typedef quint32 Value;
    static const Value none = 0xffffffffu;

    /// An array of numbers only, empty ones aside, is one value without children.
    enum Kind : quint8 { Null, Boolean, Number, String, Array, Object, NumberArray };

    /// Reads a text whose outermost value is an object. On failure false, with place and cause in
    /// `error`.
    bool build(const QByteArray& text, QString* error);

    const QByteArray& text() const { return m_text; }
    Value root() const { return m_entries.empty() ? none : 0; }

    Kind kind(Value value) const { return value == none ? Null : m_entries[value].kind; }
    bool isObject(Value value) const { return kind(value) == Object; }
    bool isArray(Value value) const { return kind(value) == Array; }
    bool isString(Value value) const { return kind(value) == String; }
    bool isNumber(Value value) const { return kind(value) == Number; }

    /// First byte of the value, and the one behind its last.
    int begin(Value value) const { return static_cast<int>(m_entries[value].begin); }
    int end(Value value) const { return static_cast<int>(m_entries[value].end); }
    /// The same as begin() but for a member of an object: there the key's first byte.
    int memberBegin(Value value) const;

    /// The values in an array or object, in order: from firstChild(), by nextSibling().
    Value firstChild(Value parent) const;
    Value nextSibling(Value child, Value parent) const;
    int countChildren(Value parent) const;

    /// The first member of this name, `none` when the value has none or is no object.
    Value find(Value object, const char* key) const;
    bool hasKey(Value member, const char* key) const;
    QString key(Value member) const;

    /// The text of a string; empty for other kinds.
    QString string(Value value) const;
    /// The number, 0 for other kinds.
    double number(Value value) const;
    bool boolean(Value value) const;
    /// Up to `size` numbers of an array of numbers; returns how many the array has.
    int numbers(Value value, double* numbers, int size) const;
    /// The value's own bytes.
    QByteArray raw(Value value) const;
    /// "line 3, column 7" of a value.
    QString place(Value value) const;

private:
    friend class JsonIndexBuilder;

    struct Entry {
        quint32 begin;
        quint32 end;
        quint32 key;  ///< of the key's first byte; 0 for none
        quint32 next; ///< index after this value and all inside it
        Kind kind;
    };

    QString stringAt(quint32 begin, quint32 end) const;

    QByteArray m_text;
    std::vector<Entry> m_entries;
};
