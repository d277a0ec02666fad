// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzwarning.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>
#include <memory>

class DzMaterial;
class DzScene;

/// One scene file: opens a document into a scene and saves the scene's surfaces back into it.
///
/// The host's documents, plain or compressed, and .obj files with named materials are opened. A
/// document is kept as it was read; saving changes only the entries of what was changed on the
/// surfaces since: values, maps and members of properties, properties that were added or removed,
/// and persistent data items. With no change the bytes are the same. An .obj becomes a document
/// with the mesh in it, which is what saving writes.
///
/// The scene may be changed freely meanwhile and outlive this object; a surface that is no longer
/// in it keeps the entries it had.
class DzSceneFile
{
public:
    DzSceneFile();
    ~DzSceneFile();

    /// Reads the file and puts its content into the scene in place of what was there. On failure
    /// false and getError(), and the scene as it was.
    bool load(const QString& path, DzScene* scene);
    /// The same for the text of a document; `name` stands for the file in messages.
    bool loadText(const QByteArray& text, const QString& name, DzScene* scene);

    /// Writes the document with the changes, compressed when the file that was read was. On
    /// failure false and getError(), and the old file as it was. A file that is no scene, by its
    /// name or by what is in it, is not written over.
    bool save(const QString& path);
    /// True when `path` is the file that was opened or saved last and holds something else now:
    /// another program wrote to it. Costs reading it.
    bool isFileChanged(const QString& path) const;
    /// The document with the changes, never compressed; empty when none was loaded.
    QByteArray saveText();

    /// What went wrong, in one line: file, place, cause, what to do.
    QString getError() const;
    /// What was left out or put right while reading. Places are in the document; the file's name
    /// is not said.
    const DzWarningList& getReadWarnings() const;
    /// What the last saving could not write.
    const DzWarningList& getSaveWarnings() const;
    /// The surfaces of which the last saving could not write all that was changed, in the order of
    /// the document. A surface that was deleted since is null.
    QVector<DzMaterial*> getIncompleteSurfaces() const;
    /// Both lists of warnings, a line each.
    QStringList getWarnings() const;
    /// True when the file that was read was compressed.
    bool isCompressed() const;
    /// True when the document was made from a file of another format.
    bool isConverted() const;

private:
    DzSceneFile(const DzSceneFile&) = delete;
    DzSceneFile& operator=(const DzSceneFile&) = delete;

    class Private;
    std::unique_ptr<Private> d;
};
