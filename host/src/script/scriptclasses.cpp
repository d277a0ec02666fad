// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptclasses.h"

#include "dzapp.h"
#include "dzbrickstate.h"
#include "dzclassfactory.h"
#include "dzpluginmgr.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "dzvec3param.h"
#include "idzbrickuser.h"
#include "scriptengine.h"
#include "scriptfiles.h"
#include "scriptmakers.h"
#include "scriptsignals.h"

#include <QAction>
#include <QApplication>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QScriptContext>
#include <QWidget>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

QString nameOf(const QMetaObject* metaObject)
{
    return QString::fromLatin1(metaObject->className());
}

/// Methods that take over their argument `index`. Counted objects need no entry: whoever takes
/// them has a share.
int takenArgument(const QByteArray& method)
{
    static const QHash<QByteArray, int> taken { { "addProperty", 0 }, { "insertProperty", 1 },
        { "addDataItem", 0 }, { "addNode", 0 }, { "addNodeChild", 0 }, { "setObject", 0 },
        { "addShape", 0 } };
    return taken.value(method, -1);
}

/// Methods that give their first argument back to the caller.
bool givesBack(const QByteArray& method)
{
    return method == "removeDataItem" || method == "removeNode" || method == "removeNodeChild"
        || method == "removeShape";
}

bool startsWithWord(const QByteArray& name, const char* word)
{
    return name.startsWith(word)
        && (name.size() == int(qstrlen(word)) || isupper(name.at(int(qstrlen(word)))));
}

/// True for a name of a question rather than a change.
bool isQuestion(const QByteArray& name)
{
    for (const char* word : { "get", "is", "has", "can", "find", "current", "provides" })
        if (startsWithWord(name, word))
            return true;
    return false;
}

bool setsValue(const QByteArray& name)
{
    static const QList<QByteArray> setters { "setValue", "setDoubleValue", "setBoolValue",
        "setColorValue", "setValueFromString", "resetToDefault", "setMap", "clearMap" };
    return setters.contains(name);
}

/// The brick whose inputs the call may make and remove, null for others: calls of what a plug-in
/// added to its bricks, and new values of a brick's own properties.
DzShaderBrick* reshapedBrick(QObject* target, const QMetaMethod& method)
{
    if (!dzUndoStack || !dzUndoStack->canPushItems())
        return nullptr;
    if (auto* brick = qobject_cast<DzShaderBrick*>(target)) {
        const bool isOfPlugin
            = method.methodIndex() >= DzShaderBrick::staticMetaObject.methodCount();
        const bool reshapes = isOfPlugin
            ? !isQuestion(method.name())
            : method.name() == "changeParamIndex" || method.name() == "setAttributes";
        return reshapes ? brick : nullptr;
    }
    const auto* property = qobject_cast<DzProperty*>(target);
    if (!property || property->getBrickParam() || !setsValue(method.name()))
        return nullptr;
    return qobject_cast<DzShaderBrick*>(property->getOwner());
}

bool setsVector(QObject* target, const QMetaMethod& method)
{
    return qobject_cast<DzVec3Param*>(target) && setsValue(method.name());
}

} // namespace

struct ScriptClasses::Method {
    QMetaMethod method;
    ScriptType result;
    QVector<ScriptType> arguments;
    QVector<bool> isPath; ///< of each argument
};

struct ScriptClasses::MethodGroup {
    ScriptEngine* engine;
    const QMetaObject* owner;
    QByteArray name;
    /// Those of the most derived class first.
    std::vector<Method> methods;
};

struct ScriptClasses::Property {
    ScriptEngine* engine;
    const QMetaObject* owner;
    QMetaProperty property;
    ScriptType type;
};

struct ScriptClasses::Signal {
    ScriptEngine* engine;
    const QMetaObject* owner;
    QMetaMethod signal;
};

struct ScriptClasses::Class {
    ScriptEngine* engine;
    const QMetaObject* metaObject;
    QString name;
    Maker maker;
    QScriptValue prototype;
    QScriptValue constructor;
    std::vector<std::unique_ptr<MethodGroup>> groups;
    std::vector<std::unique_ptr<Property>> properties;
    std::vector<std::unique_ptr<Signal>> signalList;
};

ScriptClasses::ScriptClasses(ScriptEngine* engine)
    : m_engine(engine)
{
}

ScriptClasses::~ScriptClasses()
{
}

