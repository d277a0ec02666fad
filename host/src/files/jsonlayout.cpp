// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "jsonlayout.h"

#include "jsontext.h"
#include "settingsjson.h"
#include "settingstree.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <nlohmann/json.hpp>
#include <set>

namespace {

const int hostDigits = 7;

/// Stands behind what is put into something empty. No writer leaves such blanks, and no reader
/// minds them.
const char* const onceEmpty = "  ";

bool isIndentation(char c)
{
    return c == ' ' || c == '\t';
}

QByteArray finiteToken(double number)
{
    const double largest = static_cast<double>(std::numeric_limits<float>::max());
    return std::isnan(number) ? QByteArrayLiteral("0")
                              : jsonRoundedToken(number < 0 ? -largest : largest);
}

} // namespace

QByteArray jsonRoundedToken(double number)
{
    if (!std::isfinite(number))
        return finiteToken(number);
    char digits[64];
    const std::to_chars_result result = std::to_chars(
        digits, digits + sizeof digits, number, std::chars_format::general, hostDigits);
    return QByteArray(digits, static_cast<int>(result.ptr - digits));
}

QByteArray jsonNumberToken(double number)
{
    if (!std::isfinite(number))
        return finiteToken(number);
    const QByteArray rounded = jsonRoundedToken(number);
    double back = 0;
    std::from_chars(rounded.constData(), rounded.constData() + rounded.size(), back);
    const bool isSingle
        = std::fabs(number) <= static_cast<double>(std::numeric_limits<float>::max())
        && static_cast<double>(static_cast<float>(number)) == number;
    const bool isHeld
        = isSingle && std::fabs(back) <= static_cast<double>(std::numeric_limits<float>::max())
        ? static_cast<float>(back) == static_cast<float>(number)
        : back == number;
    return isHeld ? rounded : shortestNumberText(number);
}

QByteArray jsonBooleanToken(bool value)
{
    return value ? QByteArrayLiteral("true") : QByteArrayLiteral("false");
}

// Pieces ------------------------------------------------------------------------------------

JsonPiece JsonPiece::token(const QByteArray& text)
{
    JsonPiece piece;
    piece.text = text;
    return piece;
}

JsonPiece JsonPiece::object()
{
    JsonPiece piece;
    piece.kind = Object;
    return piece;
}

JsonPiece JsonPiece::array()
{
    JsonPiece piece;
    piece.kind = Array;
    return piece;
}

JsonPiece& JsonPiece::add(const char* key, JsonPiece value)
{
    children.emplace_back('"' + QByteArray(key) + '"', std::move(value));
    return *this;
}

JsonPiece& JsonPiece::add(const char* key, const QByteArray& tokenText)
{
    return add(key, token(tokenText));
}

JsonPiece& JsonPiece::addItem(JsonPiece value)
{
    children.emplace_back(QByteArray(), std::move(value));
    return *this;
}

namespace {

JsonPiece taggedArray(const char* tag, const QByteArray& value)
{
    JsonPiece array = JsonPiece::array();
    array.addItem(JsonPiece::token('"' + QByteArray(tag) + '"'));
    array.addItem(JsonPiece::token(value));
    return array;
}

JsonPiece floatPiece(double value)
{
    if (std::isfinite(value))
        return JsonPiece::token(jsonNumberToken(value));
    return taggedArray("f", '"' + shortestNumberText(value) + '"');
}

JsonPiece treePiece(const SettingsTree& settings);

JsonPiece settingsValuePiece(const SettingsTree& settings, int index, const QString& key)
{
    switch (settings.getValueType(index)) {
    case DzSettings::StringValue:
        break;
    case DzSettings::IntValue:
        return taggedArray("i", QByteArray::number(settings.getIntValue(key)));
    case DzSettings::BoolValue:
        return JsonPiece::token(jsonBooleanToken(settings.getBoolValue(key)));
    case DzSettings::FloatValue:
        return floatPiece(settings.getFloatValue(key));
    case DzSettings::SettingsValue: {
        JsonPiece nested = JsonPiece::object();
        nested.add("type", QByteArrayLiteral("\"settings\""));
        nested.add("value", treePiece(*settings.getSettingsValueAt(index)));
        return nested;
    }
    case DzSettings::OpaqueValue: {
        const QByteArray text = settings.getOpaqueValue(key);
        return JsonPiece::token(text.isEmpty() ? QByteArrayLiteral("null") : text);
    }
    }
    return JsonPiece::token(jsonStringToken(settings.getStringValue(key)));
}

JsonPiece treePiece(const SettingsTree& settings)
{
    JsonPiece object = JsonPiece::object();
    const int count = settings.getNumValues();
    object.children.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const QString key = settings.getKey(i);
        object.children.emplace_back(jsonStringToken(key), settingsValuePiece(settings, i, key));
    }
    return object;
}

} // namespace

JsonPiece jsonPieceOf(const DzSettings& settings)
{
    return treePiece(*settings.tree());
}

// Layout ------------------------------------------------------------------------------------

