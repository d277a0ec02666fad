// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "SceneCodeWriter.h"

#include "dznumericproperty.h"

#include <cstring>

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

/// Digits of a number in decimal, at least three.
int paddedSize(quint32 number)
{
    int size = 3;
    for (quint32 rest = number / 1000; rest > 0; rest /= 10)
        ++size;
    return size;
}

/// Writes a number in decimal, with zeros before it, into exactly `size` characters.
void writePadded(QChar* out, int size, quint32 number)
{
    for (int i = size - 1; i >= 0; --i, number /= 10)
        out[i] = QLatin1Char(static_cast<char>('0' + number % 10));
}

/// Copies characters and returns the place after them.
QChar* writeText(QChar* out, const QString& text)
{
    memcpy(out, text.constData(), sizeof(QChar) * static_cast<size_t>(text.size()));
    return out + text.size();
}

/// True at a place marker such as "%1".
bool isMarker(const char* place)
{
    return *place == '%' && place[1] >= '1' && place[1] <= '9';
}

} // namespace

SceneCodeWriter::SceneCodeWriter()
    : materialCounter(1)
    , textureCounter(1)
    , volumeCounter(1)
    , placeholderCounter(1)
    , literalValues(false)
    , mapFiles(false)
    , openBuffers(0)
{
}

void SceneCodeWriter::noteUnwrittenMap(DzNumericProperty* property)
{
    if (property->isMapped())
        unwrittenMaps.append(property);
}

void SceneCodeWriter::writeImageFile(
    const QString& name, DzProperty* property, const QString& stored)
{
    writeString(name, imageNames.nameOf(stored));
    if (stored.isEmpty())
        return;
    WrittenImageFile image;
    image.property = property;
    image.path = imageNames.placeOf(stored);
    imageFiles.append(image);
}

void SceneCodeWriter::push()
{
    if (openBuffers == buffers.size())
        buffers.append(QString());
    ++openBuffers;
}

void SceneCodeWriter::popAndEmit()
{
    if (openBuffers == 0)
        return;
    QString& finished = buffers[--openBuffers];
    if (!writingBricks.isEmpty() && !finished.isEmpty()) {
        WrittenStatement statement;
        statement.brick = writingBricks.last();
        statement.begin = output.size();
        statement.length = finished.size();
        statements.append(statement);
    }
    output += finished;
    finished.resize(0);
}

QString SceneCodeWriter::takeAndDrop()
{
    const QString taken = text();
    buffers[--openBuffers].clear();
    return taken;
}

QString& SceneCodeWriter::text()
{
    if (openBuffers == 0)
        qFatal("SceneCodeWriter: text is written while no statement is open");
    return buffers[openBuffers - 1];
}

void SceneCodeWriter::writeTemplate(const char* pattern, const QString& first,
    const QString& second, const QString& third, const QString& fourth)
{
    const QString* const arguments[] = { &first, &second, &third, &fourth };
    const int mostArguments = 4;
    int count = 0;
    int size = 0;
    bool isPlain = true;
    for (const char* c = pattern; *c; ++c) {
        if (!isMarker(c)) {
            ++size;
            continue;
        }
        const int index = *++c - '1';
        isPlain = isPlain && index < mostArguments && !arguments[index]->contains(QLatin1Char('%'));
        size += isPlain ? arguments[index]->size() : 0;
        count = qMin(count + 1, mostArguments);
    }
    QString& buffer = text();
    if (!isPlain) {
        buffer += filledStepByStep(pattern, arguments, count);
        return;
    }
    // Without place markers in the arguments one pass gives the same text.
    const int begin = buffer.size();
    buffer.resize(begin + size);
    QChar* out = buffer.data() + begin;
    for (const char* c = pattern; *c; ++c) {
        if (isMarker(c))
            out = writeText(out, *arguments[*++c - '1']);
        else
            *out++ = QLatin1Char(*c);
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

int SceneCodeWriter::placeholderSlot(const DzProperty* property) const
{
    // Objects lie at multiples of their alignment: the multiplication brings the bits that differ
    // to the top.
    const quint64 address = reinterpret_cast<quintptr>(property);
    const int mask = placeholderTable.size() - 1;
    int slot = static_cast<int>((address * Q_UINT64_C(0x9e3779b97f4a7c15)) >> 32) & mask;
    while (
        placeholderTable.at(slot) >= 0 && placeholderKeys.at(placeholderTable.at(slot)) != property)
        slot = (slot + 1) & mask;
    return slot;
}

void SceneCodeWriter::growPlaceholderTable()
{
    const int size = placeholderTable.isEmpty() ? 64 : 4 * placeholderTable.size();
    placeholderTable.fill(-1, size);
    for (int i = 0; i < placeholderKeys.size(); ++i)
        placeholderTable[placeholderSlot(placeholderKeys.at(i))] = i;
}

QString placeholderName(SceneCodeWriter* writer, DzProperty* property, const QString& suffix)
{
    // At most half of the slots are taken, so that searches stay short.
    if (2 * writer->placeholderKeys.size() >= writer->placeholderTable.size())
        writer->growPlaceholderTable();
    int& place = writer->placeholderTable[writer->placeholderSlot(property)];
    if (place >= 0)
        return writer->placeholderNames.at(place);
    // In one piece: a run may give hundreds of thousands of them.
    static const QString prefix = QLatin1String("LuxRender_Lm_");
    const quint32 number = writer->placeholderCounter++;
    const int numDigits = paddedSize(number);
    QString name(prefix.size() + numDigits + 1 + suffix.size(), Qt::Uninitialized);
    QChar* out = writeText(name.data(), prefix);
    writePadded(out, numDigits, number);
    out[numDigits] = QLatin1Char('_');
    writeText(out + numDigits + 1, suffix);
    place = writer->placeholderKeys.size();
    writer->placeholderKeys.append(property);
    writer->placeholderNames.append(name);
    return name;
}
