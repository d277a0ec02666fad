// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptconversion.h"

#include "dzelement.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "idzbrickuser.h"
#include "scriptclasses.h"
#include "scriptengine.h"

#include <QCoreApplication>
#include <QMetaEnum>
#include <QMetaType>
#include <QScriptValueIterator>
#include <QUuid>
#include <cmath>
#include <limits>

namespace {

/// Lists in lists deeper than this are taken for lists that contain themselves.
const int deepestNesting = 64;

const char* const colorParts[4] = { "red", "green", "blue", "alpha" };
const char* const vectorParts[3] = { "x", "y", "z" };

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

ScriptType::Kind kindOfName(const QByteArray& name)
{
    static const QHash<QByteArray, ScriptType::Kind> kinds {
        { "void", ScriptType::Void },
        { "bool", ScriptType::Bool },
        { "int", ScriptType::Int },
        { "DzError", ScriptType::Int },
        { "ParamType", ScriptType::Int },
        { "DzBrickParam::ParamType", ScriptType::Int },
        { "uint", ScriptType::UInt },
        { "float", ScriptType::Float },
        { "double", ScriptType::Double },
        { "QString", ScriptType::Text },
        { "QColor", ScriptType::Color },
        { "DzVec3", ScriptType::Vec3 },
        { "QList<uint>&", ScriptType::Numbers },
        { "QVector<DzProperty*>", ScriptType::Properties },
        { "QList<IDzBrickUser*>", ScriptType::BrickUsers },
        { "QHash<QString,DzShaderBrick*>", ScriptType::BricksByName },
    };
    return kinds.value(name, ScriptType::Unsupported);
}

/// The enumeration that a type's name stands for in `scope`; an invalid one when it stands for
/// none.
QMetaEnum enumerationOf(const QByteArray& name, const QMetaObject* scope)
{
    const int separator = name.lastIndexOf("::");
    const QMetaObject* owner
        = separator < 0 ? scope : ScriptClasses::findHostClass(name.left(separator));
    const QByteArray itself = separator < 0 ? name : name.mid(separator + 2);
    return owner ? owner->enumerator(owner->indexOfEnumerator(itself.constData())) : QMetaEnum();
}

/// The same for a type that Qt has a number for.
QMetaEnum registeredEnumeration(const QByteArray& name, int metaType)
{
    if (!(QMetaType::typeFlags(metaType) & QMetaType::IsEnumeration))
        return QMetaEnum();
    const QMetaObject* scope = QMetaType::metaObjectForType(metaType);
    return scope ? enumerationOf(name.mid(name.lastIndexOf(':') + 1), scope) : QMetaEnum();
}

bool isItem(const QMetaEnum& enumeration, int value)
{
    if (!enumeration.isFlag())
        return enumeration.valueToKey(value) != nullptr;
    for (int i = 0; i < enumeration.keyCount(); ++i)
        value &= ~enumeration.value(i);
    return value == 0;
}

/// "DzClass.First, DzClass.Second", as scripts write it.
QString itemsOf(const QMetaEnum& enumeration)
{
    QStringList items;
    for (int i = 0; i < enumeration.keyCount(); ++i)
        items.append(QStringLiteral("%1.%2").arg(
            QString::fromLatin1(enumeration.scope()), QString::fromLatin1(enumeration.key(i))));
    return items.join(QStringLiteral(", "));
}

/// What is nearer to the largest float than to anything larger is taken for it: so it is written,
/// with the fewest digits that tell it from others.
const double mostSingle
    = std::nextafter(double(std::numeric_limits<float>::max()) + std::ldexp(1.0, 103), 0.0);

float toSingle(double number)
{
    const double most = double(std::numeric_limits<float>::max());
    return static_cast<float>(qBound(-most, number, most));
}

/// The number with the fewest digits that stands for the same float, so that 0.1 stays 0.1.
double shortest(float value)
{
    for (int digits = 6; digits < 9; ++digits) {
        const double candidate
            = QByteArray::number(static_cast<double>(value), 'g', digits).toDouble();
        if (static_cast<float>(candidate) == value)
            return candidate;
    }
    return static_cast<double>(value);
}

/// Part `index` of a value that is written as an object or as a list.
QScriptValue part(const QScriptValue& value, const char* name, quint32 index)
{
    return value.isArray() ? value.property(index) : value.property(QString::fromLatin1(name));
}

} // namespace

