// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>
#include <memory>

class AutosaveStore;
class Autosaver;
class DzElement;
class DzMaterial;
class IDzBrickUser;
class MixerDocument;
class ProgramSettings;
class QWidget;
class SceneSession;
struct RestorableWork;

/// A network that was taken from a surface, the caller's, with a name for it.
struct SceneNetwork {
    IDzBrickUser* user;
    QString title;
};

/// Opens and saves the scene, puts networks on its surfaces and takes them from there, and asks
/// the user where there is something to decide.
class SceneController : public QObject
{
    Q_OBJECT

public:
    /// None is owned; `window` is the parent of dialogs.
    SceneController(ProgramSettings* settings, AutosaveStore* store, QWidget* window);
    ~SceneController() override;

    SceneSession* getSession() const { return m_session.get(); }

    /// False, and a message, when the file cannot be read.
    bool open(const QString& path);
    void openWithDialog();
    /// Opens a copy that was left when the program ended without warning. False when the scene that
    /// is open stays, by the user's choice, or no copy can be read, which is told.
    bool restore(const RestorableWork& work);
    bool save();
    bool saveAs();
    bool saveTo(const QString& path);
    /// Keeps a copy of unsaved changes now rather than in a moment. False when that failed.
    bool keepNow();
    /// Asks when the scene is not saved. False when the user does not want to leave.
    bool mayLeave();

    /// Puts the document's network on the selected surfaces, after showing what that changes when
    /// the user wants to see it. False when nothing was applied.
    bool apply(MixerDocument* document);
    /// Puts the document's network on the surface that it was taken from, whatever is selected, and
    /// on no other. False when nothing was applied.
    bool applyBack(MixerDocument* document);
    /// The surface that the document's network was taken from; null when it came from none, or that
    /// is no longer in the scene.
    DzMaterial* getOrigin(const MixerDocument* document) const;
    /// The networks of the selected surfaces. `document` is any of the kind that is wanted; null
    /// makes one.
    QVector<SceneNetwork> fromScene(MixerDocument* document);

signals:
    void message(const QString& text);
    void recentFilesChanged();
    /// A scene was opened, or restored.
    void opened();
    void applyListShownChanged(bool shown);

private:
    /// A network and the surface that it was taken from.
    struct Origin {
        QPointer<DzElement> network;
        QPointer<DzMaterial> surface;
    };

    bool saveOverChanged();
    bool confirmApply(MixerDocument* document);
    void remember();

    ProgramSettings* m_settings;
    AutosaveStore* m_store;
    QWidget* m_window;
    std::unique_ptr<SceneSession> m_session;
    std::unique_ptr<Autosaver> m_autosaver;
    QVector<Origin> m_origins;
};
