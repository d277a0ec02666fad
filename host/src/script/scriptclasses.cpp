// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptclasses.h"

#include "dzapp.h"
#include "dzboolproperty.h"
#include "dzbrickaction.h"
#include "dzbrickstate.h"
#include "dzclassfactory.h"
#include "dzcolorproperty.h"
#include "dzdefaultmaterial.h"
#include "dzenumproperty.h"
#include "dzfileproperty.h"
#include "dzfloatproperty.h"
#include "dzimagemgr.h"
#include "dzimageproperty.h"
#include "dzmatrixparam.h"
#include "dznode.h"
#include "dzobject.h"
#include "dzoutparam.h"
#include "dzpluginmgr.h"
#include "dzpropertyparam.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzsimpleelementdata.h"
#include "dzstringproperty.h"
#include "dztexture.h"
#include "dzundostack.h"
#include "dzunknownbrick.h"
#include "dzvec3param.h"
#include "idzbrickuser.h"
#include "scriptengine.h"
#include "scriptsignals.h"

#include <QApplication>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QScriptContext>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

QString nameOf(const QMetaObject* metaObject)
{
    return QString::fromLatin1(metaObject->className());
}

/// The host's classes of which objects get to scripts.
const std::vector<const QMetaObject*>& hostClasses()
{
    static const std::vector<const QMetaObject*> classes { &DzApp::staticMetaObject,
        &DzBase::staticMetaObject, &DzBoolProperty::staticMetaObject,
        &DzBrickAction::staticMetaObject, &DzBrickParam::staticMetaObject,
        &DzBrickSet::staticMetaObject, &DzColorProperty::staticMetaObject,
        &DzDefaultMaterial::staticMetaObject, &DzElement::staticMetaObject,
        &DzElementData::staticMetaObject, &DzEnumProperty::staticMetaObject,
        &DzFileProperty::staticMetaObject, &DzFloatProperty::staticMetaObject,
        &DzImageMgr::staticMetaObject, &DzImageProperty::staticMetaObject,
        &DzIntProperty::staticMetaObject, &DzMaterial::staticMetaObject,
        &DzMatrixParam::staticMetaObject, &DzNode::staticMetaObject,
        &DzNumericProperty::staticMetaObject, &DzObject::staticMetaObject,
        &DzOutParam::staticMetaObject, &DzProperty::staticMetaObject,
        &DzPropertyParam::staticMetaObject, &DzPropertySettings::staticMetaObject,
        &DzScene::staticMetaObject, &DzSettings::staticMetaObject, &DzShaderBrick::staticMetaObject,
        &DzShape::staticMetaObject, &DzSimpleElementData::staticMetaObject,
        &DzStringProperty::staticMetaObject, &DzTexture::staticMetaObject,
        &DzUndoStack::staticMetaObject, &DzUnknownBrick::staticMetaObject,
        &DzVec3Param::staticMetaObject };
    return classes;
}

/// Reads the arguments of a constructor in order; those that are left out stay as they are.
class Arguments
{
public:
    Arguments(const ScriptEngine* engine, QScriptContext* context, QString* error)
        : m_engine(engine)
        , m_context(context)
        , m_error(error)
    {
    }

    Arguments& operator>>(QString& value)
    {
        return read("QString", [&](const ScriptStorage& given) { value = given.text; });
    }
    Arguments& operator>>(bool& value)
    {
        return read("bool", [&](const ScriptStorage& given) { value = given.boolean; });
    }
    Arguments& operator>>(int& value)
    {
        return read("int", [&](const ScriptStorage& given) { value = given.integer; });
    }
    Arguments& operator>>(float& value)
    {
        return read("float", [&](const ScriptStorage& given) { value = given.single; });
    }
    Arguments& operator>>(QColor& value)
    {
        return read("QColor", [&](const ScriptStorage& given) { value = given.color; });
    }

    /// The new object if all was read and nothing is left, else null.
    template <typename Make>
    QObject* make(const Make& make) const
    {
        if (m_error->isEmpty() && m_index < m_context->argumentCount())
            *m_error = text("takes %1 arguments at most").arg(m_index);
        return m_error->isEmpty() ? make() : nullptr;
    }

private:
    template <typename Take>
    Arguments& read(const char* typeName, const Take& take)
    {
        const int index = m_index++;
        if (!m_error->isEmpty() || index >= m_context->argumentCount())
            return *this;
        ScriptStorage storage;
        const ScriptType type = ScriptType::find(typeName, &QObject::staticMetaObject);
        QString problem;
        if (m_engine->conversion().read(
                m_context->argument(index), type, false, &storage, &problem))
            take(storage);
        else
            *m_error = text("argument %1 %2").arg(index + 1).arg(problem);
        return *this;
    }

    const ScriptEngine* m_engine;
    QScriptContext* m_context;
    QString* m_error;
    int m_index = 0;
};

/// The maker of an element or another object that takes a name alone.
template <typename T>
ScriptClasses::Maker namedMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        Arguments arguments(engine, context, error);
        arguments >> name;
        return arguments.make([&] { return new T(name); });
    };
}