const QMetaObject* ScriptClasses::findHostClass(const QByteArray& name)
{
    for (const QMetaObject* metaObject : scriptHostClasses())
        if (name == metaObject->className())
            return metaObject;
    return nullptr;
}

void ScriptClasses::defineConstructors()
{
    const QHash<const QMetaObject*, Maker> makers = scriptHostMakers(m_engine);
    for (const QMetaObject* metaObject : scriptHostClasses())
        find(metaObject)->maker = makers.value(metaObject);
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories()) {
        const QString name = factory->className();
        find(&factory->getMetaObject())->maker
            = scriptPlainMaker(m_engine, [name] { return dzApp->createInstance(name); });
    }
    QScriptValue global = m_engine->engine()->globalObject();
    for (const std::unique_ptr<Class>& scriptClass : m_classes)
        global.setProperty(
            scriptClass->name, scriptClass->constructor, QScriptValue::SkipInEnumeration);
}

void ScriptClasses::addClass(const QMetaObject* metaObject, const Maker& maker)
{
    Class* scriptClass = find(metaObject);
    scriptClass->maker = maker;
    m_engine->engine()->globalObject().setProperty(
        scriptClass->name, scriptClass->constructor, QScriptValue::SkipInEnumeration);
}

QScriptValue ScriptClasses::prototype(const QMetaObject* metaObject)
{
    return find(metaObject)->prototype;
}

QScriptValue ScriptClasses::constructor(const QMetaObject* metaObject)
{
    return find(metaObject)->constructor;
}

ScriptClasses::Class* ScriptClasses::find(const QMetaObject* metaObject)
{
    Class*& known = m_byMetaObject[metaObject];
    if (known)
        return known;
    std::unique_ptr<Class> made(new Class);
    Class* scriptClass = known = made.get();
    scriptClass->engine = m_engine;
    scriptClass->metaObject = metaObject;
    scriptClass->name = nameOf(metaObject);
    const QMetaObject* super = metaObject->superClass();
    const bool hasSuper = super && super != &QObject::staticMetaObject;
    Class* superClass = hasSuper ? find(super) : nullptr;
    QScriptEngine* engine = m_engine->engine();
    scriptClass->prototype = engine->newObject();
    scriptClass->prototype.setPrototype(
        hasSuper ? superClass->prototype : m_engine->objectPrototype());
    scriptClass->constructor = engine->newFunction(construct, scriptClass);
    scriptClass->constructor.setProperty(
        QStringLiteral("prototype"), scriptClass->prototype, QScriptValue::SkipInEnumeration);
    scriptClass->prototype.setProperty(
        QStringLiteral("constructor"), scriptClass->constructor, QScriptValue::SkipInEnumeration);
    // What a class has on it, its derived classes have too.
    if (hasSuper)
        scriptClass->constructor.setPrototype(superClass->constructor);
    addMethods(scriptClass);
    addProperties(scriptClass);
    addEnumerations(scriptClass);
    m_classes.push_back(std::move(made));
    return scriptClass;
}

ScriptClasses::Method ScriptClasses::describe(const QMetaMethod& method)
{
    const QMetaObject* scope = method.enclosingMetaObject();
    Method described;
    described.method = method;
    described.result = ScriptType::find(QMetaObject::normalizedType(method.typeName()), scope);
    for (const QByteArray& type : method.parameterTypes())
        described.arguments.append(ScriptType::find(type, scope));
    for (const QByteArray& name : method.parameterNames())
        described.isPath.append(name == "path" || name == "filename" || name == "fileName");
    return described;
}

bool ScriptClasses::isObjectClass(const QByteArray& className) const
{
    if (findHostClass(className))
        return true;
    const QByteArray pointer = className + '*';
    if (QMetaType::typeFlags(QMetaType::type(pointer.constData())) & QMetaType::PointerToQObject)
        return true;
    for (const std::unique_ptr<Class>& known : m_classes)
        if (className == known->metaObject->className())
            return true;
    return false;
}

