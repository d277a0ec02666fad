// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"

#include "ApplyPreview.h"
#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "BrickSelection.h"
#include "BrickyardPanel.h"
#include "CommandSet.h"
#include "DataFiles.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "FreePlace.h"
#include "HistoryDelegate.h"
#include "LineIcon.h"
#include "MessageLine.h"
#include "Messages.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkSteps.h"
#include "NetworkTextPanel.h"
#include "NetworkView.h"
#include "ProblemsPanel.h"
#include "ProgramSettings.h"
#include "PropertiesPanel.h"
#include "PropertyGroup.h"
#include "Restoring.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "ShortcutsPage.h"
#include "SurfacesPanel.h"
#include "Theme.h"
#include "WelcomePage.h"
#include "dzapp.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"
#include "idzbrickuser.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QUndoView>
#include <QUrl>

#include <algorithm>

namespace {

/// The platform's keys for a command, and the one that everybody knows.
QList<QKeySequence> keys(QKeySequence::StandardKey key, const QKeySequence& known)
{
    QList<QKeySequence> bindings = QKeySequence::keyBindings(key);
    if (!bindings.contains(known))
        bindings.append(known);
    return bindings;
}

QStringList localFiles(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls())
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    return paths;
}

/// The width that panels start with, and the window's size.
const int panelWidth = 300;
const int codeWidth = 380;
const QSize firstSize(1480, 920);
QSize firstSizeOn(const QScreen* screen)
{
    return screen ? firstSize.boundedTo(screen->availableSize()) : firstSize;
}

/// A brick of the class as it comes.
QSizeF sizeOf(const QString& className)
{
    const BrickKind* kind = BrickCatalogue::instance()->find(className);
    return kind ? BrickAppearance::size(kind->sample) : QSizeF();
}

} // namespace

MainWindow::MainWindow(ProgramSettings* settings, AutosaveStore* store)
    : m_settings(settings)
    , m_store(store)
    , m_commands(new CommandSet(this))
    , m_tabs(new DocumentTabs)
    , m_centre(new QStackedWidget)
    , m_welcomeArea(new QScrollArea)
    , m_documents(new DocumentController(m_tabs, settings, store, this))
    , m_scene(new SceneController(settings, store, this))
    , m_brickyard(new BrickyardPanel)
    , m_properties(new PropertiesPanel)
    , m_textPanel(new NetworkTextPanel)
    , m_problems(new ProblemsPanel)
    , m_history(new QUndoView(dzUndoStack->getQtStack()))
    , m_steps(new NetworkSteps(this))
{
    setAcceptDrops(true);
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    addFileCommands();
    addEditCommands();
    addBrickCommands();
    addSceneCommands();
    m_surfaces = new SurfacesPanel(
        { m_commands->get(QStringLiteral("apply")), m_commands->get(QStringLiteral("fromScene")) });
    m_welcome = new WelcomePage(*m_commands);
    // A page that needs much room must not make the window wider than the screen.
    m_welcomeArea->setWidget(m_welcome);
    m_welcomeArea->setWidgetResizable(true);
    m_welcomeArea->setFrameShape(QFrame::NoFrame);
    m_welcomeArea->setFocusPolicy(Qt::NoFocus);
    m_centre->addWidget(m_welcomeArea);
    m_centre->addWidget(m_tabs);
    setCentralWidget(m_centre);
    makeStatusBar();
    makeDocks();
    addViewCommands();
    addHelpCommands();
    makeMenus();
    makeToolBar();
    m_firstLayout = saveState();

    connect(m_tabs, &DocumentTabs::opened, this, &MainWindow::documentOpened);
    connect(m_tabs, &DocumentTabs::closed, this, &MainWindow::documentClosed);
    connect(m_tabs, &DocumentTabs::currentDocumentChanged, this, &MainWindow::currentChanged);
    connect(m_steps, &NetworkSteps::ran, this, &MainWindow::stepsRan);
    connect(m_documents.get(), &DocumentController::message, this, &MainWindow::showMessage);
    connect(m_scene.get(), &SceneController::message, this, &MainWindow::showMessage);
    const auto showRecent = [this] { m_welcome->setRecentFiles(m_settings->getRecentFiles()); };
    connect(m_documents.get(), &DocumentController::recentFilesChanged, this, showRecent);
    connect(m_scene.get(), &SceneController::recentFilesChanged, this, showRecent);
    connect(m_welcome, &WelcomePage::fileChosen, this, &MainWindow::openFile);
    connect(
        m_welcome, &WelcomePage::exampleChosen, m_documents.get(), &DocumentController::openAsNew);
    connect(m_brickyard, &BrickyardPanel::brickChosen, this, &MainWindow::addBrick);
    connect(m_brickyard, &BrickyardPanel::message, this, &MainWindow::showWarning);
    connect(m_properties, &PropertiesPanel::brickActivated, this, &MainWindow::showBrick);
    connect(m_properties, &PropertiesPanel::message, this, &MainWindow::showWarning);
    connect(m_textPanel, &NetworkTextPanel::brickActivated, this, &MainWindow::showBrick);
    connect(m_textPanel, &NetworkTextPanel::message, this, &MainWindow::showMessage);
    connect(m_problems, &ProblemsPanel::brickActivated, this, &MainWindow::showBrick);
    connect(m_problems, &ProblemsPanel::problemsChanged, this, &MainWindow::showProblems);
    connect(m_surfaces, &SurfacesPanel::selectionChanged, this, &MainWindow::updateCommands);
    connect(m_scene->getSession(), &SceneSession::fileChanged, this, &MainWindow::updateCommands);
    connect(
        dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, &MainWindow::updateCommands);

    setTheme(m_settings->getTheme());
    resize(firstSizeOn(screen()));
    restoreGeometry(m_settings->getGeometry());
    restoreState(m_settings->getLayout());
    m_welcome->setRecentFiles(m_settings->getRecentFiles());
    dzApp->setInterface(this);
    currentChanged();
}

