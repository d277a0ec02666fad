// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "settingsjson.h"

#include "dzsettings.h"
#include "jsontext.h"

#include <QSet>
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

/// Containers that may be open at once: far more than any network has, and few enough for the
/// functions that call themselves once a level.
const std::size_t deepestNesting = 256;

/// Values of one text: more than any network has, and few enough to fit in memory.
const std::size_t mostValues = 16 * 1000 * 1000;

/// Bytes that a value, its key and the signs around them take in the texts of networks.
const std::size_t averageValue = 24;

/// Up to this many keys of one object are compared one by one.
const int longestSearchedObject = 16;

/// Characters of a text of the file that a message shows.
const int longestQuote = 60;

// Places in the text ------------------------------------------------------------------------

/// Start of the string whose closing quote is at `closingQuote`. A quote inside a string has an
/// odd number of backslashes before it, the opening one has none.
const char* startOfString(const char* text, const char* closingQuote)
{
    for (const char* at = closingQuote; at > text;) {
        if (*--at != '"')
            continue;
        const char* slash = at;
        while (slash > text && slash[-1] == '\\')
            --slash;
        if ((at - slash) % 2 == 0)
            return at;
    }
    return text;
}

/// Start of the string, number, word or sign that ends before `end`.
const char* startOfToken(const char* text, const char* end)
{
    if (end == text)
        return text;
    const char* at = end - 1;
    if (*at == '"')
        return startOfString(text, at);
    if (isJsonWordCharacter(*at)) {
        while (at > text && isJsonWordCharacter(at[-1]))
            --at;
    }
    return at;
}

// Strings -----------------------------------------------------------------------------------

/// Unlike QString's own conversion it keeps a byte order mark at the start: in the middle of a
/// file that is a character like any other.
QString fromUtf8(const char* text, std::size_t size)
{
    int marks = 0;
    while (size >= 3 && std::char_traits<char>::compare(text, "\xef\xbb\xbf", 3) == 0) {
        text += 3;
        size -= 3;
        ++marks;
    }
    const QString rest = QString::fromUtf8(text, static_cast<int>(size));
    return marks == 0 ? rest : QString(marks, QChar::ByteOrderMark) + rest;
}

/// Gives equal texts one shared QString: a settings tree has few different keys, many times each.
class TextCache
{
public:
    QString text(const std::string& utf8)
    {
        if (utf8.empty() || utf8.size() > longestKept)
            return fromUtf8(utf8.data(), utf8.size());
        Slot& slot = m_slots[slotOf(utf8)];
        if (slot.utf8 != utf8) {
            slot.utf8 = utf8;
            slot.text = fromUtf8(utf8.data(), utf8.size());
        }
        return slot.text;
    }

private:
    struct Slot {
        std::string utf8;
        QString text;
    };

    static const std::size_t longestKept = 32;
    static const std::size_t numSlots = 256;

    static std::size_t slotOf(const std::string& utf8)
    {
        std::size_t mix = utf8.size();
        for (const char c : utf8)
            mix = mix * 31 + static_cast<unsigned char>(c);
        return mix % numSlots;
    }

    std::array<Slot, numSlots> m_slots;
};

QString quoted(const QString& text)
{
    const bool isLong = text.size() > longestQuote;
    return QString::fromUtf8(
        jsonStringToken(isLong ? text.left(longestQuote) + QStringLiteral("...") : text));
}

// Reading -----------------------------------------------------------------------------------

/// One value of the text, with its key when it is an object's member.
struct Node {
    enum Kind : quint8 { Null, Boolean, Number, String, Array, Object };

    Kind kind;
    QString key;
    QString text;                ///< of a String
    double number = 0;           ///< of a Number; 0 or 1 of a Boolean
    const char* begin = nullptr; ///< an Array's or Object's first byte
    const char* end = nullptr;   ///< and the one after its last
    std::size_t numChildren = 0;
    std::size_t next = 0; ///< index after this node and all inside it

    explicit Node(Kind nodeKind, double nodeNumber = 0)
        : kind(nodeKind)
        , number(nodeNumber)
    {
    }
    bool isContainer() const { return kind == Array || kind == Object; }
};

/// All values in the order of the text: a container, then what is in it.
typedef std::vector<Node> Nodes;

/// Receives the parser's events and lays them down as nodes. The names are the parser's.
class NodeBuilder
{
public:
    NodeBuilder(const char* text, const char* end)
        : m_text(text)
        , m_end(end)
        , m_seen(text)
    {
        // About what the texts of networks need; memory that stays untouched costs nothing.
        m_nodes.reserve(std::min<std::size_t>((end - text) / averageValue + 1, mostValues));
    }

