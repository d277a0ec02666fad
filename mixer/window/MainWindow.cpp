// SPDX-FileCopyrightText: 2026 The Vireo authors
// SPDX-License-Identifier: Apache-2.0

#include "MainWindow.h"

#include "BrickAppearance.h"
#include "BrickCatalogue.h"
#include "BrickSelection.h"
#include "BrickyardPanel.h"
#include "CanvasCommands.h"
#include "CommandSet.h"
#include "DocumentController.h"
#include "DocumentTabs.h"
#include "FileMenus.h"
#include "FreePlace.h"
#include "HistoryDelegate.h"
#include "LineIcon.h"
#include "MessageLine.h"
#include "Messages.h"
#include "MixerDocument.h"
#include "NetworkEdit.h"
#include "NetworkScene.h"
#include "NetworkSteps.h"
#include "NetworkTextPanel.h"
#include "NetworkView.h"
#include "PanelSet.h"
#include "ProblemActions.h"
#include "ProblemsPanel.h"
#include "ProgramSettings.h"
#include "PropertiesPanel.h"
#include "Restoring.h"
#include "SceneController.h"
#include "SceneSession.h"
#include "SurfacesPanel.h"
#include "Theme.h"
#include "WelcomePage.h"
#include "WindowCommands.h"
#include "dzapp.h"
#include "dzbrickparam.h"
#include "dzfileformat.h"
#include "dzproperty.h"
#include "dzshaderbrick.h"
#include "dzundostack.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
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

