// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "SceneCodeWriter.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

/// The text of one brick and what feeds it, with the placeholders in it.
struct GeneratedCode {
    /// The statements; for a root, the material section.
    QString materialText;
    /// The name of the brick's code result: a root's mesh section, else the statement's name.
    QString resultName;
    /// Properties that have a placeholder, and the names of these, index for index.
    QList<DzProperty*> placeholderKeys;
    QStringList placeholderNames;
    /// Mapped properties whose map the text does not carry.
    QList<DzNumericProperty*> unwrittenMaps;
    /// Image files that the text names, each property once.
    QVector<WrittenImageFile> imageFiles;
    /// The parts of materialText by the brick that wrote them, in the text's order.
    QVector<WrittenStatement> statements;
};

/// How values are written.
struct GenerateOptions {
    GenerateOptions()
        : literalValues(true)
        , mapFiles(false)
    {
    }

    bool literalValues;        ///< values rather than placeholders
    bool mapFiles;             ///< a mapped "filename" as its file name
    ImageFileNames imageNames; ///< how that name and those of image properties are written
};

/// Writes a brick afresh. The same network gives the same text on every run.
GeneratedCode generateCode(VireoBrickBase* brick, const GenerateOptions& options);

/// The text that users see: both sections under their headings.
QString exportText(const GeneratedCode& code);

/// The same for scripts and other programs, under the keys of DzBrickCodeKeys. The text of the
/// mesh section is the last of its statements.
QVariantMap sceneCodeMap(VireoBrickBase* brick, const GeneratedCode& code);