    bool build()
    {
        return Json::sax_parse(
            CountingIterator(m_text, &m_seen), CountingIterator(m_end, &m_seen), this);
    }
    const Nodes& nodes() const { return m_nodes; }
    QString error() const { return m_error; }

    bool null() { return add(Node(Node::Null)); }
    bool boolean(bool value) { return add(Node(Node::Boolean, value ? 1 : 0)); }
    bool number_integer(Json::number_integer_t value)
    {
        // Only numbers with a minus come here, so that a zero is "-0".
        return add(Node(Node::Number, value == 0 ? -0.0 : static_cast<double>(value)));
    }
    bool number_unsigned(Json::number_unsigned_t value)
    {
        return add(Node(Node::Number, static_cast<double>(value)));
    }
    bool number_float(Json::number_float_t value, const Json::string_t&)
    {
        return add(Node(Node::Number, value));
    }
    bool string(const Json::string_t& value)
    {
        Node node(Node::String);
        node.text = m_texts.text(value);
        return add(std::move(node));
    }
    bool binary(const Json::binary_t&) { return false; } // never in a text

    bool start_object(std::size_t) { return open(Node::Object); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(Node::Array); }
    bool end_array() { return close(); }
    bool key(const Json::string_t& value)
    {
        m_key = m_texts.text(value);
        if (!isTaken(m_key))
            return true;
        return fail(startOfToken(m_text, m_seen),
            QStringLiteral("a key stands twice: %1").arg(quoted(m_key)));
    }

    bool parse_error(
        std::size_t numRead, const std::string&, const nlohmann::detail::exception& exception);

private:
    struct OpenContainer {
        std::size_t node;
        QSet<QString> keys; ///< empty while there are few
    };

    bool fail(const char* place, const QString& cause)
    {
        m_error = jsonPlaceText(m_text, place) + QStringLiteral(": ") + cause;
        return false;
    }
    bool add(Node&& node);
    bool open(Node::Kind kind);
    bool close();
    bool isTaken(const QString& key);

    const char* m_text;
    const char* m_end;
    const char* m_seen; ///< end of what the parser has taken
    TextCache m_texts;
    Nodes m_nodes;
    std::vector<OpenContainer> m_open;
    QString m_key;
    QString m_error;
};

bool NodeBuilder::add(Node&& node)
{
    if (m_open.empty() && node.kind != Node::Object) {
        return fail(std::find_if_not(m_text, m_end, isJsonBlank),
            QStringLiteral("the outermost value is no object"));
    }
    if (m_nodes.size() == mostValues)
        return fail(m_seen, QStringLiteral("more than %1 values").arg(mostValues));
    if (!m_open.empty())
        ++m_nodes[m_open.back().node].numChildren;
    node.key.swap(m_key);
    node.next = m_nodes.size() + 1;
    m_nodes.push_back(std::move(node));
    return true;
}

bool NodeBuilder::open(Node::Kind kind)
{
    Node node(kind);
    node.begin = m_seen - 1;
    if (m_open.size() == deepestNesting)
        return fail(
            node.begin, QStringLiteral("more than %1 levels of nesting").arg(deepestNesting));
    if (!add(std::move(node)))
        return false;
    m_open.push_back({ m_nodes.size() - 1, {} });
    return true;
}

bool NodeBuilder::close()
{
    Node& node = m_nodes[m_open.back().node];
    node.end = m_seen;
    node.next = m_nodes.size();
    m_open.pop_back();
    return true;
}

bool NodeBuilder::isTaken(const QString& key)
{
    OpenContainer& object = m_open.back();
    const auto forEachKey = [&](auto&& function) {
        for (std::size_t i = object.node + 1; i < m_nodes.size(); i = m_nodes[i].next)
            function(m_nodes[i].key);
    };
    bool taken = false;
    if (m_nodes[object.node].numChildren < longestSearchedObject) {
        // Most differ in length already, which needs no call.
        forEachKey([&](const QString& other) {
            taken = taken || (other.size() == key.size() && other == key);
        });
        return taken;
    }
    if (object.keys.isEmpty())
        forEachKey([&](const QString& other) { object.keys.insert(other); });
    taken = object.keys.contains(key);
    object.keys.insert(key);
    return taken;
}

bool NodeBuilder::parse_error(
    std::size_t numRead, const std::string&, const nlohmann::detail::exception& exception)
{
    const char* readEnd = m_text + std::min<std::size_t>(numRead, m_end - m_text);
    if (exception.id == jsonNumberOverflow) {
        const char* number = startOfToken(m_text, readEnd);
        const QString text = fromUtf8(number, readEnd - number);
        return fail(number,
            QStringLiteral("the number %1 is too large")
                .arg(text.size() > longestQuote ? text.left(longestQuote) + QStringLiteral("...")
                                                : text));
    }
    const QString complaint = jsonParserComplaint(exception.what());
    // The end counts as one more character that was read.
    const bool isAtEnd = numRead > static_cast<std::size_t>(m_end - m_text);
    const char* place = m_end;
    if (!isAtEnd)
        place = complaint.startsWith(QLatin1String("unexpected")) ? startOfToken(m_text, readEnd)
                                                                  : readEnd - 1;
    return fail(place, QStringLiteral("this is no JSON: ") + complaint);
}

