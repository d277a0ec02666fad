// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzvec3.h"

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QList>
#include <QMetaEnum>
#include <QScriptValue>
#include <QVariant>
#include <QVector>

class DzProperty;
class DzShaderBrick;
class IDzBrickUser;
class ScriptEngine;

/// The type of an argument or a result of a native method.
struct ScriptType {
    enum Kind {
        Unsupported,
        Void,
        Bool,
        Int,
        UInt,
        Float,
        Double,
        Text,
        Color,
        Vec3,
        Value,        ///< anything else that Qt has a number for
        Object,       ///< a pointer to an object of class `className`
        BrickUser,    ///< a pointer to a brick user
        Numbers,      ///< a list of brick numbers that the method fills
        Properties,   ///< a list of properties
        BrickUsers,   ///< a list of brick users
        BricksByName, ///< bricks by a name
        Enumeration
    };

    /// `name` is a type as the meta-object writes it.
    static ScriptType find(const QByteArray& name, const QMetaObject* scope);

    Kind kind = Unsupported;
    int metaType = 0;
    QByteArray name;
    QByteArray className;
    QMetaEnum enumeration; ///< of an Enumeration
};

/// Room for one value of any of these types.
class ScriptStorage
{
public:
    /// Makes room for a result.
    void prepare(const ScriptType& type);
    /// The address of the value, as a native call wants it.
    void* address(const ScriptType& type);
    /// Copies the value at an address, as a signal passes it.
    void load(const ScriptType& type, const void* source);

    bool boolean = false;
    int integer = 0;
    uint natural = 0;
    float single = 0;
    double number = 0;
    QString text;
    QColor color;
    DzVec3 vector;
    QVariant value;
    void* pointer = nullptr;
    QList<uint> numbers;
    QVector<DzProperty*> properties;
    QList<IDzBrickUser*> users;
    QHash<QString, DzShaderBrick*> bricks;
    /// The object behind `pointer`.
    QObject* object = nullptr;
};

/// Turns values of scripts into native ones and back.
class ScriptConversion
{
public:
    explicit ScriptConversion(ScriptEngine* engine)
        : m_engine(engine)
    {
    }

    /// Reads a script's value into the storage. With `isStrict` a
    /// number is no text. False, with what is wrong in `error`.
    bool read(const QScriptValue& value, const ScriptType& type, bool isStrict,
        ScriptStorage* storage, QString* error) const;
    /// The value in the storage for a script.
    QScriptValue write(const ScriptType& type, const ScriptStorage& storage) const;

    QScriptValue fromVariant(const QVariant& value) const;
    QScriptValue fromColor(const QColor& color) const;
    QScriptValue fromVec3(const DzVec3& vector) const;
    QScriptValue fromTexts(const QStringList& texts) const;

    /// A colour from an object of red, green, blue and alpha, a list of these, or a name.
    bool readColor(const QScriptValue& value, QColor* color) const;
    bool readVec3(const QScriptValue& value, DzVec3* vector) const;
    /// The value for a person: a kind of value or a class.
    QString describe(const QScriptValue& value) const;

private:
    bool readNumber(const QScriptValue& value, double least, double most, bool isWhole,
        double* number, QString* error) const;
    bool readObject(const QScriptValue& value, const ScriptType& type, ScriptStorage* storage,
        QString* error) const;
    bool readBricks(
        const QScriptValue& value, QHash<QString, DzShaderBrick*>* bricks, QString* error) const;
    bool readValue(
        const QScriptValue& value, const ScriptType& type, QVariant* result, QString* error) const;
    QVariant toVariant(const QScriptValue& value, int depth, bool* isTooDeep) const;

    ScriptEngine* m_engine;
};