ScriptType ScriptType::find(const QByteArray& name, const QMetaObject* scope)
{
    ScriptType type;
    type.name = name;
    type.kind = kindOfName(name);
    if (type.kind != Unsupported)
        return type;
    if (name.endsWith('*')) {
        type.className = name.startsWith("const ") ? name.mid(6) : name;
        type.className = type.className.left(type.className.size() - 1).trimmed();
        type.kind = type.className == "IDzBrickUser" ? BrickUser : Object;
        return type;
    }
    type.metaType = QMetaType::type(name.constData());
    type.enumeration = enumerationOf(name, scope);
    if (!type.enumeration.isValid())
        type.enumeration = registeredEnumeration(name, type.metaType);
    if (type.enumeration.isValid())
        type.kind = Enumeration;
    else if (type.metaType != QMetaType::UnknownType)
        type.kind = Value;
    return type;
}

void ScriptStorage::prepare(const ScriptType& type)
{
    if (type.kind == ScriptType::Value && type.metaType != QMetaType::QVariant)
        value = QVariant(type.metaType, nullptr);
}

void* ScriptStorage::address(const ScriptType& type)
{
    switch (type.kind) {
    case ScriptType::Unsupported:
    case ScriptType::Void:
        return nullptr;
    case ScriptType::Bool:
        return &boolean;
    case ScriptType::Int:
    case ScriptType::Enumeration:
        return &integer;
    case ScriptType::UInt:
        return &natural;
    case ScriptType::Float:
        return &single;
    case ScriptType::Double:
        return &number;
    case ScriptType::Text:
        return &text;
    case ScriptType::Color:
        return &color;
    case ScriptType::Vec3:
        return &vector;
    case ScriptType::Value:
        return type.metaType == QMetaType::QVariant ? &value : value.data();
    case ScriptType::Object:
    case ScriptType::BrickUser:
        return &pointer;
    case ScriptType::Numbers:
        return &numbers;
    case ScriptType::Properties:
        return &properties;
    case ScriptType::BrickUsers:
        return &users;
    case ScriptType::BricksByName:
        return &bricks;
    }
    return nullptr;
}

void ScriptStorage::load(const ScriptType& type, const void* source)
{
    switch (type.kind) {
    case ScriptType::Bool:
        boolean = *static_cast<const bool*>(source);
        break;
    case ScriptType::Int:
    case ScriptType::Enumeration:
        integer = *static_cast<const int*>(source);
        break;
    case ScriptType::UInt:
        natural = *static_cast<const uint*>(source);
        break;
    case ScriptType::Float:
        single = *static_cast<const float*>(source);
        break;
    case ScriptType::Double:
        number = *static_cast<const double*>(source);
        break;
    case ScriptType::Text:
        text = *static_cast<const QString*>(source);
        break;
    case ScriptType::Color:
        color = *static_cast<const QColor*>(source);
        break;
    case ScriptType::Value:
        value = QVariant(type.metaType, source);
        break;
    case ScriptType::Object:
    case ScriptType::BrickUser:
        pointer = *static_cast<void* const*>(source);
        break;
    default:
        break; // no signal carries it
    }
}

