// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MaterialText.h"

#include <QScriptEngine>
#include <cstring>

namespace {

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWordStart(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

/// Goes through a text once, with a stack of its own.
class DataScanner
{
public:
    explicit DataScanner(const QByteArray& data)
        : position(data.constData())
        , end(position + data.size())
        , expected(Value)
        , numValues(0)
    {
    }

    bool scan()
    {
        while (skipBlanks()) {
            if (position == end)
                return expected == TextEnd;
            if (!takeToken())
                return false;
        }
        return false;
    }

private:
    enum Expected { Value, ValueOrEnd, NameOrEnd, Colon, CommaOrEnd, TextEnd };

    char current() const { return position < end ? *position : '\0'; }

    bool take(char c)
    {
        if (position == end || *position != c)
            return false;
        ++position;
        return true;
    }

    /// Skips blanks and comments; false at a comment that does not end, or is none.
    bool skipBlanks()
    {
        while (position < end) {
            if (std::strchr(" \t\v\f\n\r", *position) && *position)
                ++position;
            else if (*position != '/')
                break;
            else if (!skipComment())
                return false;
        }
        return true;
    }

    bool skipComment()
    {
        ++position;
        if (take('/')) {
            while (position < end && !isLineEnd(*position))
                ++position;
            return true;
        }
        if (!take('*'))
            return false;
        while (position < end)
            if (*position++ == '*' && take('/'))
                return true;
        return false;
    }

    bool takeToken()
    {
        switch (expected) {
        case Value:
            return takeValue();
        case ValueOrEnd:
            return current() == ']' ? close() : takeValue();
        case NameOrEnd:
            return current() == '}' ? close() : takeName();
        case Colon:
            expected = Value;
            return take(':');
        case CommaOrEnd:
            if (current() == closers.at(closers.size() - 1))
                return close();
            expected = current() == ',' ? afterComma() : TextEnd;
            return take(',');
        case TextEnd:
            return take(';');
        }
        return false;
    }

    Expected afterComma() const { return closers.endsWith('}') ? NameOrEnd : ValueOrEnd; }

    bool open(char closer, Expected next)
    {
        ++position;
        closers.append(closer);
        expected = next;
        return closers.size() <= MaterialText::maximumDepth;
    }

    bool close()
    {
        ++position;
        closers.chop(1);
        valueTaken();
        return true;
    }

    void valueTaken() { expected = closers.isEmpty() ? TextEnd : CommaOrEnd; }

    bool takeName()
    {
        expected = Colon;
        if (current() == '"' || current() == '\'')
            return takeString();
        if (isWordStart(current())) {
            takeWord();
            return true;
        }
        return takeNumber();
    }

    bool takeValue()
    {
        if (++numValues > MaterialText::maximumValues)
            return false;
        if (current() == '{')
            return open('}', NameOrEnd);
        if (current() == '[')
            return open(']', ValueOrEnd);
        const bool isTaken = current() == '"' || current() == '\'' ? takeString()
            : isWordStart(current())                               ? isConstant(takeWord())
                                                                   : takeSignedNumber();
        valueTaken();
        return isTaken;
    }

    bool takeString()
    {
        const char quote = *position++;
        while (position < end && !isLineEnd(*position)) {
            const char c = *position++;
            if (c == quote)
                return true;
            if (c == '\\' && position < end)
                ++position;
        }
        return false;
    }

    QByteArray takeWord()
    {
        const char* const start = position;
        while (isWordStart(current()) || isDigit(current()))
            ++position;
        return QByteArray(start, static_cast<int>(position - start));
    }

    static bool isConstant(const QByteArray& word)
    {
        return word == "true" || word == "false" || word == "null" || word == "undefined"
            || word == "NaN" || word == "Infinity";
    }

    bool takeSignedNumber()
    {
        if (current() == '-' || current() == '+')
            ++position;
        return isWordStart(current()) ? takeWord() == "Infinity" : takeNumber();
    }

    /// Takes what looks like a number; the engine refuses what is none.
    bool takeNumber()
    {
        if (!isDigit(current()) && current() != '.')
            return false;
        while (isDigit(current()) || current() == '.' || isWordStart(current())) {
            const char c = *position++;
            if ((c == 'e' || c == 'E') && (current() == '-' || current() == '+'))
                ++position;
        }
        return true;
    }

    const char* position;
    const char* end;
    Expected expected;
    int numValues;
    /// The bracket that closes each open list or object.
    QByteArray closers;
};

} // namespace

bool MaterialText::isData(const QByteArray& text)
{
    return DataScanner(text).scan();
}

bool MaterialText::isObject(const QByteArray& text)
{
    if (!isData(text))
        return false;
    QScriptEngine engine;
    engine.evaluate(QLatin1String("lbm = ") + QString::fromLatin1(text.constData(), text.size()),
        QLatin1String("lbm2"), 1);
    return engine.globalObject().property(QLatin1String("lbm")).isObject();
}