template <typename T>
ScriptClasses::Maker plainMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        return Arguments(engine, context, error).make([] { return new T; });
    };
}

/// The maker of a property that can be animated: name, can be animated, is a user's, default.
template <typename T, typename Value>
ScriptClasses::Maker numericMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        bool canAnimate = true;
        bool isUser = true;
        Value value = Value();
        Arguments arguments(engine, context, error);
        arguments >> name >> canAnimate >> isUser >> value;
        return arguments.make([&] { return new T(name, canAnimate, isUser, value); });
    };
}

ScriptClasses::Maker enumMaker(const ScriptEngine* engine)
{
    return [engine](QScriptContext* context, QString* error) {
        QString name;
        bool canAnimate = true;
        bool isUser = true;
        Arguments arguments(engine, context, error);
        arguments >> name >> canAnimate >> isUser;
        return arguments.make([&] { return new DzEnumProperty(name, canAnimate, isUser); });
    };
}

/// The maker of an object with a name and a flag.
template <typename T>
ScriptClasses::Maker flaggedMaker(const ScriptEngine* engine, bool flag)
{
    return [engine, flag](QScriptContext* context, QString* error) {
        QString name;
        bool given = flag;
        Arguments arguments(engine, context, error);
        arguments >> name >> given;
        return arguments.make([&] { return new T(name, given); });
    };
}

QHash<const QMetaObject*, ScriptClasses::Maker> hostMakers(const ScriptEngine* engine)
{
    return {
        { &DzSettings::staticMetaObject, plainMaker<DzSettings>(engine) },
        { &DzPropertySettings::staticMetaObject, plainMaker<DzPropertySettings>(engine) },
        { &DzNode::staticMetaObject, namedMaker<DzNode>(engine) },
        { &DzObject::staticMetaObject, namedMaker<DzObject>(engine) },
        { &DzShape::staticMetaObject, namedMaker<DzShape>(engine) },
        { &DzElement::staticMetaObject, namedMaker<DzElement>(engine) },
        { &DzDefaultMaterial::staticMetaObject, namedMaker<DzDefaultMaterial>(engine) },
        { &DzSimpleElementData::staticMetaObject,
            flaggedMaker<DzSimpleElementData>(engine, false) },
        { &DzFloatProperty::staticMetaObject, numericMaker<DzFloatProperty, float>(engine) },
        { &DzIntProperty::staticMetaObject, numericMaker<DzIntProperty, int>(engine) },
        { &DzBoolProperty::staticMetaObject, numericMaker<DzBoolProperty, bool>(engine) },
        { &DzColorProperty::staticMetaObject, numericMaker<DzColorProperty, QColor>(engine) },
        { &DzEnumProperty::staticMetaObject, enumMaker(engine) },
        { &DzStringProperty::staticMetaObject, flaggedMaker<DzStringProperty>(engine, true) },
        { &DzFileProperty::staticMetaObject, flaggedMaker<DzFileProperty>(engine, true) },
        { &DzImageProperty::staticMetaObject, flaggedMaker<DzImageProperty>(engine, true) },
    };
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
        const bool reshapes
            = isOfPlugin ? !isQuestion(method.name()) : method.name() == "changeParamIndex";
        return reshapes ? brick : nullptr;
    }
    const auto* property = qobject_cast<DzProperty*>(target);
    if (!property || property->getBrickParam() || !setsValue(method.name()))
        return nullptr;
    return qobject_cast<DzShaderBrick*>(property->getOwner());
}

} // namespace

struct ScriptClasses::Method {
    QMetaMethod method;
    ScriptType result;
    QVector<ScriptType> arguments;
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
    for (const QMetaObject* metaObject : hostClasses())
        if (name == metaObject->className())
            return metaObject;
    return nullptr;
}

void ScriptClasses::defineConstructors()
{
    const QHash<const QMetaObject*, Maker> makers = hostMakers(m_engine);
    for (const QMetaObject* metaObject : hostClasses())
        find(metaObject)->maker = makers.value(metaObject);
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories()) {
        const QString name = factory->className();
        find(&factory->getMetaObject())->maker
            = [this, name](QScriptContext* context, QString* error) {
                  return Arguments(m_engine, context, error).make([&] {
                      return dzApp->createInstance(name);
                  });
              };
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
    // Forms that the classes below added are there too.
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
        else if (candidates > 2)
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
        DzShaderBrick* brick = reshapedBrick(m_target, method.method);
        if (!brick) {
            QMetaObject::metacall(
                m_target, QMetaObject::InvokeMetaMethod, method.method.methodIndex(), addresses);
            return;
        }
        const QString caption = text("Change %1").arg(brick->getBrickTitle());
        DzBrickStateHold hold(brick);
        QMetaObject::metacall(
            m_target, QMetaObject::InvokeMetaMethod, method.method.methodIndex(), addresses);
        hold.accept(caption);
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
