// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptsignals.h"

#include "scriptengine.h"

#include <QCoreApplication>
#include <QScriptContext>
#include <QScriptEngine>

namespace {

/// As many calls in a row are taken for functions that keep setting each other off.
const int mostHandlerCalls = 1000000;

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

} // namespace

ScriptSignals::ScriptSignals(ScriptEngine* engine)
    : m_engine(engine)
{
    QScriptEngine* script = engine->engine();
    m_prototype = script->newObject();
    m_prototype.setProperty(
        QStringLiteral("connect"), script->newFunction(connectHandler, static_cast<void*>(this)));
    m_prototype.setProperty(QStringLiteral("disconnect"),
        script->newFunction(disconnectHandler, static_cast<void*>(this)));
}

ScriptSignals::~ScriptSignals()
{
}

QScriptValue ScriptSignals::signalObject(QObject* sender, const QMetaMethod& signal)
{
    QScriptValue object = m_engine->engine()->newObject();
    object.setPrototype(m_prototype);
    QScriptValue data = m_engine->engine()->newArray(2);
    data.setProperty(0, m_engine->wrap(sender));
    data.setProperty(1, signal.methodIndex());
    object.setData(data);
    return object;
}

QScriptValue ScriptSignals::connectHandler(
    QScriptContext* context, QScriptEngine* engine, void* data)
{
    auto* receiver = static_cast<ScriptSignals*>(data);
    const QScriptValue source = context->thisObject().data();
    const ScriptHandle* handle = receiver->m_engine->handleOf(source.property(0));
    const int count = context->argumentCount();
    const QScriptValue function = context->argument(count - 1);
    if (!handle || !handle->target() || count < 1 || count > 2 || !function.isFunction())
        return context->throwError(QScriptContext::TypeError,
            text("connect: a function is wanted, or an object and a function"));
    const int index = source.property(1).toInt32();
    const QMetaMethod signal = handle->target()->metaObject()->method(index);
    Connection connection;
    connection.sender = handle->target();
    connection.signal = index;
    for (const QByteArray& type : signal.parameterTypes())
        connection.types.append(ScriptType::find(type, signal.enclosingMetaObject()));
    connection.self = count == 2 ? context->argument(0) : engine->globalObject();
    connection.function = function;
    const int slot = static_cast<int>(receiver->m_connections.size());
    receiver->m_connections.push_back(connection);
    QMetaObject::connect(
        handle->target(), index, receiver, slotOffset() + slot, Qt::DirectConnection);
    return engine->undefinedValue();
}

QScriptValue ScriptSignals::disconnectHandler(
    QScriptContext* context, QScriptEngine* engine, void* data)
{
    auto* receiver = static_cast<ScriptSignals*>(data);
    const QScriptValue source = context->thisObject().data();
    const ScriptHandle* handle = receiver->m_engine->handleOf(source.property(0));
    const QScriptValue function = context->argument(context->argumentCount() - 1);
    bool found = false;
    for (size_t slot = 0; handle && slot < receiver->m_connections.size(); ++slot) {
        Connection& connection = receiver->m_connections[slot];
        if (!connection.sender || connection.sender != handle->target()
            || connection.signal != source.property(1).toInt32()
            || !connection.function.strictlyEquals(function))
            continue;
        QMetaObject::disconnect(
            connection.sender, connection.signal, receiver, slotOffset() + static_cast<int>(slot));
        connection = Connection();
        found = true;
    }
    if (!found)
        return context->throwError(text("disconnect: this function is not connected"));
    return engine->undefinedValue();
}

int ScriptSignals::qt_metacall(QMetaObject::Call call, int id, void** arguments)
{
    id = QObject::qt_metacall(call, id, arguments);
    if (id < 0 || call != QMetaObject::InvokeMetaMethod)
        return id;
    const Connection& connection = m_connections[static_cast<size_t>(id)];
    if (!connection.function.isValid())
        return -1;
    Waiting waiting { connection.self, connection.function, {} };
    for (int i = 0; i < connection.types.size(); ++i) {
        ScriptStorage storage;
        storage.load(connection.types.at(i), arguments[i + 1]);
        waiting.arguments.append(m_engine->conversion().write(connection.types.at(i), storage));
    }
    m_waiting.push_back(waiting);
    return -1;
}

QScriptValue ScriptSignals::runHandlers()
{
    // A function that sets off others does not run them inside itself.
    if (m_running || m_waiting.empty())
        return QScriptValue();
    m_running = true;
    QScriptValue problem;
    for (int calls = 0; !m_waiting.empty() && !problem.isValid(); ++calls) {
        Waiting next = m_waiting.front();
        m_waiting.pop_front();
        next.function.call(next.self, next.arguments);
        if (m_engine->engine()->hasUncaughtException())
            problem = m_engine->engine()->uncaughtException();
        else if (calls == mostHandlerCalls)
            problem = m_engine->engine()->currentContext()->throwError(
                text("the functions connected to signals keep setting each other off"));
    }
    m_waiting.clear();
    m_running = false;
    return problem;
}
