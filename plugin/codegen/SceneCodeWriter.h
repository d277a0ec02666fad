// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ImageFileNames.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVector>

class DzNumericProperty;
class DzProperty;
class VireoBrickBase;

/// A finished statement: which brick wrote it, and where it stands in the output.
struct WrittenStatement {
    WrittenStatement()
        : brick(nullptr)
        , begin(0)
        , length(0)
    {
    }

    VireoBrickBase* brick;
    int begin;
    int length;
};

/// An image file that the text names: whose it is, and where it is looked for.
struct WrittenImageFile {
    WrittenImageFile()
        : property(nullptr)
    {
    }

    DzProperty* property;
    QString path;
};

/// The state of one run of code generation: counters, open text buffers, finished text and the
/// placeholders given so far. A new run uses a new writer.
///
/// Every write operation appends one whole line to the current buffer. Text is inserted as it is,
/// without escaping; templates are filled one argument at a time, so an argument that contains a
/// place marker such as "%1" takes part in the steps after it. Numbers are written with six
/// significant digits and a point, whatever the locale.
class SceneCodeWriter
{
public:
    SceneCodeWriter();

    /// Numbers of the next statement of each kind, and of the next placeholder.
    quint32 materialCounter;
    quint32 textureCounter;
    quint32 volumeCounter;
    quint32 placeholderCounter;
    /// True writes every value; false writes placeholders for values that are not locked.
    bool literalValues;
    /// True writes a mapped "filename" as the name of its map instead of its value.
    bool mapFiles;
    /// How names of image files are written.
    ImageFileNames imageNames;

    /// Properties that have a placeholder, in order of first use, and their names, index for index.
    QList<DzProperty*> placeholderKeys;
    QStringList placeholderNames;
    /// Mapped properties whose value was written, so that the text does not carry their map.
    QList<DzNumericProperty*> unwrittenMaps;
    /// Adds a property to that list if it has a map.
    void noteUnwrittenMap(DzNumericProperty* property);
    /// Image files whose names were written.
    QVector<WrittenImageFile> imageFiles;
    /// Writes the name of a property's image file, empty for none, and adds it to that list.
    void writeImageFile(const QString& name, DzProperty* property, const QString& stored);

    // The brick that is writing: what is emitted meanwhile is its own.
    void beginBrick(VireoBrickBase* brick) { writingBricks.append(brick); }
    void endBrick() { writingBricks.pop_back(); }
    /// What was emitted, in the order of the output.
    const QVector<WrittenStatement>& writtenStatements() const { return statements; }

    // Buffers. A statement is written into a buffer of its own; finishing the statement appends the
    // buffer to the output, so that what a statement refers to stands before it.
    void push();
    void popAndEmit();
    /// Drops the current buffer and returns its text.
    QString takeAndDrop();
    /// The current buffer. Having none is a programming error and ends the program.
    QString& text();
    QString outputText() const { return output; }

    // Lines.
    void writeBlankLine();
    void writeStatement(const QString& keyword, const QString& name);
    void writeStatement2(const QString& keyword, const QString& first, const QString& second);
    void writeTexture(const QString& name, const QString& valueType, const QString& textureType);
    void writeFloat(const QString& name, double value);
    void writeFloatArray(const QString& name, const QVector<double>& values);
    void writeBool(const QString& name, bool value);
    /// Writes red, green and blue divided by 255; the alpha is never written.
    void writeColor(const QString& name, const QColor& color);
    void writeColor3(const QString& name, double first, double second, double third);
    void writeVector(const QString& name, double x, double y, double z);
    void writeInteger(const QString& name, qint32 value);
    void writeString(const QString& name, const QString& value);
    void writeTextureRef(const QString& name, const QString& texture);
    /// Fills any template of up to four arguments and appends it.
    void writeTemplate(const char* pattern, const QString& first, const QString& second = QString(),
        const QString& third = QString(), const QString& fourth = QString());

private:
    friend QString placeholderName(SceneCodeWriter*, DzProperty*, const QString&);

    QString output;
    /// The first `openBuffers` are in use; those behind them are empty and keep their memory for
    /// the statements to come.
    QVector<QString> buffers;
    int openBuffers;
    QVector<VireoBrickBase*> writingBricks;
    QVector<WrittenStatement> statements;
    /// Slot of a property in the table: the one that holds its place in the placeholder lists, or
    /// the free one where that belongs.
    int placeholderSlot(const DzProperty* property) const;
    void growPlaceholderTable();

    /// A hash table of places in the placeholder lists, -1 for a free slot. It has no nodes of its
    /// own: a run may give hundreds of thousands of placeholders.
    QVector<int> placeholderTable;
};

/// The placeholder that stands for a property in this run: "LuxRender_Lm_", a number of at least
/// three digits, "_" and the suffix. A property gets one placeholder per run.
QString placeholderName(SceneCodeWriter* writer, DzProperty* property, const QString& suffix);