bool ScriptConversion::read(const QScriptValue& value, const ScriptType& type, bool isStrict,
    ScriptStorage* storage, QString* error) const
{
    const auto wants = [&](const QString& wanted) {
        *error = text("is %1; %2 is wanted").arg(describe(value), wanted);
        return false;
    };
    double number = 0;
    switch (type.kind) {
    case ScriptType::Bool:
        if (!value.isBool() && !value.isNumber())
            return wants(text("true or false"));
        storage->boolean = value.toBool();
        return true;
    case ScriptType::Int:
    case ScriptType::Enumeration:
        if (!readNumber(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(),
                true, &number, error))
            return false;
        storage->integer = static_cast<int>(number);
        if (type.kind == ScriptType::Int || isItem(type.enumeration, storage->integer))
            return true;
        *error = text("is %1; one of %2 is wanted")
                     .arg(QString::number(storage->integer), itemsOf(type.enumeration));
        return false;
    case ScriptType::UInt:
        if (!readNumber(value, 0, std::numeric_limits<uint>::max(), true, &number, error))
            return false;
        storage->natural = static_cast<uint>(number);
        return true;
    case ScriptType::Float:
        if (!readNumber(value, -mostSingle, mostSingle, false, &number, error))
            return false;
        storage->single = toSingle(number);
        return true;
    case ScriptType::Double:
        return readNumber(value, -std::numeric_limits<double>::max(),
            std::numeric_limits<double>::max(), false, &storage->number, error);
    case ScriptType::Text:
        if (!value.isString() && (isStrict || !(value.isNumber() || value.isBool())))
            return wants(text("a text"));
        storage->text = value.toString();
        return true;
    case ScriptType::Color:
        return readColor(value, &storage->color) || wants(text("a Color"));
    case ScriptType::Vec3:
        return readVec3(value, &storage->vector) || wants(text("a DzVec3"));
    case ScriptType::Object:
    case ScriptType::BrickUser:
        return readObject(value, type, storage, error);
    case ScriptType::Numbers:
        return value.isArray() || wants(text("an Array to be filled"));
    case ScriptType::BricksByName:
        return readBricks(value, &storage->bricks, error);
    case ScriptType::Value:
        return readValue(value, type, &storage->value, error);
    case ScriptType::Unsupported:
    case ScriptType::Void:
    case ScriptType::Properties:
    case ScriptType::BrickUsers:
        break;
    }
    *error
        = text("is of the type %1, which scripts cannot make").arg(QString::fromLatin1(type.name));
    return false;
}

bool ScriptConversion::readNumber(const QScriptValue& value, double least, double most,
    bool isWhole, double* number, QString* error) const
{
    if (!value.isNumber() && !value.isBool()) {
        *error = text("is %1; a number is wanted").arg(describe(value));
        return false;
    }
    *number = value.toNumber();
    // Neither infinite nor no number at all.
    const bool isFinite = std::isfinite(*number);
    if (isFinite && *number >= least && *number <= most
        && (!isWhole || std::floor(*number) == *number))
        return true;
    *error = isWhole && isFinite && *number >= least && *number <= most
        ? text("is %1; a whole number is wanted").arg(value.toString())
        : text("is %1; a number from %2 to %3 is wanted")
              .arg(value.toString(), QString::number(least), QString::number(most));
    return false;
}

bool ScriptConversion::readObject(
    const QScriptValue& value, const ScriptType& type, ScriptStorage* storage, QString* error) const
{
    // Settings that are read may be missing. Into none nothing can be written.
    const bool isToBeFilled
        = type.className == "DzSettings" || type.className == "DzPropertySettings";
    if (value.isNull() && (!isToBeFilled || type.name.startsWith("const ")))
        return true;
    const ScriptHandle* handle = m_engine->handleOf(value);
    QObject* object = handle ? handle->target() : nullptr;
    if (handle && !object) {
        *error = text("is a %1 that has been deleted").arg(handle->className());
        return false;
    }
    if (object && type.kind == ScriptType::BrickUser)
        storage->pointer = dynamic_cast<IDzBrickUser*>(object);
    else if (object)
        storage->pointer = object->qt_metacast(type.className.constData());
    storage->object = object;
    if (storage->pointer)
        return true;
    *error = text("is %1; a %2 is wanted")
                 .arg(describe(value),
                     type.kind == ScriptType::BrickUser ? text("brick user")
                                                        : QString::fromLatin1(type.className));
    return false;
}

bool ScriptConversion::readBricks(
    const QScriptValue& value, QHash<QString, DzShaderBrick*>* bricks, QString* error) const
{
    if (!value.isObject()) {
        *error = text("is %1; an object of bricks by their names is wanted").arg(describe(value));
        return false;
    }
    for (QScriptValueIterator it(value); it.hasNext();) {
        it.next();
        const ScriptHandle* handle = m_engine->handleOf(it.value());
        auto* brick = handle ? qobject_cast<DzShaderBrick*>(handle->target()) : nullptr;
        if (!brick) {
            *error = text("holds %1 under \"%2\"; a brick is wanted")
                         .arg(describe(it.value()), it.name());
            return false;
        }
        bricks->insert(it.name(), brick);
    }
    return true;
}

