// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "settingsjson.h"

#include "jsontext.h"
#include "settingstree.h"

#include <QSet>
#include <QVarLengthArray>
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

/// Settings that may stand within each other: each takes two containers, the outermost one.
const int deepestSettings = static_cast<int>((deepestNesting - 1) / 2);

/// Values of one text: more than any network has, and few enough to fit in memory.
const std::size_t mostValues = 16 * 1000 * 1000;

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

    /// Three letters and the length tell most keys apart; others just replace each other.
    static std::size_t slotOf(const std::string& utf8)
    {
        const auto byte
            = [&](std::size_t index) { return static_cast<unsigned char>(utf8[index]); };
        const std::size_t size = utf8.size();
        return (size * 31 + byte(0) * 7 + byte(size / 2) * 5 + byte(size - 1)) % numSlots;
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

/// The text of a container without the blanks between its parts.
QByteArray compacted(const char* begin, const char* end)
{
    QByteArray text;
    text.reserve(static_cast<int>(end - begin));
    bool inString = false;
    for (const char* at = begin; at < end; ++at) {
        if (inString && *at == '\\')
            text += *at++;
        else if (*at == '"')
            inString = !inString;
        if (inString || !isJsonBlank(*at))
            text += *at;
    }
    return text;
}

/// A value that may be part of what a tree writes as two values: the tag and number of an integer,
/// or the type and members of a nested settings.
struct PairPart {
    enum Kind : quint8 { Other, Number, String, Members };

    Kind kind = Other;
    QString key; ///< in an object
    QString text;
    double number = 0;
};

/// A container that the parser has not seen the end of.
struct OpenContainer {
    /// An object whose members become settings, or one that is or is in a value of settings.
    enum Kind : quint8 { Settings, Object, Array };

    Kind kind = Object;
    SettingsTree* settings = nullptr; ///< that its members go to, or that it is a value of, or null
    QString key;                      ///< of a value of settings
    const char* keyEnd = nullptr;
    const char* begin = nullptr; ///< its first byte
    std::size_t numChildren = 0;
    std::array<PairPart, 2> parts; ///< the first two values, except of Settings
    QSet<QString> laterKeys;       ///< of an Object, the keys of its other values

    std::size_t numParts() const { return std::min(numChildren, parts.size()); }
    bool hasMembers() const;
    bool isNestedSettings() const;
};

/// True once members of it were taken for those of a nested settings.
bool OpenContainer::hasMembers() const
{
    return std::any_of(parts.begin(), parts.begin() + numParts(),
        [](const PairPart& part) { return part.kind == PairPart::Members; });
}

bool OpenContainer::isNestedSettings() const
{
    if (kind != Object || numChildren != 2 || !hasMembers())
        return false;
    const PairPart& type = parts[parts[0].kind == PairPart::Members ? 1 : 0];
    return type.key == QLatin1String("type") && type.kind == PairPart::String
        && type.text == QLatin1String("settings");
}

/// Receives the parser's events and makes settings of them. The names are the parser's.
///
/// What a value is shows only when it ends: {"type": "settings", "value": {...}} with a third
/// member is no nested settings but a value that nobody understands. So the members of one are
/// read as soon as it looks like one, and thrown away should it end as something else.
class SettingsBuilder
{
public:
    SettingsBuilder(const char* text, const char* end, SettingsTree* settings)
        : m_text(text)
        , m_end(end)
        , m_seen(text)
        , m_settings(settings)
    {
    }

    bool build()
    {
        return Json::sax_parse(
            CountingIterator(m_text, &m_seen), CountingIterator(m_end, &m_seen), this);
    }
    QString error() const { return m_error; }

    bool null()
    {
        return addScalar(PairPart::Other, [&](SettingsTree* settings) {
            settings->setOpaqueValue(m_key, QByteArrayLiteral("null"));
        });
    }
    bool boolean(bool value)
    {
        return addScalar(
            PairPart::Other, [&](SettingsTree* settings) { settings->setBoolValue(m_key, value); });
    }
    bool number_integer(Json::number_integer_t value)
    {
        // Only numbers with a minus come here, so that a zero is "-0".
        return addNumber(value == 0 ? -0.0 : static_cast<double>(value));
    }
    bool number_unsigned(Json::number_unsigned_t value)
    {
        return addNumber(static_cast<double>(value));
    }
    bool number_float(Json::number_float_t value, const Json::string_t&)
    {
        return addNumber(value);
    }
    bool string(const Json::string_t& value)
    {
        m_string = m_texts.text(value);
        return addScalar(PairPart::String,
            [&](SettingsTree* settings) { settings->setStringValue(m_key, m_string); });
    }
    bool binary(const Json::binary_t&) { return false; } // never in a text

    bool start_object(std::size_t) { return open(OpenContainer::Object); }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(OpenContainer::Array); }
    bool end_array() { return close(); }
    bool key(const Json::string_t& value)
    {
        m_key = m_texts.text(value);
        m_keyEnd = m_seen;
        return top().kind == OpenContainer::Settings || checkKeyOf(top());
    }

    bool parse_error(
        std::size_t numRead, const std::string&, const nlohmann::detail::exception& exception);

private:
    bool fail(const char* place, const QString& cause)
    {
        m_error = jsonPlaceText(m_text, place) + QStringLiteral(": ") + cause;
        return false;
    }
    bool failForOutermost()
    {
        return fail(std::find_if_not(m_text, m_end, isJsonBlank),
            QStringLiteral("the outermost value is not an object"));
    }
    bool failForKey(const QString& key, const char* keyEnd)
    {
        return fail(startOfToken(m_text, keyEnd),
            QStringLiteral("a key appears twice: %1").arg(quoted(key)));
    }
    OpenContainer& top() { return m_containers[m_depth - 1]; }
    bool countValue()
    {
        return ++m_numValues <= mostValues
            || fail(m_seen, QStringLiteral("more than %1 values").arg(mostValues));
    }
    bool checkKeyOf(OpenContainer& object);
    bool addNumber(double value)
    {
        m_number = value;
        return addScalar(PairPart::Number,
            [&](SettingsTree* settings) { settings->setFloatValue(m_key, value); });
    }
    template <typename Store>
    bool addScalar(PairPart::Kind kind, const Store& store);
    template <typename Store>
    bool storeNew(
        SettingsTree* settings, const QString& key, const char* keyEnd, const Store& store);
    void addPart(OpenContainer& holder, PairPart::Kind kind);
    bool open(OpenContainer::Kind kind);
    bool openInValue(OpenContainer& holder, OpenContainer* container);
    bool close();
    bool readTagged(const OpenContainer& array) const;

    const char* m_text;
    const char* m_end;
    const char* m_seen; ///< end of what the parser has taken
    SettingsTree* m_settings;
    TextCache m_texts;
    std::vector<OpenContainer> m_containers; ///< the open ones first; the rest is used again
    std::size_t m_depth = 0;                 ///< number of open ones
    std::size_t m_numValues = 0;
    QString m_key;
    const char* m_keyEnd = nullptr;
    QString m_string;
    double m_number = 0;
    QString m_error;
};