MainWindow::~MainWindow()
{
    if (dzApp && dzApp->getInterface() == this)
        dzApp->setInterface(nullptr);
    // Panels look at documents: they let go first.
    m_tabs->disconnect(this);
    m_properties->setDocument(nullptr);
    m_textPanel->setDocument(nullptr);
    m_problems->setDocument(nullptr);
    m_brickyard->setUser(nullptr);
}

int MainWindow::offerRestore()
{
    return ::offerRestore(m_store, m_documents.get(), m_scene.get(), this);
}

MixerDocument* MainWindow::getDocument() const
{
    return m_tabs->getCurrent();
}

NetworkView* MainWindow::getView() const
{
    return m_tabs->getCurrentView();
}

QString MainWindow::getMessage() const
{
    return m_message->text();
}

void MainWindow::showMessage(const QString& text)
{
    m_message->tell(text, MessageLine::Notice);
}

void MainWindow::showWarning(const QString& text)
{
    m_message->tell(text, MessageLine::Warning);
}

bool MainWindow::openFile(const QString& path)
{
    if (SceneSession::isSceneFile(path))
        return m_scene->open(path);
    return m_documents->open(path) != nullptr;
}

void MainWindow::openFiles(const QStringList& paths)
{
    const Messages::Gathering gathering(this);
    for (const QString& path : paths)
        openFile(path);
}

// Commands.

