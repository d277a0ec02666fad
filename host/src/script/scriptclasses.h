// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scriptconversion.h"

#include <QHash>
#include <QMetaMethod>
#include <QScriptEngine>
#include <QScriptValue>
#include <functional>
#include <memory>
#include <vector>

class ScriptEngine;

/// The classes as scripts see them: a constructor with the enumerations on it, and a prototype
/// with everything that the class makes invokable.
class ScriptClasses
{
public:
    /// Makes an object of a class of the host; null, with the reason in `error`, for unsuitable
    /// arguments.
    typedef std::function<QObject*(QScriptContext* context, QString* error)> Maker;

    explicit ScriptClasses(ScriptEngine* engine);
    ~ScriptClasses();

    /// Puts the constructors of the host's classes and of all registered ones into the global
    /// object.
    void defineConstructors();
    /// Adds a class of scripts alone.
    void addClass(const QMetaObject* metaObject, const Maker& maker);
    /// The prototype of a class, made when it is first asked for.
    QScriptValue prototype(const QMetaObject* metaObject);
    QScriptValue constructor(const QMetaObject* metaObject);

    /// A class of the host by its name, null for others.
    static const QMetaObject* findHostClass(const QByteArray& name);

private:
    Q_DISABLE_COPY(ScriptClasses)

    struct Method;
    struct MethodGroup;
    struct Property;
    struct Signal;
    struct Class;
    class Call;

    Class* find(const QMetaObject* metaObject);
    void addMethods(Class* scriptClass);
    void addProperties(Class* scriptClass);
    void addEnumerations(Class* scriptClass);
    bool isObjectClass(const QByteArray& className) const;
    static Method describe(const QMetaMethod& method);

    static QScriptValue construct(QScriptContext* context, QScriptEngine* engine, void* data);
    static QScriptValue call(QScriptContext* context, QScriptEngine* engine, void* data);
    static QScriptValue access(QScriptContext* context, QScriptEngine* engine, void* data);
    static QScriptValue getSignal(QScriptContext* context, QScriptEngine* engine, void* data);

    ScriptEngine* m_engine;
    std::vector<std::unique_ptr<Class>> m_classes;
    QHash<const QMetaObject*, Class*> m_byMetaObject;
};
