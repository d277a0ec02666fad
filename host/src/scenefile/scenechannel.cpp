// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scenechannel.h"

#include "dzboolproperty.h"
#include "dzcolorproperty.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimageproperty.h"
#include "dzintproperty.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

typedef JsonIndex::Value Value;
const Value none = JsonIndex::none;

/// Items of an enumeration beyond which it is read as a number: no person chooses from so many,
/// and each item is compared with all others.
const int mostItems = 2000;

const char* const typeNames[]
    = { "float", "int", "bool", "enum", "color", "string", "file", "image" };
const char* const fileTypeNames[] = { "file_save", "file_open", "directory", "file_load" };

QString withSlash(const QString& path)
{
    return path.startsWith(QLatin1Char('/')) ? path : QLatin1Char('/') + path;
}

QString filenameOf(const DzTexture* texture)
{
    return texture ? texture->getFilename() : QString();
}

int toInt(double number)
{
    const double low = std::numeric_limits<int>::min();
    const double high = std::numeric_limits<int>::max();
    return std::isnan(number) ? 0 : static_cast<int>(std::max(low, std::min(high, number)));
}

float toFloat(double number)
{
    const double high = static_cast<double>(std::numeric_limits<float>::max());
    return static_cast<float>(std::max(-high, std::min(high, number)));
}

int toByte(double component)
{
    const double steps = 255;
    return static_cast<int>(std::lround(std::max(0.0, std::min(1.0, component)) * steps));
}

QByteArray colorToken(double packed)
{
    const QRgb color = static_cast<QRgb>(static_cast<int>(packed));
    const double steps = 255;
    return "[ " + jsonRoundedToken(qRed(color) / steps) + ", "
        + jsonRoundedToken(qGreen(color) / steps) + ", " + jsonRoundedToken(qBlue(color) / steps)
        + " ]";
}

/// The two entries of a channel, read member by member: the surface's own member wins.
class Channel
{
public:
    Channel(const JsonIndex& index, const ChannelPlaces& places)
        : m_index(index)
        , m_places(places)
        , m_definition(channelOf(index, places.definition))
        , m_instance(channelOf(index, places.instance))
    {
    }

    Value member(const char* key) const { return overlaid(m_instance, m_definition, key); }
    Value entryMember(const char* key) const
    {
        return overlaid(m_places.instance, m_places.definition, key);
    }
    QString string(const char* key) const { return m_index.string(member(key)); }
    bool boolean(const char* key, bool fallback) const
    {
        const Value value = member(key);
        return m_index.kind(value) == JsonIndex::Boolean ? m_index.boolean(value) : fallback;
    }
    Value current() const { return firstOf("current_value", "value"); }
    Value fallback() const { return firstOf("value", "current_value"); }
    /// The image: of the keys when they say anything of one, else of the surface, else of the
    /// definition.
    QString image(const LayeredImages& images, ChannelProblems* problems) const
    {
        const ChannelKeys& keys = m_places.keys;
        if (keys.hasImage()) {
            const QString file = m_index.string(keyItem(m_index, keys.imageFile));
            return file.isEmpty() ? layered(keyItem(m_index, keys.image), images, problems)
                                  : imageFilename(file);
        }
        for (const Value channel : { m_instance, m_definition }) {
            const QString file = m_index.string(m_index.find(channel, "image_file"));
            if (!file.isEmpty())
                return imageFilename(file);
            const Value image = m_index.find(channel, "image");
            if (image != none)
                return layered(image, images, problems);
        }
        return QString();
    }

private:
    QString layered(Value image, const LayeredImages& images, ChannelProblems* problems) const
    {
        const QString reference = m_index.string(image);
        problems->isLayered = problems->isLayered || images.hasSeveralLayers(reference);
        return images.file(reference);
    }
    Value overlaid(Value own, Value defined, const char* key) const
    {
        const Value value = m_index.find(own, key);
        return value == none ? m_index.find(defined, key) : value;
    }
    Value firstOf(const char* key, const char* otherKey) const
    {
        const Value value = member(key);
        return value == none ? member(otherKey) : value;
    }

    const JsonIndex& m_index;
    ChannelPlaces m_places;
    Value m_definition;
    Value m_instance;
};

} // namespace

// Images ------------------------------------------------------------------------------------