/// Stores a value under a key that `settings` must not have yet.
template <typename Store>
bool SettingsBuilder::storeNew(
    SettingsTree* settings, const QString& key, const char* keyEnd, const Store& store)
{
    const int numBefore = settings->getNumValues();
    store(settings);
    return settings->getNumValues() > numBefore || failForKey(key, keyEnd);
}

bool SettingsBuilder::checkKeyOf(OpenContainer& object)
{
    for (std::size_t i = 0; i < object.numParts(); ++i)
        if (object.parts[i].key == m_key)
            return failForKey(m_key, m_keyEnd);
    if (object.numChildren < object.parts.size())
        return true;
    if (object.laterKeys.contains(m_key))
        return failForKey(m_key, m_keyEnd);
    object.laterKeys.insert(m_key);
    return true;
}

template <typename Store>
bool SettingsBuilder::addScalar(PairPart::Kind kind, const Store& store)
{
    if (m_depth == 0)
        return failForOutermost();
    if (!countValue())
        return false;
    if (top().kind == OpenContainer::Settings)
        return storeNew(top().settings, m_key, m_keyEnd, store);
    addPart(top(), kind);
    return true;
}

void SettingsBuilder::addPart(OpenContainer& holder, PairPart::Kind kind)
{
    if (holder.numChildren < holder.parts.size()) {
        PairPart& part = holder.parts[holder.numChildren];
        part.kind = kind;
        part.key.swap(m_key);
        part.text.swap(m_string);
        part.number = m_number;
    }
    ++holder.numChildren;
}

