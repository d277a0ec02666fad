// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzscenefile.h"
#include "dzscript.h"
#include "scriptclasses.h"
#include "scriptconversion.h"
#include "scripthandle.h"
#include "scriptobjects.h"
#include "scriptsignals.h"

#include <QScriptEngine>
#include <QSet>
#include <QStringList>
#include <memory>
#include <vector>

/// What one execution of a script runs in: the engine, the host's classes and functions in it, and
/// the objects that the script has made.
class ScriptEngine
{
public:
    ScriptEngine(const DzScript::PrintHandler& printHandler, const QString& filename,
        const QStringList& arguments);
    ~ScriptEngine();

    /// A function of the engine's; handlers that its work sets off run after it.
    typedef QScriptValue (*Function)(ScriptEngine& engine, QScriptContext* context);
    QScriptValue newFunction(Function function);

    /// Runs a program in the global scope. Returns what it threw, an invalid value when nothing.
    QScriptValue run(const QString& code, const QString& filename);

    QScriptEngine* engine() { return &m_engine; }
    ScriptClasses& classes() { return m_classes; }
    const ScriptConversion& conversion() const { return m_conversion; }
    ScriptObjects& objects() { return m_objects; }
    ScriptSignals& receiver() { return m_signals; }
    /// The document of the scene, for saving it.
    DzSceneFile& sceneFile() { return m_sceneFile; }

    /// An object for a script; null for null.
    QScriptValue wrap(QObject* object);
    /// The handle in a script's value, null when it holds none.
    const ScriptHandle* handleOf(const QScriptValue& value) const;
    /// The object in `value`, which must be of a class; null, with the reason in `error`, when it
    /// is not, or is gone.
    QObject* targetOf(
        const QScriptValue& value, const QMetaObject* metaObject, QString* error) const;

    /// What all objects of the host have.
    QScriptValue objectPrototype() const { return m_objectPrototype; }
    QScriptValue colorConstructor() const { return m_colorConstructor; }
    QScriptValue vec3Constructor() const { return m_vec3Constructor; }
    void setColorConstructor(const QScriptValue& constructor) { m_colorConstructor = constructor; }
    void setVec3Constructor(const QScriptValue& constructor) { m_vec3Constructor = constructor; }

    /// Makes the native call that runs now end with an error of the script.
    void raise(const QString& message) { m_raised = message; }
    /// Throws what was raised, if anything.
    void raiseIn(QScriptContext* context);

    /// Prints a line; false, with the reason in `error`, when that fails.
    bool print(const QString& text, QString* error) const;
    /// Runs another script file; `from` is the file that asks for it.
    QScriptValue include(QScriptContext* context, const QString& path, const QString& from);

private:
    Q_DISABLE_COPY(ScriptEngine)

    struct NativeFunction {
        ScriptEngine* engine;
        Function function;
    };

    static QScriptValue callFunction(QScriptContext* context, QScriptEngine* engine, void* data);

    /// What stands for an object in scripts: always the same value, so that they can compare.
    struct Wrapper {
        ScriptHandlePtr handle;
        QScriptValue value;
    };

    void forgetGoneObjects();

    std::vector<std::unique_ptr<NativeFunction>> m_functions;
    DzScript::PrintHandler m_printHandler;
    QScriptEngine m_engine;
    QHash<const QObject*, Wrapper> m_wrappers;
    int m_wrapperLimit; ///< as many are worth looking for objects that are gone
    ScriptConversion m_conversion;
    QScriptValue m_objectPrototype;
    QScriptValue m_colorConstructor;
    QScriptValue m_vec3Constructor;
    ScriptClasses m_classes;
    ScriptObjects m_objects;
    ScriptSignals m_signals; // goes first: what is deleted then reaches no function any more
    DzSceneFile m_sceneFile;
    QString m_raised;
    QStringList m_including; ///< files that are being run, outermost first
    QSet<QString> m_included;
};
