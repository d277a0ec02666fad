// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "scriptconversion.h"

#include <QMetaMethod>
#include <QObject>
#include <QPointer>
#include <QScriptValue>
#include <deque>
#include <vector>

class QScriptContext;
class QScriptEngine;
class ScriptEngine;

/// Receives the signals that scripts connect to functions.
///
/// A function does not run in the middle of the native call that emits: it waits until that call
/// has come back to the script. So it may delete whatever it likes.
class ScriptSignals : public QObject
{
public:
    explicit ScriptSignals(ScriptEngine* engine);
    ~ScriptSignals() override;

    /// What a script sees of a signal of one object: `connect` and `disconnect`.
    QScriptValue signalObject(QObject* sender, const QMetaMethod& signal);
    /// Runs the functions that wait, and those that come up meanwhile. An invalid value, or what
    /// one of them threw; then the others are forgotten.
    QScriptValue runHandlers();

    // QObject
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override;

private:
    struct Connection {
        QPointer<QObject> sender;
        int signal;
        QVector<ScriptType> types;
        QScriptValue self;
        QScriptValue function;
    };
    struct Waiting {
        QScriptValue self;
        QScriptValue function;
        QScriptValueList arguments;
    };

    static QScriptValue connectHandler(QScriptContext* context, QScriptEngine* engine, void* data);
    static QScriptValue disconnectHandler(
        QScriptContext* context, QScriptEngine* engine, void* data);
    static int slotOffset() { return QObject::staticMetaObject.methodCount(); }

    ScriptEngine* m_engine;
    QScriptValue m_prototype;
    /// One that was disconnected has an invalid function: places are slot numbers.
    std::vector<Connection> m_connections;
    std::deque<Waiting> m_waiting;
    bool m_running = false;
};
