// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TestSupport.h"
#include "dzscript.h"

#include <QStringList>

/// One execution of a script within the test program.
class ScriptRunner
{
public:
    /// Runs the code as the content of `filename`.
    explicit ScriptRunner(const QString& code, const QStringList& arguments = QStringList(),
        const QString& filename = QStringLiteral("test.dsa"))
    {
        m_script.setPrintHandler([this](const QString& text, QString*) {
            m_output += text;
            return true;
        });
        m_script.setCode(code, filename);
        m_succeeded = m_script.execute(arguments);
    }
    explicit ScriptRunner(const char* code)
        : ScriptRunner(QString::fromUtf8(code))
    {
    }

    bool succeeded() const { return m_succeeded; }
    QString output() const { return m_output; }
    QString error() const { return m_script.getErrorMessage(); }
    const DzScript& script() const { return m_script; }

private:
    DzScript m_script;
    QString m_output;
    bool m_succeeded = false;
};

/// The script ends well and prints exactly this.
#define EXPECT_PRINTS(expected, code)                                                              \
    do {                                                                                           \
        const ScriptRunner macroRun(code);                                                         \
        EXPECT_TRUE(macroRun.succeeded()) << macroRun.error().toStdString();                       \
        EXPECT_TEXT(QString::fromUtf8(expected), macroRun.output());                               \
    } while (false)

/// The script ends with an error whose line is exactly this.
#define EXPECT_FAILS(expected, code)                                                               \
    do {                                                                                           \
        const ScriptRunner macroRun(code);                                                         \
        EXPECT_FALSE(macroRun.succeeded());                                                        \
        EXPECT_EQ(QString::fromUtf8(expected), macroRun.error());                                  \
    } while (false)
