// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzbase.h"

#include <QStringList>
#include <functional>

/// A script in the host's script language, ECMAScript, and its execution.
///
/// Scripts make objects of every class that a module registered, call what these classes make
/// invokable, and reach the application, the scene and the undo stack. An object that a script
/// makes and hands to nobody is deleted when the execution ends.
class DzScript : public DzBase
{
    Q_OBJECT

public:
    /// Receives what the script prints, line by line with the line end. False, with the reason in
    /// `error`, makes it an error of the script.
    typedef std::function<bool(const QString& text, QString* error)> PrintHandler;

    /// The largest script file that is read, in bytes.
    static const qint64 maximumSize = 64 * 1024 * 1024;

    DzScript();
    ~DzScript() override;

    /// Reads the code from a UTF-8 file. On failure false, with file and cause in
    /// getErrorMessage().
    bool loadFromFile(const QString& path);
    /// Takes the code from a text; `filename` stands for it in messages, and relative includes
    /// start at its folder.
    void setCode(const QString& code, const QString& filename);
    QString getFilename() const { return m_filename; }

    /// Without a handler, text goes to standard output.
    void setPrintHandler(const PrintHandler& handler) { m_printHandler = handler; }

    /// Runs the code, in an engine of its own, once per call. On an error that the script does not
    /// catch, or a syntax error, false; the getters below tell about it. Undo locks and holds that
    /// the script left open are closed.
    bool execute(const QStringList& arguments = QStringList());

    /// The error in one line: "file:line: message", or the cause of a failed loadFromFile().
    QString getErrorMessage() const { return m_errorMessage; }
    /// File and line of the error; empty and 0 when it has no place in a script.
    QString getErrorFile() const { return m_errorFile; }
    int getErrorLine() const { return m_errorLine; }
    /// The calls that led to the error, innermost first, one line each.
    QStringList getErrorBacktrace() const { return m_errorBacktrace; }

private:
    void clearError();

    QString m_code;
    QString m_filename;
    PrintHandler m_printHandler;
    QString m_errorMessage;
    QString m_errorFile;
    int m_errorLine = 0;
    QStringList m_errorBacktrace;
};