LayeredImages::LayeredImages(const JsonIndex& index)
{
    const Value library = index.find(index.root(), "image_library");
    if (!index.isArray(library))
        return;
    for (Value image = index.firstChild(library); image != none;
         image = index.nextSibling(image, library)) {
        const Value map = index.find(image, "map");
        const Value layer = index.isArray(map) ? index.firstChild(map) : none;
        const QString id = index.string(index.find(image, "id"));
        if (!id.isEmpty() && !m_images.contains(id))
            m_images.insert(id,
                { imageFilename(index.string(index.find(layer, "url"))),
                    layer != none && index.nextSibling(layer, map) != none });
    }
}

QString LayeredImages::file(const QString& reference) const
{
    return m_images.value(referencedId(reference)).file;
}

bool LayeredImages::hasSeveralLayers(const QString& reference) const
{
    return m_images.value(referencedId(reference)).hasSeveralLayers;
}

// State -------------------------------------------------------------------------------------

namespace {

void takeNumeric(const DzNumericProperty* property, ChannelState* state)
{
    state->mappable = property->isMappable();
    state->clamped = property->isClamped();
    state->value = property->getDoubleValue();
    state->defaultValue = property->getDoubleDefaultValue();
    state->map = filenameOf(property->getMapValue());
}

void takeInteger(const DzIntProperty* property, ChannelState* state)
{
    takeNumeric(property, state);
    if (qobject_cast<const DzColorProperty*>(property)) {
        state->type = ChannelState::Color;
        state->clamped = false;
    } else if (qobject_cast<const DzBoolProperty*>(property)) {
        state->type = ChannelState::Bool;
    } else if (auto* list = qobject_cast<const DzEnumProperty*>(property)) {
        state->type = ChannelState::Enum;
        for (int i = 0; i < list->getNumItems(); ++i)
            state->items.append(list->getItem(i));
    } else {
        state->type = ChannelState::Int;
        state->min = property->getMin();
        state->max = property->getMax();
    }
}

void takeString(const DzStringProperty* property, ChannelState* state)
{
    state->type = ChannelState::String;
    state->text = property->getValue();
    state->defaultText = property->getDefaultValue();
    if (auto* file = qobject_cast<const DzFileProperty*>(property)) {
        state->type = ChannelState::File;
        state->fileType = file->getType();
        state->filter = file->getFilter();
    }
}

} // namespace

ChannelState ChannelState::of(const DzProperty* property)
{
    ChannelState state;
    state.hidden = property->isHidden();
    state.locked = property->isLocked();
    state.user = property->isUserProperty();
    state.label = property->getLabel();
    state.path = withSlash(property->getPath());
    if (auto* number = qobject_cast<const DzFloatProperty*>(property)) {
        takeNumeric(number, &state);
        state.type = Float;
        state.min = static_cast<double>(number->getMin());
        state.max = static_cast<double>(number->getMax());
        state.step = static_cast<double>(number->getSensitivity());
    } else if (auto* integer = qobject_cast<const DzIntProperty*>(property)) {
        takeInteger(integer, &state);
    } else if (auto* text = qobject_cast<const DzStringProperty*>(property)) {
        takeString(text, &state);
    } else if (auto* image = qobject_cast<const DzImageProperty*>(property)) {
        state.type = Image;
        state.text = image->getFilename();
    }
    return state;
}

bool ChannelState::operator==(const ChannelState& other) const
{
    return type == other.type && hidden == other.hidden && locked == other.locked
        && user == other.user && mappable == other.mappable && clamped == other.clamped
        && fileType == other.fileType && value == other.value && defaultValue == other.defaultValue
        && min == other.min && max == other.max && step == other.step && label == other.label
        && path == other.path && text == other.text && defaultText == other.defaultText
        && filter == other.filter && map == other.map && items == other.items;
}

// Reading -----------------------------------------------------------------------------------

JsonIndex::Value channelOf(const JsonIndex& index, JsonIndex::Value entry)
{
    const Value channel = index.find(entry, "channel");
    return index.isObject(channel) ? channel : none;
}

QString channelPropertyName(const JsonIndex& index, const ChannelPlaces& places)
{
    const Channel channel(index, places);
    const QString name = channel.string("name");
    return name.isEmpty() ? channel.string("id") : name;
}

namespace {

/// Reads one channel into a new property.
class PropertyReader
{
public:
    PropertyReader(const JsonIndex& index, const QString& name, const ChannelPlaces& places,
        const LayeredImages& images, ChannelProblems* problems)
        : m_index(index)
        , m_channel(index, places)
        , m_keys(places.keys)
        , m_images(images)
        , m_problems(problems)
        , m_name(name)
        , m_user(m_index.boolean(m_channel.entryMember("user_property")))
    {
    }

