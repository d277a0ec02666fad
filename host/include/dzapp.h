// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

class DzClassFactory;
class DzImageMgr;
class DzMainWindow;
class DzPluginMgr;
class DzScene;
class DzUndoStack;

/// The application: owner of the undo stack, the scene and the managers, and the way to the user.
/// A program makes exactly one, before it makes any other object of the host.
class DzApp : public QObject
{
    Q_OBJECT

public:
    enum MessageType { LogMessage, DebugMessage, WarningMessage };
    typedef std::function<void(MessageType, const QString&)> MessageHandler;

    DzApp();
    ~DzApp() override;

    /// The main window, null in a program without one. Not owned.
    DzMainWindow* getInterface() const { return m_interface; }
    void setInterface(DzMainWindow* window) { m_interface = window; }

    Q_INVOKABLE DzUndoStack* getUndoStack() const { return m_undoStack.get(); }
    Q_INVOKABLE DzImageMgr* getImageMgr() const { return m_imageMgr.get(); }
    DzPluginMgr* getPluginMgr() const { return m_pluginMgr.get(); }
    /// The scene that the user works on, which is `dzScene` too.
    Q_INVOKABLE DzScene* getScene() const { return m_scene.get(); }
    const DzClassFactory* findClassFactory(const QString& className) const;
    /// A new object of the class, owned by the caller. A class that no module offers a factory for
    /// is looked for among the pointer types that are registered with Qt, and made through its
    /// invokable constructor; null when there is none either.
    QObject* createInstance(const QString& className) const;

    Q_INVOKABLE void log(const QString& message) { tell(LogMessage, message); }
    Q_INVOKABLE void debug(const QString& message) { tell(DebugMessage, message); }
    Q_INVOKABLE void warning(const QString& message);
    /// Receives all messages from now on but for warnings that a reader or writer gathers. Without
    /// one, warnings go to standard error.
    void setMessageHandler(const MessageHandler& handler) { m_handler = handler; }
    MessageHandler getMessageHandler() const { return m_handler; }

signals:
    void closing();

private:
    // Each stands in the room of the class that it makes, which this one's need not know.
    static std::shared_ptr<DzPluginMgr> makePluginMgr();
    static std::shared_ptr<DzScene> makeScene();

    void tell(MessageType type, const QString& message);

    std::unique_ptr<DzUndoStack> m_undoStack;
    std::unique_ptr<DzImageMgr> m_imageMgr;
    std::shared_ptr<DzPluginMgr> m_pluginMgr;
    std::shared_ptr<DzScene> m_scene;
    DzMainWindow* m_interface = nullptr;
    MessageHandler m_handler;
};

/// The one application object; null before it is made and after it is gone.
extern DzApp* dzApp;