void MainWindow::addFileCommands()
{
    m_commands->beginGroup(tr("File"));
    m_commands
        ->add(QStringLiteral("new"), tr("&New"), keys(QKeySequence::New, tr("Ctrl+N")),
            tr("Start a network with a root and a material"), [this] { m_documents->createNew(); })
        ->setIcon(LineIcon::make(LineIcon::New));
    m_commands
        ->add(QStringLiteral("open"), tr("&Open…"), keys(QKeySequence::Open, tr("Ctrl+O")),
            tr("Open network files and scenes"), [this] { openFiles(m_documents->askForFiles()); })
        ->setIcon(LineIcon::make(LineIcon::Open));
    m_commands
        ->add(QStringLiteral("save"), tr("&Save"), keys(QKeySequence::Save, tr("Ctrl+S")),
            tr("Save the network"), [this] { m_documents->save(getDocument()); })
        ->setIcon(LineIcon::make(LineIcon::Save));
    m_commands->add(QStringLiteral("saveAs"), tr("Save &As…"),
        keys(QKeySequence::SaveAs, tr("Ctrl+Shift+S")), tr("Save the network as another file"),
        [this] { m_documents->saveAs(getDocument()); });
    m_commands->add(QStringLiteral("close"), tr("&Close"), { tr("Ctrl+W") },
        tr("Close the network; undo brings it back"),
        [this] { m_documents->close(getDocument()); });
    m_commands->add(QStringLiteral("nextTab"), tr("Ne&xt Network"),
        { tr("Ctrl+PgDown"), tr("Ctrl+Tab") }, tr("Go to the next tab"), [this] {
            if (m_tabs->count() > 0)
                m_tabs->setCurrentIndex((m_tabs->currentIndex() + 1) % m_tabs->count());
        });
    m_commands->add(QStringLiteral("previousTab"), tr("&Previous Network"),
        { tr("Ctrl+PgUp"), tr("Ctrl+Shift+Tab") }, tr("Go to the previous tab"), [this] {
            if (m_tabs->count() > 0)
                m_tabs->setCurrentIndex(
                    (m_tabs->currentIndex() + m_tabs->count() - 1) % m_tabs->count());
        });
    m_commands->add(QStringLiteral("quit"), tr("&Quit"), keys(QKeySequence::Quit, tr("Ctrl+Q")),
        tr("Leave the program"), [this] { close(); });
}

void MainWindow::addEditCommands()
{
    m_commands->beginGroup(tr("Edit"));
    m_commands
        ->add(QStringLiteral("undo"), tr("&Undo"), keys(QKeySequence::Undo, tr("Ctrl+Z")),
            tr("Take the last step back"), [] { dzUndoStack->undo(); })
        ->setIcon(LineIcon::make(LineIcon::Undo));
    m_commands
        ->add(QStringLiteral("redo"), tr("&Redo"), keys(QKeySequence::Redo, tr("Ctrl+Shift+Z")),
            tr("Do the step again that was taken back"), [] { dzUndoStack->redo(); })
        ->setIcon(LineIcon::make(LineIcon::Redo));
}

void MainWindow::addBrickCommands()
{
    m_commands->beginGroup(tr("Values"));
    const auto selected = [this] {
        return getDocument() ? getDocument()->getSelection()->getBricks()
                             : QVector<DzShaderBrick*>();
    };
    m_commands->add(QStringLiteral("lockAll"), tr("&Lock All Values"), { tr("Ctrl+K") },
        tr("Lock every value of the selected bricks"),
        [selected] { lockAllValues(selected(), true); });
    m_commands->add(QStringLiteral("unlockAll"), tr("&Unlock All Values"), { tr("Ctrl+Shift+K") },
        tr("Unlock every value of the selected bricks"),
        [selected] { lockAllValues(selected(), false); });
    m_commands->add(QStringLiteral("resetAll"), tr("&Reset All Values"), {},
        tr("Set every value of the selected bricks that is not locked to its default"),
        [selected] { resetAllValues(selected()); });
    m_commands->add(QStringLiteral("editValues"), tr("&Edit Values"), { tr("Ctrl+E") },
        tr("Take the keyboard to the first value of the selected bricks"),
        [this] { editValues(); });
}

void MainWindow::addSceneCommands()
{
    m_commands->beginGroup(tr("Scene"));
    m_commands
        ->add(QStringLiteral("openScene"), tr("Open S&cene…"), { tr("Ctrl+Shift+O") },
            tr("Open a scene to put materials on its surfaces"),
            [this] { m_scene->openWithDialog(); })
        ->setIcon(LineIcon::make(LineIcon::Open));
    m_commands->add(QStringLiteral("saveScene"), tr("Save Sce&ne"), { tr("Ctrl+Alt+S") },
        tr("Save the scene with its materials"), [this] { m_scene->save(); });
    m_commands->add(QStringLiteral("saveSceneAs"), tr("Save Scene As…"), {},
        tr("Save the scene as another file"), [this] { m_scene->saveAs(); });
    m_commands
        ->add(QStringLiteral("apply"), tr("&Apply"), { tr("Ctrl+Return"), tr("Ctrl+Enter") },
            tr("Put the network on the selected surfaces"),
            [this] { m_scene->apply(getDocument()); })
        ->setIcon(LineIcon::make(LineIcon::Apply));
    m_commands
        ->add(QStringLiteral("fromScene"), tr("&From Scene"), { tr("Ctrl+Shift+Return") },
            tr("Open the networks of the selected surfaces"),
            [this] {
                for (const SceneNetwork& network : m_scene->fromScene(getDocument()))
                    m_documents->openUser(network.user, network.title);
            })
        ->setIcon(LineIcon::make(LineIcon::FromScene));
    QAction* list
        = m_commands->add(QStringLiteral("showApplyList"), tr("&Show Changes Before Applying"), {},
            tr("List what will appear, change and vanish before a network is applied"), [this] {
                m_settings->setApplyListShown(
                    m_commands->get(QStringLiteral("showApplyList"))->isChecked());
            });
    list->setCheckable(true);
    list->setChecked(m_settings->isApplyListShown());
    connect(m_scene.get(), &SceneController::applyListShownChanged, list, &QAction::setChecked);
}