/// Turns nodes into settings.
class SettingsMaker
{
public:
    explicit SettingsMaker(const Nodes& nodes)
        : m_nodes(nodes)
    {
    }

    void readMembers(const Node& object, DzSettings* settings) const
    {
        const std::size_t index = &object - m_nodes.data();
        for (std::size_t i = index + 1; i < object.next; i = m_nodes[i].next)
            readMember(m_nodes[i], settings);
    }

private:
    void readMember(const Node& node, DzSettings* settings) const;
    /// The two values of an object or array that has exactly two.
    bool hasPair(const Node& node, const Node** first, const Node** second) const;
    const Node* nestedMembers(const Node& object) const;
    bool readTagged(const Node& array, DzSettings* settings) const;

    const Nodes& m_nodes;
};

bool SettingsMaker::hasPair(const Node& node, const Node** first, const Node** second) const
{
    if (node.numChildren != 2)
        return false;
    *first = &node + 1;
    *second = &m_nodes[(*first)->next];
    return true;
}

/// The object with the members of a nested settings; null when the object is none.
const Node* SettingsMaker::nestedMembers(const Node& object) const
{
    const Node* type = nullptr;
    const Node* value = nullptr;
    if (!hasPair(object, &type, &value))
        return nullptr;
    if (type->key != QLatin1String("type"))
        std::swap(type, value);
    const bool isNested = type->key == QLatin1String("type") && type->kind == Node::String
        && type->text == QLatin1String("settings") && value->key == QLatin1String("value")
        && value->kind == Node::Object;
    return isNested ? value : nullptr;
}

/// Reads ["i", n] and the numbers that JSON has not; false when the array is neither.
bool SettingsMaker::readTagged(const Node& array, DzSettings* settings) const
{
    const Node* tag = nullptr;
    const Node* value = nullptr;
    if (!hasPair(array, &tag, &value) || tag->kind != Node::String)
        return false;
    if (tag->text == QLatin1String("i") && value->kind == Node::Number) {
        const double number = value->number;
        if (number != std::floor(number) || number < std::numeric_limits<int>::min()
            || number > std::numeric_limits<int>::max())
            return false;
        settings->setIntValue(array.key, static_cast<int>(number));
        return true;
    }
    if (tag->text != QLatin1String("f") || value->kind != Node::String)
        return false;
    const double infinity = std::numeric_limits<double>::infinity();
    if (value->text == QLatin1String("nan"))
        settings->setFloatValue(array.key, std::numeric_limits<double>::quiet_NaN());
    else if (value->text == QLatin1String("inf"))
        settings->setFloatValue(array.key, infinity);
    else if (value->text == QLatin1String("-inf"))
        settings->setFloatValue(array.key, -infinity);
    else
        return false;
    return true;
}

/// The text of a container without the blanks between its parts.
QByteArray compacted(const Node& container)
{
    QByteArray text;
    text.reserve(static_cast<int>(container.end - container.begin));
    bool inString = false;
    for (const char* at = container.begin; at < container.end; ++at) {
        if (inString && *at == '\\')
            text += *at++;
        else if (*at == '"')
            inString = !inString;
        if (inString || !isJsonBlank(*at))
            text += *at;
    }
    return text;
}

void SettingsMaker::readMember(const Node& node, DzSettings* settings) const
{
    switch (node.kind) {
    case Node::Null:
        settings->setOpaqueValue(node.key, QByteArrayLiteral("null"));
        break;
    case Node::Boolean:
        settings->setBoolValue(node.key, node.number != 0);
        break;
    case Node::Number:
        settings->setFloatValue(node.key, node.number);
        break;
    case Node::String:
        settings->setStringValue(node.key, node.text);
        break;
    case Node::Array:
        if (!readTagged(node, settings))
            settings->setOpaqueValue(node.key, compacted(node));
        break;
    case Node::Object:
        if (const Node* members = nestedMembers(node))
            readMembers(*members, settings->setSettingsValue(node.key));
        else
            settings->setOpaqueValue(node.key, compacted(node));
        break;
    }
}

// Writing -----------------------------------------------------------------------------------

