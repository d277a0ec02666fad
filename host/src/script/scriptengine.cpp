// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptengine.h"

#include "dzfilewriter.h"
#include "scriptfiles.h"
#include "scriptfunctions.h"
#include "scriptsource.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QScriptContext>
#include <cstdio>
#include <iterator>

namespace {

/// More files within files are taken for a mistake; each takes a part of the stack.
const int deepestInclude = 64;

const int fewestWrappers = 10000;

QString text(const char* source)
{
    return QCoreApplication::translate("DzScript", source);
}

/// One name for a file, however it is written.
QString identityOf(const QString& path)
{
    const QString canonical = QFileInfo(path).canonicalFilePath();
    return canonical.isEmpty() ? path : canonical;
}

} // namespace

ScriptEngine::ScriptEngine(const DzScript::PrintHandler& printHandler, const QString& filename,
    const QStringList& arguments)
    : m_printHandler(printHandler)
    , m_wrapperLimit(fewestWrappers)
    , m_conversion(this)
    , m_objectPrototype(m_engine.newObject())
    , m_classes(this)
    , m_signals(this)
{
    m_including.append(identityOf(filename));
    m_included.insert(identityOf(filename));
    m_classes.defineConstructors();
    defineScriptFunctions(this, filename, arguments);
    defineScriptFiles(this);
}

ScriptEngine::~ScriptEngine()
{
}

QScriptValue ScriptEngine::newFunction(Function function)
{
    m_functions.emplace_back(new NativeFunction { this, function });
    return m_engine.newFunction(callFunction, m_functions.back().get());
}

QScriptValue ScriptEngine::callFunction(QScriptContext* context, QScriptEngine*, void* data)
{
    const auto* native = static_cast<const NativeFunction*>(data);
    const QScriptValue result = native->function(*native->engine, context);
    if (context->state() == QScriptContext::ExceptionState)
        return result;
    const QScriptValue problem = native->engine->m_signals.runHandlers();
    return problem.isValid() ? context->throwValue(problem) : result;
}

QScriptValue ScriptEngine::run(const QString& code, const QString& filename)
{
    m_engine.evaluate(code, filename);
    return m_engine.hasUncaughtException() ? m_engine.uncaughtException() : m_signals.runHandlers();
}

QScriptValue ScriptEngine::wrap(QObject* object)
{
    if (!object)
        return m_engine.nullValue();
    const auto known = m_wrappers.constFind(object);
    // Another object may have stood at the same address.
    if (known != m_wrappers.constEnd() && known->handle->target() == object)
        return known->value;
    if (m_wrappers.size() >= m_wrapperLimit)
        forgetGoneObjects();
    const auto handle = std::make_shared<ScriptHandle>(object);
    QScriptValue value = m_engine.newVariant(QVariant::fromValue(handle));
    value.setPrototype(m_classes.prototype(object->metaObject()));
    m_wrappers.insert(object, Wrapper { handle, value });
    return value;
}

void ScriptEngine::forgetGoneObjects()
{
    for (auto it = m_wrappers.begin(); it != m_wrappers.end();)
        it = it->handle->target() ? std::next(it) : m_wrappers.erase(it);
    m_wrapperLimit = qMax(fewestWrappers, 2 * m_wrappers.size());
}

const ScriptHandle* ScriptEngine::handleOf(const QScriptValue& value) const
{
    if (!value.isVariant())
        return nullptr;
    return value.toVariant().value<ScriptHandlePtr>().get();
}

QObject* ScriptEngine::targetOf(
    const QScriptValue& value, const QMetaObject* metaObject, QString* error) const
{
    const ScriptHandle* handle = handleOf(value);
    QObject* target = handle ? handle->target() : nullptr;
    if (target && metaObject->cast(target))
        return target;
    if (!handle || target)
        *error
            = text("it is called for %1; a %2 is wanted")
                  .arg(m_conversion.describe(value), QString::fromLatin1(metaObject->className()));
    else
        *error = text("the %1 has been deleted").arg(handle->className());
    return nullptr;
}

void ScriptEngine::raiseIn(QScriptContext* context)
{
    if (m_raised.isEmpty())
        return;
    context->throwError(m_raised);
    m_raised.clear();
}

bool ScriptEngine::print(const QString& text, QString* error) const
{
    if (m_printHandler)
        return m_printHandler(text, error);
    const QByteArray bytes = text.toUtf8();
    if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size())
        && std::fflush(stdout) == 0)
        return true;
    *error = ::text("cannot write to standard output");
    return false;
}

QScriptValue ScriptEngine::include(
    QScriptContext* context, const QString& path, const QString& from)
{
    const QString file = QDir(QFileInfo(from).path()).filePath(path);
    const QString identity = identityOf(file);
    if (m_including.contains(identity))
        return context->throwError(text("include: %1 includes itself, by way of %2")
                                       .arg(path, QFileInfo(m_including.last()).fileName()));
    if (m_included.contains(identity))
        return m_engine.undefinedValue();
    if (m_including.size() > deepestInclude)
        return context->throwError(
            text("include: more than %1 files within each other").arg(deepestInclude));
    QString code;
    QString error;
    if (!readScriptSource(file, &code, &error))
        return context->throwError(text("include: %1").arg(error));
    m_including.append(identity);
    m_included.insert(identity);
    // The file's names go where all scripts see them, wherever it is included.
    context->setActivationObject(m_engine.globalObject());
    context->setThisObject(m_engine.globalObject());
    const QScriptValue result = m_engine.evaluate(code, file);
    m_including.removeLast();
    return result;
}