bool ScriptConversion::readValue(
    const QScriptValue& value, const ScriptType& type, QVariant* result, QString* error) const
{
    bool isTooDeep = false;
    QVariant given = toVariant(value, 0, &isTooDeep);
    if (isTooDeep) {
        *error = text("is a list of more than %1 levels, or contains itself").arg(deepestNesting);
        return false;
    }
    if (type.metaType == QMetaType::QVariant) {
        *result = given;
        return true;
    }
    // A text that is no identifier converts too, to one that means nothing.
    const bool isBadIdentifier = type.metaType == QMetaType::QUuid && given.toUuid().isNull();
    if (isBadIdentifier || !given.convert(type.metaType)) {
        *error = text("is %1; a %2 is wanted").arg(describe(value), QString::fromLatin1(type.name));
        return false;
    }
    *result = given;
    return true;
}

QVariant ScriptConversion::toVariant(const QScriptValue& value, int depth, bool* isTooDeep) const
{
    // One with many parts would go on being looked through.
    if (depth > deepestNesting || *isTooDeep) {
        *isTooDeep = true;
        return QVariant();
    }
    if (const ScriptHandle* handle = m_engine->handleOf(value))
        return QVariant::fromValue(handle->target());
    if (value.isBool())
        return value.toBool();
    if (value.isNumber())
        return value.toNumber();
    if (value.isString())
        return value.toString();
    QColor color;
    if (value.instanceOf(m_engine->colorConstructor()) && readColor(value, &color))
        return color;
    if (value.isArray()) {
        QVariantList list;
        const quint32 length = value.property(QStringLiteral("length")).toUInt32();
        for (quint32 i = 0; i < length && !*isTooDeep; ++i)
            list.append(toVariant(value.property(i), depth + 1, isTooDeep));
        return list;
    }
    if (!value.isObject() || value.isFunction())
        return QVariant();
    QVariantMap map;
    for (QScriptValueIterator it(value); it.hasNext() && !*isTooDeep;) {
        it.next();
        map.insert(it.name(), toVariant(it.value(), depth + 1, isTooDeep));
    }
    return map;
}

QScriptValue ScriptConversion::write(const ScriptType& type, const ScriptStorage& storage) const
{
    switch (type.kind) {
    case ScriptType::Bool:
        return storage.boolean;
    case ScriptType::Int:
    case ScriptType::Enumeration:
        return storage.integer;
    case ScriptType::UInt:
        return storage.natural;
    case ScriptType::Float:
        return shortest(storage.single);
    case ScriptType::Double:
        return storage.number;
    case ScriptType::Text:
        return storage.text;
    case ScriptType::Color:
        return fromColor(storage.color);
    case ScriptType::Vec3:
        return fromVec3(storage.vector);
    case ScriptType::Value:
        return fromVariant(storage.value);
    case ScriptType::Object:
        return m_engine->wrap(static_cast<QObject*>(storage.pointer));
    case ScriptType::BrickUser: {
        auto* user = static_cast<IDzBrickUser*>(storage.pointer);
        return m_engine->wrap(user ? user->getBrickUserElement() : nullptr);
    }
    case ScriptType::Properties: {
        QScriptValue list = m_engine->engine()->newArray();
        quint32 index = 0;
        for (DzProperty* property : storage.properties)
            list.setProperty(index++, m_engine->wrap(property));
        return list;
    }
    case ScriptType::BrickUsers: {
        QScriptValue list = m_engine->engine()->newArray();
        quint32 index = 0;
        for (IDzBrickUser* user : storage.users)
            list.setProperty(index++, m_engine->wrap(user ? user->getBrickUserElement() : nullptr));
        return list;
    }
    case ScriptType::Numbers: {
        QScriptValue list = m_engine->engine()->newArray();
        quint32 index = 0;
        for (const uint number : storage.numbers)
            list.setProperty(index++, number);
        return list;
    }
    case ScriptType::Unsupported:
    case ScriptType::Void:
    case ScriptType::BricksByName:
        break;
    }
    return m_engine->engine()->undefinedValue();
}