    DzProperty* read(const QString& type) const
    {
        std::unique_ptr<DzProperty> property(make(type));
        if (!property)
            return nullptr;
        readCommon(property.get());
        readKey(property.get());
        property->lock(m_channel.boolean("locked", false));
        return property.release();
    }
    QString type() const { return m_channel.string("type"); }
    /// The type that a key's value has; empty when there is no key.
    QString typeOfKey() const
    {
        double number = 0;
        if (keyNumber(m_index, m_keys.value, &number))
            return QStringLiteral("float");
        const Value item = keyItem(m_index, m_keys.value);
        if (m_index.isString(item))
            return QStringLiteral("string");
        if (m_index.kind(item) == JsonIndex::Boolean)
            return QStringLiteral("bool");
        if (m_index.kind(item) == JsonIndex::NumberArray)
            return QStringLiteral("color");
        return m_keys.hasImage() || item != none ? QStringLiteral("image") : QString();
    }

private:
    DzProperty* make(const QString& type) const
    {
        if (type == QLatin1String("float"))
            return makeFloat();
        if (type == QLatin1String("int"))
            return makeInt();
        if (type == QLatin1String("bool"))
            return makeBool();
        if (type == QLatin1String("enum"))
            return makeEnum();
        if (type == QLatin1String("color") || type == QLatin1String("float_color"))
            return makeColor();
        if (type == QLatin1String("string"))
            return readText(new DzStringProperty(m_name, m_user));
        if (type == QLatin1String("file"))
            return makeFile();
        if (type == QLatin1String("image"))
            return makeImage();
        return nullptr;
    }

    /// The number that a member holds; 0 with a problem for something else.
    double number(Value value) const
    {
        if (value != none && !m_index.isNumber(value))
            m_problems->value = QStringLiteral("its value is not a number");
        return m_index.number(value);
    }
    double limit(const char* key, double fallback) const
    {
        const Value value = m_channel.member(key);
        return m_index.isNumber(value) ? m_index.number(value) : fallback;
    }

    DzProperty* makeFloat() const
    {
        auto* property
            = new DzFloatProperty(m_name, true, m_user, toFloat(number(m_channel.fallback())));
        property->setMinMax(toFloat(limit("min", static_cast<double>(property->getMin()))),
            toFloat(limit("max", static_cast<double>(property->getMax()))));
        property->setSensitivity(
            toFloat(limit("step_size", static_cast<double>(property->getSensitivity()))));
        property->setIsClamped(m_channel.boolean("clamped", false));
        property->setValue(toFloat(number(m_channel.current())));
        return property;
    }
    DzProperty* makeInt() const
    {
        auto* property
            = new DzIntProperty(m_name, true, m_user, toInt(number(m_channel.fallback())));
        property->setMinMax(
            toInt(limit("min", property->getMin())), toInt(limit("max", property->getMax())));
        property->setIsClamped(m_channel.boolean("clamped", false));
        property->setValue(toInt(number(m_channel.current())));
        return property;
    }
    bool isOn(Value value) const
    {
        if (value != none && m_index.kind(value) != JsonIndex::Boolean)
            m_problems->value = QStringLiteral("its value is neither true nor false");
        return m_index.boolean(value);
    }
    DzProperty* makeBool() const
    {
        auto* property = new DzBoolProperty(m_name, true, m_user, isOn(m_channel.fallback()));
        property->setBoolValue(isOn(m_channel.current()));
        return property;
    }
    DzProperty* makeEnum() const
    {
        auto property = std::make_unique<DzEnumProperty>(m_name, true, m_user);
        const Value items = m_channel.member("enum_values");
        int count = 0;
        for (Value item = m_index.isArray(items) ? m_index.firstChild(items) : none;
             item != none && count <= mostItems; item = m_index.nextSibling(item, items)) {
            // An item that cannot be added would move the numbers of all behind it.
            if (property->addItem(m_index.string(item)) < 0)
                count = mostItems;
            ++count;
        }
        // A surface whose definition is elsewhere has the number only.
        if (count == 0 || count > mostItems)
            return makeInt();
        property->setDefaultValue(toInt(number(m_channel.fallback())));
        property->setValue(toInt(number(m_channel.current())));
        return property.release();
    }
    QColor color(Value value) const
    {
        double parts[3] = { 0, 0, 0 };
        if (value != none && m_index.numbers(value, parts, 3) != 3)
            m_problems->value = QStringLiteral("its value is not a colour");
        return QColor(toByte(parts[0]), toByte(parts[1]), toByte(parts[2]));
    }
    DzProperty* makeColor() const
    {
        auto* property = new DzColorProperty(m_name, true, m_user, color(m_channel.fallback()));
        property->setColorValue(color(m_channel.current()));
        return property;
    }
    DzProperty* readText(DzStringProperty* property) const
    {
        for (const Value value : { m_channel.fallback(), m_channel.current() })
            if (value != none && !m_index.isString(value))
                m_problems->value = QStringLiteral("its value is not text");
        property->setDefaultValue(m_index.string(m_channel.fallback()));
        property->setValue(m_index.string(m_channel.current()));
        return property;
    }
    DzProperty* makeFile() const
    {
        auto* property = new DzFileProperty(m_name, m_user);
        const QString type = m_channel.string("file_type");
        for (int i = 0; i < 4; ++i)
            if (type == QLatin1String(fileTypeNames[i]))
                property->setType(static_cast<DzFileProperty::FileType>(i));
        property->setFilter(m_channel.string("file_filter"));
        return readText(property);
    }
    DzProperty* makeImage() const
    {
        auto* property = new DzImageProperty(m_name, m_user);
        const QString file = m_channel.image(m_images, m_problems);
        const QString value = m_index.string(m_channel.current());
        property->setValue(file.isEmpty() ? imageFilename(value) : file);
        return property;
    }
    void readCommon(DzProperty* property) const
    {
        const QString label = m_channel.string("label");
        if (!label.isEmpty())
            property->setLabel(label);
        property->setPath(m_index.string(m_channel.entryMember("group")));
        property->setHidden(!m_channel.boolean("visible", true));
        if (auto* numeric = qobject_cast<DzNumericProperty*>(property)) {
            const QString map = m_channel.image(m_images, m_problems);
            numeric->setIsMappable(m_channel.boolean("mappable", false) || !map.isEmpty());
            numeric->setMap(map);
        }
    }

