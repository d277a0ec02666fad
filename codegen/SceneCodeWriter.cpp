// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneCodeWriter.h"

#include "dznumericproperty.h"

namespace {

const char* const colorPattern = "\t\"color   %1\" [%2 %3 %4]\n";

/// Six significant digits in general format.
QString numberText(double value)
{
    // Whole numbers of up to six digits have the same text either way, and are most.
    const int whole = value > -1e6 && value < 1e6 ? static_cast<int>(value) : 0;
    return value == whole ? QString::number(whole) : QString::number(value, 'g', 6);
}

/// The text of an 8-bit colour component divided by 255.
const QString& componentText(int component)
{
    static QVector<QString> texts;
    if (texts.isEmpty())
        for (int i = 0; i < 256; ++i)
            texts.append(numberText(i / 255.0));
    return texts.at(component);
}

/// Fills the template as the slow general function does, one argument after the other.
QString filledStepByStep(const char* pattern, const QString* const* arguments, int count)
{
    QString filled = QLatin1String(pattern);
    for (int i = 0; i < count; ++i)
        filled = filled.arg(*arguments[i]);
    return filled;
}

/// Appends a number in decimal with at least three digits.
void appendPadded(QString* text, quint32 number)
{
    QChar digits[10];
    int count = 0;
    for (; number > 0 || count < 3; number /= 10)
        digits[count++] = QLatin1Char(static_cast<char>('0' + number % 10));
    while (count > 0)
        *text += digits[--count];
}

int markerCount(const char* pattern)
{
    int count = 0;
    for (const char* c = pattern; *c; ++c)
        if (*c == '%' && c[1] >= '1' && c[1] <= '9')
            ++count;
    return count;
}

} // namespace

SceneCodeWriter::SceneCodeWriter()
    : materialCounter(1)
    , textureCounter(1)
    , volumeCounter(1)
    , placeholderCounter(1)
    , literalValues(false)
    , mapFiles(false)
{
}

void SceneCodeWriter::noteUnwrittenMap(DzNumericProperty* property)
{
    if (property->isMapped())
        unwrittenMaps.append(property);
}

void SceneCodeWriter::push()
{
    buffers.append(QString());
}

void SceneCodeWriter::popAndEmit()
{
    if (buffers.isEmpty())
        return;
    output += buffers.last();
    buffers.pop_back();
}

QString SceneCodeWriter::takeAndDrop()
{
    const QString taken = text();
    buffers.pop_back();
    return taken;
}

QString& SceneCodeWriter::text()
{
    if (buffers.isEmpty())
        qFatal("SceneCodeWriter: text is written while no statement is open");
    return buffers.last();
}

void SceneCodeWriter::writeTemplate(const char* pattern, const QString& first,
    const QString& second, const QString& third, const QString& fourth)
{
    const QString* const arguments[] = { &first, &second, &third, &fourth };
    const int count = markerCount(pattern);
    bool isPlain = true;
    for (int i = 0; i < count; ++i)
        isPlain = isPlain && !arguments[i]->contains(QLatin1Char('%'));
    QString& buffer = text();
    if (!isPlain) {
        buffer += filledStepByStep(pattern, arguments, count);
        return;
    }
    // Without place markers in the arguments one pass gives the same text.
    for (const char* c = pattern; *c; ++c) {
        if (*c == '%' && c[1] >= '1' && c[1] <= '9')
            buffer += *arguments[*++c - '1'];
        else
            buffer += QLatin1Char(*c);
    }
}

void SceneCodeWriter::writeBlankLine()
{
    text() += QLatin1Char('\n');
}

void SceneCodeWriter::writeStatement(const QString& keyword, const QString& name)
{
    writeTemplate("%1 \"%2\"\n", keyword, name);
}

void SceneCodeWriter::writeStatement2(
    const QString& keyword, const QString& first, const QString& second)
{
    writeTemplate("%1 \"%2\" \"%3\"\n", keyword, first, second);
}

void SceneCodeWriter::writeTexture(
    const QString& name, const QString& valueType, const QString& textureType)
{
    writeTemplate("Texture \"%1\" \"%2\" \"%3\"\n", name, valueType, textureType);
}

void SceneCodeWriter::writeFloat(const QString& name, double value)
{
    writeTemplate("\t\"float   %1\" [%2]\n", name, numberText(value));
}

void SceneCodeWriter::writeFloatArray(const QString& name, const QVector<double>& values)
{
    QStringList numbers;
    for (int i = 0; i < values.size(); ++i)
        numbers.append(numberText(values.at(i)));
    writeTemplate("\t\"float   %1\" [%2]\n", name, numbers.join(QLatin1String(" ")));
}

void SceneCodeWriter::writeBool(const QString& name, bool value)
{
    writeTemplate("\t\"bool    %1\" [\"%2\"]\n", name, QLatin1String(value ? "true" : "false"));
}

void SceneCodeWriter::writeColor(const QString& name, const QColor& color)
{
    writeTemplate(colorPattern, name, componentText(color.red()), componentText(color.green()),
        componentText(color.blue()));
}

void SceneCodeWriter::writeColor3(const QString& name, double first, double second, double third)
{
    writeTemplate(colorPattern, name, numberText(first), numberText(second), numberText(third));
}

void SceneCodeWriter::writeVector(const QString& name, double x, double y, double z)
{
    writeTemplate(
        "\t\"vector  %1\" [%2 %3 %4]\n", name, numberText(x), numberText(y), numberText(z));
}

void SceneCodeWriter::writeInteger(const QString& name, qint32 value)
{
    writeTemplate("\t\"integer %1\" [%2]\n", name, QString::number(value));
}

void SceneCodeWriter::writeString(const QString& name, const QString& value)
{
    writeTemplate("\t\"string  %1\" [\"%2\"]\n", name, value);
}

void SceneCodeWriter::writeTextureRef(const QString& name, const QString& texture)
{
    writeTemplate("\t\"texture %1\" [\"%2\"]\n", name, texture);
}

QString placeholderName(SceneCodeWriter* writer, DzProperty* property, const QString& suffix)
{
    const QHash<const DzProperty*, int>::const_iterator known
        = writer->placeholderIndex.constFind(property);
    if (known != writer->placeholderIndex.constEnd())
        return writer->placeholderNames.at(known.value());
    QString name;
    name.reserve(suffix.size() + 24);
    name += QLatin1String("LuxRender_Lm_");
    appendPadded(&name, writer->placeholderCounter++);
    name += QLatin1Char('_');
    name += suffix;
    // Growing in few steps: a run may give very many placeholders.
    if (writer->placeholderIndex.size() == writer->placeholderIndex.capacity())
        writer->placeholderIndex.reserve(qMax(64, 4 * writer->placeholderIndex.size()));
    writer->placeholderIndex.insert(property, writer->placeholderKeys.size());
    writer->placeholderKeys.append(property);
    writer->placeholderNames.append(name);
    return name;
}
