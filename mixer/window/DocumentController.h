// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QStringList>
#include <memory>

class AutosaveStore;
class Autosaver;
class DocumentTabs;
class IDzBrickUser;
class MixerDocument;
class ProgramSettings;
class QWidget;
struct RestorableWork;

/// Opens, saves, closes and restores documents, and asks the user where there is something to
/// decide.
class DocumentController : public QObject
{
    Q_OBJECT

public:
    /// None is owned; `window` is the parent of dialogs.
    DocumentController(
        DocumentTabs* tabs, ProgramSettings* settings, AutosaveStore* store, QWidget* window);
    ~DocumentController() override;

    /// Opens a document with the network that new ones start with; null, and a message, when no
    /// module offers networks.
    MixerDocument* createNew();
    /// Opens a file, or goes to its tab. Null, and a message, when it cannot be read.
    MixerDocument* open(const QString& path);
    /// Opens a file as a new document that has no file yet.
    MixerDocument* openAsNew(const QString& path);
    /// Opens a document around a network that is in no file.
    MixerDocument* openUser(IDzBrickUser* user, const QString& title);
    /// Asks for files to open, networks or scenes.
    QStringList askForFiles() const;
    /// False when it was not saved: by the user's choice or an error, which is told.
    bool save(MixerDocument* document);
    bool saveAs(MixerDocument* document);
    bool saveTo(MixerDocument* document, const QString& path);
    /// Closes a document, after asking when there is something unsaved. False when it stays.
    bool close(MixerDocument* document);
    /// Asks for each document with something unsaved. False when the user does not want to leave.
    bool mayLeave();
    /// Opens a copy that was left when the program ended without warning. False when none can be
    /// read, which is told.
    bool restore(const RestorableWork& work);

signals:
    void recentFilesChanged();
    void message(const QString& text);

private:
    enum Answer { Save, Discard, Stay };

    std::shared_ptr<MixerDocument> makeDocument();
    MixerDocument* show(const std::shared_ptr<MixerDocument>& document);
    void leavePristine();
    Answer askToSave(MixerDocument* document);
    bool saveOverChanged(MixerDocument* document);
    QString freeTitle(const QString& title) const;
    void remember(const QString& path);

    DocumentTabs* m_tabs;
    ProgramSettings* m_settings;
    AutosaveStore* m_store;
    QWidget* m_window;
    std::unique_ptr<Autosaver> m_autosaver;
    int m_untitledCount = 0;
};