void MainWindow::addViewCommands()
{
    m_commands->beginGroup(tr("View"));
    int number = 1;
    for (QDockWidget* dock : qAsConst(m_docks)) {
        QAction* toggle = dock->toggleViewAction();
        toggle->setShortcut(QKeySequence(tr("Ctrl+%1").arg(number++)));
        const QString tip = tr("Show or hide the panel \"%1\"").arg(dock->windowTitle());
        toggle->setStatusTip(tip);
        toggle->setToolTip(tip);
        m_commands->adopt(QStringLiteral("dock") + dock->objectName(), toggle);
    }
    m_commands->add(QStringLiteral("resetLayout"), tr("&Reset Layout"), {},
        tr("Put all panels where they were at first"), [this] {
            for (QDockWidget* dock : qAsConst(m_docks))
                dock->setFloating(false);
            restoreState(m_firstLayout);
        });
    QAction* full = m_commands->add(QStringLiteral("fullScreen"), tr("&Full Screen"), { tr("F11") },
        tr("Fill the screen, or go back"),
        [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); });
    full->setCheckable(true);
    auto* group = new QActionGroup(this);
    const QPair<const char*, QString> themes[] = { { "system", tr("Colours of the &Desktop") },
        { "light", tr("&Light") }, { "dark", tr("D&ark") } };
    for (const auto& theme : themes) {
        const QString word = QString::fromLatin1(theme.first);
        QAction* action = m_commands->add(QStringLiteral("theme-") + word, theme.second, {},
            tr("Choose the look of the window"), [this, word] { setTheme(word); });
        action->setCheckable(true);
        group->addAction(action);
    }
}

void MainWindow::addHelpCommands()
{
    m_commands->beginGroup(tr("Help"));
    m_commands->add(QStringLiteral("shortcuts"), tr("&Keyboard and Mouse"), { tr("F1") },
        tr("Show all commands and their keys"), [this] {
            auto* page = new ShortcutsPage(*m_commands, this);
            page->setAttribute(Qt::WA_DeleteOnClose);
            page->open();
        });
    m_commands->add(QStringLiteral("about"), tr("&About"), {}, tr("Version and licence"), [this] {
        auto* box = new QMessageBox(QMessageBox::NoIcon, tr("About"),
            tr("%1 %2").arg(
                QApplication::applicationDisplayName(), QApplication::applicationVersion()),
            QMessageBox::Close, this);
        box->setInformativeText(tr("Designs materials for LuxRender.\nLicence: Apache-2.0"));
        box->setIconPixmap(windowIcon().pixmap(64));
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
    });
}

QMenu* MainWindow::addMenu(const QString& title, const QStringList& names)
{
    QMenu* menu = menuBar()->addMenu(title);
    menu->setToolTipsVisible(true);
    for (const QString& name : names) {
        if (name.isEmpty())
            menu->addSeparator();
        else if (name == QLatin1String("[recent]"))
            m_recentMenu = menu->addMenu(tr("Open &Recent"));
        else if (name == QLatin1String("[examples]"))
            m_exampleMenu = menu->addMenu(tr("Open &Example"));
        else
            menu->addAction(m_commands->get(name));
    }
    return menu;
}