namespace {

/// The networks and scenes among what is dragged.
QStringList openableFiles(const QMimeData* data)
{
    QStringList paths;
    for (const QUrl& url : data->urls()) {
        const QString kind = DzFileFormats::getKind(url.toLocalFile());
        if (kind == DzFileKind::network() || kind == DzFileKind::scene())
            paths.append(url.toLocalFile());
    }
    return paths;
}

/// The width that panels start with, and the window's size.
const int panelWidth = 240;
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
    , m_panels(new PanelSet(this))
    , m_tabs(new DocumentTabs)
    , m_centre(new QStackedWidget)
    , m_welcomeArea(new QScrollArea)
    , m_documents(new DocumentController(m_tabs, settings, store, this))
    , m_sceneController(new SceneController(settings, store, this))
    , m_brickyard(new BrickyardPanel)
    , m_properties(new PropertiesPanel)
    , m_textPanel(new NetworkTextPanel)
    , m_problems(new ProblemsPanel)
    , m_history(new QUndoView(dzUndoStack->getQtStack()))
    , m_steps(new NetworkSteps(this))
    , m_problemButton(new QToolButton)
    , m_message(new MessageLine)
{
    setAcceptDrops(true);
    setDockOptions(AnimatedDocks | AllowTabbedDocks | AllowNestedDocks);
    WindowCommands rows(m_commands, this, settings);
    rows.addFileCommands();
    rows.addEditCommands();
    rows.addValueCommands();
    rows.addSceneCommands();
    makeCentre();
    makeStatusBar();
    makePanels();
    rows.addViewCommands();
    rows.addHelpCommands();
    m_commands->beginGroup(tr("Canvas"));
    CanvasCommands::addTo(m_commands, [this] { return getView(); });
    makeMenus();
    makeToolBar();
    m_panels->noteFirstPlaces();
    makeConnections();

    Theme::apply(Theme::fromWord(m_settings->getTheme()));
    resize(firstSizeOn(screen()));
    restoreGeometry(m_settings->getGeometry());
    restoreState(m_settings->getLayout());
    m_problems->setSilencedRules(m_settings->getSilencedRules());
    showRecentFiles();
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
    return ::offerRestore(m_store, m_documents.get(), m_sceneController.get(), this);
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
    if (DzFileFormats::getKind(path) == DzFileKind::scene())
        return m_sceneController->open(path);
    return m_documents->open(path) != nullptr;
}

void MainWindow::openFiles(const QStringList& paths)
{
    const Messages::Gathering gathering(this);
    for (const QString& path : paths)
        openFile(path);
}

// Parts.

void MainWindow::makeCentre()
{
    m_welcome = new WelcomePage(*m_commands);
    // A page that needs much room must not make the window wider than the screen.
    m_welcomeArea->setWidget(m_welcome);
    m_welcomeArea->setWidgetResizable(true);
    m_welcomeArea->setFrameShape(QFrame::NoFrame);
    m_welcomeArea->setFocusPolicy(Qt::NoFocus);
    m_centre->addWidget(m_welcomeArea);
    m_centre->addWidget(m_tabs);
    setCentralWidget(m_centre);
}

void MainWindow::makeStatusBar()
{
    m_problemButton->setAutoRaise(true);
    m_problemButton->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_problemButton->setIcon(LineIcon::make(LineIcon::Warning));
    m_problemButton->setToolTip(tr("Show the problems of this network"));
    m_problemButton->hide();
    statusBar()->addWidget(m_message, 1);
    statusBar()->addPermanentWidget(m_problemButton);
}

void MainWindow::makePanels()
{
    m_surfaces = new SurfacesPanel(m_commands->findAll("apply fromScene"));
    m_history->setFrameShape(QFrame::NoFrame);
    m_history->setEmptyLabel(tr("Begin"));
    m_history->setItemDelegate(new HistoryDelegate(m_steps, m_history));
    m_history->setAccessibleName(tr("History"));
    setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    // Panels share the height that there is.
    resize(firstSizeOn(screen()));
    m_panels->add({
        { "Brickyard", tr("Brickyard"), m_brickyard, Qt::LeftDockWidgetArea, Panel::Shown,
            QSize(panelWidth, 560), "Ctrl+1" },
        { "Surfaces", tr("Surfaces"), m_surfaces, Qt::LeftDockWidgetArea, Panel::Shown,
            QSize(panelWidth, 260), "Ctrl+2" },
        { "History", tr("History"), m_history, Qt::LeftDockWidgetArea, Panel::Behind, QSize(),
            "Ctrl+3" },
        { "Properties", tr("Properties"), m_properties, Qt::RightDockWidgetArea, Panel::Shown,
            QSize(codeWidth, 430), "Ctrl+4" },
        { "SceneCode", tr("LuxRender Text"), m_textPanel, Qt::RightDockWidgetArea, Panel::Shown,
            QSize(codeWidth, 390), "Ctrl+5" },
        { "Problems", tr("Problems"), m_problems, Qt::BottomDockWidgetArea, Panel::Hidden,
            QSize(0, 120), "Ctrl+6" },
    });
}

QMenu* MainWindow::addMenu(const QString& title, const char* ids)
{
    QMenu* menu = menuBar()->addMenu(title);
    menu->setToolTipsVisible(true);
    m_commands->fill(menu, ids);
    // Not everything tells when it changes.
    connect(menu, &QMenu::aboutToShow, m_commands, [this] { m_commands->refresh(); });
    return menu;
}

void MainWindow::makeMenus()
{
    auto* recent = new RecentMenu(m_settings, tr("Open &Recent"), menuBar());
    connect(recent, &RecentMenu::fileChosen, this, &MainWindow::openFile);
    connect(recent, &RecentMenu::cleared, this, [this] {
        m_settings->clearRecentFiles();
        showRecentFiles();
    });
    auto* examples = new ExampleMenu(tr("Open &Example"), menuBar());
    connect(examples, &ExampleMenu::fileChosen, m_documents.get(), &DocumentController::openAsNew);

    QMenu* file = addMenu(tr("&File"), "new open");
    file->addMenu(recent);
    file->addMenu(examples);
    m_commands->fill(
        file, "| save saveAs close | openScene saveScene saveSceneAs | nextTab previousTab | quit");
    addMenu(tr("&Edit"),
        "undo redo | cut copy paste duplicate delete deleteReconnect | selectAll selectUpstream "
        "selectDownstream keepSelected");
    QMenu* brick = addMenu(tr("&Brick"),
        "addBrick insertBrick | rename hideParams wider narrower | frame unframe frameTitle "
        "removeFrame | editValues lockAll unlockAll resetAll | arrange");
    m_commands->fill(brick->addMenu(tr("Ali&gn")), CanvasCommands::alignments());
    addMenu(tr("&Scene"), "apply applyBack fromScene | showApplyList");
    QMenu* view = addMenu(tr("&View"),
        "zoomToAll zoomToSelection zoomIn zoomOut zoomToOne | showMiniMap snapToGrid |");
    m_commands->fill(view, m_panels->getCommandIds());
    m_commands->fill(view,
        "| nextPart previousPart | resetLayout fullScreen | theme-system theme-light theme-dark");
    addMenu(tr("&Help"), "shortcuts about");
}

void MainWindow::makeToolBar()
{
    QToolBar* bar = addToolBar(tr("Commands"));
    bar->setObjectName(QStringLiteral("Commands"));
    bar->setIconSize(QSize(18, 18));
    bar->setMovable(false);
    m_commands->fill(bar, "new open save | undo redo | apply fromScene");
    const QVector<QAction*> named = m_commands->findAll("apply fromScene");
    for (QAction* action : bar->actions()) {
        auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(action));
        if (!button)
            continue;
        button->setFocusPolicy(Qt::TabFocus);
        if (named.contains(action))
            button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    }
}

