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
class DzBrickParam;
class DzProperty;
class DzShaderBrick;
class MessageLine;
class MixerDocument;
class NetworkSteps;
class NetworkTextPanel;
class NetworkView;
class PanelSet;
class ProblemsPanel;
class ProgramSettings;
class PropertiesPanel;
class QMenu;
class QScrollArea;
class QStackedWidget;
class QToolButton;
class QUndoView;
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
    SceneController* getSceneController() const { return m_sceneController.get(); }
    PanelSet* getPanels() const { return m_panels; }
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
    /// Takes the keyboard to the value of the canvas' row that has it, else to the first value;
    /// also when the panel is hidden.
    void editValues();
    /// Takes the keyboard to the next part of the window, or the one before: canvas and panels.
    void goToPart(int step);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void makeCentre();
    void makeStatusBar();
    void makePanels();
    QMenu* addMenu(const QString& title, const char* ids);
    void makeMenus();
    void makeToolBar();
    void makeConnections();
    void showRecentFiles();
    void refreshCommands();

    void documentOpened(MixerDocument* document);
    void documentClosed(MixerDocument* document);
    void stepsRan(const QVector<MixerDocument*>& changed, bool isUndo, const QString& caption);
    void editValue(DzProperty* property);
    void currentChanged();
    void updateTitle();
    void showProblems();
    void searchFor(DzBrickParam* input);
    void addBrick(const QString& className);

    ProgramSettings* m_settings;
    AutosaveStore* m_store;
    CommandSet* m_commands;
    PanelSet* m_panels;
    DocumentTabs* m_tabs;
    WelcomePage* m_welcome = nullptr;
    QStackedWidget* m_centre;
    QScrollArea* m_welcomeArea;
    std::unique_ptr<DocumentController> m_documents;
    std::unique_ptr<SceneController> m_sceneController;
    BrickyardPanel* m_brickyard;
    PropertiesPanel* m_properties;
    SurfacesPanel* m_surfaces = nullptr;
    NetworkTextPanel* m_textPanel;
    ProblemsPanel* m_problems;
    QUndoView* m_history;
    NetworkSteps* m_steps;
    QToolButton* m_problemButton;
    MessageLine* m_message;
};