class SettingsWriter
{
public:
    QByteArray write(const DzSettings& settings)
    {
        m_text += '{';
        if (settings.getNumValues() > 0) {
            writeLines(settings, 0);
            m_text += '\n';
        }
        m_text += "}\n";
        return m_text;
    }

private:
    void writeLines(const DzSettings& settings, int outerIndent);
    void writeMember(const DzSettings& settings, int index, int indent);
    void writeNested(const DzSettings* nested, int indent);
    void writeString(const QString& text);
    void writeFloat(double value);

    QByteArray m_text;
};

/// Writes the members one a line, each line with the line end before it.
void SettingsWriter::writeLines(const DzSettings& settings, int outerIndent)
{
    const int indent = outerIndent + 2;
    for (int i = 0; i < settings.getNumValues(); ++i) {
        m_text += i == 0 ? "\n" : ",\n";
        m_text.append(indent, ' ');
        writeMember(settings, i, indent);
    }
}

void SettingsWriter::writeMember(const DzSettings& settings, int index, int indent)
{
    const QString key = settings.getKey(index);
    writeString(key);
    m_text += ": ";
    switch (settings.getValueType(index)) {
    case DzSettings::StringValue:
        writeString(settings.getStringValue(key));
        break;
    case DzSettings::IntValue:
        m_text += "[\"i\", " + QByteArray::number(settings.getIntValue(key)) + ']';
        break;
    case DzSettings::BoolValue:
        m_text += settings.getBoolValue(key) ? "true" : "false";
        break;
    case DzSettings::FloatValue:
        writeFloat(settings.getFloatValue(key));
        break;
    case DzSettings::SettingsValue:
        writeNested(settings.getSettingsValue(key), indent);
        break;
    case DzSettings::OpaqueValue: {
        const QByteArray value = settings.getOpaqueValue(key);
        m_text += value.isEmpty() ? QByteArrayLiteral("null") : value;
        break;
    }
    }
}

/// Writes a nested settings and, on the same line, each only value that is a nested settings too.
void SettingsWriter::writeNested(const DzSettings* nested, int indent)
{
    int depth = 0;
    for (bool chained = true; chained; ++depth) {
        m_text += "{ \"type\": \"settings\", \"value\": {";
        chained
            = nested->getNumValues() == 1 && nested->getValueType(0) == DzSettings::SettingsValue;
        if (chained) {
            const QString key = nested->getKey(0);
            m_text += ' ';
            writeString(key);
            m_text += ": ";
            nested = nested->getSettingsValue(key);
        }
    }
    if (nested->getNumValues() == 1) {
        m_text += ' ';
        writeMember(*nested, 0, indent);
        m_text += ' ';
    } else if (nested->getNumValues() > 1) {
        writeLines(*nested, indent);
        m_text += '\n';
        m_text.append(indent, ' ');
    }
    m_text += "} }";
    while (--depth > 0)
        m_text += " } }";
}

void SettingsWriter::writeString(const QString& text)
{
    const auto isPlain = [](QChar c) {
        return c >= QLatin1Char(' ') && c < QChar(0x7f) && c != QLatin1Char('"')
            && c != QLatin1Char('\\');
    };
    if (!std::all_of(text.begin(), text.end(), isPlain)) {
        m_text += jsonStringToken(text);
        return;
    }
    // Nearly all strings are plain: they need no conversion of their own.
    const int start = m_text.size();
    m_text.resize(start + text.size() + 2);
    char* out = m_text.data() + start;
    *out++ = '"';
    for (const QChar c : text)
        *out++ = c.toLatin1();
    *out = '"';
}

void SettingsWriter::writeFloat(double value)
{
    const QByteArray number = shortestNumberText(value);
    m_text += std::isfinite(value) ? number : "[\"f\", \"" + number + "\"]";
}

} // namespace

bool settingsFromJson(const QByteArray& text, DzSettings* settings, QString* error)
{
    QString cause;
    QString* const told = error ? error : &cause;
    const char* begin = jsonTextBegin(text, told);
    if (!begin)
        return false;
    const char* end = text.constData() + text.size();
    NodeBuilder builder(begin, end);
    if (!builder.build()) {
        *told = builder.error();
        return false;
    }
    settings->clear();
    SettingsMaker(builder.nodes()).readMembers(builder.nodes().front(), settings);
    return true;
}

QByteArray settingsToJson(const DzSettings& settings)
{
    return SettingsWriter().write(settings);
}

QByteArray shortestNumberText(double number)
{
    if (std::isnan(number))
        return QByteArrayLiteral("nan"); // whatever its sign bit says
    char digits[32];
    std::to_chars_result result = std::to_chars(digits, digits + sizeof digits, number);
    if (std::fabs(number) <= std::numeric_limits<float>::max()) {
        const float single = static_cast<float>(number);
        if (static_cast<double>(single) == number)
            result = std::to_chars(digits, digits + sizeof digits, single);
    }
    return QByteArray(digits, static_cast<int>(result.ptr - digits));
}