void MainWindow::makeMenus()
{
    addMenu(tr("&File"),
        { QStringLiteral("new"), QStringLiteral("open"), QStringLiteral("[recent]"),
            QStringLiteral("[examples]"), QString(), QStringLiteral("save"),
            QStringLiteral("saveAs"), QStringLiteral("close"), QString(),
            QStringLiteral("openScene"), QStringLiteral("saveScene"), QStringLiteral("saveSceneAs"),
            QString(), QStringLiteral("nextTab"), QStringLiteral("previousTab"), QString(),
            QStringLiteral("quit") });
    QMenu* edit = addMenu(tr("&Edit"), { QStringLiteral("undo"), QStringLiteral("redo") });
    QMenu* brick = addMenu(tr("&Brick"),
        { QStringLiteral("editValues"), QStringLiteral("lockAll"), QStringLiteral("unlockAll"),
            QStringLiteral("resetAll") });
    addMenu(tr("&Scene"),
        { QStringLiteral("apply"), QStringLiteral("fromScene"), QString(),
            QStringLiteral("showApplyList") });
    QStringList names;
    for (const QDockWidget* dock : qAsConst(m_docks))
        names.append(QStringLiteral("dock") + dock->objectName());
    names << QString() << QStringLiteral("resetLayout") << QStringLiteral("fullScreen") << QString()
          << QStringLiteral("theme-system") << QStringLiteral("theme-light")
          << QStringLiteral("theme-dark");
    QMenu* view = addMenu(tr("&View"), names);
    QAction* firstPanel = m_commands->get(QStringLiteral("dock") + m_docks.first()->objectName());
    m_canvasSections = {
        { edit, nullptr,
            { -1, NetworkView::CutCommand, NetworkView::CopyCommand, NetworkView::PasteCommand,
                NetworkView::DuplicateCommand, NetworkView::DeleteCommand,
                NetworkView::DeleteReconnectCommand, -1, NetworkView::SelectAllCommand,
                NetworkView::SelectUpstreamCommand, NetworkView::SelectDownstreamCommand,
                NetworkView::KeepSelectedCommand },
            {} },
        { brick, m_commands->get(QStringLiteral("editValues")),
            { NetworkView::AddBrickCommand, NetworkView::InsertBrickCommand, -1,
                NetworkView::RenameCommand, NetworkView::HideParamsCommand,
                NetworkView::WiderCommand, NetworkView::NarrowerCommand, -1,
                NetworkView::FrameCommand, NetworkView::UnframeCommand,
                NetworkView::FrameTitleCommand, NetworkView::RemoveFrameCommand, -1 },
            {} },
        { brick, nullptr, { -1, NetworkView::ArrangeCommand }, {} },
        { brick->addMenu(tr("Ali&gn")), nullptr,
            { NetworkView::AlignLeftCommand, NetworkView::AlignRightCommand,
                NetworkView::AlignTopCommand, NetworkView::AlignBottomCommand,
                NetworkView::AlignHorizontalCentresCommand,
                NetworkView::AlignVerticalCentresCommand, -1,
                NetworkView::DistributeHorizontallyCommand,
                NetworkView::DistributeVerticallyCommand },
            {} },
        { view, firstPanel,
            { NetworkView::ZoomToAllCommand, NetworkView::ZoomToSelectionCommand,
                NetworkView::ZoomInCommand, NetworkView::ZoomOutCommand,
                NetworkView::ZoomToOneCommand, -1, NetworkView::ShowMiniMapCommand,
                NetworkView::SnapToGridCommand, -1 },
            {} },
    };
    addMenu(tr("&Help"), { QStringLiteral("shortcuts"), QStringLiteral("about") });
    m_recentMenu->setObjectName(QStringLiteral("recent"));
    connect(m_recentMenu, &QMenu::aboutToShow, this, &MainWindow::fillRecentMenu);
    connect(m_exampleMenu, &QMenu::aboutToShow, this, [this] { fillExampleMenu(m_exampleMenu); });
}

/// Each canvas has its own commands, which hold while the keyboard is on it: the menus show those
/// of the current one.
void MainWindow::showCanvasCommands()
{
    const NetworkView* view = getView();
    QVector<QAction*> listed;
    for (CanvasSection& section : m_canvasSections) {
        for (QAction* action : qAsConst(section.shown)) {
            section.menu->removeAction(action);
            if (action->isSeparator())
                delete action;
        }
        section.shown.clear();
        for (const int command : qAsConst(section.commands)) {
            if (!view)
                break;
            if (command < 0) {
                section.shown.append(section.menu->insertSeparator(section.before));
                continue;
            }
            QAction* action = view->getAction(NetworkView::Command(command));
            section.menu->insertAction(section.before, action);
            section.shown.append(action);
            listed.append(action);
        }
    }
    m_commands->setGroup(tr("Canvas"), listed);
}

