// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"

#include "dzfilewriter.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

void fail(const QString& message)
{
    throw CommandError { message, ExitFailed };
}

void failWrongUse(const QString& message)
{
    throw CommandError { message, ExitWrongUse };
}

void printText(const QByteArray& text)
{
    const size_t size = static_cast<size_t>(text.size());
    if (std::fwrite(text.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0)
        fail(QStringLiteral("cannot write to standard output: %1; nothing else was changed")
                 .arg(QString::fromLocal8Bit(std::strerror(errno))));
}

void deliver(const QByteArray& text, const std::string& outputFile)
{
    if (outputFile.empty()) {
        printText(text);
        return;
    }
    QString error;
    if (!dzWriteFile(argumentText(outputFile), text, &error))
        fail(error);
}

void printError(const QString& text)
{
    std::fprintf(stderr, "%s\n", text.toUtf8().constData());
}

void notice(const QString& message)
{
    printError(QStringLiteral("vireo: ") + message);
}

QString argumentText(const std::string& argument)
{
    return QString::fromUtf8(argument.data(), static_cast<int>(argument.size()));
}

std::string fileHelp(const char* what, const QString& kind)
{
    const QString suffixes = DzFileFormats::getSuffixText({ kind }, DzFileFormats::Reading);
    const std::string help(what);
    return suffixes.isEmpty() ? help : help + " (" + suffixes.toStdString() + ")";
}

QString formatTable(const QVector<QStringList>& rows, const QString& linePrefix)
{
    QVector<int> widths;
    for (const QStringList& row : rows) {
        widths.resize(qMax(widths.size(), row.size()));
        for (int i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths.at(i), row.at(i).size());
    }
    QString text;
    for (const QStringList& row : rows) {
        QString line = linePrefix;
        for (int i = 0; i < row.size(); ++i)
            line += row.at(i).leftJustified(widths.at(i) + 2);
        while (line.endsWith(QLatin1Char(' ')))
            line.chop(1);
        text += line + QLatin1Char('\n');
    }
    return text;
}

QString brickCaption(const DzShaderBrick* brick)
{
    const QString title = brick->getBrickTitle();
    return brick->getBrickID() == 0
        ? title
        : QStringLiteral("%1 (%2)").arg(title, QString::number(brick->getBrickID()));
}

QString valueCaption(const DzProperty* property)
{
    QString caption = property->getValueText();
    auto* numeric = qobject_cast<const DzNumericProperty*>(property);
    if (numeric && numeric->isMapped())
        caption += QStringLiteral(" map ") + numeric->getMapValue()->getFilename();
    caption.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    caption.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return caption;
}