void ScriptClasses::addMethods(Class* scriptClass)
{
    const QMetaObject* metaObject = scriptClass->metaObject;
    const int firstOfHost = QObject::staticMetaObject.methodCount();
    const auto isForScripts = [](const QMetaMethod& method) {
        return method.access() == QMetaMethod::Public
            && (method.methodType() == QMetaMethod::Method
                || method.methodType() == QMetaMethod::Slot);
    };
    QHash<QByteArray, MethodGroup*> groups;
    for (int i = metaObject->methodOffset(); i < metaObject->methodCount(); ++i) {
        const QMetaMethod method = metaObject->method(i);
        if (method.methodType() == QMetaMethod::Signal) {
            scriptClass->signalList.emplace_back(new Signal { m_engine, metaObject, method });
            scriptClass->prototype.setProperty(QString::fromLatin1(method.name()),
                m_engine->engine()->newFunction(getSignal, scriptClass->signalList.back().get()),
                QScriptValue::PropertyGetter | QScriptValue::SkipInEnumeration);
            continue;
        }
        if (!isForScripts(method) || groups.contains(method.name()))
            continue;
        scriptClass->groups.emplace_back(
            new MethodGroup { m_engine, metaObject, method.name(), {} });
        MethodGroup* group = scriptClass->groups.back().get();
        groups.insert(method.name(), group);
        scriptClass->prototype.setProperty(QString::fromLatin1(method.name()),
            m_engine->engine()->newFunction(call, group), QScriptValue::SkipInEnumeration);
    }
    if (groups.isEmpty())
        return;
    // Forms that the base classes have are there too; of two that look alike the derived one wins,
    // as its number is the higher.
    QHash<QByteArray, bool> seen;
    for (int i = metaObject->methodCount() - 1; i >= firstOfHost; --i) {
        const QMetaMethod method = metaObject->method(i);
        MethodGroup* group = groups.value(method.name());
        if (!group || !isForScripts(method) || seen.contains(method.methodSignature()))
            continue;
        seen.insert(method.methodSignature(), true);
        group->methods.push_back(describe(method));
    }
}

void ScriptClasses::addProperties(Class* scriptClass)
{
    const QMetaObject* metaObject = scriptClass->metaObject;
    for (int i = metaObject->propertyOffset(); i < metaObject->propertyCount(); ++i) {
        const QMetaProperty property = metaObject->property(i);
        if (!property.isScriptable())
            continue;
        scriptClass->properties.emplace_back(new Property {
            m_engine, metaObject, property, ScriptType::find(property.typeName(), metaObject) });
        scriptClass->prototype.setProperty(QString::fromLatin1(property.name()),
            m_engine->engine()->newFunction(access, scriptClass->properties.back().get()),
            QScriptValue::PropertyGetter | QScriptValue::PropertySetter);
    }
}

void ScriptClasses::addEnumerations(Class* scriptClass)
{
    const QMetaObject* metaObject = scriptClass->metaObject;
    for (int i = metaObject->enumeratorOffset(); i < metaObject->enumeratorCount(); ++i) {
        const QMetaEnum enumeration = metaObject->enumerator(i);
        for (int k = 0; k < enumeration.keyCount(); ++k)
            scriptClass->constructor.setProperty(QString::fromLatin1(enumeration.key(k)),
                enumeration.value(k), QScriptValue::ReadOnly | QScriptValue::Undeletable);
    }
}

QScriptValue ScriptClasses::construct(QScriptContext* context, QScriptEngine*, void* data)
{
    const auto* scriptClass = static_cast<const Class*>(data);
    const auto fail = [&](const QString& message) {
        return context->throwError(QScriptContext::TypeError, message);
    };
    if (!context->isCalledAsConstructor())
        return fail(text("%1 is a class: write \"new %1(...)\"").arg(scriptClass->name));
    if (!scriptClass->maker)
        return fail(text("%1 cannot be made by a script").arg(scriptClass->name));
    const bool needsWindows = scriptClass->metaObject->inherits(&QAction::staticMetaObject)
        || scriptClass->metaObject->inherits(&QWidget::staticMetaObject);
    if (needsWindows && !qobject_cast<QApplication*>(QCoreApplication::instance()))
        return fail(text("%1 needs a program with windows").arg(scriptClass->name));
    QString error;
    QObject* object = scriptClass->maker(context, &error);
    if (!object)
        return fail(
            text("new %1: %2")
                .arg(scriptClass->name, error.isEmpty() ? text("it cannot be made") : error));
    scriptClass->engine->objects().own(object);
    return scriptClass->engine->wrap(object);
}

/// One call of a native method by a script.
class ScriptClasses::Call
{
public:
    Call(const MethodGroup& group, QScriptContext* context)
        : m_group(group)
        , m_engine(*group.engine)
        , m_context(context)
    {
    }

