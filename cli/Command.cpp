// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "Command.h"

#include "dzfilename.h"
#include "dzfilewriter.h"
#include "dznumericproperty.h"
#include "dzshaderbrick.h"

#include <QFile>
#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

/// Characters of a message that a person reads.
const int longestMessage = 2000;

/// The text without anything that a terminal would obey; lines and tabs stay.
QByteArray forTerminal(const QString& text)
{
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        QStringList columns = line.split(QLatin1Char('\t'));
        for (QString& column : columns)
            column = dzShownText(column);
        line = columns.join(QLatin1Char('\t'));
    }
    return lines.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

void fail(const QString& message)
{
    throw CommandError { message, ExitFailed };
}

void failWrongUse(const QString& message)
{
    throw CommandError { message, ExitWrongUse };
}

void printText(const QByteArray& output)
{
    const QByteArray text
        = isatty(fileno(stdout)) ? forTerminal(QString::fromUtf8(output)) : output;
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
    const QString path = argumentText(outputFile);
    // A text in the place of a network or scene is mostly a slip of the hand.
    if (QFileInfo(path).isFile() && !DzFileFormats::getKind(path).isEmpty())
        fail(QStringLiteral("cannot write %1: there is a file of another kind; choose another name")
                 .arg(path));
    QString error;
    if (!dzWriteFile(path, text, &error))
        fail(error);
}

void printError(const QString& text)
{
    std::fprintf(stderr, "%s\n", forTerminal(text).constData());
}

void notice(const QString& message)
{
    const QString line = dzShownText(message.left(longestMessage));
    printError(QStringLiteral("vireo: ") + line
        + QLatin1String(message.size() > longestMessage ? "..." : ""));
}

QString argumentText(const std::string& argument)
{
    return QFile::decodeName(QByteArray::fromStdString(argument));
}

CLI::Option* notEmpty(CLI::Option* option)
{
    return option->check(CLI::Validator(
        [](std::string& name) {
            return name.empty() ? std::string("its name is empty; name a file") : std::string();
        },
        std::string()));
}

std::string fileHelp(const char* what, const QString& kind)
{
    const QString suffixes = DzFileFormats::getSuffixText({ kind }, DzFileFormats::Reading);
    const std::string help(what);
    return suffixes.isEmpty() ? help : help + " (" + suffixes.toStdString() + ")";
}

QString formatTable(const QVector<QStringList>& cells, const QString& linePrefix)
{
    QVector<QStringList> rows = cells;
    for (QStringList& row : rows)
        for (QString& cell : row)
            cell = dzShownText(cell);
    QVector<int> widths;
    for (const QStringList& row : qAsConst(rows)) {
        widths.resize(qMax(widths.size(), row.size()));
        for (int i = 0; i < row.size(); ++i)
            widths[i] = qMax(widths.at(i), row.at(i).size());
    }
    QString text;
    for (const QStringList& row : qAsConst(rows)) {
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
