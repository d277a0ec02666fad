// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "dzmainwindow.h"

#include <QPointer>
#include <memory>

class AutosaveStore;
class BrickyardPanel;
class CommandSet;
class DocumentController;
class DocumentTabs;
class DzProperty;
class DzShaderBrick;
class MessageLine;
class MixerDocument;
class NetworkSteps;
class NetworkView;
class ProblemsPanel;
class ProgramSettings;
class PropertiesPanel;
class QActionGroup;
class QDockWidget;
class QMenu;
class QScrollArea;
class QStackedWidget;
class QToolButton;
class QUndoView;
class NetworkTextPanel;
class SceneController;
class SurfacesPanel;
class WelcomePage;

/// The program's window: open networks in tabs, panels around them, and every command.
class MainWindow : public DzMainWindow
{
    Q_OBJECT

public:
    /// Neither is owned.
    MainWindow(ProgramSettings* settings, AutosaveStore* store);
    ~MainWindow() override;

    /// Opens a network or a scene, by the file's name. False, and a message, when it cannot be
    /// read.
    bool openFile(const QString& path);
    /// Opens several; what cannot be read is one message.
    void openFiles(const QStringList& paths);

    /// Offers what was left when the program ended without warning. Returns how many were opened.
    int offerRestore();

    CommandSet* getCommands() const { return m_commands; }
    DocumentTabs* getTabs() const { return m_tabs; }
    DocumentController* getDocuments() const { return m_documents.get(); }
    SceneController* getSceneController() const { return m_scene.get(); }
    BrickyardPanel* getBrickyard() const { return m_brickyard; }
    PropertiesPanel* getProperties() const { return m_properties; }
    SurfacesPanel* getSurfaces() const { return m_surfaces; }
    NetworkTextPanel* getTextPanel() const { return m_textPanel; }
    ProblemsPanel* getProblems() const { return m_problems; }
    QUndoView* getHistory() const { return m_history; }
    MixerDocument* getDocument() const;
    NetworkView* getView() const;
    /// The line at the foot of the window.
    QString getMessage() const;

public slots:
    /// Says something there for a while, and for longer what went wrong.
    void showMessage(const QString& text);
    void showWarning(const QString& text);
    /// Selects a brick and brings it into view.
    void showBrick(DzShaderBrick* brick);

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void addFileCommands();
    void addEditCommands();
    void addBrickCommands();
    void addViewCommands();
    void addSceneCommands();
    void addHelpCommands();
    void makeMenus();
    void makeToolBar();
    void makeDocks();
    void makeStatusBar();
    QDockWidget* addDock(
        const QString& name, const QString& title, QWidget* panel, Qt::DockWidgetArea area);
    void arrangeDocks();
    QDockWidget* dockOf(const QWidget* panel) const;
    QMenu* addMenu(const QString& title, const QStringList& names);
    void fillRecentMenu();
    void addRecent(const QString& title, const QStringList& paths);
    void fillExampleMenu(QMenu* menu);
    void setTheme(const QString& word);

    void documentOpened(MixerDocument* document);
    void documentClosed(MixerDocument* document);
    void stepsRan(const QVector<MixerDocument*>& changed, bool isUndo, const QString& caption);
    void editValues();
    void editValue(DzProperty* property);
    void showProperties();
    void currentChanged();
    void updateCommands();
    void updateTitle();
    void showProblems();
    void addBrick(const QString& className);
    void showCanvasCommands();

    ProgramSettings* m_settings;
    AutosaveStore* m_store;
    CommandSet* m_commands;
    DocumentTabs* m_tabs;
    WelcomePage* m_welcome;
    QStackedWidget* m_centre;
    QScrollArea* m_welcomeArea;
    std::unique_ptr<DocumentController> m_documents;
    std::unique_ptr<SceneController> m_scene;
    BrickyardPanel* m_brickyard;
    PropertiesPanel* m_properties;
    SurfacesPanel* m_surfaces;
    NetworkTextPanel* m_textPanel;
    ProblemsPanel* m_problems;
    QUndoView* m_history;
    NetworkSteps* m_steps;
    QMenu* m_recentMenu = nullptr;
    QMenu* m_exampleMenu = nullptr;
    /// Menus that show commands of the current canvas, before the given command.
    struct CanvasSection {
        QMenu* menu;
        QAction* before;
        QVector<int> commands; ///< of NetworkView; -1 for a separator
        QVector<QAction*> shown;
    };
    QVector<CanvasSection> m_canvasSections;
    /// The canvas whose commands are shown; compared only.
    const NetworkView* m_canvasView = nullptr;
    QToolButton* m_problemButton = nullptr;
    MessageLine* m_message = nullptr;
    QList<QDockWidget*> m_docks;
    QByteArray m_firstLayout;
};