void MainWindow::fillRecentMenu()
{
    m_recentMenu->clear();
    QStringList networks;
    QStringList scenes;
    for (const QString& path : m_settings->getRecentFiles())
        (SceneSession::isSceneFile(path) ? scenes : networks).append(path);
    addRecent(tr("Networks"), networks);
    addRecent(tr("Scenes"), scenes);
    if (networks.isEmpty() && scenes.isEmpty()) {
        m_recentMenu->addAction(tr("None yet"))->setEnabled(false);
        return;
    }
    m_recentMenu->addSeparator();
    connect(m_recentMenu->addAction(tr("Clear")), &QAction::triggered, this, [this] {
        m_settings->clearRecentFiles();
        m_welcome->setRecentFiles(QStringList());
    });
}

void MainWindow::addRecent(const QString& title, const QStringList& paths)
{
    if (!paths.isEmpty())
        m_recentMenu->addSection(title);
    for (const QString& path : paths) {
        QAction* action = m_recentMenu->addAction(
            QFileInfo(path).fileName().replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(path);
        connect(action, &QAction::triggered, this, [this, path] { openFile(path); });
    }
}

void MainWindow::fillExampleMenu(QMenu* menu)
{
    menu->clear();
    const QStringList paths = findExamples();
    for (const QString& path : paths)
        connect(menu->addAction(QFileInfo(path).completeBaseName()), &QAction::triggered, this,
            [this, path] { m_documents->openAsNew(path); });
    if (paths.isEmpty())
        menu->addAction(tr("None installed"))->setEnabled(false);
}

void MainWindow::makeToolBar()
{
    QToolBar* bar = addToolBar(tr("Commands"));
    bar->setObjectName(QStringLiteral("Commands"));
    bar->setIconSize(QSize(18, 18));
    bar->setMovable(false);
    const QStringList names { QStringLiteral("new"), QStringLiteral("open"), QStringLiteral("save"),
        QString(), QStringLiteral("undo"), QStringLiteral("redo"), QString(),
        QStringLiteral("apply"), QStringLiteral("fromScene") };
    for (const QString& name : names) {
        if (name.isEmpty())
            bar->addSeparator();
        else
            bar->addAction(m_commands->get(name));
    }
    for (const char* name : { "apply", "fromScene" })
        static_cast<QToolButton*>(bar->widgetForAction(m_commands->get(QString::fromLatin1(name))))
            ->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    for (QAction* action : bar->actions())
        if (auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action)))
            button->setFocusPolicy(Qt::TabFocus);
}

void MainWindow::makeStatusBar()
{
    m_message = new MessageLine;
    m_problemButton = new QToolButton;
    m_problemButton->setAutoRaise(true);
    m_problemButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_problemButton->setIcon(LineIcon::make(LineIcon::Warning));
    m_problemButton->setToolTip(tr("Show the problems of this network"));
    m_problemButton->hide();
    statusBar()->addWidget(m_message, 1);
    statusBar()->addPermanentWidget(m_problemButton);
}

QDockWidget* MainWindow::addDock(
    const QString& name, const QString& title, QWidget* panel, Qt::DockWidgetArea area)
{
    auto* dock = new QDockWidget(title);
    dock->setObjectName(name);
    dock->setWidget(panel);
    addDockWidget(area, dock);
    m_docks.append(dock);
    return dock;
}

