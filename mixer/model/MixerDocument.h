// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "FileState.h"
#include "Work.h"
#include "dzbrickuserfile.h"

#include <QObject>
#include <QSet>
#include <QString>
#include <QTimer>
#include <memory>

class BrickSelection;
class DzProperty;
class IDzBrickUser;
class NetworkEdit;
class NetworkWatcher;
class QUndoCommand;

/// One network that is being worked on, with its file.
class MixerDocument : public Work
{
    Q_OBJECT

public:
    /// A document around an empty network; `error` says why none could be made, and the result is
    /// null then.
    static std::unique_ptr<MixerDocument> create(QString* error);
    /// A document around `user`, of which it takes one share.
    explicit MixerDocument(IDzBrickUser* user);
    ~MixerDocument() override;

    IDzBrickUser* getUser() const { return m_user; }
    NetworkEdit* getEdit() const { return m_edit.get(); }
    BrickSelection* getSelection() const { return m_selection.get(); }

    // Work.
    Kind getKind() const override { return Network; }
    QString getPath() const override { return m_path; }
    /// The file's name, or the one that was given.
    QString getTitle() const override;
    bool isModified() const override { return m_modified; }
    QByteArray getText() const override;

    /// Folder in which relative file names are looked for; empty without file.
    QString getFolder() const;
    /// Folder for a document without file whose network came from one.
    void setFallbackFolder(const QString& folder) { m_fallbackFolder = folder; }
    void setTitle(const QString& title);
    /// The title as the name of a file, without extension.
    QString getBaseName() const;
    /// True when the file is no longer as it was opened or saved here; false when it is gone.
    bool isFileChanged() const { return m_fileState.isChanged(); }
    /// The network as it is stands in no file.
    void markUnsaved();

    /// Replaces the network by that of a file. False with the reason in getError(), and no change.
    bool load(const QString& path);
    /// The same from a text, without taking a path; `name` stands for it in messages.
    bool loadText(const QByteArray& text, const QString& name);
    /// Loads the network that new documents start with, under a fresh identifier.
    bool loadTemplate(const QString& path);
    /// Loads a copy of the network that was being worked on as `path`, or under `title` when it
    /// never was saved. The document is unsaved then.
    bool restore(const QString& copy, const QString& path, const QString& title);
    /// Writes the file as a whole. False with the reason in getError(), and the old file is as it
    /// was.
    bool save(const QString& path);

    QString getError() const { return m_error; }
    /// What the loaded file held that was not understood, a line each.
    QStringList getWarnings() const { return m_file.getWarnings(); }
    /// True when there is nothing in it that somebody did.
    bool isPristine() const { return m_path.isEmpty() && !m_modified && !m_everModified; }

signals:
    /// Bricks, inputs, links or titles changed.
    void structureChanged();
    /// A value, a map or a lock changed.
    void propertyChanged(DzProperty* property);
    void titleChanged();

private slots:
    void networkChanged();
    void stepChanged();
    void compareWithSaved();

private:
    void setModified(bool modified);
    void setSaved(const QByteArray& text);
    void replaced();

    IDzBrickUser* m_user;
    DzBrickUserFile m_file;
    std::unique_ptr<NetworkEdit> m_edit;
    std::unique_ptr<BrickSelection> m_selection;
    std::unique_ptr<NetworkWatcher> m_watcher;
    QString m_path;
    QString m_title;
    QString m_fallbackFolder;
    QString m_error;
    /// Of the text as it was loaded or saved last: tells if undo led back to it.
    QByteArray m_savedDigest;
    FileState m_fileState;
    /// The last steps of the undo stack that left the network as it is in the file. They are
    /// compared only: some may be gone.
    QSet<const QUndoCommand*> m_savedSteps;
    const QUndoCommand* m_step = nullptr;
    /// Whether the network changed since the stack came to that step.
    bool m_changedSinceStep = false;
    /// Whether it changed while the stack took nothing: that may have been taken back.
    bool m_changedUnseen = false;
    QTimer m_comparison;
    bool m_modified = false;
    bool m_everModified = false;
};
