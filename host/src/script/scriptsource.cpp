// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "scriptsource.h"

#include "dzfilewriter.h"
#include "dzscript.h"

#include <QCoreApplication>
#include <QTextCodec>

bool readScriptSource(const QString& path, QString* code, QString* error)
{
    QByteArray content;
    if (!dzReadFile(path, DzScript::maximumSize, &content, error))
        return false;
    QTextCodec::ConverterState state;
    // Leaves out a byte order mark.
    *code
        = QTextCodec::codecForName("UTF-8")->toUnicode(content.constData(), content.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return true;
    *error = QCoreApplication::translate(
        "DzScript", "cannot read %1: it is not UTF-8 text; save it as UTF-8")
                 .arg(path);
    return false;
}
