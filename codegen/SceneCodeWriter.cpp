// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneCodeWriter.h"

namespace {

QString numberText(double value)
{
    return QString::fromLatin1("%1").arg(value, 0, 'g', -1);
}

/// Fills the template as the slow general function does, one argument after the other.
QString filledStepByStep(const char* pattern, const QString* const* arguments, int count)
{
    QString filled = QLatin1String(pattern);
    for (int i = 0; i < count; ++i)
        filled = filled.arg(*arguments[i]);
    return filled;
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

void SceneCodeWriter::push()
{
    m_buffers.append(QString());
}

void SceneCodeWriter::popAndEmit()
{
    if (m_buffers.isEmpty())
        return;
    m_output += m_buffers.last();
    m_buffers.removeLast();
}

QString SceneCodeWriter::takeAndDrop()
{
    const QString taken = text();
    m_buffers.removeLast();
    return taken;
}

QString& SceneCodeWriter::text()
{
    if (m_buffers.isEmpty())
        qFatal("SceneCodeWriter: text is written while no statement is open");
    return m_buffers.last();
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
    const char* begin = pattern;
    for (const char* c = pattern; *c; ++c) {
        if (*c != '%' || c[1] < '1' || c[1] > '9')
            continue;
        buffer += QString::fromLatin1(begin, static_cast<int>(c - begin));
        buffer += *arguments[c[1] - '1'];
        ++c;
        begin = c + 1;
    }
    buffer += QLatin1String(begin);
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
    writeTemplate(
        "\t\"bool    %1\" [\"%2\"]\n", name, QLatin1String(value ? "true" : "false"));
}

void SceneCodeWriter::writeColor(const QString& name, const QColor& color)
{
    writeColor3(name, color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0);
}

void SceneCodeWriter::writeColor3(const QString& name, double first, double second, double third)
{
    writeTemplate("\t\"color   %1\" [%2 %3 %4]\n", name, numberText(first), numberText(second),
        numberText(third));
}

void SceneCodeWriter::writeVector(const QString& name, double x, double y, double z)
{
    writeTemplate("\t\"vector  %1\" [%2 %3 %4]\n", name, numberText(x), numberText(y),
        numberText(z));
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
        = writer->m_placeholderIndex.constFind(property);
    if (known != writer->m_placeholderIndex.constEnd())
        return writer->placeholderNames.at(known.value());
    // The suffix comes last, so that it cannot take part in the other steps.
    const QString name = QString::fromLatin1("%1%2_%3")
                             .arg(QLatin1String("LuxRender_Lm_"))
                             .arg(writer->placeholderCounter++, 3, 10, QLatin1Char('0'))
                             .arg(suffix);
    writer->m_placeholderIndex.insert(property, writer->placeholderKeys.size());
    writer->placeholderKeys.append(property);
    writer->placeholderNames.append(name);
    return name;
}