    QScriptValue run()
    {
        QString error;
        m_target = m_engine.targetOf(m_context->thisObject(), m_group.owner, &error);
        if (!m_target)
            return fail(error);
        const Method* method = choose(&error);
        if (!method)
            return fail(error);
        if (!method->result.className.isEmpty() && method->result.kind == ScriptType::Object
            && !m_engine.classes().isObjectClass(method->result.className))
            return fail(text("its result, a %1, cannot be used by scripts")
                            .arg(QString::fromLatin1(method->result.name)));
        if (method->result.kind == ScriptType::Unsupported)
            return fail(text("its result, a %1, cannot be used by scripts")
                            .arg(QString::fromLatin1(method->result.name)));
        if (!mayTake(&error))
            return fail(error);
        return invoke(*method);
    }

private:
    QScriptValue fail(const QString& problem) const
    {
        return m_context->throwError(QScriptContext::TypeError,
            QStringLiteral("%1.%2: %3")
                .arg(nameOf(m_group.owner), QString::fromLatin1(m_group.name), problem));
    }

    /// The form of the method that takes these arguments, which are read into the storage.
    const Method* choose(QString* error)
    {
        const int given = m_context->argumentCount();
        QStringList counts;
        int candidates = 0;
        // A form that takes the arguments as they are goes before one that must convert them: a
        // number given to setValue(QString) and setValue(int) is for the latter.
        for (const bool isStrict : { true, false }) {
            for (const Method& method : m_group.methods) {
                if (method.arguments.size() != given) {
                    const QString count = QString::number(method.arguments.size());
                    if (!counts.contains(count))
                        counts.append(count);
                    continue;
                }
                ++candidates;
                if (readArguments(method, isStrict, error))
                    return &method;
            }
        }
        counts.sort();
        if (candidates == 0)
            *error = text("it was given %2 arguments; it takes %1")
                         .arg(counts.join(text(" or ")))
                         .arg(given);
        else if (candidates > 2) // more than one form, each tried twice: no problem is the problem
            *error = text("none of its forms takes %1").arg(describeArguments());
        return nullptr;
    }

    bool readArguments(const Method& method, bool isStrict, QString* error)
    {
        m_arguments = std::vector<ScriptStorage>(size_t(method.arguments.size()));
        for (int i = 0; i < method.arguments.size(); ++i) {
            QString problem;
            if (!m_engine.conversion().read(m_context->argument(i), method.arguments.at(i),
                    isStrict, &m_arguments[size_t(i)], &problem)) {
                *error = text("argument %1 %2").arg(i + 1).arg(problem);
                return false;
            }
            if (method.isPath.at(i) && !isScriptPath(m_arguments[size_t(i)].text, &problem)) {
                *error = text("argument %1 %2").arg(i + 1).arg(problem);
                return false;
            }
        }
        return true;
    }

    QString describeArguments() const
    {
        QStringList words;
        for (int i = 0; i < m_context->argumentCount(); ++i)
            words.append(m_engine.conversion().describe(m_context->argument(i)));
        return words.join(QStringLiteral(", "));
    }

    /// What is handed over must be the script's own, or it would have two owners.
    bool mayTake(QString* error)
    {
        const int index = takenArgument(m_group.name);
        m_taken = index >= 0 && size_t(index) < m_arguments.size()
            ? m_arguments[size_t(index)].object
            : nullptr;
        if (!m_taken || m_engine.objects().owns(m_taken))
            return true;
        *error = text("argument %1 belongs to another object already").arg(index + 1);
        return false;
    }

    QScriptValue invoke(const Method& method)
    {
        ScriptStorage result;
        result.prepare(method.result);
        std::vector<void*> addresses { result.address(method.result) };
        for (int i = 0; i < method.arguments.size(); ++i)
            addresses.push_back(m_arguments[size_t(i)].address(method.arguments.at(i)));
        QVector<QPointer<QObject>> objects;
        for (const ScriptStorage& argument : m_arguments)
            objects.append(argument.object);
        perform(method, addresses.data());
        settle(objects, method, result);
        // Written before the handlers run: they may delete what the result points to.
        const QScriptValue value = m_engine.conversion().write(method.result, result);
        fillLists(method);
        m_engine.raiseIn(m_context);
        if (m_context->state() == QScriptContext::ExceptionState)
            return value;
        const QScriptValue problem = m_engine.receiver().runHandlers();
        return problem.isValid() ? m_context->throwValue(problem) : value;
    }