void MainWindow::makeConnections()
{
    connect(m_problemButton, &QToolButton::clicked, this, [this] { m_panels->show(m_problems); });
    connect(m_tabs, &DocumentTabs::opened, this, &MainWindow::documentOpened);
    connect(m_tabs, &DocumentTabs::closed, this, &MainWindow::documentClosed);
    connect(m_tabs, &DocumentTabs::currentDocumentChanged, this, &MainWindow::currentChanged);
    connect(m_steps, &NetworkSteps::ran, this, &MainWindow::stepsRan);
    connect(m_documents.get(), &DocumentController::message, this, &MainWindow::showMessage);
    connect(m_sceneController.get(), &SceneController::message, this, &MainWindow::showMessage);
    connect(m_documents.get(), &DocumentController::recentFilesChanged, this,
        &MainWindow::showRecentFiles);
    connect(m_sceneController.get(), &SceneController::recentFilesChanged, this,
        &MainWindow::showRecentFiles);
    connect(m_sceneController.get(), &SceneController::opened, this,
        [this] { m_panels->show(m_surfaces); });
    connect(m_sceneController.get(), &SceneController::applyListShownChanged, this,
        &MainWindow::refreshCommands);
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
    connect(m_problems, &ProblemsPanel::silencedRulesChanged, this,
        [this](const QStringList& rules) { m_settings->setSilencedRules(rules); });
    const ProblemActions* remedies = m_problems->getActions();
    connect(remedies, &ProblemActions::message, this, &MainWindow::showWarning);
    connect(remedies, &ProblemActions::linkWanted, this, &MainWindow::searchFor);
    connect(m_surfaces, &SurfacesPanel::selectionChanged, this, &MainWindow::refreshCommands);
    connect(m_sceneController->getSession(), &SceneSession::fileChanged, this,
        &MainWindow::refreshCommands);
    connect(
        dzUndoStack->getQtStack(), &QUndoStack::indexChanged, this, &MainWindow::refreshCommands);
}

void MainWindow::showRecentFiles()
{
    m_welcome->setRecentFiles(m_settings->getRecentFiles());
}

void MainWindow::refreshCommands()
{
    m_commands->refresh(Command::Window);
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
        &MainWindow::refreshCommands);
    view->setCommands(m_commands);
    view->setMiniMapShown(m_settings->isMiniMapShown());
    connect(view, &NetworkView::miniMapShown, this,
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
    // Its steps bear the names of networks.
    m_history->viewport()->update();
    updateTitle();
    m_commands->refresh();
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

void MainWindow::editValues()
{
    NetworkView* view = getView();
    if (DzProperty* property = view ? view->getKeyboard()->getProperty() : nullptr) {
        editValue(property);
        return;
    }
    m_panels->show(m_properties);
    m_properties->focusFirst();
}

void MainWindow::editValue(DzProperty* property)
{
    m_panels->show(m_properties);
    m_properties->focusOn(property);
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
        showWarning(error);
        return;
    }
    getDocument()->getSelection()->set({ brick });
    view->showBrick(brick);
    const QString notice = secondRootNotice(*getDocument()->getEdit(), brick);
    if (notice.isEmpty())
        showMessage(tr("Added %1. Drag from a pin to link it.").arg(brick->getBrickTitle()));
    else
        showWarning(notice);
}

void MainWindow::showProblems()
{
    const QVector<Problem>& problems = m_problems->getProblems();
    m_problemButton->setVisible(!problems.isEmpty());
    m_problemButton->setText(
        problems.size() == 1 ? tr("1 problem") : tr("%1 problems").arg(problems.size()));
    m_properties->showProblems(problems, m_problems->getActions());
    NetworkView* view = getView();
    if (!view)
        return;
    struct Badge {
        QStringList texts;
        ProblemLevel level = ProblemLevel::Notes;
    };
    QHash<DzShaderBrick*, Badge> badges;
    for (const Problem& problem : problems) {
        if (!problem.brick)
            continue;
        Badge& badge = badges[problem.brick];
        badge.texts.append(problem.text);
        badge.level = qMin(badge.level, problem.level);
    }
    NetworkScene* scene = view->getNetworkScene();
    scene->clearBadges();
    for (auto badge = badges.constBegin(); badge != badges.constEnd(); ++badge)
        scene->setBadge(badge.key(), badge->texts.join(QLatin1Char('\n')), badge->level);
}

/// Lets the user choose what feeds an input.
void MainWindow::searchFor(DzBrickParam* input)
{
    NetworkView* view = getView();
    const DzShaderBrick* brick = input->getTopBrickOwner();
    if (!view || !brick || view->isBusy())
        return;
    view->showBrick(brick);
    const QPointF pin = BrickAppearance::position(brick) + BrickAppearance::pinOffset(brick, input);
    view->getSearch()->openFor(input, pin - QPointF(4 * NetworkView::gridStep, 0));
}

void MainWindow::goToPart(int step)
{
    QWidget* canvas = m_centre->currentWidget();
    m_panels->focusNext(getView() ? getView() : canvas, step);
}

// Events.

/// What no field wanted for itself.
void MainWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && getView())
        getView()->setFocus(Qt::OtherFocusReason);
    else
        DzMainWindow::keyPressEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!m_documents->mayLeave() || !m_sceneController->mayLeave()) {
        event->ignore();
        return;
    }
    m_settings->setWindow(saveGeometry(), saveState());
    event->accept();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!openableFiles(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QStringList paths = openableFiles(event->mimeData());
    if (paths.isEmpty())
        return;
    event->acceptProposedAction();
    openFiles(paths);
}