JsonStyle JsonStyle::of(const JsonIndex& index)
{
    JsonStyle style;
    const JsonIndex::Value first = index.firstChild(index.root());
    if (first == JsonIndex::none)
        return style;
    const QByteArray& text = index.text();
    const int keyBegin = index.memberBegin(first);
    const QByteArray before
        = text.mid(index.begin(index.root()) + 1, keyBegin - index.begin(index.root()) - 1);
    const int lastLine = before.lastIndexOf('\n');
    if (lastLine < 0) {
        style.unit.clear();
        style.lineEnd.clear();
    } else {
        style.unit = before.mid(lastLine + 1);
        style.lineEnd = lastLine > 0 && before.at(lastLine - 1) == '\r' ? "\r\n" : "\n";
    }
    const int keyEnd = text.indexOf('"', keyBegin + 1) + 1;
    const QByteArray between = text.mid(keyEnd, index.begin(first) - keyEnd);
    const bool isPlain = std::all_of(
        between.begin(), between.end(), [](char c) { return isIndentation(c) || c == ':'; });
    if (isPlain && between.size() <= 4)
        style.separator = between;
    return style;
}

QByteArray JsonStyle::inlineText(const JsonPiece& piece) const
{
    if (piece.kind == JsonPiece::Token)
        return piece.text;
    const QByteArray gap = hasLines() ? " " : "";
    const bool isObject = piece.kind == JsonPiece::Object;
    QByteArray text = isObject ? "{" : "[";
    for (std::size_t i = 0; i < piece.children.size(); ++i) {
        text += (i == 0 ? QByteArray() : QByteArray(",")) + gap;
        if (isObject)
            text += piece.children[i].first + separator;
        text += inlineText(piece.children[i].second);
    }
    return text + gap + (isObject ? '}' : ']');
}

QByteArray JsonStyle::write(const JsonPiece& piece, const QByteArray& indent) const
{
    const bool isObject = piece.kind == JsonPiece::Object;
    const bool isList = piece.kind == JsonPiece::Array && !piece.children.empty()
        && std::none_of(piece.children.begin(), piece.children.end(),
            [](const auto& child) { return child.second.kind == JsonPiece::Object; });
    if (!hasLines() || piece.kind == JsonPiece::Token || isList)
        return inlineText(piece);
    const QByteArray inner = indent + unit;
    QByteArray text = isObject ? "{" : "[";
    for (std::size_t i = 0; i < piece.children.size(); ++i) {
        text += (i == 0 ? QByteArray() : QByteArray(",")) + lineEnd + inner;
        if (isObject)
            text += piece.children[i].first + separator;
        text += write(piece.children[i].second, inner);
    }
    return text + lineEnd + indent + (isObject ? '}' : ']');
}

// Editing -----------------------------------------------------------------------------------

JsonEditor::JsonEditor(const JsonIndex& index)
    : m_index(index)
    , m_style(JsonStyle::of(index))
{
}

bool JsonEditor::beginsLine(int offset) const
{
    const char* text = m_index.text().constData();
    while (offset > 0 && isIndentation(text[offset - 1]))
        --offset;
    return offset == 0 || text[offset - 1] == '\n';
}

/// The blanks at the beginning of the line that `offset` is in.
QByteArray JsonEditor::lineIndent(int offset) const
{
    const int longestLine = 4096; // a text in one line must not be walked through every time
    const char* text = m_index.text().constData();
    int lineBegin = offset;
    while (lineBegin > 0 && text[lineBegin - 1] != '\n') {
        --lineBegin;
        if (offset - lineBegin > longestLine)
            return QByteArray();
    }
    int firstWord = lineBegin;
    while (firstWord < offset && isIndentation(text[firstWord]))
        ++firstWord;
    return QByteArray(text + lineBegin, firstWord - lineBegin);
}

QByteArray JsonEditor::childIndent(JsonIndex::Value parent, bool* isInline) const
{
    const JsonIndex::Value first = m_index.firstChild(parent);
    *isInline = !m_style.hasLines()
        || (first != JsonIndex::none && !beginsLine(m_index.memberBegin(first)));
    if (*isInline)
        return QByteArray();
    if (first != JsonIndex::none)
        return lineIndent(m_index.memberBegin(first));
    return lineIndent(m_index.begin(parent)) + m_style.unit;
}

void JsonEditor::addEdit(int begin, int end, const QByteArray& text)
{
    m_edits.push_back({ begin, end, text });
}

void JsonEditor::replace(JsonIndex::Value value, const QByteArray& token)
{
    addEdit(m_index.begin(value), m_index.end(value), token);
}

void JsonEditor::replace(JsonIndex::Value value, const JsonPiece& piece)
{
    replace(value, m_style.write(piece, lineIndent(m_index.begin(value))));
}

void JsonEditor::remove(JsonIndex::Value value, JsonIndex::Value parent)
{
    m_containers[parent].removed.push_back(value);
}

void JsonEditor::insertAfter(
    JsonIndex::Value parent, JsonIndex::Value child, const char* key, const JsonPiece& piece)
{
    bool isInline = false;
    const QByteArray indent = childIndent(parent, &isInline);
    QByteArray text = key ? '"' + QByteArray(key) + '"' + m_style.separator : QByteArray();
    text += isInline ? m_style.inlineText(piece) : m_style.write(piece, indent);
    m_containers[parent].inserted.push_back({ child, text });
}