bool SettingsBuilder::open(OpenContainer::Kind kind)
{
    const char* begin = m_seen - 1;
    if (m_depth == 0 && kind != OpenContainer::Object)
        return failForOutermost();
    if (m_depth == deepestNesting)
        return fail(begin, QStringLiteral("more than %1 levels of nesting").arg(deepestNesting));
    if (!countValue())
        return false;
    if (m_depth == m_containers.size())
        m_containers.emplace_back();
    OpenContainer& container = m_containers[m_depth];
    container.kind = kind;
    container.settings = nullptr;
    container.begin = begin;
    container.numChildren = 0;
    container.laterKeys.clear();
    if (m_depth == 0) {
        container.kind = OpenContainer::Settings;
        container.settings = m_settings;
    } else if (top().kind == OpenContainer::Settings) {
        container.settings = top().settings;
        container.key = m_key;
        container.keyEnd = m_keyEnd;
    } else if (!openInValue(top(), &container)) {
        return false;
    }
    ++m_depth;
    return true;
}

/// Opens what stands in `holder`, a value of settings or something in one.
bool SettingsBuilder::openInValue(OpenContainer& holder, OpenContainer* container)
{
    const bool isMembers = holder.settings && holder.kind == OpenContainer::Object
        && holder.numChildren < holder.parts.size() && container->kind == OpenContainer::Object
        && m_key == QLatin1String("value");
    addPart(holder, isMembers ? PairPart::Members : PairPart::Other);
    if (!isMembers)
        return true;
    container->kind = OpenContainer::Settings;
    return storeNew(holder.settings, holder.key, holder.keyEnd, [&](SettingsTree* settings) {
        container->settings = settings->setSettingsValue(holder.key);
    });
}

bool SettingsBuilder::close()
{
    --m_depth;
    const OpenContainer& container = m_containers[m_depth];
    const bool isValue = container.kind != OpenContainer::Settings && container.settings;
    if (!isValue || container.isNestedSettings())
        return true;
    const auto store = [&](SettingsTree* settings) {
        if (!readTagged(container))
            settings->setOpaqueValue(container.key, compacted(container.begin, m_seen));
    };
    if (!container.hasMembers())
        return storeNew(container.settings, container.key, container.keyEnd, store);
    store(container.settings);
    return true;
}

/// Reads ["i", n] and the numbers that JSON has not; false when the container is neither.
bool SettingsBuilder::readTagged(const OpenContainer& container) const
{
    const PairPart& tag = container.parts[0];
    const PairPart& value = container.parts[1];
    if (container.kind != OpenContainer::Array || container.numChildren != 2
        || tag.kind != PairPart::String)
        return false;
    if (tag.text == QLatin1String("i") && value.kind == PairPart::Number) {
        if (value.number != std::floor(value.number)
            || value.number < std::numeric_limits<int>::min()
            || value.number > std::numeric_limits<int>::max())
            return false;
        container.settings->setIntValue(container.key, static_cast<int>(value.number));
        return true;
    }
    if (tag.text != QLatin1String("f") || value.kind != PairPart::String)
        return false;
    const double infinity = std::numeric_limits<double>::infinity();
    if (value.text == QLatin1String("nan"))
        container.settings->setFloatValue(container.key, std::numeric_limits<double>::quiet_NaN());
    else if (value.text == QLatin1String("inf"))
        container.settings->setFloatValue(container.key, infinity);
    else if (value.text == QLatin1String("-inf"))
        container.settings->setFloatValue(container.key, -infinity);
    else
        return false;
    return true;
}

bool SettingsBuilder::parse_error(
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
    return fail(place, QStringLiteral("this is not JSON: ") + complaint);
}

// Writing -----------------------------------------------------------------------------------

