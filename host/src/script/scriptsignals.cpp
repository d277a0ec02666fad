// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptsignals.h"

#include "scriptconversion.h"
#include "scriptengine.h"

#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QScriptContext>
#include <QScriptEngine>
#include <algorithm>
#include <iterator>

namespace {

/// As many calls in a row are taken for functions that keep setting each other off.
const int mostHandlerCalls = 1000000;

const std::size_t fewestReceivers = 1000;

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

} // namespace

/// Listens to one signal of one object for all functions that are connected to it.
///
/// Qt numbers the slots of an object with 16 bits: one object could not listen for everybody.
class ScriptSignals::Receiver : public QObject
{
public:
    Receiver(ScriptSignals* owner, QObject* sender, const QMetaMethod& signal)
        : m_owner(owner)
        , m_sender(sender)
    {
        for (const QByteArray& type : signal.parameterTypes())
            m_types.append(ScriptType::find(type, signal.enclosingMetaObject()));
        const int onlySlot = QObject::staticMetaObject.methodCount();
        QMetaObject::connect(sender, signal.methodIndex(), this, onlySlot, Qt::DirectConnection);
    }

    /// The object that it listens to, null when that is gone.
    QObject* sender() const { return m_sender; }
    bool isIdle() const { return m_handlers.empty(); }

    void add(const QScriptValue& self, const QScriptValue& function)
    {
        m_serials.insert(function.objectId(), m_nextSerial);
        m_handlers.emplace(m_nextSerial++, Handler { self, function });
    }

    /// Removes a function as often as it was added; false when it never was.
    bool remove(const QScriptValue& function)
    {
        const QList<quint64> serials = m_serials.values(function.objectId());
        m_serials.remove(function.objectId());
        for (const quint64 serial : serials)
            m_handlers.erase(serial);
        return !serials.isEmpty();
    }

    // QObject
    int qt_metacall(QMetaObject::Call call, int id, void** arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id < 0 || call != QMetaObject::InvokeMetaMethod)
            return id;
        QScriptValueList values;
        for (int i = 0; i < m_types.size(); ++i) {
            ScriptStorage storage;
            storage.load(m_types.at(i), arguments[i + 1]);
            values.append(m_owner->m_engine->conversion().write(m_types.at(i), storage));
        }
        for (const auto& entry : m_handlers)
            m_owner->m_waiting.push_back({ entry.second.self, entry.second.function, values });
        return -1;
    }

private:
    struct Handler {
        QScriptValue self;
        QScriptValue function;
    };

    ScriptSignals* m_owner;
    QPointer<QObject> m_sender;
    QVector<ScriptType> m_types;
    std::map<quint64, Handler> m_handlers; ///< in order of connecting
    QMultiHash<qint64, quint64> m_serials; ///< by the number that the engine gives a function
    quint64 m_nextSerial = 0;
};

ScriptSignals::ScriptSignals(ScriptEngine* engine)
    : m_engine(engine)
    , m_receiverLimit(fewestReceivers)
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
    receiver->provide(handle->target(), signal)
        ->add(count == 2 ? context->argument(0) : engine->globalObject(), function);
    return engine->undefinedValue();
}

QScriptValue ScriptSignals::disconnectHandler(
    QScriptContext* context, QScriptEngine* engine, void* data)
{
    auto* receiver = static_cast<ScriptSignals*>(data);
    const QScriptValue source = context->thisObject().data();
    const ScriptHandle* handle = receiver->m_engine->handleOf(source.property(0));
    const QScriptValue function = context->argument(context->argumentCount() - 1);
    QObject* sender = handle ? handle->target() : nullptr;
    const int index = source.property(1).toInt32();
    Receiver* listening = receiver->find(sender, index);
    if (!listening || !listening->remove(function))
        return context->throwError(text("disconnect: this function is not connected"));
    if (listening->isIdle())
        receiver->m_receivers.erase(Source(sender, index));
    return engine->undefinedValue();
}

ScriptSignals::Receiver* ScriptSignals::find(const QObject* sender, int signal) const
{
    const auto found = m_receivers.find(Source(sender, signal));
    // Another object may have stood at the same address.
    return sender && found != m_receivers.end() && found->second->sender() == sender
        ? found->second.get()
        : nullptr;
}

ScriptSignals::Receiver* ScriptSignals::provide(QObject* sender, const QMetaMethod& signal)
{
    if (Receiver* known = find(sender, signal.methodIndex()))
        return known;
    if (m_receivers.size() >= m_receiverLimit)
        forgetGoneSenders();
    std::unique_ptr<Receiver>& made = m_receivers[Source(sender, signal.methodIndex())];
    made.reset(new Receiver(this, sender, signal));
    return made.get();
}

void ScriptSignals::forgetGoneSenders()
{
    for (auto it = m_receivers.begin(); it != m_receivers.end();)
        it = it->second->sender() ? std::next(it) : m_receivers.erase(it);
    m_receiverLimit = std::max(fewestReceivers, 2 * m_receivers.size());
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
