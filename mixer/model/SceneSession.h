// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FileState.h"
#include "Work.h"

#include <QStringList>
#include <memory>

class DzSceneFile;

/// The scene file that surfaces come from and are saved to.
class SceneSession : public Work
{
    Q_OBJECT

public:
    explicit SceneSession(QObject* parent = nullptr);
    ~SceneSession() override;

    /// Loads a file into the application's scene. False with the reason in getError(), and the
    /// scene is as it was.
    bool load(const QString& path);
    /// Loads a copy of the scene that was being worked on as `path`. It is unsaved then. False with
    /// the reason in getError(), and the scene is as it was.
    bool restore(const QString& copy, const QString& path);
    /// Writes the scene. False with the reason in getError(), and the old file is as it was.
    bool save(const QString& path);
    bool hasScene() const { return m_file != nullptr; }
    /// Where saving without asking may go: not over a file of another format.
    QString getSavePath() const;
    /// True when the file is no longer as it was opened or saved here; false when it is gone.
    bool isFileChanged() const { return m_fileState.isChanged(); }
    QString getError() const { return m_error; }
    /// What the last loading or saving left out, a line each.
    QStringList getWarnings() const { return m_warnings; }

    // Work.
    Kind getKind() const override { return Scene; }
    /// The file's name.
    QString getTitle() const override;
    QString getPath() const override { return m_path; }
    /// Costs as much as saving when there were steps since it was asked last.
    bool isModified() const override;
    QByteArray getText() const override;

signals:
    /// Another scene was loaded, or this one was saved.
    void fileChanged();

private:
    void setFile(const QString& path, const QByteArray& savedDigest);

    std::unique_ptr<DzSceneFile> m_file;
    QString m_path;
    FileState m_fileState;
    QString m_error;
    QStringList m_warnings;
    /// Of the text as it was loaded or saved; empty when it stands in no file.
    QByteArray m_savedDigest;
    mutable bool m_modified = false;
    /// Any step may have changed surfaces, and so may undoing one.
    mutable bool m_steppedSince = false;
};