class SettingsWriter
{
public:
    QByteArray write(const SettingsTree& settings)
    {
        m_text += '{';
        if (settings.getNumValues() > 0) {
            writeLines(settings, 0);
            m_text += '\n';
        }
        add("}\n");
        return m_text;
    }

private:
    void writeLines(const SettingsTree& settings, int outerIndent);
    void writeMember(const SettingsTree& settings, int index, int indent);
    void writeNested(const SettingsTree* nested, int indent);
    void writeString(const QString& text);
    void writeFloat(double value);
    /// Unlike QByteArray's own operators it does not count the letters each time.
    template <std::size_t size>
    void add(const char (&text)[size])
    {
        m_text.append(text, static_cast<int>(size - 1));
    }
    /// Begins a line.
    void addLine(int indent)
    {
        const int start = m_text.size();
        m_text.resize(start + 1 + indent);
        m_text[start] = '\n';
        std::fill_n(m_text.data() + start + 1, indent, ' ');
    }

    QByteArray m_text;
};

/// Writes the members one a line, each line with the line end before it.
void SettingsWriter::writeLines(const SettingsTree& settings, int outerIndent)
{
    const int indent = outerIndent + 2;
    for (int i = 0; i < settings.getNumValues(); ++i) {
        if (i > 0)
            m_text += ',';
        addLine(indent);
        writeMember(settings, i, indent);
    }
}

void SettingsWriter::writeMember(const SettingsTree& settings, int index, int indent)
{
    const QString key = settings.getKey(index);
    writeString(key);
    add(": ");
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
        writeNested(settings.getSettingsValueAt(index), indent);
        break;
    case DzSettings::OpaqueValue: {
        const QByteArray value = settings.getOpaqueValueAt(index);
        m_text += value.isEmpty() ? QByteArrayLiteral("null") : value;
        break;
    }
    }
}

/// Writes a nested settings and, on the same line, each only value that is a nested settings too.
void SettingsWriter::writeNested(const SettingsTree* nested, int indent)
{
    int depth = 0;
    for (bool chained = true; chained; ++depth) {
        add("{ \"type\": \"settings\", \"value\": {");
        chained
            = nested->getNumValues() == 1 && nested->getValueType(0) == DzSettings::SettingsValue;
        if (chained) {
            const QString key = nested->getKey(0);
            m_text += ' ';
            writeString(key);
            add(": ");
            nested = nested->getSettingsValueAt(0);
        }
    }
    if (nested->getNumValues() == 1) {
        m_text += ' ';
        writeMember(*nested, 0, indent);
        m_text += ' ';
    } else if (nested->getNumValues() > 1) {
        writeLines(*nested, indent);
        addLine(indent);
    }
    add("} }");
    while (--depth > 0)
        add(" } }");
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
    SettingsTree read;
    SettingsBuilder builder(begin, end, &read);
    if (!builder.build()) {
        *told = builder.error();
        return false;
    }
    settings->tree()->swap(read);
    return true;
}

bool settingsFitJson(const DzSettings& settings, QString* error)
{
    struct Level {
        const SettingsTree* tree;
        int depth;
    };
    QVarLengthArray<Level, 16> open { Level { settings.tree(), 0 } };
    while (!open.isEmpty()) {
        const Level level = open.last();
        open.removeLast();
        if (level.depth > deepestSettings) {
            if (error)
                *error = QStringLiteral("more than %1 settings are nested within each other")
                             .arg(deepestSettings);
            return false;
        }
        for (int i = 0; i < level.tree->getNumValues(); ++i)
            if (const SettingsTree* nested = level.tree->getSettingsValueAt(i))
                open.append(Level { nested, level.depth + 1 });
    }
    return true;
}

QByteArray settingsToJson(const DzSettings& settings)
{
    if (!settingsFitJson(settings, nullptr))
        return QByteArray();
    return SettingsWriter().write(*settings.tree());
}

QByteArray shortestNumberText(double number)
{
    if (std::isnan(number))
        return QByteArrayLiteral("nan"); // whatever its sign bit says
    char digits[32];
    char* const end = digits + sizeof digits;
    const bool isInRange = std::fabs(number) <= std::numeric_limits<float>::max();
    const float single = isInRange ? static_cast<float>(number) : 0;
    const std::to_chars_result result = isInRange && static_cast<double>(single) == number
        ? std::to_chars(digits, end, single)
        : std::to_chars(digits, end, number);
    return QByteArray(digits, static_cast<int>(result.ptr - digits));
}
