// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptfunctions.h"

#include "dzapp.h"
#include "dzbrickaction.h"
#include "dzbrickstate.h"
#include "dzclassfactory.h"
#include "dzfilewriter.h"
#include "dzmaterial.h"
#include "dznode.h"
#include "dzpluginmgr.h"
#include "dzproperty.h"
#include "dzscene.h"
#include "dzshape.h"
#include "dzundostack.h"
#include "idzbrickuser.h"
#include "scriptengine.h"
#include "scriptfiles.h"

#include <QApplication>
#include <QScriptContext>
#include <QScriptContextInfo>
#include <memory>

namespace {

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

QScriptValue fail(QScriptContext* context, const QString& message)
{
    return context->throwError(message);
}

QScriptValue failType(QScriptContext* context, const QString& message)
{
    return context->throwError(QScriptContext::TypeError, message);
}

/// The object that a function is called for; null, with an error thrown, when it is no T.
template <typename T>
T* self(ScriptEngine& engine, QScriptContext* context, const char* function)
{
    QString error;
    QObject* target = engine.targetOf(context->thisObject(), &T::staticMetaObject, &error);
    if (!target)
        failType(context, QStringLiteral("%1: %2").arg(QString::fromLatin1(function), error));
    return static_cast<T*>(target);
}

/// Reads an argument that must be a text; false with an error thrown.
bool readText(QScriptContext* context, int index, const char* function, QString* value)
{
    const QScriptValue given = context->argument(index);
    *value = given.toString();
    if (given.isString())
        return true;
    failType(context,
        text("%1: argument %2 must be a text").arg(QString::fromLatin1(function)).arg(index + 1));
    return false;
}

/// The same for an argument that must be a path.
bool readPath(QScriptContext* context, int index, const char* function, QString* path)
{
    if (!readText(context, index, function, path))
        return false;
    QString problem;
    if (isScriptPath(*path, &problem))
        return true;
    failType(context,
        text("%1: argument %2 %3").arg(QString::fromLatin1(function)).arg(index + 1).arg(problem));
    return false;
}

template <typename T, typename Get>
QScriptValue listOf(ScriptEngine& engine, int count, const Get& get)
{
    QScriptValue list = engine.engine()->newArray();
    for (int i = 0; i < count; ++i)
        list.setProperty(static_cast<quint32>(i), engine.wrap(get(i)));
    return list;
}

// What all objects have.

QScriptValue objectToString(ScriptEngine& engine, QScriptContext* context)
{
    const ScriptHandle* handle = engine.handleOf(context->thisObject());
    if (!handle)
        return QStringLiteral("[object]");
    if (!handle->target())
        return text("%1 (deleted)").arg(handle->className());
    const auto* base = qobject_cast<DzBase*>(handle->target());
    return base && !base->getName().isEmpty()
        ? QStringLiteral("%1 \"%2\"").arg(handle->className(), base->getName())
        : handle->className();
}

QScriptValue objectDelete(ScriptEngine& engine, QScriptContext* context)
{
    auto* object = self<QObject>(engine, context, "deleteLater");
    if (object && !engine.objects().deleteNow(object))
        return failType(context,
            text("deleteLater: the %1 belongs to another object")
                .arg(QString::fromLatin1(object->metaObject()->className())));
    return engine.engine()->undefinedValue();
}

// Global functions.

QScriptValue print(ScriptEngine& engine, QScriptContext* context)
{
    QString line;
    for (int i = 0; i < context->argumentCount(); ++i)
        line += (i > 0 ? QStringLiteral(" ") : QString()) + context->argument(i).toString();
    if (engine.engine()->hasUncaughtException()) // in a toString() of the script's
        return engine.engine()->uncaughtException();
    QString error;
    if (!engine.print(line + QLatin1Char('\n'), &error))
        return fail(context, text("print: %1").arg(error));
    return engine.engine()->undefinedValue();
}

QScriptValue include(ScriptEngine& engine, QScriptContext* context)
{
    QString path;
    if (!readPath(context, 0, "include", &path))
        return QScriptValue();
    const QScriptContextInfo caller(context->parentContext());
    return engine.include(context, path, caller.fileName());
}

QScriptValue readFile(ScriptEngine&, QScriptContext* context)
{
    QString path;
    if (!readPath(context, 0, "readFile", &path))
        return QScriptValue();
    QByteArray content;
    QString error;
    if (!dzReadFile(path, DzScript::maximumSize, &content, &error))
        return fail(context, text("readFile: %1").arg(error));
    return QString::fromUtf8(content);
}

QScriptValue writeFile(ScriptEngine& engine, QScriptContext* context)
{
    QString path;
    QString content;
    if (!readPath(context, 0, "writeFile", &path) || !readText(context, 1, "writeFile", &content))
        return QScriptValue();
    QString error;
    if (!dzWriteFile(path, content.toUtf8(), &error))
        return fail(context, text("writeFile: %1").arg(error));
    return engine.engine()->undefinedValue();
}

// Values.

QScriptValue makeColor(ScriptEngine& engine, QScriptContext* context)
{
    QColor color(0, 0, 0);
    const int count = context->argumentCount();
    QScriptValue given = context->argument(0);
    if (count == 3 || count == 4) {
        given = engine.engine()->newArray();
        for (int i = 0; i < count; ++i)
            given.setProperty(static_cast<quint32>(i), context->argument(i));
    }
    if (count == 2 || count > 4 || (count > 0 && !engine.conversion().readColor(given, &color)))
        return failType(context,
            text("Color: red, green, blue and perhaps alpha from 0 to 255 are wanted, or a name "
                 "such as \"#ff8000\""));
    return engine.conversion().fromColor(color);
}

QScriptValue colorToString(ScriptEngine& engine, QScriptContext* context)
{
    QColor color;
    if (!engine.conversion().readColor(context->thisObject(), &color))
        return QStringLiteral("Color");
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QScriptValue makeVec3(ScriptEngine& engine, QScriptContext* context)
{
    DzVec3 vector;
    QScriptValue parts = engine.engine()->newArray();
    for (int i = 0; i < 3; ++i)
        parts.setProperty(static_cast<quint32>(i), context->argument(i));
    const int count = context->argumentCount();
    if (count != 0 && (count != 3 || !engine.conversion().readVec3(parts, &vector)))
        return failType(context, text("DzVec3: three numbers are wanted"));
    return engine.conversion().fromVec3(vector);
}

QScriptValue vec3ToString(ScriptEngine& engine, QScriptContext* context)
{
    DzVec3 vector;
    if (!engine.conversion().readVec3(context->thisObject(), &vector))
        return QStringLiteral("DzVec3");
    QStringList parts;
    for (const char* name : { "x", "y", "z" })
        parts.append(context->thisObject().property(QString::fromLatin1(name)).toString());
    return parts.join(QLatin1Char(' '));
}

// Application, scene and what is in it.

QScriptValue getClassNames(ScriptEngine& engine, QScriptContext* context)
{
    QString base = QStringLiteral("QObject");
    if (context->argumentCount() > 0 && !readText(context, 0, "getClassNames", &base))
        return QScriptValue();
    QStringList names;
    for (const DzClassFactory* factory : dzApp->getPluginMgr()->getClassFactories())
        for (const QMetaObject* type = &factory->getMetaObject(); type; type = type->superClass())
            if (base == QLatin1String(type->className()))
                names.append(factory->className());
    return engine.conversion().fromTexts(names);
}

QScriptValue loadScene(ScriptEngine& engine, QScriptContext* context)
{
    auto* scene = self<DzScene>(engine, context, "loadScene");
    QString path;
    if (!scene || !readPath(context, 0, "loadScene", &path))
        return QScriptValue();
    if (!engine.sceneFile().load(path, scene))
        return fail(context, text("loadScene: %1").arg(engine.sceneFile().getError()));
    return engine.conversion().fromTexts(engine.sceneFile().getWarnings());
}

QScriptValue saveScene(ScriptEngine& engine, QScriptContext* context)
{
    auto* scene = self<DzScene>(engine, context, "saveScene");
    if (!scene)
        return QScriptValue();
    QString path = scene->getFilename();
    if (context->argumentCount() > 0 && !readPath(context, 0, "saveScene", &path))
        return QScriptValue();
    if (!engine.sceneFile().save(path))
        return fail(context, text("saveScene: %1").arg(engine.sceneFile().getError()));
    return engine.conversion().fromTexts(engine.sceneFile().getWarnings());
}

QScriptValue getNodeList(ScriptEngine& engine, QScriptContext* context)
{
    const auto* scene = self<DzScene>(engine, context, "getNodeList");
    return scene
        ? listOf<DzNode>(engine, scene->getNumNodes(), [&](int i) { return scene->getNode(i); })
        : QScriptValue();
}

QScriptValue getSelectedNodeList(ScriptEngine& engine, QScriptContext* context)
{
    const auto* scene = self<DzScene>(engine, context, "getSelectedNodeList");
    return scene ? listOf<DzNode>(engine, scene->getNumSelectedNodes(),
               [&](int i) { return scene->getSelectedNode(i); })
                 : QScriptValue();
}

QScriptValue getAllMaterials(ScriptEngine& engine, QScriptContext* context)
{
    const auto* shape = self<DzShape>(engine, context, "getAllMaterials");
    return shape ? listOf<DzMaterial>(
               engine, shape->getNumMaterials(), [&](int i) { return shape->getMaterial(i); })
                 : QScriptValue();
}

QScriptValue getAllSelectedMaterials(ScriptEngine& engine, QScriptContext* context)
{
    const auto* shape = self<DzShape>(engine, context, "getAllSelectedMaterials");
    return shape ? listOf<DzMaterial>(engine, shape->getNumSelectedMaterials(),
               [&](int i) { return shape->getSelectedMaterial(i); })
                 : QScriptValue();
}

// Properties and bricks.

QScriptValue setValueText(ScriptEngine& engine, QScriptContext* context)
{
    auto* property = self<DzProperty>(engine, context, "setValueText");
    QString value;
    if (!property || !readText(context, 0, "setValueText", &value))
        return QScriptValue();
    auto* brick
        = property->getBrickParam() ? nullptr : qobject_cast<DzShaderBrick*>(property->getOwner());
    std::unique_ptr<DzBrickStateHold> hold;
    if (brick && dzUndoStack->canPushItems())
        hold.reset(new DzBrickStateHold(brick));
    QString error;
    if (!property->setValueText(value, &error))
        return fail(context, text("setValueText: %1").arg(error));
    if (hold)
        hold->accept(text("Change %1").arg(property->getLabel()));
    return engine.engine()->undefinedValue();
}

QScriptValue getBrickUser(ScriptEngine& engine, QScriptContext* context)
{
    const auto* brick = self<DzShaderBrick>(engine, context, "getBrickUser");
    if (!brick)
        return QScriptValue();
    IDzBrickUser* user = brick->getBrickUser();
    return engine.wrap(user ? user->getBrickUserElement() : nullptr);
}

/// Runs an action on a brick, as its menu does.
QScriptValue runAction(ScriptEngine& engine, QScriptContext* context)
{
    auto* brick = self<DzShaderBrick>(engine, context, "runAction");
    QString name;
    if (!brick || !readText(context, 0, "runAction", &name))
        return QScriptValue();
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return fail(context, text("runAction: %1 needs a program with windows").arg(name));
    const std::unique_ptr<QObject> object(dzApp->createInstance(name));
    auto* action = qobject_cast<DzBrickAction*>(object.get());
    if (!action)
        return fail(context, text("runAction: %1 is not a brick action").arg(name));
    action->setBrick(brick);
    DzBrickStateHold hold(brick);
    action->trigger();
    hold.accept(action->text());
    return engine.engine()->undefinedValue();
}

QScriptValue getNumMaterials(ScriptEngine&, QScriptContext*)
{
    return DzMaterial::getNumMaterials();
}

QScriptValue getMaterial(ScriptEngine& engine, QScriptContext* context)
{
    return engine.wrap(DzMaterial::getMaterial(context->argument(0).toInt32()));
}

struct NamedFunction {
    const char* name;
    ScriptEngine::Function function;
};

void addFunctions(ScriptEngine* engine, QScriptValue target, const QList<NamedFunction>& functions)
{
    for (const NamedFunction& entry : functions)
        target.setProperty(QString::fromLatin1(entry.name), engine->newFunction(entry.function),
            QScriptValue::SkipInEnumeration);
}

void defineMethods(ScriptEngine* engine)
{
    const auto prototype = [engine](const QMetaObject& metaObject) {
        return engine->classes().prototype(&metaObject);
    };
    addFunctions(engine, engine->objectPrototype(),
        { { "toString", objectToString }, { "deleteLater", objectDelete } });
    addFunctions(
        engine, prototype(DzApp::staticMetaObject), { { "getClassNames", getClassNames } });
    addFunctions(engine, prototype(DzScene::staticMetaObject),
        { { "loadScene", loadScene }, { "saveScene", saveScene }, { "getNodeList", getNodeList },
            { "getSelectedNodeList", getSelectedNodeList } });
    addFunctions(engine, prototype(DzShape::staticMetaObject),
        { { "getAllMaterials", getAllMaterials },
            { "getAllSelectedMaterials", getAllSelectedMaterials } });
    addFunctions(
        engine, prototype(DzProperty::staticMetaObject), { { "setValueText", setValueText } });
    addFunctions(engine, prototype(DzShaderBrick::staticMetaObject),
        { { "getBrickUser", getBrickUser }, { "runAction", runAction } });
    addFunctions(engine, engine->classes().constructor(&DzMaterial::staticMetaObject),
        { { "getNumMaterials", getNumMaterials }, { "getMaterial", getMaterial } });
}

/// A constructor of plain values; its prototype turns them into text.
QScriptValue defineValueClass(ScriptEngine* engine, const char* name,
    ScriptEngine::Function constructor, ScriptEngine::Function toString)
{
    QScriptValue made = engine->newFunction(constructor);
    QScriptValue prototype = engine->engine()->newObject();
    prototype.setProperty(QStringLiteral("constructor"), made, QScriptValue::SkipInEnumeration);
    addFunctions(engine, prototype, { { "toString", toString } });
    made.setProperty(QStringLiteral("prototype"), prototype, QScriptValue::SkipInEnumeration);
    engine->engine()->globalObject().setProperty(
        QString::fromLatin1(name), made, QScriptValue::SkipInEnumeration);
    return made;
}

} // namespace

void defineScriptFunctions(
    ScriptEngine* engine, const QString& filename, const QStringList& arguments)
{
    QScriptValue global = engine->engine()->globalObject();
    engine->setColorConstructor(defineValueClass(engine, "Color", makeColor, colorToString));
    engine->setVec3Constructor(defineValueClass(engine, "DzVec3", makeVec3, vec3ToString));
    defineMethods(engine);
    addFunctions(engine, global,
        { { "print", print }, { "include", include }, { "readFile", readFile },
            { "writeFile", writeFile } });
    global.setProperty(QStringLiteral("App"), engine->wrap(dzApp));
    global.setProperty(QStringLiteral("Scene"), engine->wrap(dzApp->getScene()));
    global.setProperty(QStringLiteral("UndoStack"), engine->wrap(dzUndoStack));
    global.setProperty(QStringLiteral("scriptFile"), filename);
    global.setProperty(QStringLiteral("args"), engine->conversion().fromTexts(arguments));
    engine->engine()->evaluate(
        QStringLiteral("function getArguments() { return args.slice(0); }\n"
                       "function getScriptFileName() { return scriptFile; }"));
}