    /// Lays the key at the start over the value.
    void readKey(DzProperty* property) const
    {
        const Value item = keyItem(m_index, m_keys.value);
        double number = 0;
        const bool isNumber = keyNumber(m_index, m_keys.value, &number);
        if (m_keys.value == none)
            return;
        if (auto* image = qobject_cast<DzImageProperty*>(property)) {
            if (!m_keys.hasImage())
                image->setValue(imageFilename(m_index.string(item)));
        } else if (auto* string = qobject_cast<DzStringProperty*>(property)) {
            if (m_index.isString(item))
                string->setValue(m_index.string(item));
            else
                m_problems->value = QStringLiteral("its key is not a text");
        } else if (auto* onOff = qobject_cast<DzBoolProperty*>(property)) {
            if (m_index.kind(item) == JsonIndex::Boolean || isNumber)
                onOff->setBoolValue(isNumber ? number != 0 : m_index.boolean(item));
            else
                m_problems->value = QStringLiteral("its key is neither true nor false");
        } else if (auto* colored = qobject_cast<DzColorProperty*>(property)) {
            colored->setColorValue(color(item));
        } else if (!isNumber) {
            m_problems->value = QStringLiteral("its key is not a number");
        } else if (auto* real = qobject_cast<DzFloatProperty*>(property)) {
            real->setValue(toFloat(number));
        } else if (auto* integer = qobject_cast<DzIntProperty*>(property)) {
            integer->setValue(toInt(number));
        }
    }

    const JsonIndex& m_index;
    Channel m_channel;
    const ChannelKeys& m_keys;
    const LayeredImages& m_images;
    ChannelProblems* m_problems;
    QString m_name;
    bool m_user;
};

} // namespace

DzProperty* propertyFromChannel(const JsonIndex& index, const ChannelPlaces& places,
    const LayeredImages& images, ChannelProblems* problems)
{
    const PropertyReader reader(
        index, channelPropertyName(index, places), places, images, problems);
    return reader.read(reader.type());
}

DzProperty* propertyFromKeys(const JsonIndex& index, const QString& name, const ChannelKeys& keys,
    const LayeredImages& images, ChannelProblems* problems)
{
    ChannelPlaces places;
    places.keys = keys;
    const PropertyReader reader(index, name, places, images, problems);
    return reader.read(reader.typeOfKey());
}

// Writing -----------------------------------------------------------------------------------

QByteArray channelTypeToken(const ChannelState& state)
{
    return '"' + QByteArray(typeNames[state.type]) + '"';
}