    void perform(const Method& method, void** addresses)
    {
        const auto makeCall = [&] {
            QMetaObject::metacall(
                m_target, QMetaObject::InvokeMetaMethod, method.method.methodIndex(), addresses);
        };
        if (DzShaderBrick* brick = reshapedBrick(m_target, method.method)) {
            const QString caption = text("Change %1").arg(brick->getBrickTitle());
            DzBrickStateHold hold(brick);
            makeCall();
            hold.accept(caption);
        } else if (setsVector(m_target, method.method)) {
            // Its numbers are properties of their own, and one call is one step.
            DzUndoStackHold hold;
            makeCall();
            hold.accept(text("Change %1").arg(static_cast<DzBrickParam*>(m_target)->getLabel()));
        } else {
            makeCall();
        }
    }

    /// Brings up to date who owns what.
    void settle(const QVector<QPointer<QObject>>& objects, const Method& method,
        const ScriptStorage& result)
    {
        const bool isDone = method.result.kind == ScriptType::Void
            || (method.result.kind == ScriptType::Int && result.integer == DZ_NO_ERROR);
        for (const QPointer<QObject>& object : objects)
            if (object)
                m_engine.objects().releaseIfShared(object);
        if (m_taken && isDone)
            m_engine.objects().release(m_taken);
        if (isDone && givesBack(m_group.name) && !objects.isEmpty() && objects.first())
            m_engine.objects().own(objects.first());
        if (method.result.kind == ScriptType::Object && result.pointer)
            ownResult(static_cast<QObject*>(result.pointer));
        for (IDzBrickUser* user : result.users)
            if (user)
                m_engine.objects().ownIfFresh(user->getBrickUserElement());
    }

    void ownResult(QObject* object)
    {
        if (m_group.name == "duplicate")
            m_engine.objects().own(object);
        else
            m_engine.objects().ownIfFresh(object);
    }

    void fillLists(const Method& method)
    {
        for (int i = 0; i < method.arguments.size(); ++i) {
            if (method.arguments.at(i).kind != ScriptType::Numbers)
                continue;
            QScriptValue list = m_context->argument(i);
            quint32 index = list.property(QStringLiteral("length")).toUInt32();
            for (const uint number : m_arguments[size_t(i)].numbers)
                list.setProperty(index++, number);
        }
    }

    const MethodGroup& m_group;
    ScriptEngine& m_engine;
    QScriptContext* m_context;
    QObject* m_target = nullptr;
    std::vector<ScriptStorage> m_arguments;
    QObject* m_taken = nullptr;
};

QScriptValue ScriptClasses::call(QScriptContext* context, QScriptEngine*, void* data)
{
    return Call(*static_cast<const MethodGroup*>(data), context).run();
}

QScriptValue ScriptClasses::access(QScriptContext* context, QScriptEngine*, void* data)
{
    const auto& accessed = *static_cast<const Property*>(data);
    const auto fail = [&](const QString& problem) {
        return context->throwError(QScriptContext::TypeError,
            QStringLiteral("%1.%2: %3")
                .arg(nameOf(accessed.owner), QString::fromLatin1(accessed.property.name()),
                    problem));
    };
    QString error;
    QObject* target = accessed.engine->targetOf(context->thisObject(), accessed.owner, &error);
    if (!target)
        return fail(error);
    const ScriptConversion& conversion = accessed.engine->conversion();
    if (context->argumentCount() == 0)
        return conversion.fromVariant(accessed.property.read(target));
    ScriptStorage storage;
    if (!conversion.read(context->argument(0), accessed.type, false, &storage, &error))
        return fail(text("the new value %1").arg(error));
    const QVariant value = accessed.type.kind == ScriptType::Value
        ? storage.value
        : QVariant(QMetaType::type(accessed.property.typeName()), storage.address(accessed.type));
    accessed.property.write(target, value);
    const QScriptValue problem = accessed.engine->receiver().runHandlers();
    return problem.isValid() ? context->throwValue(problem) : context->argument(0);
}

QScriptValue ScriptClasses::getSignal(QScriptContext* context, QScriptEngine*, void* data)
{
    const auto& asked = *static_cast<const Signal*>(data);
    QString error;
    QObject* target = asked.engine->targetOf(context->thisObject(), asked.owner, &error);
    // Prototypes are walked by people too, without an object.
    if (!target && !asked.engine->handleOf(context->thisObject()))
        return QScriptValue();
    if (!target)
        return context->throwError(QScriptContext::TypeError,
            QStringLiteral("%1.%2: %3")
                .arg(nameOf(asked.owner), QString::fromLatin1(asked.signal.name()), error));
    return asked.engine->receiver().signalObject(target, asked.signal);
}