void MainWindow::makeDocks()
{
    m_history->setFrameShape(QFrame::NoFrame);
    m_history->setEmptyLabel(tr("Begin"));
    m_history->setItemDelegate(new HistoryDelegate(m_steps, m_tabs, m_history));
    m_history->setAccessibleName(tr("History"));
    addDock(QStringLiteral("Brickyard"), tr("Brickyard"), m_brickyard, Qt::LeftDockWidgetArea);
    addDock(QStringLiteral("Surfaces"), tr("Surfaces"), m_surfaces, Qt::LeftDockWidgetArea);
    addDock(QStringLiteral("History"), tr("History"), m_history, Qt::LeftDockWidgetArea);
    addDock(QStringLiteral("Properties"), tr("Properties"), m_properties, Qt::RightDockWidgetArea);
    addDock(
        QStringLiteral("SceneCode"), tr("LuxRender Text"), m_textPanel, Qt::RightDockWidgetArea);
    addDock(QStringLiteral("Problems"), tr("Problems"), m_problems, Qt::BottomDockWidgetArea);
    arrangeDocks();
    QDockWidget* problems = m_docks.last();
    connect(m_problemButton, &QToolButton::clicked, problems, [problems] {
        problems->show();
        problems->raise();
    });
}

void MainWindow::arrangeDocks()
{
    enum { Brickyard, Surfaces, History, Properties, SceneCode, Problems };
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    tabifyDockWidget(m_docks.at(Surfaces), m_docks.at(History));
    m_docks.at(Surfaces)->raise();
    m_docks.at(Problems)->hide();
    resize(firstSizeOn(screen()));
    resizeDocks({ m_docks.at(Brickyard), m_docks.at(Properties) }, { panelWidth - 60, codeWidth },
        Qt::Horizontal);
    resizeDocks({ m_docks.at(Brickyard), m_docks.at(Surfaces) }, { 560, 260 }, Qt::Vertical);
    resizeDocks({ m_docks.at(Properties), m_docks.at(SceneCode) }, { 430, 390 }, Qt::Vertical);
    resizeDocks({ m_docks.at(Problems) }, { 120 }, Qt::Vertical);
}

void MainWindow::setTheme(const QString& word)
{
    const Theme::Mode mode = Theme::fromWord(word);
    Theme::apply(mode);
    m_settings->setTheme(Theme::toWord(mode));
    m_commands->get(QStringLiteral("theme-") + Theme::toWord(mode))->setChecked(true);
}

// What is current.

void MainWindow::documentOpened(MixerDocument* document)
{
    NetworkView* view = m_tabs->getView(document);
    m_steps->watch(document);
    connect(view, &NetworkView::statusMessage, this, &MainWindow::showWarning);
    connect(view, &NetworkView::valueActivated, this, &MainWindow::editValue);
    connect(view, &NetworkView::brickActivated, this, &MainWindow::editValues);
    connect(document->getSelection(), &BrickSelection::selectionChanged, this,
        &MainWindow::updateCommands);
    QAction* miniMap = view->getAction(NetworkView::ShowMiniMapCommand);
    if (miniMap->isChecked() != m_settings->isMiniMapShown())
        miniMap->trigger();
    connect(miniMap, &QAction::toggled, this,
        [this](bool shown) { m_settings->setMiniMapShown(shown); });
}

void MainWindow::documentClosed(MixerDocument* document)
{
    // It may live on in the undo step, and come back.
    document->getSelection()->disconnect(this);
    // Its canvas goes, and with it the commands that the menus show.
    if (m_tabs->count() == 0)
        currentChanged();
}

/// The undo stack is that of all networks: a change of one that is not shown is brought into view.
void MainWindow::stepsRan(
    const QVector<MixerDocument*>& changed, bool isUndo, const QString& caption)
{
    if (changed.contains(getDocument()))
        return;
    MixerDocument* last = changed.last();
    if (!m_tabs->getView(last))
        return;
    m_tabs->setCurrent(last);
    showMessage(
        (isUndo ? tr("Undone in %1: %2") : tr("Redone in %1: %2")).arg(last->getTitle(), caption));
}

void MainWindow::currentChanged()
{
    MixerDocument* document = getDocument();
    m_centre->setCurrentWidget(document ? static_cast<QWidget*>(m_tabs) : m_welcomeArea);
    m_brickyard->setUser(document ? document->getUser() : nullptr);
    m_properties->setDocument(document);
    m_textPanel->setDocument(document);
    m_problems->setDocument(document);
    if (m_canvasView != getView()) {
        m_canvasView = getView();
        showCanvasCommands();
    }
    // Its steps bear the names of networks.
    m_history->viewport()->update();
    updateTitle();
    updateCommands();
}