QScriptValue ScriptConversion::fromVariant(const QVariant& value) const
{
    QScriptEngine* engine = m_engine->engine();
    const int type = value.userType();
    if (QMetaType::typeFlags(type) & QMetaType::PointerToQObject)
        return m_engine->wrap(value.value<QObject*>());
    switch (type) {
    case QMetaType::UnknownType:
        return engine->nullValue();
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::Float:
        return shortest(value.toFloat());
    case QMetaType::QColor:
        return fromColor(value.value<QColor>());
    case QMetaType::QVariantMap: {
        QScriptValue object = engine->newObject();
        const QVariantMap map = value.toMap();
        for (auto it = map.begin(); it != map.end(); ++it)
            object.setProperty(it.key(), fromVariant(it.value()));
        return object;
    }
    default:
        break;
    }
    if (type != QMetaType::QString && type != QMetaType::QByteArray
        && value.canConvert<QVariantList>()) {
        QScriptValue list = engine->newArray();
        quint32 index = 0;
        for (const QVariant& item : value.value<QSequentialIterable>())
            list.setProperty(index++, fromVariant(item));
        return list;
    }
    return value.toString();
}

QScriptValue ScriptConversion::fromColor(const QColor& color) const
{
    QScriptValue value = m_engine->engine()->newObject();
    value.setPrototype(m_engine->colorConstructor().property(QStringLiteral("prototype")));
    const int parts[4] = { color.red(), color.green(), color.blue(), color.alpha() };
    for (int i = 0; i < 4; ++i)
        value.setProperty(QString::fromLatin1(colorParts[i]), parts[i]);
    return value;
}

QScriptValue ScriptConversion::fromVec3(const DzVec3& vector) const
{
    QScriptValue value = m_engine->engine()->newObject();
    value.setPrototype(m_engine->vec3Constructor().property(QStringLiteral("prototype")));
    const float parts[3] = { vector.m_x, vector.m_y, vector.m_z };
    for (int i = 0; i < 3; ++i)
        value.setProperty(QString::fromLatin1(vectorParts[i]), shortest(parts[i]));
    return value;
}

QScriptValue ScriptConversion::fromTexts(const QStringList& texts) const
{
    QScriptValue list = m_engine->engine()->newArray();
    quint32 index = 0;
    for (const QString& item : texts)
        list.setProperty(index++, item);
    return list;
}

bool ScriptConversion::readColor(const QScriptValue& value, QColor* color) const
{
    if (value.isString()) {
        *color = QColor(value.toString());
        return color->isValid();
    }
    if (!value.isObject())
        return false;
    int parts[4] = { 0, 0, 0, 255 };
    for (quint32 i = 0; i < 4; ++i) {
        const QScriptValue given = part(value, colorParts[i], i);
        if (i == 3 && !given.isValid())
            break;
        double number = 0;
        QString error;
        if (!readNumber(given, 0, 255, true, &number, &error))
            return false;
        parts[i] = static_cast<int>(number);
    }
    *color = QColor(parts[0], parts[1], parts[2], parts[3]);
    return true;
}

bool ScriptConversion::readVec3(const QScriptValue& value, DzVec3* vector) const
{
    if (!value.isObject())
        return false;
    float parts[3];
    for (quint32 i = 0; i < 3; ++i) {
        double number = 0;
        QString error;
        if (!readNumber(
                part(value, vectorParts[i], i), -mostSingle, mostSingle, false, &number, &error))
            return false;
        parts[i] = toSingle(number);
    }
    *vector = DzVec3(parts[0], parts[1], parts[2]);
    return true;
}

QString ScriptConversion::describe(const QScriptValue& value) const
{
    if (const ScriptHandle* handle = m_engine->handleOf(value))
        return text("a %1").arg(handle->className());
    if (!value.isValid() || value.isUndefined())
        return text("undefined");
    if (value.isNull())
        return text("null");
    if (value.isString())
        return QStringLiteral("\"%1\"").arg(value.toString().left(40));
    if (value.isNumber() || value.isBool())
        return value.toString();
    if (value.isFunction())
        return text("a function");
    return value.isArray() ? text("an Array") : text("an Object");
}
