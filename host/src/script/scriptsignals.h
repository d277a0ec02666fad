// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMetaMethod>
#include <QPair>
#include <QScriptValue>
#include <deque>
#include <map>
#include <memory>

class QObject;
class QScriptContext;
class QScriptEngine;
class ScriptEngine;

/// Receives the signals that scripts connect to functions.
///
/// A function does not run in the middle of the native call that emits: it waits until that call
/// has come back to the script. So it may delete whatever it likes.
class ScriptSignals
{
public:
    explicit ScriptSignals(ScriptEngine* engine);
    ~ScriptSignals();

    /// What a script sees of a signal of one object: `connect` and `disconnect`.
    QScriptValue signalObject(QObject* sender, const QMetaMethod& signal);
    /// Runs the functions that wait, and those that come up meanwhile. An invalid value, or what
    /// one of them threw; then the others are forgotten.
    QScriptValue runHandlers();

private:
    Q_DISABLE_COPY(ScriptSignals)

    class Receiver;
    struct Waiting {
        QScriptValue self;
        QScriptValue function;
        QScriptValueList arguments;
    };
    /// One signal of one object.
    typedef QPair<const QObject*, int> Source;

    static QScriptValue connectHandler(QScriptContext* context, QScriptEngine* engine, void* data);
    static QScriptValue disconnectHandler(
        QScriptContext* context, QScriptEngine* engine, void* data);
    /// The one that listens to the signal, null when none does.
    Receiver* find(const QObject* sender, int signal) const;
    Receiver* provide(QObject* sender, const QMetaMethod& signal);
    void forgetGoneSenders();

    ScriptEngine* m_engine;
    QScriptValue m_prototype;
    std::map<Source, std::unique_ptr<Receiver>> m_receivers;
    std::size_t m_receiverLimit; ///< as many are worth looking for senders that are gone
    std::deque<Waiting> m_waiting;
    bool m_running = false;
};