void MainWindow::updateTitle()
{
    const MixerDocument* document = getDocument();
    if (!document) {
        setWindowTitle(QApplication::applicationDisplayName());
        setWindowModified(false);
        return;
    }
    setWindowFilePath(document->getPath());
    setWindowTitle(QStringLiteral("%1[*] — %2")
                       .arg(document->getTitle(), QApplication::applicationDisplayName()));
    setWindowModified(document->isModified());
}

void MainWindow::updateCommands()
{
    const auto command
        = [this](const char* name) { return m_commands->get(QString::fromLatin1(name)); };
    const MixerDocument* document = getDocument();
    const bool hasDocument = document != nullptr;
    const bool hasBricks = hasDocument && !document->getSelection()->isEmpty();
    for (const char* name : { "save", "saveAs", "close" })
        command(name)->setEnabled(hasDocument);
    for (const char* name : { "lockAll", "unlockAll", "resetAll", "editValues" })
        command(name)->setEnabled(hasBricks);
    // While a hold is open nothing is undone, but nobody tells when it was taken back.
    command("undo")->setEnabled(dzUndoStack->getQtStack()->canUndo());
    command("undo")->setText(tr("&Undo %1").arg(dzUndoStack->getUndoCaption()).trimmed());
    command("redo")->setEnabled(dzUndoStack->getQtStack()->canRedo());
    command("redo")->setText(tr("&Redo %1").arg(dzUndoStack->getRedoCaption()).trimmed());
    const bool hasScene = m_scene->getSession()->hasScene();
    command("saveScene")->setEnabled(hasScene);
    command("saveSceneAs")->setEnabled(hasScene);
    const bool hasSurfaces = !selectedSurfaces().isEmpty();
    command("apply")->setEnabled(hasDocument && hasSurfaces);
    command("fromScene")->setEnabled(hasSurfaces);
}

/// Takes the keyboard to the first value, also when the panel is hidden.
void MainWindow::editValues()
{
    showProperties();
    m_properties->focusFirst();
}

void MainWindow::editValue(DzProperty* property)
{
    showProperties();
    m_properties->focusOn(property);
}

void MainWindow::showProperties()
{
    QDockWidget* dock = dockOf(m_properties);
    dock->show();
    dock->raise();
}

QDockWidget* MainWindow::dockOf(const QWidget* panel) const
{
    const auto found = std::find_if(m_docks.begin(), m_docks.end(),
        [panel](const QDockWidget* dock) { return dock->widget() == panel; });
    Q_ASSERT(found != m_docks.end());
    return *found;
}

void MainWindow::showBrick(DzShaderBrick* brick)
{
    NetworkView* view = getView();
    if (!view)
        return;
    getDocument()->getSelection()->set({ brick });
    view->showBrick(brick);
}

void MainWindow::addBrick(const QString& className)
{
    NetworkView* view = getView();
    if (!view) {
        showMessage(tr("Open a network first."));
        return;
    }
    QString error;
    DzShaderBrick* brick = getDocument()->getEdit()->addBrick(className,
        findFreePlace(*getDocument()->getEdit(), view->getVisibleBox(), sizeOf(className)), &error);
    if (!brick) {
        showMessage(error);
        return;
    }
    getDocument()->getSelection()->set({ brick });
    view->showBrick(brick);
    showMessage(tr("Added %1. Drag from a pin to link it.").arg(brick->getBrickTitle()));
}

void MainWindow::showProblems()
{
    const QVector<Problem>& problems = m_problems->getProblems();
    m_problemButton->setVisible(!problems.isEmpty());
    m_problemButton->setText(
        problems.size() == 1 ? tr("1 problem") : tr("%1 problems").arg(problems.size()));
    NetworkView* view = getView();
    if (!view)
        return;
    QHash<DzShaderBrick*, QStringList> texts;
    for (const Problem& problem : problems)
        if (problem.brick)
            texts[problem.brick].append(problem.text);
    view->clearBadges();
    for (auto text = texts.constBegin(); text != texts.constEnd(); ++text)
        view->setBadge(text.key(), text.value().join(QLatin1Char('\n')));
}

// Events.

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!m_documents->mayLeave() || !m_scene->mayLeave()) {
        event->ignore();
        return;
    }
    m_settings->setWindow(saveGeometry(), saveState());
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!localFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QStringList paths = localFiles(event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    openFiles(paths);
}