namespace {

QByteArray numberToken(const ChannelState& state, double value)
{
    switch (state.type) {
    case ChannelState::Bool:
        return jsonBooleanToken(value != 0);
    case ChannelState::Color:
        return colorToken(value);
    case ChannelState::Float:
        return jsonNumberToken(value);
    default:
        return QByteArray::number(static_cast<qint64>(value));
    }
}

QByteArray limitToken(const ChannelState& state, double limit)
{
    return state.type == ChannelState::Int ? QByteArray::number(static_cast<qint64>(limit))
                                           : jsonNumberToken(limit);
}

QByteArray onlyIf(bool written, const QByteArray& token)
{
    return written ? token : QByteArray();
}

QByteArray itemsToken(const QStringList& items)
{
    QByteArray token = "[";
    for (const QString& item : items)
        token += (token.size() == 1 ? " " : ", ") + jsonStringToken(item);
    return token + " ]";
}

QByteArray imageToken(const ChannelState& state)
{
    const QString& file = state.type == ChannelState::Image ? state.text : state.map;
    return onlyIf(!file.isEmpty(), jsonStringToken(imageReference(file)));
}

} // namespace

QByteArray channelValueToken(const ChannelState& state)
{
    if (state.isNumeric())
        return numberToken(state, state.value);
    return onlyIf(state.type != ChannelState::Image, jsonStringToken(state.text));
}

QByteArray channelDefaultToken(const ChannelState& state)
{
    if (state.isNumeric())
        return numberToken(state, state.defaultValue);
    return onlyIf(state.type != ChannelState::Image, jsonStringToken(state.defaultText));
}

QVector<ChannelMember> channelMembers(const ChannelState& state)
{
    const bool isColor = state.type == ChannelState::Color;
    const bool isFile = state.type == ChannelState::File;
    const QByteArray on = QByteArrayLiteral("true");
    const QByteArray gamma = isColor ? QByteArrayLiteral("0") : QByteArrayLiteral("1");
    return {
        { "label", jsonStringToken(state.label) },
        { "visible", onlyIf(state.hidden, QByteArrayLiteral("false")) },
        { "locked", onlyIf(state.locked, on) },
        { "value", channelDefaultToken(state) },
        { "current_value", channelValueToken(state) },
        { "min", isColor ? "0" : onlyIf(state.hasLimits(), limitToken(state, state.min)) },
        { "max", isColor ? "1" : onlyIf(state.hasLimits(), limitToken(state, state.max)) },
        { "clamped", onlyIf(isColor || state.clamped, on) },
        { "step_size",
            state.type == ChannelState::Int
                ? QByteArrayLiteral("1")
                : onlyIf(state.type == ChannelState::Float, jsonNumberToken(state.step)) },
        { "default_image_gamma", onlyIf(state.mappable, gamma) },
        { "mappable", onlyIf(state.mappable, on) },
        { "enum_values", onlyIf(state.type == ChannelState::Enum, itemsToken(state.items)) },
        { "file_type", onlyIf(isFile, '"' + QByteArray(fileTypeNames[state.fileType]) + '"') },
        { "file_display_text", onlyIf(isFile, QByteArrayLiteral("\"\"")) },
        { "file_filter", onlyIf(isFile, jsonStringToken(state.filter)) },
        { "image_file", imageToken(state) },
    };
}

JsonPiece fullChannelEntry(const QString& name, const ChannelState& state, bool withMap)
{
    JsonPiece channel = JsonPiece::object();
    channel.add("id", jsonStringToken(name));
    channel.add("type", channelTypeToken(state));
    for (const ChannelMember& member : channelMembers(state)) {
        const bool isMap = state.isNumeric() && qstrcmp(member.key, "image_file") == 0;
        if (!member.token.isEmpty() && (withMap || !isMap))
            channel.add(member.key, member.token);
    }
    JsonPiece entry = JsonPiece::object();
    if (state.user)
        entry.add("user_property", QByteArrayLiteral("true"));
    entry.add("channel", channel);
    entry.add("group", jsonStringToken(state.path));
    return entry;
}

JsonPiece instanceChannelEntry(
    const QByteArray& idToken, const QByteArray& typeToken, const ChannelState& state)
{
    JsonPiece channel = JsonPiece::object();
    channel.add("id", idToken);
    channel.add("type", typeToken);
    const QByteArray value = channelValueToken(state);
    if (!value.isEmpty())
        channel.add("current_value", value);
    const QByteArray image = imageToken(state);
    if (!image.isEmpty())
        channel.add("image_file", image);
    JsonPiece entry = JsonPiece::object();
    entry.add("channel", channel);
    return entry;
}
