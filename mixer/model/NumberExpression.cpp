// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "NumberExpression.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>
#include <muParser.h>

namespace {

/// Longer than anything typed; keeps a pasted book from being parsed.
const int longestExpression = 1000;

QString message(const char* source)
{
    return QCoreApplication::translate("NumberExpression", source);
}

/// "0,5" is a number where commas are decimal; "max(1,2)" has arguments.
QString withDecimalPoint(const QString& text)
{
    static const QRegularExpression commaNumber(
        QStringLiteral("^[+-]?[0-9]*,[0-9]+([eE][+-]?[0-9]+)?$"));
    QString result = text;
    if (commaNumber.match(text).hasMatch())
        result.replace(QLatin1Char(','), QLatin1Char('.'));
    return result;
}

} // namespace

bool evaluateNumber(const QString& text, double* value, QString* error)
{
    const auto fail = [&](const QString& cause) {
        if (error)
            *error = cause;
        return false;
    };
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return fail(message("Type a number, or arithmetic such as 2*0.3+1."));
    if (trimmed.size() > longestExpression)
        return fail(message("This is too long for a number."));
    try {
        mu::Parser parser;
        parser.SetExpr(withDecimalPoint(trimmed).toStdString());
        const double result = parser.Eval();
        if (!std::isfinite(result))
            return fail(message("\"%1\" has no finite value.").arg(trimmed));
        *value = result;
        return true;
    } catch (const mu::Parser::exception_type& problem) {
        return fail(message("\"%1\" is not a number: %2")
                        .arg(trimmed, QString::fromStdString(problem.GetMsg())));
    }
}