void JsonEditor::append(JsonIndex::Value parent, const char* key, const JsonPiece& piece)
{
    JsonIndex::Value last = JsonIndex::none;
    for (JsonIndex::Value child = m_index.firstChild(parent); child != JsonIndex::none;
         child = m_index.nextSibling(child, parent))
        last = child;
    insertAfter(parent, last, key, piece);
}

bool JsonEditor::becomesEmpty(JsonIndex::Value parent) const
{
    const auto place = m_containers.find(parent);
    if (place == m_containers.end())
        return m_index.firstChild(parent) == JsonIndex::none;
    return place->second.inserted.empty()
        && static_cast<int>(place->second.removed.size()) == m_index.countChildren(parent);
}

QByteArray JsonEditor::tailOf(JsonIndex::Value parent) const
{
    int begin = m_index.begin(parent) + 1;
    for (JsonIndex::Value child = m_index.firstChild(parent); child != JsonIndex::none;
         child = m_index.nextSibling(child, parent))
        begin = m_index.end(child);
    return m_index.text().mid(begin, m_index.end(parent) - 1 - begin);
}

bool JsonEditor::wasEmptyOnce(JsonIndex::Value parent) const
{
    return m_index.firstChild(parent) != JsonIndex::none && tailOf(parent).startsWith(onceEmpty);
}

void JsonEditor::fillEmpty(JsonIndex::Value parent, const std::vector<Insertion>& inserted)
{
    bool isInline = false;
    const QByteArray inner = childIndent(parent, &isInline);
    const QByteArray line = isInline ? QByteArray() : m_style.lineEnd + inner;
    QByteArray text;
    for (const Insertion& insertion : inserted)
        text += (text.isEmpty() ? QByteArray() : QByteArray(",")) + line + insertion.text;
    const int end = m_index.end(parent) - 1;
    if (wasEmptyOnce(parent))
        text += inserted.empty() ? tailOf(parent).mid(static_cast<int>(std::strlen(onceEmpty)))
                                 : tailOf(parent);
    else if (m_index.firstChild(parent) == JsonIndex::none && !inserted.empty())
        text += onceEmpty + tailOf(parent);
    else if (!isInline)
        text += m_style.lineEnd + lineIndent(m_index.begin(parent)); // the closing sign's own line
    addEdit(m_index.begin(parent) + 1, end, text);
}

void JsonEditor::finish(JsonIndex::Value parent, const Container& container)
{
    const std::set<JsonIndex::Value> removed(container.removed.begin(), container.removed.end());
    JsonIndex::Value firstKept = JsonIndex::none;
    JsonIndex::Value previous = JsonIndex::none;
    for (JsonIndex::Value child = m_index.firstChild(parent); child != JsonIndex::none;
         child = m_index.nextSibling(child, parent)) {
        const bool isRemoved = removed.count(child) > 0;
        if (!isRemoved && firstKept == JsonIndex::none) {
            firstKept = child;
            const JsonIndex::Value first = m_index.firstChild(parent);
            if (first != child)
                addEdit(m_index.memberBegin(first), m_index.memberBegin(child), QByteArray());
        } else if (isRemoved && firstKept != JsonIndex::none) {
            addEdit(m_index.end(previous), m_index.end(child), QByteArray());
        }
        previous = child;
    }
    if (firstKept == JsonIndex::none) {
        fillEmpty(parent, container.inserted);
        return;
    }
    bool isInline = false;
    const QByteArray indent = childIndent(parent, &isInline);
    const QByteArray gap = !isInline ? ',' + m_style.lineEnd + indent
        : m_style.hasLines()         ? QByteArrayLiteral(", ")
                                     : QByteArrayLiteral(",");
    for (const Insertion& insertion : container.inserted) {
        if (insertion.after != JsonIndex::none && insertion.after >= firstKept) {
            const int place = m_index.end(insertion.after);
            addEdit(place, place, gap + insertion.text);
        } else {
            const int place = m_index.memberBegin(firstKept);
            addEdit(place, place, insertion.text + gap);
        }
    }
}

QByteArray JsonEditor::apply()
{
    for (const auto& container : m_containers)
        finish(container.first, container.second);
    m_containers.clear();
    std::stable_sort(m_edits.begin(), m_edits.end(), [](const Edit& a, const Edit& b) {
        return a.begin != b.begin ? a.begin < b.begin : a.end < b.end;
    });
    const QByteArray& text = m_index.text();
    qint64 size = text.size();
    for (const Edit& edit : m_edits)
        size += edit.text.size();
    const qint64 largestText = std::numeric_limits<int>::max() - 4096;
    if (size > largestText)
        return QByteArray();
    QByteArray result;
    result.reserve(static_cast<int>(size));
    int done = 0;
    for (const Edit& edit : m_edits) {
        if (edit.begin < done)
            continue;
        result.append(text.constData() + done, edit.begin - done);
        result += edit.text;
        done = edit.end;
    }
    result.append(text.constData() + done, text.size() - done);
    m_edits.clear();
    return result;
}
