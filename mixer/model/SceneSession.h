// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <memory>

class DzSceneFile;

/// The scene file that surfaces come from and are saved to.
class SceneSession : public QObject
{
    Q_OBJECT

public:
    explicit SceneSession(QObject* parent = nullptr);
    ~SceneSession() override;

    /// Loads a file into the application's scene. False with the reason in getError(), and the
    /// scene is as it was.
    bool load(const QString& path);
    /// Writes the scene. False with the reason in getError(), and the old file is as it was.
    bool save(const QString& path);
    bool hasScene() const { return m_file != nullptr; }
    QString getPath() const { return m_path; }
    /// Where saving without asking may go: not over a file of another format.
    QString getSavePath() const;
    QString getError() const { return m_error; }
    QStringList getWarnings() const;

    /// True when the scene differs from its file. Costs as much as saving when there were steps
    /// since it was asked last.
    bool isModified();

    /// True for names of files that hold scenes.
    static bool isSceneFile(const QString& path);
    /// For file dialogs.
    static QString fileFilter();

signals:
    void changed();

private:
    void setSaved();
    QByteArray getDigest();

    std::unique_ptr<DzSceneFile> m_file;
    QString m_path;
    QString m_error;
    QByteArray m_savedDigest;
    bool m_modified = false;
    /// Any step may have changed surfaces, and so may undoing one.
    bool m_steppedSince = false;
};
