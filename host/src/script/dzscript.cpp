// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "dzscript.h"

#include "dzundostack.h"
#include "scriptengine.h"
#include "scriptsource.h"

#include <QRegularExpression>

namespace {

/// Closes what a script left open in the undo stack, so that the next user finds it usable.
class UndoBalance
{
public:
    UndoBalance()
        : m_locks(dzUndoStack->getLockCount())
        , m_holds(dzUndoStack->getHoldDepth())
    {
    }
    ~UndoBalance()
    {
        while (dzUndoStack->getHoldDepth() > m_holds)
            dzUndoStack->accept(DzScript::tr("Run Script"));
        while (dzUndoStack->getHoldDepth() < m_holds)
            dzUndoStack->beginHold();
        while (dzUndoStack->getLockCount() > m_locks)
            dzUndoStack->unlock();
        while (dzUndoStack->getLockCount() < m_locks)
            dzUndoStack->lock();
    }

private:
    int m_locks;
    int m_holds;
};

/// File and line of the first call of a backtrace that has them: "name() at file:line".
bool findPlace(const QStringList& backtrace, QString* file, int* line)
{
    static const QRegularExpression place(QStringLiteral(" at (.+):(\\d+)$"));
    for (const QString& call : backtrace) {
        const QRegularExpressionMatch match = place.match(call);
        if (!match.hasMatch())
            continue;
        *file = match.captured(1);
        *line = match.captured(2).toInt();
        return true;
    }
    return false;
}

} // namespace

DzScript::DzScript()
{
}

DzScript::~DzScript()
{
}

bool DzScript::loadFromFile(const QString& path)
{
    clearError();
    QString code;
    if (!readScriptSource(path, &code, &m_errorMessage))
        return false;
    setCode(code, path);
    return true;
}

void DzScript::setCode(const QString& code, const QString& filename)
{
    m_code = code;
    m_filename = filename;
}

bool DzScript::execute(const QStringList& arguments)
{
    clearError();
    const UndoBalance balance;
    ScriptEngine script(m_printHandler, m_filename, arguments);
    const QScriptValue thrown = script.run(m_code, m_filename);
    if (!thrown.isValid())
        return true;
    m_errorBacktrace = script.engine()->uncaughtExceptionBacktrace();
    m_errorFile = thrown.property(QStringLiteral("fileName")).toString();
    m_errorLine = thrown.property(QStringLiteral("lineNumber")).toInt32();
    if (!thrown.isError() && !findPlace(m_errorBacktrace, &m_errorFile, &m_errorLine)) {
        m_errorFile = m_filename;
        m_errorLine = script.engine()->uncaughtExceptionLineNumber();
    }
    m_errorMessage
        = QStringLiteral("%1:%2: %3")
              .arg(m_errorFile, QString::number(m_errorLine), thrown.toString().simplified());
    return false;
}

void DzScript::clearError()
{
    m_errorMessage.clear();
    m_errorFile.clear();
    m_errorLine = 0;
    m_errorBacktrace.clear();
}
